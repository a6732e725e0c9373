// SPDX-FileCopyrightText: 2026 The MIOLKAsoft authors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "emulator/emulator.h"

#include "emulator/deviceunit.h"
#include "emulator/spokenform.h"
#include "emulator/statefile.h"

#include <QCoreApplication>
#include <QFileInfo>
#include <QTimer>

#include <algorithm>
#include <csignal>
#include <cstdio>

namespace emulator {

void say(const QString& message)
{
    const QByteArray line = "miolka-emulator: " + message.toLocal8Bit() + '\n';
    std::fwrite(line.constData(), 1, static_cast<std::size_t>(line.size()), stderr);
}

} // namespace emulator

using namespace emulator;

cMyEmulator::cMyEmulator(cMyEmulatorOptions options)
    : m_signals({SIGUSR1, SIGUSR2, SIGINT, SIGTERM, SIGHUP}), m_options(std::move(options))
{
    connect(&m_signals, &cMySignalPipe::received, this, &cMyEmulator::handleSignal);
    connect(&m_control, &cMyControlPipe::command, this, &cMyEmulator::command);
    connect(&m_program, qOverload<int, QProcess::ExitStatus>(&QProcess::finished), this,
            &cMyEmulator::programFinished);
    connect(&m_program, &QProcess::errorOccurred, this, [this](QProcess::ProcessError error) {
        if (error == QProcess::FailedToStart) {
            say(QStringLiteral("cannot start %1: %2")
                    .arg(m_options.program.first(), m_program.errorString()));
            finish(exitNotStarted);
        }
    });
}

cMyEmulator::~cMyEmulator() = default;

int cMyEmulator::start()
{
    for (const auto step : {&cMyEmulator::openFiles, &cMyEmulator::makeUsb, &cMyEmulator::makeUnits,
                            &cMyEmulator::addForeign}) {
        const int status = (this->*step)();
        if (status != 0) {
            return status;
        }
    }
    if (!m_options.unplugged) {
        plugAll(true);
    }
    if (m_portsFailed) {
        return exitFailure;
    }
    if (!m_options.terminals) {
        // Behind the event loop's start, so that its end is never missed.
        QTimer::singleShot(0, this, &cMyEmulator::startProgram);
    }
    return 0;
}

int cMyEmulator::openFiles()
{
    if (!m_options.trace.isEmpty() && !m_trace.open(m_options.trace)) {
        say(QStringLiteral("--trace: cannot write %1").arg(m_options.trace));
        return exitUsage;
    }
    if (!m_options.state.isEmpty() && !canWriteState(m_options.state)) {
        say(QStringLiteral("--state: cannot write %1").arg(m_options.state));
        return exitUsage;
    }
    m_trace.setNumbered(m_options.count > 1 || m_options.foreign);
    if (!m_options.control.isEmpty() && !m_control.open(m_options.control)) {
        say(QStringLiteral("--control: cannot use %1 as a named pipe").arg(m_options.control));
        return exitUsage;
    }
    return 0;
}

int cMyEmulator::makeUsb()
{
    if (m_options.terminals) {
        return 0;
    }
    m_usb = std::make_unique<cMyMockedUsb>();
    if (m_usb->isAvailable()) {
        return 0;
    }
    say(m_usb->problem());
    return exitFailure;
}

bool cMyEmulator::startingMemories(QVector<cMyDeviceMemories>& memories) const
{
    if (m_options.state.isEmpty() || !QFileInfo::exists(m_options.state)) {
        return true;
    }
    const auto state = readState(m_options.state);
    memories = state.value_or(QVector<cMyDeviceMemories>());
    return state.has_value();
}

