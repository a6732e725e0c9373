// SPDX-FileCopyrightText: 2026 The MIOLKAsoft authors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "app/mainwindow.h"

#include "app/settingsdocument.h"
#include "editor/description.h"
#include "editor/fieldcodec.h"
#include "editor/imagegate.h"
#include "editor/parameterstab.h"
#include "editor/rulegrid.h"
#include "image/memoryarea.h"
#include "image/settingsfile.h"
#include "ui_mainwindow.h"

#include <QApplication>
#include <QDoubleSpinBox>
#include <QDropEvent>
#include <QSignalMapper>

namespace {

constexpr int startPage = 0;

/// A title takes "[*]" as the place of a mark for changes; doubled, it stands for itself.
QString literalTitle(QString text)
{
    return text.replace(QLatin1String("[*]"), QLatin1String("[*][*]"));
}

} // namespace

MainWindow::MainWindow(QWidget* parent)
    : QMainWindow(parent), ui(std::make_unique<Ui::MainWindow>())
{
    ui->setupUi(this);
    m_version = QStringLiteral(MIOLKA_VERSION);
    ui->tabWidget->removeTab(ui->tabWidget->indexOf(ui->tab));
    createMemoryAreas();
    createParametersTab();
    createTimersTab();
    createMesagessTab();
    m_document = new cMySettingsDocument(*m_image, *ui->actionSave, *this);
    qRegisterMetaType<QVector<QString>>("QVector<QString>");
    connect(ui->tabWidget, &QTabWidget::currentChanged, this, &MainWindow::tabWidgetChanged);
    connectInputs();
    connectFileActions();
    setupAppName();
    openFileDialog(QStringLiteral("NewFile"));
    m_description->installValidators();
}

MainWindow::~MainWindow() = default;

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
}

void MainWindow::openFileCmdLine(const QString& path)
{
    if (m_document->openFileCmdLine(path)) {
        updateTabs();
        setupAppName();
    }
}

void MainWindow::openFileDialog(const QString& mode)
{
    if (m_document->openFileDialog(mode)) {
        updateTabs();
        setupAppName();
    }
}

void MainWindow::openDropped(const QString& path)
{
    if (takesDrops()) {
        m_document->openDropped(path);
        updateTabs();
        setupAppName();
    }
}

void MainWindow::saveFileDialog(const QString& mode)
{
    m_document->saveFileDialog(mode);
    setupAppName();
}

void MainWindow::openFile(const QString& path)
{
    m_document->openFile(path);
}

bool MainWindow::saveFile(const QString& path)
{
    return m_document->saveFile(path);
}

void MainWindow::setupAppName()
{
    QString title = QStringLiteral("MIOLKAsoft v") + m_version;
    const QString path = m_document->canonicalPath();
    if (!path.isEmpty()) {
        title += QStringLiteral(" --- ") + literalTitle(path);
    }
    setWindowTitle(title);
}

void MainWindow::tabWidgetChanged(int index)
{
    if (index == startPage) {
        emit statusRequested();
    }
}

void MainWindow::newDataRead(MemoryType area, quint32 address, QVector<quint8> bytes)
{
    if (area == EEPROM) {
        m_image->setData(address, std::move(bytes));
        updateTabs();
    }
}

void MainWindow::updateTabs()
{
    updateMesagessTab();
    updateParametersTab();
    updateTimersTab();
}

void MainWindow::updateMesagessTab()
{
    m_messageRules->update();
}

void MainWindow::updateParametersTab()
{
    m_parameters->update();
    m_description->update();
}

void MainWindow::updateTimersTab()
{
    m_timerRules->update();
}

void MainWindow::param11Changed(double altitude)
{
    m_parameters->storeAltitude(altitude);
}

void MainWindow::param12Changed(double latitude)
{
    m_parameters->storeLatitude(latitude);
}

void MainWindow::param13Changed(int volume)
{
    m_parameters->storeVolume(volume);
}

void MainWindow::descriptionReached()
{
    m_description->descriptionReached();
}

void MainWindow::parseDescription()
{
    m_description->parseDescription();
}

QVector<quint8> MainWindow::parseSettingsVersion() const
{
    return editor::versionBytes(m_version);
}

void MainWindow::on_lsetDiveTime_textChanged(const QString& text)
{
    ui->lDiveTime->setText(text);
}

void MainWindow::on_lsetMaxDepth_textChanged(const QString& text)
{
    ui->lmaxDepth->setText(text);
}

void MainWindow::simulationInProgress(bool state)
{
    const std::initializer_list<QWidget*> locked = {ui->menuBar, ui->mainToolBar, ui->tabStart,
                                                    ui->tabTimery, ui->tabKomunikaty};
    for (QWidget* widget : locked) {
        widget->setEnabled(!state);
    }
    if (state) {
        disconnect(ui->tabWidget, &QTabWidget::currentChanged, this, &MainWindow::tabWidgetChanged);
    } else {
        connect(ui->tabWidget, &QTabWidget::currentChanged, this, &MainWindow::tabWidgetChanged);
    }
}

bool MainWindow::takesDrops() const
{
    // A dialog may be asking about the very image that a dropped file would change.
    return ui->menuBar->isEnabled() && QApplication::activeModalWidget() == nullptr;
}

void MainWindow::dragEnterEvent(QDragEnterEvent* event)
{
    const bool copyable = event->possibleActions().testFlag(Qt::CopyAction);
    if (copyable && takesDrops() &&
        !cMySettingsDocument::droppedFile(*event->mimeData()).isEmpty()) {
        // Never the source's own proposal: after a move it would delete the file.
        event->setDropAction(Qt::CopyAction);
        event->accept();
    }
}

void MainWindow::dropEvent(QDropEvent* event)
{
    const QString path = cMySettingsDocument::droppedFile(*event->mimeData());
    if (path.isEmpty() || !takesDrops()) {
        return;
    }
    event->setDropAction(Qt::CopyAction);
    event->accept();
    // The program that the file was dragged from waits until this returns; the question whether
    // to keep changes must not hold it up.
    QMetaObject::invokeMethod(
        this, [this, path] { openDropped(path); }, Qt::QueuedConnection);
}
