// SPDX-FileCopyrightText: 2026 The MIOLKAsoft authors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "device/protocol.h"

#include <QCoreApplication>
#include <QSerialPort>
#include <QSerialPortInfo>
#include <QThread>

#include <algorithm>
#include <cstdio>

// A program that knows nothing of the emulator. Every 100 ms it prints the serial ports that there
// are in a line. With the arguments "send WORD PORT" it first prints what that port answers to the
// word.

namespace {

constexpr int interval = 100; // ms

void print(const QByteArray& line)
{
    std::puts(line.constData());
    std::fflush(stdout);
}

QByteArray portsLine()
{
    QStringList ports;
    const QList<QSerialPortInfo> infos = QSerialPortInfo::availablePorts();
    for (const QSerialPortInfo& info : infos) {
        ports.append(QStringLiteral("%1=%2:%3")
                         .arg(info.portName())
                         .arg(info.vendorIdentifier(), 4, 16, QLatin1Char('0'))
                         .arg(info.productIdentifier(), 4, 16, QLatin1Char('0')));
    }
    ports.sort();
    return "ports " + ports.join(QLatin1Char(' ')).toLatin1();
}

QByteArray answerTo(const QByteArray& word, const QString& name)
{
    constexpr int patience = 2000;
    QSerialPort port(name);
    if (!port.open(QIODevice::ReadWrite)) {
        return "cannot open: " + port.errorString().toUtf8();
    }
    port.write(word + device::lineEnd);
    while (!port.canReadLine()) {
        if (!port.waitForReadyRead(patience)) {
            return "no answer";
        }
    }
    return "answer " + port.readLine().trimmed();
}

} // namespace

int main(int argc, char* argv[])
{
    const QCoreApplication application(argc, argv);
    const QStringList arguments = QCoreApplication::arguments().mid(1);
    if (arguments.value(0) == QLatin1String("send")) {
        print(answerTo(arguments.value(1).toLatin1(), arguments.value(2)));
    }
    while (true) {
        print(portsLine());
        QThread::msleep(interval);
    }
}
