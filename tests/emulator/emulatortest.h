// SPDX-FileCopyrightText: 2026 The MIOLKAsoft authors
// SPDX-License-Identifier: GPL-3.0-or-later

#ifndef MIOLKA_TESTS_EMULATOR_EMULATORTEST_H
#define MIOLKA_TESTS_EMULATOR_EMULATORTEST_H

#include <QDir>
#include <QProcess>
#include <QSerialPort>
#include <QTemporaryDir>
#include <QtTest>

#include <csignal>

namespace support {

constexpr int patience = 20000; // ms

/// The words of a text between blanks.
inline QStringList words(const char* text)
{
    return QString::fromLatin1(text).split(QLatin1Char(' '), Qt::SkipEmptyParts);
}

/// The replies of a port to an exchange; what does not come in time is missing.
inline QStringList exchange(const QString& terminal, const QStringList& lines)
{
    QStringList replies;
    QSerialPort port(terminal);
    if (!port.open(QIODevice::ReadWrite)) {
        return {port.errorString()};
    }
    for (const QString& text : lines) {
        port.write(text.toLatin1());
        while (!port.canReadLine()) {
            if (!port.waitForReadyRead(patience)) {
                return replies;
            }
        }
        replies.append(QString::fromLatin1(port.readLine()));
    }
    return replies;
}

/// The emulator as a program of its own, with a directory for what it needs.
class EmulatorTest : public QObject
{
    Q_OBJECT

private slots:
    void init()
    {
        m_directory = std::make_unique<QTemporaryDir>();
        m_emulator = std::make_unique<QProcess>();
        m_environment = QProcessEnvironment::systemEnvironment();
        QDir(m_directory->path()).mkpath(QStringLiteral("tmp"));
        m_environment.insert(QStringLiteral("TMPDIR"), path("tmp"));
    }

    void cleanup()
    {
        if (m_emulator->state() != QProcess::NotRunning) {
            m_emulator->terminate();
            QVERIFY(m_emulator->waitForFinished(patience));
        }
        // What the mocked ports are made of lies in the temporary directory meanwhile.
        QCOMPARE(QDir(path("tmp")).entryList(QDir::AllEntries | QDir::NoDotAndDotDot),
                 QStringList());
    }

protected:
    [[nodiscard]] QString path(const char* name) const
    {
        return m_directory->filePath(QString::fromLatin1(name));
    }

    void start(const QStringList& arguments)
    {
        m_emulator->setProcessEnvironment(m_environment);
        m_emulator->start(QStringLiteral(MIOLKA_EMULATOR), arguments);
        QVERIFY(m_emulator->waitForStarted(patience));
    }

    /// Runs it to its end; its exit status, or -1.
    int run(const QStringList& arguments)
    {
        start(arguments);
        return end();
    }

    /// Waits for the end; the exit status, or -1.
    int end()
    {
        const bool isOver =
            m_emulator->state() == QProcess::NotRunning || m_emulator->waitForFinished(patience);
        return isOver && m_emulator->exitStatus() == QProcess::NormalExit ? m_emulator->exitCode()
                                                                          : -1;
    }

    void kill(int number) const { ::kill(static_cast<pid_t>(m_emulator->processId()), number); }

    /// The next line of the output.
    QByteArray line()
    {
        const QDeadlineTimer deadline(patience);
        while (!m_emulator->canReadLine() && !deadline.hasExpired()) {
            m_emulator->waitForReadyRead(100);
        }
        return m_emulator->readLine().trimmed();
    }

    std::unique_ptr<QTemporaryDir> m_directory;
    std::unique_ptr<QProcess> m_emulator;
    QProcessEnvironment m_environment;
};

} // namespace support

#endif
