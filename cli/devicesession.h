// SPDX-FileCopyrightText: 2026 The MIOLKAsoft authors
// SPDX-License-Identifier: GPL-3.0-or-later

#ifndef MIOLKA_CLI_DEVICESESSION_H
#define MIOLKA_CLI_DEVICESESSION_H

#include "cli/outcome.h"
#include "device/linechannel.h"

#include <QSerialPort>

#include <memory>

class cMyConsole;
class cMyEmulatedDevice;
class cMyTrace;
struct cMyFoundPort;
struct cMyInvocation;

/// A device whose port is open, for exchanges of lines one after another. Nobody else can use the
/// port meanwhile. For one thread.
class cMyDeviceSession
{
public:
    /// What a line must be answered by; anything else ends the exchange.
    enum class Answers {
        Echoes, ///< the line itself
        Records ///< a data record by one of the same address and size, anything else by itself
    };

    /// The console, for the progress, is not owned.
    explicit cMyDeviceSession(cMyConsole& console);
    ~cMyDeviceSession();
    Q_DISABLE_COPY_MOVE(cMyDeviceSession)

    /// Opens the device that the invocation chooses, and its trace file before. NoDevice,
    /// NotAllowed, or BadFile for the trace.
    [[nodiscard]] cMyOutcome open(const cMyInvocation& invocation);

    /// Opens that port.
    [[nodiscard]] cMyOutcome open(const cMyFoundPort& port);

    /// Keeps all lines from now on. The number is the device's in a trace of several.
    void setTrace(const std::shared_ptr<cMyTrace>& trace, int number);

    /// Of the port, as in "ttyACM0".
    [[nodiscard]] const QString& name() const { return m_name; }

    /// Sends the lines, which have their line ends, each after the answer to the one before; the
    /// title stands before the progress. If the user wants to stop, the answer that is due is the
    /// last but that to the word that leaves all modes. Protocol or Cancelled otherwise, saying at
    /// which line; after that, the session is of no more use.
    [[nodiscard]] cMyOutcome exchange(const QString& title, const QStringList& lines,
                                      Answers answers, QStringList* replies = nullptr);

    /// Whether an exchange failed because the device went away.
    [[nodiscard]] bool isGone() const { return m_isGone; }

private:
    [[nodiscard]] cMyOutcome startEmulated(cMyFoundPort& port);
    [[nodiscard]] cMyOutcome openFailure(const QString& path) const;
    [[nodiscard]] bool ask(const QString& line, QString& reply);
    [[nodiscard]] cMyOutcome silence(const QString& place, const QString& line);
    [[nodiscard]] cMyOutcome nonsense(const QString& place, const QString& line,
                                      const QString& reply);
    [[nodiscard]] cMyOutcome cancelled(const QString& place);
    void traceLine(const QString& line);
    void tellTraceFailure();

    cMyConsole& m_console;
    std::unique_ptr<cMyEmulatedDevice> m_emulated; ///< goes after the port
    std::shared_ptr<cMyTrace> m_trace;
    int m_number = 0;
    bool m_isTraceFailureTold = false;
    QString m_name;
    QSerialPort m_port;
    QDeadlineTimer m_answerEnd; ///< of the line that was sent last, whatever else arrives
    cMyLineChannel m_channel;
    bool m_isGone = false;
};

namespace cli {

/// The trace file that the invocation asks for; none if it asks for none. An existing file is
/// refused: no command writes over a file without a way back.
[[nodiscard]] cMyOutcome openTrace(const cMyInvocation& invocation,
                                   std::shared_ptr<cMyTrace>& trace);

/// Whether a reply answers the line as it should.
[[nodiscard]] bool isAnswer(const QString& line, const QString& reply,
                            cMyDeviceSession::Answers answers);

} // namespace cli

#endif
