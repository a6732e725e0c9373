// SPDX-FileCopyrightText: 2026 The MIOLKAsoft authors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "device/miolka.h"

#include "device/replies.h"
#include "device/requests.h"
#include "device/serialline.h"

#include <QLoggingCategory>
#include <QMessageBox>
#include <QScopedValueRollback>
#include <QWidget>

#include <algorithm>
#include <array>
#include <chrono>

using device::LinkMode;
using namespace std::chrono_literals;

namespace {

Q_LOGGING_CATEGORY(link, "miolka.link")

constexpr auto answerPatience = 10s;
constexpr auto cancelPatience = 3s;
constexpr auto expectedAbsence = 5s;

} // namespace

cMyMiolka::cMyMiolka(cMyMemoryArea* area, QWidget* parent)
    : QObject(parent), m_area(area), m_expectedAway(0)
{
    m_settling.setSingleShot(true);
    m_patience.setSingleShot(true);
    m_patience.setTimerType(Qt::PreciseTimer); // others may be up to 5 % early
    connect(&m_port, &QSerialPort::readyRead, this, &cMyMiolka::readSerialPort);
    connect(&m_port, &QSerialPort::errorOccurred, this, &cMyMiolka::portFailed);
    connect(&m_settling, &QTimer::timeout, this, &cMyMiolka::sendFirst);
    connect(&m_patience, &QTimer::timeout, this, &cMyMiolka::patienceEnded);
}

cMyMiolka::~cMyMiolka()
{
    const QSignalBlocker nobodyListens(this);
    end();
}

void cMyMiolka::lendPort()
{
    if (!m_isLent) {
        const QVector<Request> waiting = m_waiting;
        end();
        m_waiting = waiting;
        m_isLent = true;
    }
}

void cMyMiolka::takePortBack()
{
    if (m_isLent) {
        m_isLent = false;
        m_hasLateReplies = true; // of lines that are not known here
        startNext();
    }
}

void cMyMiolka::end()
{
    m_waiting.clear();
    m_isStatusDue = false;
    if (m_stage != Stage::Idle) {
        giveUp();
    }
    if (m_errorBox != nullptr) {
        m_errorBox->close();
    }
    tellHold();
}

void cMyMiolka::setPort(QString portName)
{
    if (isTransferRunning() && m_isCancelled) {
        giveUp();
        QMetaObject::invokeMethod(this, &cMyMiolka::startNext, Qt::QueuedConnection);
    } else if (m_port.isOpen()) {
        lose();
    }
    if (m_portName.isEmpty()) {
        m_portName = std::move(portName);
    }
    readStatus();
}

void cMyMiolka::setListedPorts(const QStringList& names)
{
    m_isUnlisted = !m_portName.isEmpty() && !names.contains(m_portName);
}

void cMyMiolka::readStatus()
{
    if (mustWait() || !m_waiting.isEmpty()) {
        m_isStatusDue = true;
        return;
    }
    start({LinkMode::Status, device::statusRequest()});
}

void cMyMiolka::writeSettings(MemoryType area, QStringList& file)
{
    request(LinkMode::Write, device::writeRequest(area, file));
}

void cMyMiolka::readSettings(MemoryType area, QStringList& file)
{
    request(LinkMode::Read, device::readRequest(area, file));
}

void cMyMiolka::reset(bool /*keepData*/)
{
    command(LinkMode::Reset, device::resetWord);
}

void cMyMiolka::boot()
{
    command(LinkMode::Command, device::bootWord);
}

void cMyMiolka::clearStats()
{
    command(LinkMode::Command, device::clearWord);
}

void cMyMiolka::powerOff()
{
    command(LinkMode::Command, device::offWord);
}

void cMyMiolka::command(LinkMode mode, const char* word)
{
    request(mode, device::commandRequest(word));
}

void cMyMiolka::breakCommunication()
{
    const auto dropped = std::remove_if(m_waiting.begin(), m_waiting.end(),
                                        [](const Request& each) { return isTransfer(each.mode); });
    const bool hasNotBegun = dropped != m_waiting.end();
    m_waiting.erase(dropped, m_waiting.end());
    if (isTransferRunning()) {
        m_patience.start(cancelPatience);
    }
    // What runs before a transfer that has not begun is none of the user's concern.
    m_isCancelled = isTransferRunning() || !hasNotBegun;
    tellHold();
}

void cMyMiolka::cancelDownload() {}

bool cMyMiolka::isTransfer(LinkMode mode)
{
    return mode == LinkMode::Write || mode == LinkMode::Read;
}

