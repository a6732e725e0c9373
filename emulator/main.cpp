// SPDX-FileCopyrightText: 2026 The MIOLKAsoft authors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "emulator/emulator.h"
#include "image/filename.h"
#include "image/utf8names.h"

#include <QCoreApplication>

#include <csignal>
#include <cstdio>

namespace {

/// The first argument that is not valid UTF-8; 0 if all are.
int firstMangled(int argc, char* argv[])
{
    for (int i = 1; i < argc; ++i) {
        if (!image::isEncodable(image::decodeFileName(argv[i]))) {
            return i;
        }
    }
    return 0;
}

} // namespace

int main(int argc, char* argv[])
{
    // A reader that went away is a failed write, no reason to leave without tidying up.
    std::signal(SIGPIPE, SIG_IGN);
    // PROGRAM must get its arguments byte for byte, in every locale.
    image::useUtf8Names();
    if (const int number = firstMangled(argc, argv); number != 0) {
        emulator::say(QStringLiteral("argument %1 is not valid UTF-8").arg(number));
        return emulator::exitUsage;
    }
    QCoreApplication application(argc, argv);
    QCoreApplication::setApplicationName(QStringLiteral("miolka-emulator"));
    QCoreApplication::setApplicationVersion(QStringLiteral(MIOLKA_VERSION));
    const cMyEmulatorOptions options = emulator::parseOptions(QCoreApplication::arguments());
    if (options.help) {
        std::fputs(qPrintable(options.helpText), stdout);
        return 0;
    }
    if (options.version) {
        std::puts("miolka-emulator " MIOLKA_VERSION);
        return 0;
    }
    if (!options.error.isEmpty()) {
        emulator::say(options.error);
        return emulator::exitUsage;
    }
    cMyEmulator emulator(options);
    QObject::connect(
        &emulator, &cMyEmulator::finished, &application,
        [](int exitStatus) { QCoreApplication::exit(exitStatus); }, Qt::QueuedConnection);
    const int status = emulator.start();
    return status != 0 ? status : QCoreApplication::exec();
}
