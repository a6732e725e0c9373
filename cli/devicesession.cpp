// SPDX-FileCopyrightText: 2026 The MIOLKAsoft authors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "cli/devicesession.h"

#include "cli/console.h"
#include "cli/invocation.h"
#include "cli/portchoice.h"
#include "cli/system/emulateddevice.h"
#include "cli/system/interruption.h"
#include "cli/system/portaccess.h"
#include "device/protocol.h"
#include "device/serialline.h"
#include "emulator/trace.h"
#include "image/wholerecord.h"

#include <QFileInfo>

#include <chrono>

using cli::ExitStatus;

namespace {

/// A device that keeps sending, but not its answer, is not waited for without end.
constexpr std::chrono::seconds longestAnswer(10);

/// Nor is any answer once the user wants to stop; the channel adds its last moment.
constexpr std::chrono::milliseconds interruptionPatience(1500);

const QString rootLine = QLatin1String(device::rootWord) + QLatin1String(device::lineEnd);

/// What a device answers to a line that it does not understand.
constexpr char notUnderstood[] = "?";

bool isRefusal(const QString& reply)
{
    return reply.trimmed() == QLatin1String(notUnderstood);
}

/// A line as a message shows it.
QString shown(const QString& line)
{
    constexpr int longest = 60;
    const QString text = line.trimmed();
    return text.size() > longest ? text.left(longest) + QStringLiteral("...") : text;
}

} // namespace

namespace cli {

cMyOutcome openTrace(const cMyInvocation& invocation, std::shared_ptr<cMyTrace>& trace)
{
    if (!invocation.has("trace")) {
        return {};
    }
    const QString path = invocation.value("trace");
    if (QFileInfo::exists(path)) {
        return {ExitStatus::BadFile,
                {QStringLiteral("%1: is there already; name another file for the trace, or remove "
                                "this one")
                     .arg(path)}};
    }
    trace = std::make_shared<cMyTrace>();
    if (!trace->open(path)) {
        return {ExitStatus::BadFile,
                {QStringLiteral("%1: cannot be written; nothing was sent").arg(path)}};
    }
    return {};
}

bool isEcho(const QString& line, const QString& reply)
{
    return line.trimmed().compare(reply.trimmed(), Qt::CaseInsensitive) == 0;
}

bool isContent(const QString& line)
{
    const auto record = image::wholeRecord(line.trimmed().toLatin1());
    const bool isEnd = record && record->type == image::EndOfFileRecord;
    return line.startsWith(QLatin1Char(':')) && !isEnd;
}

bool isDataRecord(const QString& line)
{
    const auto record = image::wholeRecord(line.trimmed().toLatin1());
    return record && record->type == image::DataRecord;
}

bool isRecordFor(const QString& line, const QString& reply)
{
    const auto asked = image::wholeRecord(line.trimmed().toLatin1());
    const auto told = image::wholeRecord(reply.trimmed().toLatin1());
    return asked && told && image::isChecksumRight(*told) && told->type == asked->type &&
           told->offset == asked->offset && told->size == asked->size;
}

} // namespace cli

cMyDeviceSession::cMyDeviceSession(cMyConsole& console)
    : m_console(console), m_channel([this] { return haste(); })
{
}

cMyDeviceSession::~cMyDeviceSession() = default;

cMyOutcome cMyDeviceSession::open(const cMyInvocation& invocation)
{
    cMyFoundPort port;
    cMyOutcome outcome =
        invocation.has("emulator") ? startEmulated(port) : cli::choosePort(invocation, port);
    if (outcome.isDone()) {
        outcome = open(port);
    }
    // Not before, as a trace of nothing would be in the way of the next attempt.
    std::shared_ptr<cMyTrace> trace;
    if (outcome.isDone()) {
        outcome = cli::openTrace(invocation, trace);
    }
    setTrace(trace, 0);
    return outcome;
}

