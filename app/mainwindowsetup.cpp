// SPDX-FileCopyrightText: 2026 The MIOLKAsoft authors
// SPDX-License-Identifier: GPL-3.0-or-later

/// How the window is put together; what it then does is in mainwindow.cpp.
#include "app/mainwindow.h"

#include "app/filedrop.h"
#include "app/settingsdocument.h"
#include "device/deviceactions.h"
#include "device/miolka.h"
#include "device/miolkastatus.h"
#include "device/portnote.h"
#include "device/portselect.h"
#include "device/servicecommands.h"
#include "device/statuspage.h"
#include "device/transferprogress.h"
#include "editor/description.h"
#include "editor/imagegate.h"
#include "editor/parameterstab.h"
#include "editor/rulegrid.h"
#include "image/memoryarea.h"
#include "image/settingsfile.h"
#include "maintenance/aboutdialog.h"
#include "maintenance/libraryupload.h"
#include "sim/simwidget.h"
#include "ui_mainwindow.h"

#include <QDoubleSpinBox>
#include <QSignalMapper>

MainWindow::MainWindow(QWidget* parent)
    : QMainWindow(parent), ui(std::make_unique<Ui::MainWindow>())
{
    ui->setupUi(this);
    dressPages();
    m_version = QStringLiteral(MIOLKA_VERSION);
    createPortSelector();
    ui->tabWidget->removeTab(ui->tabWidget->indexOf(ui->tab));
    createMemoryAreas();
    createParametersTab();
    createTimersTab();
    createMesagessTab();
    createDeviceLink();
    createStatusPage();
    m_document = new cMySettingsDocument(*m_image, *ui->actionSave, *this);
    qRegisterMetaType<QVector<QString>>("QVector<QString>");
    connectDevice();
    connectInputs();
    connectFileActions();
    setupAppName();
    openFileDialog(QStringLiteral("NewFile"));
    m_description->installValidators();
    connect(ui->simWidget, &cMySimWidget::portNeeded, m_link, &cMyMiolka::lendPort);
    connect(ui->simWidget, &cMySimWidget::simulationInProgress, this,
            &MainWindow::simulationInProgress);
}

MainWindow::~MainWindow() = default;

void MainWindow::dressPages()
{
    // Whenever something around a widget with a style sheet of its own gets its place, all that is
    // in the widget is polished anew, seen or not. So these come last.
    for (QWidget* page : {ui->startContents, static_cast<QWidget*>(ui->simWidget)}) {
        page->setStyleSheet(page->property("pageStyleSheet").toString());
    }
}

void MainWindow::createMemoryAreas()
{
    m_image = new cMyMemoryArea(this);
    m_image->setObjectName(QStringLiteral("settingsImage"));
    m_image->setData(image::settingsImageSize - 1, 0);
    auto* second = new cMyMemoryArea(this);
    second->setObjectName(QStringLiteral("secondArea"));
    m_gate = new cMyImageGate(*m_image, this);
}

void MainWindow::createParametersTab()
{
    m_parameters = new cMyParametersTab({ui->parametersForm, ui->periodsForm, ui->distancesForm},
                                        *m_gate, *this);
    m_description = new cMyDescription({ui->leAuthor, ui->leTitle, ui->pteDescription,
                                        ui->lAuthorFree, ui->lTitleFree, ui->lDescriptionFree,
                                        ui->lParamAutor, ui->lParamTytul, ui->pteParamDesc},
                                       *m_gate, *this);
    // The texts were there before the inputs that stand above them.
    setTabOrder(&m_parameters->lastInput(), ui->leAuthor);
    setTabOrder(ui->leAuthor, ui->leTitle);
    setTabOrder(ui->leTitle, ui->pteDescription);
}

void MainWindow::createTimersTab()
{
    m_timerRules = new cMyRuleGrid(cMyRuleGrid::timerRules(),
                                   {ui->timRows, ui->timLayout, ui->timHeading}, *m_gate, *this);
}

void MainWindow::createMesagessTab()
{
    m_messageRules = new cMyRuleGrid(cMyRuleGrid::messageRules(),
                                     {ui->msgRows, ui->msgLayout, ui->msgHeading}, *m_gate, *this);
}

void MainWindow::createPortSelector()
{
    m_portSelect = new cMyPortSelect(this);
    ui->mainToolBar->insertWidget(ui->actionExit, m_portSelect);
    ui->mainToolBar->insertSeparator(ui->actionExit);
    m_portNote = new cMyPortNote(this);
    ui->statusBar->addPermanentWidget(m_portNote);
}

void MainWindow::createDeviceLink()
{
    m_link = new cMyMiolka(m_image, this);
    m_statusDialog = new cMyMiolkaStatus(this);
    m_aboutDialog = new cMyAboutDialog(this);
    m_aboutDialog->setVersion(m_version);
    m_libraryUpload = std::make_unique<cMyLibraryUpload>(*this);
    m_progress = new cMyTransferProgress(*this);
    m_service = new cMyServiceCommands(*m_link, *this);
}

