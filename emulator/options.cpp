// SPDX-FileCopyrightText: 2026 The MIOLKAsoft authors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "emulator/options.h"

#include "emulator/statefile.h"

#include <QCommandLineParser>

#include <limits>

namespace emulator {

namespace {

const char* const description =
    "Runs PROGRAM behind virtual Miolka devices that only it sees, or serves bare\n"
    "pseudo-terminals. The devices are modelled from outside; they are no measure of the real\n"
    "device's firmware.";

void describe(QCommandLineParser& parser)
{
    const auto flag = [&parser](const char* name, const char* text) {
        parser.addOption({QString::fromLatin1(name), QString::fromLatin1(text)});
    };
    const auto value = [&parser](const char* name, const char* text, const char* what) {
        parser.addOption(
            {QString::fromLatin1(name), QString::fromLatin1(text), QString::fromLatin1(what)});
    };
    parser.setApplicationDescription(QString::fromLatin1(description));
    parser.setOptionsAfterPositionalArgumentsMode(QCommandLineParser::ParseAsPositionalArguments);
    flag("help", "Show this help.");
    flag("version", "Show the version.");
    flag("pty", "Print the paths of pseudo-terminals and serve them until a signal ends it.");
    value("settings", "Settings in the devices' EEPROM at the start.", "FILE.mio");
    value("state", "Memories of the devices, loaded if there, saved when unplugged and at the end.",
          "FILE");
    value("latency", "Time from a line to its answer.", "MS");
    value("line-time", "Time that passes for the devices with each line, instead of the real time.",
          "MS");
    value("trace", "Write every line to and from the devices there.", "FILE");
    value("fault", "What goes wrong; can be given several times. See miolka-emulator(1).", "SPEC");
    value("seed", "Start of the random numbers for faults.", "N");
    value("control", "Read commands from this named pipe; made if missing.", "FIFO");
    value("count", "Number of devices.", "N");
    flag("unplugged", "Start with nothing plugged in.");
    flag("foreign", "Add a serial port ttyUSB0 that is no Miolka.");
    parser.addPositionalArgument(QStringLiteral("PROGRAM"),
                                 QStringLiteral("What to run behind the mocked ports."),
                                 QStringLiteral("-- PROGRAM"));
    parser.addPositionalArgument(QStringLiteral("ARGS"), QStringLiteral("Its arguments."),
                                 QStringLiteral("[ARGS...]"));
}

/// Reads values by the names of their options; keeps the first thing that is wrong.
class Reader
{
public:
    Reader(const QCommandLineParser& parser, QString& error) : m_parser(parser), m_error(error) {}

    [[nodiscard]] bool flag(const char* name) const
    {
        return m_parser.isSet(QString::fromLatin1(name));
    }

    QString path(const char* name)
    {
        QString text = m_parser.value(QString::fromLatin1(name));
        if (flag(name) && text.isEmpty()) {
            reject(name, text, QStringLiteral("a path"));
        }
        return text;
    }

    template <typename Number>
    void number(const char* name, Number& place, qint64 least, qint64 most)
    {
        if (!flag(name)) {
            return;
        }
        const QString text = m_parser.value(QString::fromLatin1(name));
        bool isNumber = false;
        const qint64 value = text.toLongLong(&isNumber);
        if (isNumber && value >= least && value <= most) {
            place = static_cast<Number>(value);
        } else {
            reject(name, text, QStringLiteral("a number from %1 to %2").arg(least).arg(most));
        }
    }

    void faults(const char* name, cMyFaults& faults)
    {
        const QStringList specs = m_parser.values(QString::fromLatin1(name));
        for (const QString& spec : specs) {
            if (!faults.add(spec)) {
                reject(name, spec, QStringLiteral("a fault"));
            }
        }
    }

private:
    void reject(const char* name, const QString& value, const QString& wanted)
    {
        if (m_error.isEmpty()) {
            m_error = QStringLiteral("--%1: \"%2\" is not %3")
                          .arg(QString::fromLatin1(name), value, wanted);
        }
    }

    const QCommandLineParser& m_parser;
    QString& m_error;
};

QString usageError(const cMyEmulatorOptions& options)
{
    if (options.terminals && !options.program.isEmpty()) {
        return QStringLiteral("--pty: no program can be run behind bare pseudo-terminals");
    }
    if (options.terminals && options.foreign) {
        return QStringLiteral("--foreign: only a program behind mocked ports could tell it apart");
    }
    if (!options.terminals && options.program.isEmpty()) {
        return QStringLiteral("no PROGRAM to run, and no --pty; see --help");
    }
    return {};
}

} // namespace

std::optional<int> parseLatency(const QString& text)
{
    bool isNumber = false;
    const int value = text.toInt(&isNumber);
    const bool isLatency = isNumber && value >= 0 && value <= longestLatency;
    return isLatency ? std::make_optional(value) : std::nullopt;
}

cMyEmulatorOptions parseOptions(const QStringList& arguments)
{
    QCommandLineParser parser;
    describe(parser);
    cMyEmulatorOptions options;
    if (!parser.parse(arguments)) {
        options.error = parser.errorText();
        return options;
    }
    Reader reader(parser, options.error);
    options.help = reader.flag("help");
    options.version = reader.flag("version");
    options.terminals = reader.flag("pty");
    options.unplugged = reader.flag("unplugged");
    options.foreign = reader.flag("foreign");
    options.settings = reader.path("settings");
    options.state = reader.path("state");
    options.trace = reader.path("trace");
    options.control = reader.path("control");
    reader.number("latency", options.latency, 0, longestLatency);
    reader.number("line-time", options.lineTime, 1, longestLineTime);
    reader.number("count", options.count, 1, mostDevices);
    reader.number("seed", options.seed, 0, std::numeric_limits<quint32>::max());
    reader.faults("fault", options.faults);
    options.program = parser.positionalArguments();
    options.helpText = parser.helpText();
    if (options.error.isEmpty()) {
        options.error = usageError(options);
    }
    return options;
}

} // namespace emulator
