// SPDX-FileCopyrightText: 2026 The MIOLKAsoft authors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "cli/console.h"

#include "cli/interruption.h"

#include <QJsonDocument>
#include <QJsonObject>

#include <cerrno>

#include <unistd.h>

namespace {

constexpr int barWidth = 30;
constexpr int percent = 100;
constexpr int millisecondsPerSecond = 1000;
constexpr int secondsPerMinute = 60;
constexpr char eraseLine[] = "\r\x1B[K";

bool isHarmless(QChar character)
{
    return character.isPrint() || character.isSurrogate();
}

QString timeLeft(qint64 elapsed, int done, int total)
{
    if (done <= 0) {
        return {};
    }
    const qint64 seconds = elapsed * (total - done) / done / millisecondsPerSecond;
    return QStringLiteral(", %1:%2 left")
        .arg(seconds / secondsPerMinute)
        .arg(seconds % secondsPerMinute, 2, 10, QLatin1Char('0'));
}

} // namespace

namespace cli {

QString printable(const QString& text)
{
    QString shown;
    for (const QChar character : text) {
        if (isHarmless(character)) {
            shown += character;
        } else if (character == QLatin1Char('\n')) {
            shown += QLatin1String("\\n");
        } else {
            shown += QStringLiteral("\\x%1").arg(character.unicode(), 2, 16, QLatin1Char('0'));
        }
    }
    return shown;
}

} // namespace cli

cMyConsole::cMyConsole(std::FILE* in, std::FILE* out, std::FILE* err)
    : m_in(in), m_out(out), m_err(err)
{
}

void cMyConsole::result(const QString& line)
{
    endBar();
    print(m_out, line);
}

void cMyConsole::result(const QJsonObject& object)
{
    endBar();
    // Whoever reads JSON undoes its escapes; ours would change the text.
    const QByteArray json = QJsonDocument(object).toJson();
    std::fwrite(json.constData(), 1, static_cast<std::size_t>(json.size()), m_out);
    std::fflush(m_out);
}

void cMyConsole::say(const QString& message)
{
    if (m_volume != Volume::Quiet) {
        endBar();
        print(m_err, message);
    }
}

void cMyConsole::detail(const QString& message)
{
    if (m_volume == Volume::Verbose) {
        endBar();
        print(m_err, message);
    }
}

void cMyConsole::error(const QString& message)
{
    endBar();
    print(m_err, QStringLiteral("miolkactl: ") + message);
}

cli::ExitStatus cMyConsole::tell(const cMyOutcome& outcome)
{
    for (const QString& reason : outcome.reasons) {
        error(reason);
    }
    return outcome.status;
}

void cMyConsole::progress(const QString& title, int done, int total)
{
    if (m_volume == Volume::Quiet || isatty(fileno(m_err)) == 0) {
        return;
    }
    if (total <= 0) {
        endBar();
        return;
    }
    if (!m_hasBar) {
        m_barClock.start();
    }
    const int share = static_cast<int>(qint64{percent} * done / total);
    if (m_hasBar && share == m_shownPercent) {
        return;
    }
    m_hasBar = true;
    m_shownPercent = share;
    const int filled = barWidth * share / percent;
    const QString bar =
        QString(filled, QLatin1Char('#')) + QString(barWidth - filled, QLatin1Char('.'));
    const QString line = QStringLiteral("%1 [%2] %3 %%4")
                             .arg(title, bar)
                             .arg(share, 3)
                             .arg(timeLeft(m_barClock.elapsed(), done, total));
    std::fputs(eraseLine, m_err);
    std::fputs(cli::printable(line).toUtf8().constData(), m_err);
    std::fflush(m_err);
}

bool cMyConsole::ask(const QString& question)
{
    endBar();
    std::fputs((cli::printable(question) + QStringLiteral(" [y/N] ")).toUtf8().constData(), m_err);
    std::fflush(m_err);
    QByteArray answer;
    for (int character = std::fgetc(m_in); character != EOF && character != '\n';
         character = std::fgetc(m_in)) {
        answer.append(static_cast<char>(character));
    }
    const QByteArray word = answer.trimmed().toLower();
    return !cli::isInterrupted() && (word == "y" || word == "yes");
}

void cMyConsole::print(std::FILE* stream, const QString& line)
{
    std::fputs((cli::printable(line) + QLatin1Char('\n')).toUtf8().constData(), stream);
    std::fflush(stream);
}

void cMyConsole::endBar()
{
    if (m_hasBar) {
        std::fputs(eraseLine, m_err);
        m_hasBar = false;
        m_shownPercent = -1;
    }
}
