// SPDX-FileCopyrightText: 2026 The MIOLKAsoft authors
// SPDX-License-Identifier: GPL-3.0-or-later

#ifndef MIOLKA_APP_MAINWINDOW_H
#define MIOLKA_APP_MAINWINDOW_H

#include "image/memorytype.h"

#include <QMainWindow>
#include <QStringList>
#include <QVector>

#include <memory>

class cMyAboutDialog;
class cMyDescription;
class cMyDeviceActions;
class cMyImageGate;
class cMyLibraryUpload;
class cMyMemoryArea;
class cMyMiolka;
class cMyMiolkaStatus;
class cMyParametersTab;
class cMyPortNote;
class cMyPortSelect;
class cMyRuleGrid;
class cMyServiceCommands;
class cMySettingsDocument;
class cMyStatusPage;
class cMyTransferProgress;

namespace Ui {
class MainWindow;
}

/// The program's one window. It owns the settings image and joins the objects that work on it;
/// what they do is theirs.
class MainWindow : public QMainWindow
{
    Q_OBJECT

public:
    /// Builds the window with the built-in default settings loaded.
    explicit MainWindow(QWidget* parent = nullptr);
    ~MainWindow() override;

    /// Opens the settings file named on the command line; an empty path does nothing.
    void openFileCmdLine(const QString& path);

    /// These three show the image after it was replaced.
    void updateParametersTab();
    void updateTimersTab();
    void updateMesagessTab();

    /// Stores those of author, title and description that were changed.
    void parseDescription();

    /// The program's version as the settings image holds it, one byte for each part.
    [[nodiscard]] QVector<quint8> parseSettingsVersion() const;

public slots:
    /// New ("NewFile") or Open ("OpenFile"), with the question whether to keep changes.
    void openFileDialog(const QString& mode);

    /// Save ("Save") or Save As ("SaveAs").
    void saveFileDialog(const QString& mode);

    /// Applies a settings file to the image. Faults are silent.
    void openFile(const QString& path);

    /// Writes the image to a settings file; false, quietly, if that fails.
    bool saveFile(const QString& path);

    /// Shows the version and the current file in the title.
    void setupAppName();

    /// Asks for the device's status when the start page comes up.
    void tabWidgetChanged(int index);

    /// Sends the settings to the device, marked with this program's version.
    void writeSettingsToMiolka();

    /// Replaces the settings by those that the device holds.
    void readSettingsFromMiolka();

    /// Shows how far a transfer has come.
    void miolkaWriteProgress(int min, int max, int progress);

    /// Says that the device vanished in the middle of a transfer.
    void transferLost();

    /// Shows the device's status, a list of device::statusTexts().
    void newStatusRead(QStringList const& list);

    /// Shows the results of the device's self-test until the user closes them.
    void showMiolkaStatus();

    /// Another port was chosen, or the last one has gone (an empty name).
    void portChanged(const QString& newPort);

    /// A device waits in its boot loader.
    void miolkaInBootMode();

    void on_actionReset_triggered();
    void on_actionClearStats_triggered();
    void on_actionPowerOff_triggered();
    void on_actionFirmwareUpdate_triggered();

    /// Sends a sound library or custom messages library to the device's flash memory.
    void on_actionLibraryUpdate_triggered();

    void on_actionPomoc_triggered();
    void on_actionAbout_triggered();

    /// Takes bytes read from the device into the settings image; only EEPROM holds settings.
    void newDataRead(MemoryType area, quint32 address, QVector<quint8> data);

    /// Locks what must not touch the device while a simulation has it. The end of a simulation
    /// must be reported exactly once for each start.
    void simulationInProgress(bool state);

    /// The altitude was changed, in metres.
    void param11Changed(double altitude);

    /// The latitude was changed, in degrees.
    void param12Changed(double latitude);

    /// The volume was changed, in dB.
    void param13Changed(int volume);

    /// Author, title or description was changed.
    void descriptionReached();

    /// The simulation panel's dive time, for the start page.
    void on_lsetDiveTime_textChanged(const QString& text);

    /// The simulation panel's greatest depth, for the start page.
    void on_lsetMaxDepth_textChanged(const QString& text);

signals:
    /// The lines in file are to be written to that memory of the device.
    void writeToMiolka(MemoryType area, QStringList& file);

    /// That memory of the device is to be read with the request lines in file.
    void readFromMiolka(MemoryType area, QStringList& file);

    /// The start page wants the device's present status.
    void statusRequested();

protected:
    void closeEvent(QCloseEvent* event) override;

private:
    void dressPages();
    void createMemoryAreas();
    void createParametersTab();
    void createTimersTab();
    void createMesagessTab();
    void createPortSelector();
    void createDeviceLink();
    void createStatusPage();
    void connectDevice();
    void connectFileActions();
    void connectInputs();
    void updateTabs();
    void openDropped(const QString& path);
    [[nodiscard]] bool takesDrops() const;

    std::unique_ptr<Ui::MainWindow> ui;
    QString m_version;
    cMyMemoryArea* m_image = nullptr;
    cMyImageGate* m_gate = nullptr;
    cMySettingsDocument* m_document = nullptr;
    cMyParametersTab* m_parameters = nullptr;
    cMyDescription* m_description = nullptr;
    cMyRuleGrid* m_timerRules = nullptr;
    cMyRuleGrid* m_messageRules = nullptr;
    cMyPortSelect* m_portSelect = nullptr;
    cMyMiolka* m_link = nullptr;
    cMyTransferProgress* m_progress = nullptr;
    cMyServiceCommands* m_service = nullptr;
    cMyMiolkaStatus* m_statusDialog = nullptr;
    cMyAboutDialog* m_aboutDialog = nullptr;
    std::unique_ptr<cMyLibraryUpload> m_libraryUpload;
    std::unique_ptr<cMyStatusPage> m_statusPage;
    std::unique_ptr<cMyDeviceActions> m_deviceActions;
    cMyPortNote* m_portNote = nullptr;
};

#endif
