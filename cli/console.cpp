// SPDX-FileCopyrightText: 2026 The MIOLKAsoft authors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "cli/console.h"

#include "cli/system/interruption.h"
#include "cli/system/streams.h"

#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>

namespace {

constexpr int barWidth = 30;
constexpr int percent = 100;
constexpr int millisecondsPerSecond = 1000;
constexpr int secondsPerMinute = 60;
constexpr char eraseLine[] = "\r\x1B[K";

/// Code points; halves of one that stand alone stay as they are.
QVector<uint> charactersOf(const QString& text)
{
    QVector<uint> characters;
    for (int i = 0; i < text.size(); ++i) {
        const QChar unit = text.at(i);
        const bool isPair =
            unit.isHighSurrogate() && i + 1 < text.size() && text.at(i + 1).isLowSurrogate();
        characters.append(isPair ? QChar::surrogateToUcs4(unit, text.at(++i)) : unit.unicode());
    }
    return characters;
}

bool isHarmless(uint character)
{
    const QChar::Category category = QChar::category(character);
    return QChar::isPrint(character) && category != QChar::Separator_Line &&
           category != QChar::Separator_Paragraph;
}

/// As C writes it.
QString escapeOf(uint character)
{
    constexpr uint largestByte = 0xFF;
    constexpr uint largestUnit = 0xFFFF;
    if (character == '\n') {
        return QStringLiteral("\\n");
    }
    if (character <= largestByte) {
        return QStringLiteral("\\x%1").arg(character, 2, 16, QLatin1Char('0'));
    }
    return character <= largestUnit
               ? QStringLiteral("\\u%1").arg(character, 4, 16, QLatin1Char('0'))
               : QStringLiteral("\\U%1").arg(character, 8, 16, QLatin1Char('0'));
}

/// In JSON, where whoever reads it undoes the escapes.
QByteArray printableJson(const QJsonObject& object)
{
    const QString json = QString::fromUtf8(QJsonDocument(object).toJson());
    QString shown;
    const QVector<uint> characters = charactersOf(json);
    for (const uint character : characters) {
        const QString text = QString::fromUcs4(&character, 1);
        if (character == '\n' || isHarmless(character)) {
            shown += text;
            continue;
        }
        for (const QChar unit : text) {
            shown += QStringLiteral("\\u%1").arg(unit.unicode(), 4, 16, QLatin1Char('0'));
        }
    }
    return shown.toUtf8();
}

} // namespace

namespace cli {

QString printable(const QString& text)
{
    QString shown;
    const QVector<uint> characters = charactersOf(text);
    for (const uint character : characters) {
        shown += isHarmless(character) ? QString::fromUcs4(&character, 1) : escapeOf(character);
    }
    return shown;
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

} // namespace cli

cMyConsole::cMyConsole(std::FILE* in, std::FILE* out, std::FILE* err)
    : m_in(in), m_out(out), m_err(err)
{
}

cMyConsole::~cMyConsole()
{
    endBar();
}

void cMyConsole::result(const QString& line)
{
    endBar();
    printResult((cli::printable(line) + QLatin1Char('\n')).toUtf8());
}

void cMyConsole::result(const QJsonObject& object)
{
    endBar();
    printResult(printableJson(object));
}

void cMyConsole::finish(cli::ExitStatus status)
{
    if (m_isJson && !m_hasResult) {
        result(QJsonObject{{QStringLiteral("status"), static_cast<int>(status)},
                           {QStringLiteral("reasons"), QJsonArray::fromStringList(m_errors)}});
    }
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
    m_errors.append(message);
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
    if (m_volume == Volume::Quiet || !cli::isTerminal(m_err)) {
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
                             .arg(cli::timeLeft(m_barClock.elapsed(), done, total));
    const int columns = cli::columnsOf(m_err);
    // A full line would let the cursor go on to the next, where it cannot be erased.
    const QString shown = cli::printable(line).left(columns > 0 ? columns - 1 : -1);
    std::fputs(eraseLine, m_err);
    std::fputs(shown.toUtf8().constData(), m_err);
    std::fflush(m_err);
}

bool cMyConsole::ask(const QString& question)
{
    endBar();
    std::fputs((cli::printable(question) + QStringLiteral(" [y/N] ")).toUtf8().constData(), m_err);
    std::fflush(m_err);
    constexpr int longest = 100; // of an answer that may still mean yes
    QByteArray answer;
    int character = cli::nextCharacter(m_in);
    while (character != EOF && character != '\n') {
        if (answer.size() < longest) {
            answer.append(static_cast<char>(character));
        }
        character = cli::nextCharacter(m_in);
    }
    if (character == EOF) {
        // Nobody ended the line of the question.
        std::fputc('\n', m_err);
        std::fflush(m_err);
    }
    const QByteArray word = answer.trimmed().toLower();
    return !cli::isInterrupted() && (word == "y" || word == "yes");
}

void cMyConsole::print(std::FILE* stream, const QString& line)
{
    std::fputs((cli::printable(line) + QLatin1Char('\n')).toUtf8().constData(), stream);
    std::fflush(stream);
}

void cMyConsole::printResult(const QByteArray& text)
{
    m_hasResult = true;
    const auto size = static_cast<std::size_t>(text.size());
    const bool isWritten = std::fwrite(text.constData(), 1, size, m_out) == size;
    m_hasFailed = std::fflush(m_out) != 0 || !isWritten || m_hasFailed;
}

void cMyConsole::endBar()
{
    if (m_hasBar) {
        std::fputs(eraseLine, m_err);
        std::fflush(m_err);
        m_hasBar = false;
        m_shownPercent = -1;
    }
}
