// SPDX-FileCopyrightText: 2026 The MIOLKAsoft authors
// SPDX-License-Identifier: GPL-3.0-or-later

#include <QCoreApplication>
#include <QSerialPort>

#include <cstdio>

/// Another program with a serial port of that name: says "open", or why it is not, and keeps the
/// port until its input ends.
int main(int argc, char* argv[])
{
    const QCoreApplication application(argc, argv);
    QSerialPort port(QCoreApplication::arguments().value(1));
    const bool isOpen = port.open(QIODevice::ReadWrite);
    std::puts(isOpen ? "open" : qPrintable(port.errorString()));
    std::fflush(stdout);
    while (std::getchar() != EOF) {
    }
    return isOpen ? 0 : 1;
}
