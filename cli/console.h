// SPDX-FileCopyrightText: 2026 The MIOLKAsoft authors
// SPDX-License-Identifier: GPL-3.0-or-later

#ifndef MIOLKA_CLI_CONSOLE_H
#define MIOLKA_CLI_CONSOLE_H

#include "cli/outcome.h"

#include <QElapsedTimer>
#include <QString>

#include <cstdio>

class QJsonObject;

/// What the program says: results on standard output, everything else on standard error. Texts are
/// printed as UTF-8; whatever a terminal would take for a command is printed in C's escapes, as
/// texts come from files and devices. For one thread.
class cMyConsole
{
public:
    /// How much is told besides results and errors: nothing, what matters, every step.
    enum class Volume { Quiet, Normal, Verbose };

    /// The streams are not owned.
    explicit cMyConsole(std::FILE* in = stdin, std::FILE* out = stdout, std::FILE* err = stderr);
    ~cMyConsole();
    Q_DISABLE_COPY_MOVE(cMyConsole)

    /// Before the first text: how much is told, and whether results are JSON.
    void setVolume(Volume volume) { m_volume = volume; }
    void setJson(bool isJson) { m_isJson = isJson; }

    /// Results are asked for as JSON: call result(QJsonObject) once, and no other result().
    [[nodiscard]] bool isJson() const { return m_isJson; }

    /// One line of results; may be empty.
    void result(const QString& line);
    void result(const QJsonObject& object);

    /// To be called when the command is done: who asked for JSON gets an object in every case, with
    /// the status and what went wrong if there was no other result.
    void finish(cli::ExitStatus status);

    /// Whether results were lost, as on a full disk or where nobody reads them any longer.
    [[nodiscard]] bool hasFailed() const { return m_hasFailed; }

    /// A message; not if quiet was asked for.
    void say(const QString& message);

    /// A message for those who asked for more of them.
    void detail(const QString& message);

    /// What is wrong; always told.
    void error(const QString& message);

    /// Tells the reasons of an outcome as errors, and returns its status.
    cli::ExitStatus tell(const cMyOutcome& outcome);

    /// How far something is: a bar with the time left on a terminal, nothing elsewhere. A total of
    /// 0 or less ends the bar.
    void progress(const QString& title, int done, int total);

    /// Asks on standard error, reads a line of standard input. Only "y" and "yes" mean yes; the
    /// end of the input, or an interruption, means no.
    [[nodiscard]] bool ask(const QString& question);

private:
    void print(std::FILE* stream, const QString& line);
    void printResult(const QByteArray& text);
    void endBar();

    std::FILE* m_in;
    std::FILE* m_out;
    std::FILE* m_err;
    Volume m_volume = Volume::Normal;
    bool m_isJson = false;
    bool m_hasResult = false;
    bool m_hasFailed = false;
    QStringList m_errors;  ///< told so far
    bool m_hasBar = false; ///< the cursor stands behind a bar
    int m_shownPercent = -1;
    QElapsedTimer m_barClock;
};

namespace cli {

/// The text with everything escaped that is not to be printed as it is: control characters,
/// characters that change the direction of a line or end it, and halves of characters.
[[nodiscard]] QString printable(const QString& text);

/// The time that the rest takes if it goes on as before, such as ", 1:05 left"; empty as long as
/// nothing is done. In milliseconds.
[[nodiscard]] QString timeLeft(qint64 elapsed, int done, int total);

} // namespace cli

#endif
