// SPDX-FileCopyrightText: 2026 The MIOLKAsoft authors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "tests/support/desktop.h"

#include <QDir>
#include <QElapsedTimer>
#include <QThread>

namespace support {

Desktop::Desktop()
{
    m_server.start(QStringLiteral("Xvfb"),
                   {QStringLiteral("-displayfd"), QStringLiteral("1"), QStringLiteral("-screen"),
                    QStringLiteral("0"), QStringLiteral("1280x900x24"), QStringLiteral("-nolisten"),
                    QStringLiteral("tcp"), QStringLiteral("-noreset")});
    QByteArray number;
    while (!number.endsWith('\n') && m_server.waitForReadyRead()) {
        number += m_server.readAllStandardOutput();
    }
    if (!number.isEmpty()) {
        m_display = QLatin1Char(':') + QString::fromLatin1(number.trimmed());
    }
}

Desktop::~Desktop()
{
    m_server.terminate();
    m_server.waitForFinished();
}

QProcessEnvironment Desktop::environment() const
{
    QProcessEnvironment environment = QProcessEnvironment::systemEnvironment();
    environment.insert(QStringLiteral("DISPLAY"), m_display);
    environment.insert(QStringLiteral("QT_QPA_PLATFORM"), QStringLiteral("xcb"));
    return environment;
}

QString Desktop::run(const QString& program, const QStringList& arguments)
{
    QProcess process;
    process.setProcessEnvironment(environment());
    process.start(program, arguments);
    process.waitForFinished();
    return QString::fromUtf8(process.readAllStandardOutput()).trimmed();
}

QString Desktop::search(const QString& pattern)
{
    return run(QStringLiteral("xdotool"),
               {QStringLiteral("search"), QStringLiteral("--onlyvisible"), QStringLiteral("--name"),
                pattern})
        .section(QLatin1Char('\n'), 0, 0);
}

QString Desktop::focus(const QString& pattern)
{
    constexpr int patience = 10000;
    constexpr unsigned long pause = 50;
    QElapsedTimer clock;
    clock.start();
    while (clock.elapsed() < patience) {
        QString window = search(pattern);
        if (!window.isEmpty()) {
            // A new window may still be claiming the keyboard for itself; let it finish first.
            QThread::msleep(4 * pause);
            run(QStringLiteral("xdotool"), {QStringLiteral("windowfocus"), window});
            QThread::msleep(4 * pause);
            if (run(QStringLiteral("xdotool"), {QStringLiteral("getwindowfocus")}) == window) {
                return window;
            }
        }
        QThread::msleep(pause);
    }
    return {};
}

QString Desktop::title(const QString& window)
{
    return run(QStringLiteral("xdotool"), {QStringLiteral("getwindowname"), window});
}

bool Desktop::isShown(const QString& pattern)
{
    return !search(pattern).isEmpty();
}

void Desktop::press(const QStringList& keys)
{
    run(QStringLiteral("xdotool"), QStringList{QStringLiteral("key")} + keys);
}

void Desktop::type(const QString& text)
{
    run(QStringLiteral("xdotool"),
        {QStringLiteral("type"), QStringLiteral("--delay"), QStringLiteral("2"), text});
}

void Desktop::photograph(const QString& name)
{
    const QDir directory(QStringLiteral(MIOLKA_BINARY_DIR "/artefacts"));
    directory.mkpath(QStringLiteral("."));
    run(QStringLiteral("import"), {QStringLiteral("-window"), QStringLiteral("root"),
                                   directory.filePath(name + QStringLiteral(".png"))});
}

} // namespace support
