// SPDX-FileCopyrightText: 2026 The MIOLKAsoft authors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "emulator/emulator.h"

#include <QCoreApplication>

#include <cstdio>

int main(int argc, char* argv[])
{
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