int cMyEmulator::makeUnits()
{
    QVector<cMyDeviceMemories> memories;
    if (!startingMemories(memories)) {
        say(QStringLiteral("--state: %1 does not hold the state of devices").arg(m_options.state));
        return exitUsage;
    }
    for (int number = 0; number < m_options.count; ++number) {
        const quint32 seed = m_options.seed + static_cast<quint32>(number);
        auto unit = std::make_unique<cMyDeviceUnit>(number, seed);
        if (number < memories.size()) {
            unit->device().setMemories(memories.at(number));
        }
        if (!m_options.settings.isEmpty() && !unit->device().loadSettings(m_options.settings)) {
            say(QStringLiteral("--settings: cannot read %1").arg(m_options.settings));
            return exitUsage;
        }
        if (m_options.lineTime > 0) {
            unit->device().setLineTime(m_options.lineTime);
        }
        unit->port().setLatency(m_options.latency);
        unit->port().setFaults(m_options.faults);
        unit->port().setTrace(&m_trace, number);
        connectUnit(*unit);
        m_units.push_back(std::move(unit));
    }
    m_unused = memories.mid(m_options.count);
    return 0;
}

int cMyEmulator::addForeign()
{
    constexpr quint16 vendor = 0x0403;
    constexpr quint16 product = 0x6001;
    if (!m_options.foreign) {
        return 0;
    }
    m_foreign = std::make_unique<cMyVirtualPort>(nullptr);
    m_foreign->setTrace(&m_trace, m_options.count);
    if (m_foreign->plug() &&
        m_usb->add({QStringLiteral("ttyUSB0"), vendor, product, m_foreign->path()})) {
        return 0;
    }
    say(QStringLiteral("cannot make the foreign port"));
    return exitFailure;
}

void cMyEmulator::connectUnit(cMyDeviceUnit& unit)
{
    connect(&unit, &cMyDeviceUnit::appeared, this, &cMyEmulator::appeared);
    connect(&unit, &cMyDeviceUnit::disappeared, this, &cMyEmulator::disappeared);
    connect(&unit, &cMyDeviceUnit::unplugged, this, &cMyEmulator::saveState);
    connect(&unit, &cMyDeviceUnit::failed, this, &cMyEmulator::portFailed);
    connect(&unit.device(), &cMyVirtualDevice::spoke, this,
            [this, number = unit.number()](const cMySpokenMessage& message) {
                printSpoken(number, message);
            });
}

namespace {

QString portName(int number)
{
    return QStringLiteral("ttyACM%1").arg(number);
}

} // namespace

void cMyEmulator::appeared(int number, const QString& terminal, quint16 product)
{
    if (m_usb == nullptr) {
        std::puts(qPrintable(terminal));
        std::fflush(stdout);
    } else if (!m_usb->add({portName(number), device::vendorId, product, terminal})) {
        portFailed(QStringLiteral("cannot make the port %1").arg(portName(number)));
    }
}

void cMyEmulator::portFailed(const QString& why)
{
    say(why);
    m_portsFailed = true;
}

void cMyEmulator::printSpoken(int number, const cMySpokenMessage& message)
{
    const QByteArray text = spokenLine(message).toLocal8Bit();
    m_trace.write(cMyTrace::Direction::Spoken, number, text);
    if (m_options.count > 1) {
        std::printf("%d ", number);
    }
    std::puts(text.constData());
    std::fflush(stdout);
}

void cMyEmulator::disappeared(int number)
{
    if (m_usb != nullptr) {
        m_usb->remove(portName(number));
    }
}

void cMyEmulator::plugAll(bool plugged)
{
    for (const auto& unit : m_units) {
        plugged ? unit->plug() : unit->unplug();
    }
}

void cMyEmulator::handleSignal(int number)
{
    if (number == SIGUSR1 || number == SIGUSR2) {
        plugAll(number == SIGUSR2);
    } else {
        stop();
    }
}

void cMyEmulator::startProgram()
{
    m_program.setProcessChannelMode(QProcess::ForwardedChannels);
    m_program.setInputChannelMode(QProcess::ForwardedInputChannel);
    m_program.setProcessEnvironment(m_usb->environment(QProcessEnvironment::systemEnvironment()));
    m_program.start(m_options.program.first(), m_options.program.mid(1));
}