bool cMyMiolka::isTransferRunning() const
{
    return m_stage != Stage::Idle && isTransfer(m_mode);
}

bool cMyMiolka::isTransferDue() const
{
    return isTransferRunning() ||
           std::any_of(m_waiting.cbegin(), m_waiting.cend(),
                       [](const Request& each) { return isTransfer(each.mode); });
}

bool cMyMiolka::mustWait() const
{
    return m_isLent || m_stage != Stage::Idle;
}

void cMyMiolka::request(LinkMode mode, const QStringList& lines)
{
    if (isTransferRunning() && m_isCancelled) {
        giveUp();
    }
    if (!mustWait() && m_waiting.isEmpty()) {
        start({mode, lines});
    } else {
        m_waiting.append({mode, lines});
    }
    tellHold();
}

bool cMyMiolka::openSerialPort()
{
    if (!device::openPort(m_port, m_portName)) {
        return false;
    }
    // What lies there now answers nothing that was asked in this exchange. A device that goes at
    // this moment closes the port.
    m_port.clear(QSerialPort::Input);
    return m_port.isOpen();
}

void cMyMiolka::tellOpenFailure(const QString& text)
{
    if (m_errorBox != nullptr && m_errorBox->isVisible()) {
        return;
    }
    // Without exec(): the caller may be a timer that would stand still until the box is closed.
    m_errorBox =
        std::make_unique<QMessageBox>(QMessageBox::Critical, tr("Błąd"), text, QMessageBox::Ok);
    m_errorBox->setTextFormat(Qt::PlainText);
    m_errorBox->setModal(true);
    m_errorBox->show();
}

void cMyMiolka::start(const Request& request)
{
    if (!openSerialPort()) {
        const bool isExpected = request.mode == LinkMode::Status && !m_expectedAway.hasExpired();
        if (!m_portName.isEmpty() && !isExpected) {
            tellOpenFailure(m_port.errorString());
        }
        QMetaObject::invokeMethod(this, &cMyMiolka::startNext, Qt::QueuedConnection);
        return;
    }
    if (isTransfer(request.mode)) {
        m_isCancelled = false;
    }
    m_mode = request.mode;
    m_outgoing = request.lines;
    m_replies.clear();
    m_replies.reserve(m_outgoing.size());
    m_line = 0;
    m_incoming.clear();
    if (m_hasLateReplies) {
        m_hasLateReplies = false;
        m_stage = Stage::Settling;
        m_settlingEnd.setRemainingTime(device::longestSettling);
        m_settling.start(device::quietMoment);
    } else {
        sendFirst();
    }
}

void cMyMiolka::settle()
{
    m_port.readAll();
    m_settling.start(std::min<std::chrono::milliseconds>(
        device::quietMoment, std::chrono::milliseconds(m_settlingEnd.remainingTime())));
}

void cMyMiolka::sendFirst()
{
    m_stage = Stage::Running;
    if (isTransfer(m_mode) && m_isCancelled) {
        giveUp();
        startNext();
        return;
    }
    const std::array<const char*, 3> leaving = {device::resetWord, device::bootWord,
                                                device::offWord};
    if (std::any_of(leaving.cbegin(), leaving.cend(), [this](const char* word) {
            return m_outgoing.constFirst().startsWith(QLatin1String(word));
        })) {
        m_expectedAway.setRemainingTime(expectedAbsence);
    }
    sendLine();
}

void cMyMiolka::sendLine()
{
    const QString line = m_outgoing.at(m_line);
    qCDebug(link) << "Zapisane: \t" << line;
    if (!isTransfer(m_mode)) {
        m_patience.start(answerPatience);
    }
    // Last: a device that has just gone fails the write at once, and that ends the exchange.
    m_port.write(line.toLatin1());
    m_port.flush();
}

void cMyMiolka::readSerialPort()
{
    if (m_isReading) {
        return;
    }
    const QScopedValueRollback<bool> reading(m_isReading, true);
    // What a receiver of our signals does may run the event loop, and more may have arrived in it.
    while (m_port.isOpen() && takeReply()) {
    }
}