void MainWindow::createStatusPage()
{
    m_statusPage = std::make_unique<cMyStatusPage>(
        cMyStatusPage::Fields{ui->lMiolkaStatus, ui->lMiolkaPort, ui->lMemoryAmount,
                              ui->lSerialNumber, ui->lHardwareVesrion, ui->lFirmwareVersion,
                              ui->lVoiceVersion, ui->lVoiceLang, ui->lParamVersion, ui->lParamAutor,
                              ui->lParamTytul, ui->pteParamDesc, ui->lmaxDepth, ui->lDiveTime});
    m_deviceActions = std::make_unique<cMyDeviceActions>(
        QList<QAction*>{ui->actionReadSettings, ui->actionWriteSettings, ui->actionReset,
                        ui->actionClearStats, ui->actionPowerOff, ui->actionFirmwareUpdate,
                        ui->actionLibraryUpdate},
        QList<QWidget*>{ui->pbGetStatus, ui->pbDetails, ui->simWidget});
}

void MainWindow::connectDevice()
{
    connect(m_portSelect, &cMyPortSelect::portsListed, m_link, &cMyMiolka::setListedPorts);
    connect(m_portSelect, &QComboBox::currentTextChanged, m_link, &cMyMiolka::setPort);
    connect(m_portSelect, &QComboBox::currentTextChanged, ui->simWidget,
            &cMySimWidget::setPortName);
    connect(m_portSelect, &QComboBox::currentTextChanged, this, &MainWindow::portChanged);
    connect(m_portSelect, &cMyPortSelect::bootMode, this, &MainWindow::miolkaInBootMode);
    connect(ui->actionWriteSettings, &QAction::triggered, this, &MainWindow::writeSettingsToMiolka);
    connect(this, &MainWindow::writeToMiolka, m_link, &cMyMiolka::writeSettings);
    connect(ui->actionReadSettings, &QAction::triggered, this, &MainWindow::readSettingsFromMiolka);
    connect(this, &MainWindow::readFromMiolka, m_link, &cMyMiolka::readSettings);
    connect(ui->tabWidget, &QTabWidget::currentChanged, this, &MainWindow::tabWidgetChanged);
    connect(this, &MainWindow::statusRequested, m_link, &cMyMiolka::readStatus);
    connect(ui->pbGetStatus, &QPushButton::clicked, m_link, &cMyMiolka::readStatus);
    connect(ui->pbDetails, &QPushButton::clicked, this, &MainWindow::showMiolkaStatus);
    connect(m_link, &cMyMiolka::newDataRead, this, &MainWindow::newDataRead);
    connect(m_link, &cMyMiolka::statusChanged, this, &MainWindow::newStatusRead);
    connect(m_link, &cMyMiolka::writeProgress, this, &MainWindow::miolkaWriteProgress);
    connect(m_link, &cMyMiolka::portHeld, m_portSelect, &cMyPortSelect::hold);
    connect(m_link, &cMyMiolka::transferLost, this, &MainWindow::transferLost);
    connect(m_progress, &cMyTransferProgress::canceled, m_link, &cMyMiolka::breakCommunication);
}

void MainWindow::connectInputs()
{
    const auto numberChanged = QOverload<double>::of(&QDoubleSpinBox::valueChanged);
    connect(&m_parameters->altitude(), numberChanged, this, &MainWindow::param11Changed);
    connect(&m_parameters->latitude(), numberChanged, this, &MainWindow::param12Changed);
    connect(&m_parameters->volume(), QOverload<int>::of(&QSpinBox::valueChanged), this,
            &MainWindow::param13Changed);
    connect(ui->leAuthor, &QLineEdit::textChanged, this, &MainWindow::descriptionReached);
    connect(ui->leTitle, &QLineEdit::textChanged, this, &MainWindow::descriptionReached);
    connect(ui->pteDescription, &QPlainTextEdit::textChanged, this,
            &MainWindow::descriptionReached);
}

void MainWindow::connectFileActions()
{
    auto* open = new QSignalMapper(this);
    open->setMapping(ui->actionNew, QStringLiteral("NewFile"));
    open->setMapping(ui->actionOpen, QStringLiteral("OpenFile"));
    auto* save = new QSignalMapper(this);
    save->setMapping(ui->actionSave, QStringLiteral("Save"));
    save->setMapping(ui->actionSaveAs, QStringLiteral("SaveAs"));
    const auto map = QOverload<>::of(&QSignalMapper::map);
    connect(ui->actionNew, &QAction::triggered, open, map);
    connect(ui->actionOpen, &QAction::triggered, open, map);
    connect(open, &QSignalMapper::mappedString, this, &MainWindow::openFileDialog);
    connect(ui->actionSave, &QAction::triggered, save, map);
    connect(ui->actionSaveAs, &QAction::triggered, save, map);
    connect(save, &QSignalMapper::mappedString, this, &MainWindow::saveFileDialog);
    connect(ui->actionExit, &QAction::triggered, this, &MainWindow::close);
    auto* drop = new cMyFileDrop(*this, [this] { return takesDrops(); });
    connect(drop, &cMyFileDrop::dropped, this, &MainWindow::openDropped);
}