cMyOutcome cMyDeviceSession::open(const cMyFoundPort& port)
{
    m_name = port.name;
    m_isGone = false;
    if (!device::openPort(m_port, port.path)) {
        return openFailure(port.path);
    }
    m_answerEnd.setRemainingTime(longestAnswer);
    m_channel.settle(m_port);
    m_console.detail(QStringLiteral("%1: open").arg(m_name));
    return {};
}

cMyOutcome cMyDeviceSession::startEmulated(cMyFoundPort& port)
{
    m_emulated = std::make_unique<cMyEmulatedDevice>();
    port.name = QStringLiteral("emulator");
    port.path = m_emulated->start();
    if (port.path.isEmpty()) {
        return {ExitStatus::NoDevice,
                {QStringLiteral("the system has no pseudo-terminal for a virtual device")}};
    }
    return {};
}

cMyOutcome cMyDeviceSession::openFailure(const QString& path) const
{
    const QSerialPort::SerialPortError error = m_port.error();
    if (error == QSerialPort::DeviceNotFoundError) {
        return {ExitStatus::NoDevice, {QStringLiteral("%1: the device has gone").arg(m_name)}};
    }
    if (error != QSerialPort::PermissionError) {
        return {ExitStatus::NoDevice,
                {QStringLiteral("%1: cannot be used as a serial port: %2")
                     .arg(m_name, m_port.errorString())}};
    }
    return {ExitStatus::NotAllowed,
            {cli::isPortAllowed(path)
                 ? QStringLiteral("%1: the port is in use by another program").arg(m_name)
                 : QStringLiteral("%1: you are not allowed to use the port").arg(m_name),
             QStringLiteral("\"miolkactl doctor\" says more, and what to do")}};
}

void cMyDeviceSession::setTrace(const std::shared_ptr<cMyTrace>& trace, int number)
{
    m_trace = trace;
    m_number = number;
    if (m_trace) {
        m_channel.setListener([this](const QByteArray& line) {
            m_trace->write(cMyTrace::Direction::FromDevice, m_number, line);
        });
    }
}

void cMyDeviceSession::beMorePatient()
{
    m_channel.setPatience(static_cast<int>(std::chrono::milliseconds(longestAnswer).count()));
}

cMyOutcome cMyDeviceSession::exchange(const QString& title, const QStringList& lines,
                                      Answers answers, QStringList* replies)
{
    const int total = static_cast<int>(lines.size());
    m_hasSent = false;
    m_firstWritten.reset();
    cMyOutcome outcome;
    for (int i = 0; i < total && outcome.isDone(); ++i) {
        const QString place = QStringLiteral("%1: %2: line %3 of %4")
                                  .arg(m_name, title.toLower())
                                  .arg(i + 1)
                                  .arg(total);
        QString reply;
        if (cli::isInterrupted()) {
            outcome = cancelled(place);
        } else {
            outcome = converse(place, lines.at(i), answers, reply);
            m_console.progress(title, i + 1, total);
        }
        if (replies != nullptr) {
            replies->append(cli::isDataRecord(lines.at(i)) ? reply : lines.at(i));
        }
    }
    m_console.progress(title, 0, 0);
    tellTraceFailure();
    return outcome;
}

cMyOutcome cMyDeviceSession::converse(const QString& place, const QString& line, Answers answers,
                                      QString& reply)
{
    const bool wasThere = !cli::isHungUp(m_port);
    const bool isAnswered = ask(line, reply);
    const bool isSent = isAnswered || (wasThere && m_port.bytesToWrite() == 0);
    m_hasSent = m_hasSent || isSent;
    m_hasWritten = m_hasWritten || (isSent && answers == Answers::Any && cli::isDataRecord(line));
    return isAnswered ? judge({place, line, reply}, answers) : silence(place, line);
}

bool cMyDeviceSession::ask(const QString& line, QString& reply)
{
    traceLine(line);
    m_answerEnd.setRemainingTime(longestAnswer);
    return m_channel.exchange(m_port, line, reply);
}