bool cMyMiolka::takeReply()
{
    if (m_stage == Stage::Settling) {
        settle();
        return false;
    }
    if (m_isCancelled && (m_port.bytesAvailable() > 0 || m_incoming.hasLine())) {
        giveUp();
        QMetaObject::invokeMethod(this, &cMyMiolka::startNext, Qt::QueuedConnection);
        return false;
    }
    std::array<char, cMyLineAssembler::longestLine> bytes{};
    for (qint64 count = m_port.read(bytes.data(), bytes.size()); count > 0;
         count = m_port.read(bytes.data(), bytes.size())) {
        m_incoming.append(bytes.data(), count);
    }
    const auto line = m_incoming.takeLine();
    if (!line) {
        return false;
    }
    const QString text = QString::fromUtf8(*line);
    qCDebug(link) << "Odczytane:\t" << text;
    if (!line->startsWith(device::noticeMark)) {
        store(text);
    }
    return true;
}

void cMyMiolka::store(const QString& text)
{
    // An echo shares the memory of the line that it answers.
    const QString& sent = m_outgoing.at(m_line);
    m_replies.append(text == sent ? sent : text);
    ++m_line;
    const bool isOneLine = m_mode == LinkMode::Command || m_mode == LinkMode::Reset;
    if (isOneLine || m_line == m_outgoing.size()) {
        complete();
        return;
    }
    sendLine();
    if (m_stage == Stage::Running && isTransfer(m_mode)) {
        emit writeProgress(0, static_cast<int>(m_outgoing.size()),
                           static_cast<int>(m_replies.size()));
    }
}

void cMyMiolka::complete()
{
    const LinkMode mode = m_mode;
    const int count = static_cast<int>(m_outgoing.size());
    closePort();
    if (mode == LinkMode::Read) {
        parseRecBuffer();
    } else if (mode == LinkMode::Status) {
        parseStatus();
    }
    if (m_stage == Stage::Idle) {
        m_outgoing.clear();
        m_replies.clear();
    }
    tellHold();
    QMetaObject::invokeMethod(this, &cMyMiolka::startNext, Qt::QueuedConnection);
    if (isTransfer(mode)) {
        emit writeProgress(0, count, count);
    }
}

bool cMyMiolka::parseRecBuffer()
{
    const QVector<cMyReadRecord> records = device::readRecords(m_replies);
    for (const cMyReadRecord& record : records) {
        emit newDataRead(record.area, record.address, record.data);
    }
    return true;
}

void cMyMiolka::parseStatus()
{
    emit statusChanged(device::statusTexts(m_replies));
}

void cMyMiolka::startNext()
{
    if (mustWait()) {
        return;
    }
    if (!m_waiting.isEmpty()) {
        start(m_waiting.takeFirst());
    } else if (m_isStatusDue) {
        m_isStatusDue = false;
        readStatus();
    }
    tellHold();
}

void cMyMiolka::patienceEnded()
{
    giveUp();
    startNext();
}

void cMyMiolka::giveUp()
{
    m_stage = Stage::Idle; // a failure of this last line ends nothing any more
    qCDebug(link) << "Zapisane: \t" << device::rootWord;
    // Closing alone would drop what was written just before.
    m_port.write(QByteArray(device::rootWord) + device::lineEnd);
    m_port.flush();
    closePort();
    m_hasLateReplies = true;
    m_isCancelled = false;
    m_outgoing.clear();
    m_replies.clear();
    tellHold();
}

void cMyMiolka::lose()
{
    const bool isTransferLost = isTransferRunning();
    closePort();
    m_hasLateReplies = true;
    m_isStatusDue = false;
    m_outgoing.clear();
    m_replies.clear();
    tellHold();
    if (isTransferLost) {
        m_isCancelled = false;
        emit transferLost();
    }
    QMetaObject::invokeMethod(this, &cMyMiolka::startNext, Qt::QueuedConnection);
}

void cMyMiolka::closePort()
{
    m_stage = Stage::Idle;
    m_settling.stop();
    m_patience.stop();
    m_port.close();
}

void cMyMiolka::portFailed(QSerialPort::SerialPortError error)
{
    // Others, such as a failed attempt to open a port, leave a running exchange alone.
    const bool isLoss = error == QSerialPort::ReadError || error == QSerialPort::WriteError ||
                        error == QSerialPort::ResourceError;
    if (!isLoss || !m_port.isOpen()) {
        return;
    }
    if (m_stage == Stage::Idle) {
        m_port.close();
    } else {
        lose();
        // A port may outlive its place in the list for a moment. No change of the list is to come
        // then that would have it opened, and the loss told.
        m_isStatusDue = m_isUnlisted;
    }
}

void cMyMiolka::tellHold()
{
    const QString held = isTransferDue() ? m_portName : QString();
    if (held != m_heldPort) {
        m_heldPort = held;
        emit portHeld(held);
    }
}
