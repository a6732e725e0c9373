// SPDX-FileCopyrightText: 2026 The MIOLKAsoft authors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "emulator/trace.h"
#include "emulator/virtualdevice.h"
#include "emulator/virtualport.h"
#include "sim/simworker.h"

#include <QCoreApplication>
#include <QFile>
#include <QThread>

#include <cstdio>

/// Keeps the lines of a simulation of two cycles with a virtual device: miolka-simulation-trace
/// TRACEFILE. The diver stays at the surface and the device's clock stands still, so that they are
/// always the same.
int main(int argc, char* argv[])
{
    QCoreApplication application(argc, argv);
    constexpr int argumentCount = 2;
    cMyTrace trace;
    if (argc != argumentCount || !trace.open(QFile::decodeName(argv[1]))) {
        std::fputs("usage: miolka-simulation-trace TRACEFILE\n", stderr);
        return 2;
    }
    cMyVirtualDevice device;
    device.setClock([] { return qint64(0); });
    cMyVirtualPort port(&device);
    port.setTrace(&trace, 0);
    if (!port.plug()) {
        std::fputs("the system has no pseudo-terminal for a virtual device\n", stderr);
        return 1;
    }

    cMySimWorker worker;
    QThread thread;
    worker.moveToThread(&thread);
    int cycles = 0; // counted in the worker's thread, which is the only one that looks at it
    QObject::connect(
        &worker, &cMySimWorker::valuesChanged, &worker,
        [&] {
            constexpr int wanted = 2;
            if (++cycles == wanted) {
                worker.stopWork();
            }
        },
        Qt::DirectConnection);
    QObject::connect(&worker, &cMySimWorker::finished, &application,
                     [](bool isLeftInOrder) { QCoreApplication::exit(isLeftInOrder ? 0 : 1); });
    thread.start();
    const QString path = port.path();
    QMetaObject::invokeMethod(
        &worker, [&] { worker.doWork(path, 0); }, Qt::QueuedConnection);
    const int status = QCoreApplication::exec();
    thread.quit();
    thread.wait();
    return trace.hasFailed() ? 1 : status;
}