cMyLineChannel::Haste cMyDeviceSession::haste()
{
    if (!cli::isInterrupted()) {
        return m_answerEnd.hasExpired() ? cMyLineChannel::Haste::Stop : cMyLineChannel::Haste::None;
    }
    if (!m_interruptionEnd) {
        m_interruptionEnd.emplace(interruptionPatience);
    }
    return m_interruptionEnd->hasExpired() ? cMyLineChannel::Haste::Leave
                                           : cMyLineChannel::Haste::Stop;
}

cMyOutcome cMyDeviceSession::silence(const QString& place, const QString& line)
{
    const QSerialPort::SerialPortError error = m_port.error();
    m_isGone =
        !m_port.isOpen() || (error != QSerialPort::TimeoutError && error != QSerialPort::NoError);
    if (!m_isGone) {
        // Its answer is not waited for: there was none to the line before.
        traceLine(rootLine);
        m_port.write(rootLine.toLatin1());
        m_port.flush();
    }
    m_port.close();
    if (cli::isInterrupted()) {
        return {ExitStatus::Cancelled,
                {(m_isGone ? QStringLiteral("%1: cancelled; the device has gone")
                           : QStringLiteral("%1: cancelled; the device does not answer any more"))
                     .arg(place)}};
    }
    const QString what = m_isGone ? QStringLiteral("%1 (%2): the device has gone")
                                  : QStringLiteral("%1 (%2): the device does not answer");
    return {ExitStatus::Protocol, {what.arg(place, shown(line)), wayOut()}};
}

cMyOutcome cMyDeviceSession::judge(const Reply& reply, Answers answers)
{
    if (isRefusal(reply.text)) {
        return nonsense(reply);
    }
    if (!cli::isContent(reply.line)) {
        return {};
    }
    const bool isAnswer =
        answers == Answers::Records ? cli::isRecordFor(reply.line, reply.text) : isInForm(reply);
    return isAnswer ? cMyOutcome() : nonsense(reply);
}

bool cMyDeviceSession::isInForm(const Reply& reply)
{
    if (!m_firstWritten) {
        m_firstWritten = reply;
    }
    return cli::isEcho(m_firstWritten->line, m_firstWritten->text)
               ? cli::isEcho(reply.line, reply.text)
               : reply.text.trimmed() == m_firstWritten->text.trimmed();
}

cMyOutcome cMyDeviceSession::nonsense(const Reply& reply)
{
    QString left;
    static_cast<void>(ask(rootLine, left));
    m_port.close();
    return {ExitStatus::Protocol,
            {QStringLiteral("%1 (%2): the device answers \"%3\", which is no answer to that")
                 .arg(reply.place, shown(reply.line), shown(reply.text)),
             wayOut()}};
}

cMyOutcome cMyDeviceSession::cancelled(const QString& place)
{
    QString reply;
    const bool isLeft = ask(rootLine, reply) && !isRefusal(reply);
    m_port.close();
    return {
        ExitStatus::Cancelled,
        {isLeft ? QStringLiteral("%1: cancelled; the device is in its root mode").arg(place)
                : QStringLiteral("%1: cancelled; the device does not answer any more").arg(place)}};
}

QString cMyDeviceSession::wayOut() const
{
    // Where something was written, whoever wrote it says how to go on.
    return QStringLiteral("plug the device in anew%1; if that does not help, ask \"miolkactl "
                          "doctor\"")
        .arg(m_hasWritten ? QString() : QStringLiteral(" and repeat"));
}

void cMyDeviceSession::traceLine(const QString& line)
{
    if (m_trace) {
        m_trace->write(cMyTrace::Direction::ToDevice, m_number, line.toLatin1());
    }
}

void cMyDeviceSession::tellTraceFailure()
{
    if (m_trace && m_trace->hasFailed() && !m_isTraceFailureTold) {
        m_isTraceFailureTold = true;
        m_console.error(QStringLiteral("the trace is not complete: its file cannot be written"));
    }
}
