// SPDX-FileCopyrightText: 2026 The MIOLKAsoft authors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "app/mainwindow.h"

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
#include "editor/fieldcodec.h"
#include "editor/parameterstab.h"
#include "editor/rulegrid.h"
#include "image/memoryarea.h"
#include "image/settingsfile.h"
#include "maintenance/aboutdialog.h"
#include "maintenance/libraryupload.h"
#include "maintenance/manual.h"
#include "sim/simwidget.h"
#include "ui_mainwindow.h"

#include <QApplication>

namespace {

constexpr int startPage = 0;

/// A title takes "[*]" as the place of a mark for changes; doubled, it stands for itself.
QString literalTitle(QString text)
{
    return text.replace(QLatin1String("[*]"), QLatin1String("[*][*]"));
}

} // namespace

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

void MainWindow::writeSettingsToMiolka()
{
    m_progress->open(tr("Zapis do miolki.."));
    m_image->setData(0, parseSettingsVersion());
    QStringList records = m_image->toHex(0, image::settingsImageSize, image::settingsRecordLength);
    emit writeToMiolka(EEPROM, records);
}

void MainWindow::readSettingsFromMiolka()
{
    m_progress->open(tr("Odczyt z miolki.."));
    QStringList records = m_image->toHex(0, image::settingsImageSize, image::settingsRecordLength);
    emit readFromMiolka(EEPROM, records);
}

void MainWindow::miolkaWriteProgress(int min, int max, int progress)
{
    m_progress->show(min, max, progress);
}

void MainWindow::transferLost()
{
    m_progress->drop();
    ui->statusBar->showMessage(tr("Połączenie z Miolką przerwane przed końcem transmisji."));
}

void MainWindow::newStatusRead(QStringList const& list)
{
    m_statusPage->showStatus(list);
    m_statusDialog->setStatus(cMyStatusPage::selfTestFlags(list));
}

void MainWindow::showMiolkaStatus()
{
    m_statusDialog->exec();
}

void MainWindow::portChanged(const QString& newPort)
{
    m_deviceActions->setAvailable(!newPort.isEmpty());
    m_statusPage->showPort(newPort);
    m_portNote->compare(m_link->portName(), newPort);
}

void MainWindow::miolkaInBootMode()
{
    m_service->warnOfBootMode();
}

void MainWindow::on_actionReset_triggered()
{
    m_service->reset();
}

void MainWindow::on_actionClearStats_triggered()
{
    m_service->clearStatistics();
}

void MainWindow::on_actionPowerOff_triggered()
{
    m_service->powerOff();
}

void MainWindow::on_actionFirmwareUpdate_triggered()
{
    m_service->updateFirmware();
}

void MainWindow::on_actionLibraryUpdate_triggered()
{
    std::optional<QStringList> lines = m_libraryUpload->choose(m_document->directory());
    if (lines) {
        m_progress->open(tr("Proszę nie odłączać urządzenia."));
        emit writeToMiolka(FLASH, *lines);
    }
}

void MainWindow::on_actionPomoc_triggered()
{
    maintenance::openManual();
}

void MainWindow::on_actionAbout_triggered()
{
    m_aboutDialog->exec();
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
    m_deviceActions->setInUse(state);
    if (state) {
        m_link->lendPort();
        disconnect(ui->tabWidget, &QTabWidget::currentChanged, this, &MainWindow::tabWidgetChanged);
    } else {
        connect(ui->tabWidget, &QTabWidget::currentChanged, this, &MainWindow::tabWidgetChanged);
    }
    m_portSelect->hold(state ? m_portSelect->currentText() : QString());
    if (!state) {
        m_link->takePortBack();
    }
}

bool MainWindow::takesDrops() const
{
    // A dialog may be asking about the very image that a dropped file would change.
    return ui->menuBar->isEnabled() && QApplication::activeModalWidget() == nullptr;
}

void MainWindow::closeEvent(QCloseEvent* event)
{
    m_link->end();
    ui->simWidget->end();
    m_progress->drop();
    QMainWindow::closeEvent(event);
}
