// SPDX-FileCopyrightText: 2026 The MIOLKAsoft authors
// SPDX-License-Identifier: GPL-3.0-or-later

#ifndef MIOLKA_CLI_DEVICESESSION_H
#define MIOLKA_CLI_DEVICESESSION_H

#include "cli/outcome.h"
#include "device/linechannel.h"

#include <QSerialPort>

#include <memory>
#include <optional>

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
    /// What a line must be answered by; anything else ends the exchange. Any line answers a word or
    /// an end record, but for the one that says that it was not understood.
    enum class Answers {
        Any,    ///< records are written, and all answered alike: by themselves or by the same text
        Records ///< a data record asks for one of the same address and size
    };

    /// The console, for the progress, is not owned.
    explicit cMyDeviceSession(cMyConsole& console);
    ~cMyDeviceSession();
    Q_DISABLE_COPY_MOVE(cMyDeviceSession)

    /// Opens the device that the invocation chooses, and then its trace file. NoDevice,
    /// NotAllowed, or BadFile for the trace.
    [[nodiscard]] cMyOutcome open(const cMyInvocation& invocation);

    /// Opens that port.
    [[nodiscard]] cMyOutcome open(const cMyFoundPort& port);

    /// Keeps all lines from now on. The number is the device's in a trace of several.
    void setTrace(const std::shared_ptr<cMyTrace>& trace, int number);

    /// Of the port, as in "ttyACM0".
    [[nodiscard]] const QString& name() const { return m_name; }

    /// From now on answers may take as long as they ever may; for what a device has to erase memory
    /// for.
    void beMorePatient();

    /// Sends the lines, which have their line ends, each after the answer to the one before; the
    /// title stands before the progress. The replies are those to data records; every other line
    /// stands for itself there, as nothing is known of its answer. If the user wants to stop, the
    /// answer that is due is the last but that to the word that leaves all modes, and neither is
    /// waited for longer than two seconds. Protocol or Cancelled otherwise, saying at which line;
    /// after that, the session is of no more use.
    [[nodiscard]] cMyOutcome exchange(const QString& title, const QStringList& lines,
                                      Answers answers, QStringList* replies = nullptr);

    /// Whether an exchange failed because the device went away.
    [[nodiscard]] bool isGone() const { return m_isGone; }

    /// Whether the last exchange has sent the device anything.
    [[nodiscard]] bool hasSent() const { return m_hasSent; }

    /// Whether any exchange has sent a data record for the device to keep, as far as is known.
    [[nodiscard]] bool hasWritten() const { return m_hasWritten; }

private:
    /// A line, and how it was answered.
    struct Reply
    {
        QString place; ///< of the line, for messages
        QString line;
        QString text;
    };

    [[nodiscard]] cMyOutcome startEmulated(cMyFoundPort& port);
    [[nodiscard]] cMyOutcome openFailure(const QString& path) const;
    [[nodiscard]] bool ask(const QString& line, QString& reply);
    [[nodiscard]] cMyOutcome silence(const QString& place, const QString& line);
    [[nodiscard]] cMyOutcome judge(const Reply& reply, Answers answers);
    [[nodiscard]] bool isInForm(const Reply& reply);
    [[nodiscard]] cMyOutcome converse(const QString& place, const QString& line, Answers answers,
                                      QString& reply);
    [[nodiscard]] cMyOutcome nonsense(const Reply& reply);
    [[nodiscard]] cMyOutcome cancelled(const QString& place);
    [[nodiscard]] QString wayOut() const;
    [[nodiscard]] cMyLineChannel::Haste haste();
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
    std::optional<QDeadlineTimer> m_interruptionEnd; ///< of all waits, once the user wants to stop
    bool m_isGone = false;
    bool m_hasSent = false;
    bool m_hasWritten = false;
    std::optional<Reply> m_firstWritten; ///< of the exchange: its first record, and the answer
};

namespace cli {

/// The trace file that the invocation asks for; none if it asks for none. An existing file is
/// refused: no command writes over a file without a way back.
[[nodiscard]] cMyOutcome openTrace(const cMyInvocation& invocation,
                                   std::shared_ptr<cMyTrace>& trace);

/// Whether the reply is the line itself.
[[nodiscard]] bool isEcho(const QString& line, const QString& reply);

/// Whether the line is a record that gives data or their address, and not the end.
[[nodiscard]] bool isContent(const QString& line);

/// Whether the line is a data record. In a reading exchange it asks for the device's own bytes.
[[nodiscard]] bool isDataRecord(const QString& line);

/// Whether the reply is a right data record of the same address and size as the one in the line.
[[nodiscard]] bool isRecordFor(const QString& line, const QString& reply);

} // namespace cli

#endif
