// SPDX-FileCopyrightText: 2026 The MIOLKAsoft authors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "cli/commandtable.h"
#include "cli/console.h"
#include "cli/interruption.h"
#include "cli/invocation.h"
#include "image/filename.h"
#include "image/utf8names.h"

#include <QCoreApplication>

#include <csignal>

#include <fcntl.h>
#include <unistd.h>

namespace {

/// Arguments that are not valid UTF-8 come as text that no file name can hold, by which they are
/// recognised and refused.
QStringList decodedArguments(int argc, char* argv[])
{
    QStringList arguments;
    for (int i = 0; i < argc; ++i) {
        arguments.append(image::decodeFileName(argv[i]));
    }
    return arguments;
}

cli::ExitStatus run(const cMyInvocation& invocation, cMyConsole& console)
{
    if (invocation.has("quiet")) {
        console.setVolume(cMyConsole::Volume::Quiet);
    } else if (invocation.has("verbose")) {
        console.setVolume(cMyConsole::Volume::Verbose);
    }
    console.setJson(invocation.has("json"));
    const cli::ExitStatus status = invocation.command->run(invocation, console);
    console.finish(status);
    return status;
}

void printHelp(const QString& text, cMyConsole& console)
{
    const QStringList lines = text.trimmed().split(QLatin1Char('\n'));
    for (const QString& line : lines) {
        console.result(line);
    }
}

cli::ExitStatus answer(const cMyCommandLine& line, cMyConsole& console)
{
    switch (line.kind) {
    case cMyCommandLine::Kind::Command:
        return run(line.invocation, console);
    case cMyCommandLine::Kind::Help:
        printHelp(line.text, console);
        return cli::ExitStatus::Done;
    case cMyCommandLine::Kind::Version:
        console.result(line.text);
        return cli::ExitStatus::Done;
    case cMyCommandLine::Kind::Error:
        break;
    }
    console.error(line.text);
    return cli::ExitStatus::Usage;
}

/// Where a standard stream is closed, the next file that is opened would take its place and get
/// what is printed. What stands there instead fails as the closed stream would.
void holdClosedStreams()
{
    for (const int stream : {STDIN_FILENO, STDOUT_FILENO, STDERR_FILENO}) {
        if (fcntl(stream, F_GETFD) < 0) {
            open("/dev/null", stream == STDIN_FILENO ? O_WRONLY : O_RDONLY);
        }
    }
}

} // namespace

int main(int argc, char* argv[])
{
    holdClosedStreams();
    // A reader that went away is a failed write, no reason to leave a device in the middle.
    std::signal(SIGPIPE, SIG_IGN);
    cli::catchInterruptions();
    image::useUtf8Names();
    QCoreApplication application(argc, argv);
    QCoreApplication::setApplicationName(QStringLiteral("miolkactl"));
    QCoreApplication::setApplicationVersion(QStringLiteral(MIOLKA_VERSION));
    const cMyCommandLine line = cli::parseCommandLine(decodedArguments(argc, argv));
    cMyConsole console;
    cli::ExitStatus status = answer(line, console);
    if (console.hasFailed()) {
        console.error(QStringLiteral("the results could not be written to the standard output"));
        status = status == cli::ExitStatus::Done ? cli::ExitStatus::BadFile : status;
    }
    return static_cast<int>(status);
}
