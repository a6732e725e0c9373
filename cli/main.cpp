// SPDX-FileCopyrightText: 2026 The MIOLKAsoft authors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "cli/commandtable.h"
#include "cli/console.h"
#include "cli/interruption.h"
#include "cli/invocation.h"
#include "image/filename.h"

#include <QCoreApplication>
#include <QTextCodec>

#include <csignal>
#include <cstdio>

namespace {

/// Arguments that are not valid UTF-8 come as text that no file name can hold, so that they are
/// refused where they are used.
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
    return invocation.command->run(invocation, console);
}

} // namespace

int main(int argc, char* argv[])
{
    // A reader that went away is a failed write, no reason to leave a device in the middle.
    std::signal(SIGPIPE, SIG_IGN);
    cli::catchInterruptions();
    QTextCodec::setCodecForLocale(QTextCodec::codecForName("UTF-8"));
    QCoreApplication application(argc, argv);
    QCoreApplication::setApplicationName(QStringLiteral("miolkactl"));
    QCoreApplication::setApplicationVersion(QStringLiteral(MIOLKA_VERSION));
    const cMyCommandLine line = cli::parseCommandLine(decodedArguments(argc, argv));
    cMyConsole console;
    switch (line.kind) {
    case cMyCommandLine::Kind::Command:
        return static_cast<int>(run(line.invocation, console));
    case cMyCommandLine::Kind::Help:
        std::fputs(line.text.toUtf8().constData(), stdout);
        return static_cast<int>(cli::ExitStatus::Done);
    case cMyCommandLine::Kind::Version:
        console.result(line.text);
        return static_cast<int>(cli::ExitStatus::Done);
    case cMyCommandLine::Kind::Error:
        break;
    }
    console.error(line.text);
    return static_cast<int>(cli::ExitStatus::Usage);
}
