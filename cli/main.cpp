// SPDX-FileCopyrightText: 2026 The MIOLKAsoft authors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "cli/commandtable.h"
#include "cli/console.h"
#include "cli/invocation.h"
#include "cli/system/interruption.h"
#include "cli/system/streams.h"
#include "image/arguments.h"
#include "image/utf8names.h"

#include <QCoreApplication>

namespace {

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

} // namespace

int main(int argc, char* argv[])
{
    cli::prepareStreams();
    cli::catchInterruptions();
    image::useUtf8Names();
    QCoreApplication application(argc, argv);
    QCoreApplication::setApplicationName(QStringLiteral("miolkactl"));
    QCoreApplication::setApplicationVersion(QStringLiteral(MIOLKA_VERSION));
    const cMyCommandLine line = cli::parseCommandLine(image::decodedArguments(argc, argv));
    cMyConsole console;
    cli::ExitStatus status = answer(line, console);
    if (console.hasFailed()) {
        console.error(QStringLiteral("the results could not be written to the standard output"));
        status = status == cli::ExitStatus::Done ? cli::ExitStatus::BadFile : status;
    }
    return static_cast<int>(status);
}
