// SPDX-FileCopyrightText: 2026 The MIOLKAsoft authors
// SPDX-License-Identifier: GPL-3.0-or-later

#ifndef MIOLKA_TESTS_CLI_TOOLRUN_H
#define MIOLKA_TESTS_CLI_TOOLRUN_H

#include <QProcess>
#include <QProcessEnvironment>
#include <QStringList>
#include <QtTest>

namespace support {

/// What came of one run of the program.
struct ToolResult
{
    int status = -1; ///< its exit status; -1 if it crashed or never ended
    QString out;
    QString err;
};

/// One process of miolkactl, with its data directory in a place of the test's own.
class ToolRun
{
public:
    /// Longer than any patience with a device, for the whole run.
    static constexpr int patience = 60000;

    explicit ToolRun(const QString& dataDirectory = {})
    {
        QProcessEnvironment environment = QProcessEnvironment::systemEnvironment();
        if (!dataDirectory.isEmpty()) {
            environment.insert(QStringLiteral("XDG_DATA_HOME"), dataDirectory);
        }
        process.setProcessEnvironment(environment);
        process.setProgram(QStringLiteral(MIOLKA_BINARY_DIR "/bin/miolkactl"));
    }

    void start(const QStringList& arguments)
    {
        process.setArguments(arguments);
        process.start();
        process.waitForStarted();
    }

    ToolResult finish()
    {
        process.closeWriteChannel();
        if (!process.waitForFinished(patience)) {
            process.kill();
            process.waitForFinished();
        }
        ToolResult result;
        if (process.exitStatus() == QProcess::NormalExit) {
            result.status = process.exitCode();
        }
        result.out = QString::fromUtf8(process.readAllStandardOutput());
        result.err = QString::fromUtf8(process.readAllStandardError());
        return result;
    }

    /// Runs it to its end; input is what it reads from its standard input.
    ToolResult run(const QStringList& arguments, const QByteArray& input = {})
    {
        start(arguments);
        process.write(input);
        return finish();
    }

    QProcess process;
};

} // namespace support

#endif