void cMyEmulator::programFinished(int code, QProcess::ExitStatus status)
{
    constexpr int signalBase = 128; // as shells say it; the code is the signal's number then
    finish(status == QProcess::NormalExit ? code : signalBase + code);
}

void cMyEmulator::stop()
{
    if (m_program.state() == QProcess::NotRunning) {
        finish(0);
        return;
    }
    constexpr int patience = 5000;
    m_program.terminate();
    QTimer::singleShot(patience, &m_program, &QProcess::kill);
}

void cMyEmulator::finish(int exitStatus)
{
    const bool isSaved = saveState();
    const bool isWhole = isTraceWhole();
    emit finished((isSaved && isWhole) || exitStatus != 0 ? exitStatus : exitFailure);
}

bool cMyEmulator::isTraceWhole() const
{
    if (m_trace.hasFailed()) {
        say(QStringLiteral("--trace: cannot write all of %1").arg(m_options.trace));
    }
    return !m_trace.hasFailed();
}

bool cMyEmulator::saveState() const
{
    if (m_options.state.isEmpty()) {
        return true;
    }
    QVector<cMyDeviceMemories> memories;
    memories.reserve(static_cast<int>(m_units.size()) + m_unused.size());
    for (const auto& unit : m_units) {
        memories.append(unit->device().memories());
    }
    memories += m_unused;
    const bool isSaved = writeState(m_options.state, memories);
    if (!isSaved) {
        say(QStringLiteral("--state: cannot write %1").arg(m_options.state));
    }
    return isSaved;
}

void cMyEmulator::command(const QString& line)
{
    if (!obey(line.split(QLatin1Char(' '), Qt::SkipEmptyParts))) {
        say(QStringLiteral("command not understood: %1").arg(line));
    }
}

bool cMyEmulator::obey(const QStringList& words)
{
    const QString& name = words.first();
    const bool hasOneWord = words.size() == 2;
    if (name == QLatin1String("plug") || name == QLatin1String("unplug")) {
        return setPlugged(name == QLatin1String("plug"), words.mid(1));
    }
    if (name == QLatin1String("fault")) {
        return hasOneWord && setFaults(words.at(1));
    }
    if (name == QLatin1String("latency")) {
        return hasOneWord && setLatency(words.at(1));
    }
    if (name == QLatin1String("charge")) {
        return hasOneWord && setCharging(words.at(1));
    }
    return false;
}

bool cMyEmulator::setPlugged(bool plugged, const QStringList& numbers)
{
    if (numbers.isEmpty()) {
        plugAll(plugged);
        return true;
    }
    bool isNumber = false;
    const int number = numbers.first().toInt(&isNumber);
    if (numbers.size() > 1 || !isNumber || number < 0 || number >= m_options.count) {
        return false;
    }
    cMyDeviceUnit& unit = *m_units.at(static_cast<std::size_t>(number));
    plugged ? unit.plug() : unit.unplug();
    return true;
}

bool cMyEmulator::setFaults(const QString& specs)
{
    return std::all_of(m_units.cbegin(), m_units.cend(), [&specs](const auto& unit) {
        cMyFaults faults = unit->port().faults();
        const bool isKnown = faults.add(specs);
        unit->port().setFaults(faults);
        return isKnown;
    });
}

bool cMyEmulator::setLatency(const QString& text)
{
    const auto latency = parseLatency(text);
    if (!latency) {
        return false;
    }
    for (const auto& unit : m_units) {
        unit->port().setLatency(*latency);
    }
    return true;
}

bool cMyEmulator::setCharging(const QString& state)
{
    const bool isCharging = state == QLatin1String("on");
    if (!isCharging && state != QLatin1String("off")) {
        return false;
    }
    for (const auto& unit : m_units) {
        unit->device().setCharging(isCharging);
    }
    return true;
}
