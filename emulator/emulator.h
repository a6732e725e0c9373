// SPDX-FileCopyrightText: 2026 The MIOLKAsoft authors
// SPDX-License-Identifier: GPL-3.0-or-later

#ifndef MIOLKA_EMULATOR_EMULATOR_H
#define MIOLKA_EMULATOR_EMULATOR_H

#include "emulator/control.h"
#include "emulator/mockedusb.h"
#include "emulator/options.h"
#include "emulator/signalpipe.h"
#include "emulator/trace.h"

#include <QObject>
#include <QProcess>
#include <QStringList>
#include <QVector>

#include <memory>
#include <vector>

class cMyDeviceMemories;
class cMyDeviceUnit;
class cMyVirtualPort;
struct cMySpokenMessage;

namespace emulator {

/// A port cannot be made, or a file cannot be written to its end.
constexpr int exitFailure = 1;

/// The command line is wrong, or what it names cannot be used.
constexpr int exitUsage = 2;

/// PROGRAM could not be started, as shells say it.
constexpr int exitNotStarted = 127;

/// Writes a line to the error output, with the program's name before it.
void say(const QString& message);

} // namespace emulator

/// The emulator as a whole: devices, their ports, the program that runs behind them, and what the
/// user says meanwhile. For the main thread.
class cMyEmulator : public QObject
{
    Q_OBJECT

public:
    /// Nothing is opened or started before start().
    explicit cMyEmulator(cMyEmulatorOptions options);
    ~cMyEmulator() override;
    Q_DISABLE_COPY_MOVE(cMyEmulator)

    /// Sets everything up and lets the program run. 0, or the exit status where that failed; why
    /// was said.
    int start();

signals:
    /// It is over; the exit status is the emulator's.
    void finished(int exitStatus);

private:
    /// Each says what it could not do, and returns the exit status for that, or 0.
    int openFiles();
    int makeUsb();
    int makeUnits();
    int addForeign();

    bool startingMemories(QVector<cMyDeviceMemories>& memories) const;
    void connectUnit(cMyDeviceUnit& unit);
    void appeared(int number, const QString& terminal, quint16 product);
    void disappeared(int number);
    void plugAll(bool plugged);
    void handleSignal(int number);
    void startProgram();
    void programFinished(int code, QProcess::ExitStatus status);
    void stop();
    void finish(int exitStatus);
    void portFailed(const QString& why);
    void printSpoken(int number, const cMySpokenMessage& message);
    [[nodiscard]] bool saveState() const;
    [[nodiscard]] bool isTraceWhole() const;

    void command(const QString& line);
    bool obey(const QStringList& words);
    bool setPlugged(bool plugged, const QStringList& numbers);
    bool setFaults(const QString& specs);
    bool setLatency(const QString& text);
    bool setCharging(const QString& state);

    cMySignalPipe m_signals; ///< first, so that no signal interrupts the tidying up
    cMyEmulatorOptions m_options;
    cMyTrace m_trace;
    cMyControlPipe m_control;
    std::unique_ptr<cMyMockedUsb> m_usb;
    std::vector<std::unique_ptr<cMyDeviceUnit>> m_units;
    QVector<cMyDeviceMemories> m_unused; ///< from the state file, for devices beyond --count
    std::unique_ptr<cMyVirtualPort> m_foreign;
    QProcess m_program;
    bool m_portsFailed = false;
};

#endif
