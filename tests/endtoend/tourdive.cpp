// SPDX-FileCopyrightText: 2026 The MIOLKAsoft authors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "tests/endtoend/devicework.h"
#include "tests/endtoend/tour.h"

#include <QSet>

#include <algorithm>

using support::MessageRule;

namespace {

// Of those that the device has already, the second waits for greater depths than this dive has.
enum Rule {
    TooDeep = 2,
    DiveTimeAtEnd = 3,
    GreatestDepthAtEnd = 4,
    WhileDescending = 5,
    Added = 13
};

constexpr double distance = 2;     // in m, between two messages of the depth
constexpr double turningDepth = 5; // far from the last multiple, which is then said both ways

const MessageRule depthEveryDistance = {Added, "underwater", nullptr, nullptr,
                                        {},    "Depth",      nullptr, "every distance E"};

const QString indent = QStringLiteral("\n           ");

/// The text of a value among those that were compared.
QString onPage(const QVector<support::ComparedValue>& values, const char* name)
{
    const auto found =
        std::find_if(values.cbegin(), values.cend(), [name](const support::ComparedValue& value) {
            return qstrcmp(value.name, name) == 0;
        });
    return found == values.cend() ? QString() : found->onPage;
}

QString timesUnlikeADive(const QVector<support::ComparedValue>& values)
{
    const auto seconds = [&values](const char* name) {
        return static_cast<int>(support::numberIn(onPage(values, name)));
    };
    const int descent = seconds("descent time");
    const int bottom = seconds("bottom time");
    const int ascent = seconds("ascent time");
    const int whole = seconds("dive time");
    const int cutOff = whole - descent - bottom - ascent; // less than a second of each
    const bool isDive = std::min({descent, bottom, ascent}) > 0 && cutOff >= 0 && cutOff <= 2;
    return isDive ? QString()
                  : QStringLiteral("%1 s, %2 s and %3 s do not make a dive of %4 s")
                        .arg(descent)
                        .arg(bottom)
                        .arg(ascent)
                        .arg(whole);
}

} // namespace

Tour::Outcome Tour::prepareDive()
{
    const auto chooseText = [this](const char* input, const char* text) {
        return m_session.chooseText(QString::fromLatin1(input), QString::fromLatin1(text));
    };
    constexpr int parametersPage = 1;
    constexpr int messagesPage = 2;
    constexpr int ascent = -10;
    constexpr int bottom = 10;
    constexpr int timerSeconds = 60;
    if (!m_session.page(parametersPage)) {
        return {{}, m_session.error()};
    }
    QString error = support::enterDiveParameters(m_session, "10 [Hz]", ascent, bottom, distance);
    const bool isTimerSet =
        m_session.press(QStringLiteral("PgDown"), QStringLiteral("parametersScroll")) &&
        chooseText("tim4Cb1", "at the beginning of dive") &&
        chooseText("tim4Cb4", "Timer 1 - START") &&
        m_session.setValue(QStringLiteral("tim4Sb2"), timerSeconds);
    if (!error.isEmpty() || !isTimerSet || !photograph(QStringLiteral("timer-for-dive")) ||
        !m_session.page(messagesPage)) {
        return {{}, error.isEmpty() ? m_session.error() : error};
    }
    error = support::enterRule(m_session, depthEveryDistance);
    const bool isFormSet = chooseText("par13Cb5", "(caption & value & point & unit)");
    if (error.isEmpty() && !isFormSet) {
        error = m_session.error();
    }
    if (error.isEmpty()) {
        error = support::saveAs(m_session, m_session.path(diveFile()));
    }
    return {QStringLiteral("all three phases, the depth every %1 m, timer 1 for %2 s")
                .arg(distance)
                .arg(timerSeconds),
            error};
}

QString Tour::look(const char* moment)
{
    m_moments.append({moment, support::compareValues(m_session, *m_dive)});
    return support::disagreement(m_moments.last().values);
}

Tour::Outcome Tour::descend()
{
    // As slow as a real one, so that a cycle is a time that means something.
    constexpr int latency = 2;
    constexpr double onTheWay = 2.5;
    m_dive.emplace(m_session);
    QString error =
        m_session.latency(latency) ? support::startDive(m_session, *m_dive) : m_session.error();
    if (error.isEmpty()) {
        error = support::steer(m_session, "pbAdd1", 2);
    }
    if (error.isEmpty()) {
        error = support::waitForDepth(m_session, onTheWay, true);
    }
    if (error.isEmpty()) {
        error = look("descending");
    }
    return {QStringLiteral("all values on the page are those in the device's RAM"), error};
}

Tour::Outcome Tour::stop()
{
    QString error = support::waitForDepth(m_session, turningDepth, true);
    if (error.isEmpty()) {
        error = support::steer(m_session, "pbSet0");
    }
    const bool stays = error.isEmpty() && m_session.waitFor([this] {
        return support::numberIn(m_session.text(QStringLiteral("simBottomTime"))) >= 2;
    });
    if (!stays) {
        return {{}, error.isEmpty() ? QStringLiteral("there is no bottom") : error};
    }
    error = look("stopped");
    return {QStringLiteral("all values on the page are those in the device's RAM"), error};
}

Tour::Outcome Tour::ascend()
{
    QString error = support::steer(m_session, "pbSub1", 2);
    if (error.isEmpty()) {
        error = support::waitForDepth(m_session, 0, false);
    }
    const bool ends = error.isEmpty() && m_session.waitFor([this] {
        m_dive->update();
        return !m_dive->words(DiveTimeAtEnd).isEmpty() &&
               support::numberIn(m_session.text(QStringLiteral("simSurfaceTime"))) >= 1;
    });
    if (!ends) {
        return {{}, error.isEmpty() ? QStringLiteral("the dive does not end") : error};
    }
    error = look("at the surface");
    if (error.isEmpty()) {
        error = timesUnlikeADive(m_moments.last().values);
    }
    return {QStringLiteral("the dive has ended, and all values are those in the device's RAM"),
            error};
}

Tour::Outcome Tour::endDive()
{
    QString error = support::stopDive(m_session, *m_dive);
    if (error.isEmpty()) {
        error = checkMessages();
    }
    if (error.isEmpty() && !m_session.latency(0)) {
        error = m_session.error();
    }
    QString seen = QStringLiteral("#ROOT and #CLEAR were answered; the device said");
    for (const support::SpokenMessage& message : m_dive->spoken()) {
        seen += indent + QStringLiteral("%1 s  %2 m  rule %3: %4")
                             .arg(message.time, 4, 'f', 1)
                             .arg(message.depth, 0, 'f', 2)
                             .arg(message.rule, 2)
                             .arg(message.words);
    }
    return {seen + table(), error};
}

QString Tour::checkMessages()
{
    const auto& surfaced = m_moments.last().values;
    const QStringList expected = {QStringLiteral("Dive time ") + onPage(surfaced, "dive time"),
                                  QStringLiteral("Depth max ") + onPage(surfaced, "depth max")};
    const QStringList atEnd = m_dive->words(DiveTimeAtEnd) + m_dive->words(GreatestDepthAtEnd);
    if (atEnd != expected) {
        return QStringLiteral("at the end it says \"%1\"")
            .arg(atEnd.join(QStringLiteral("\", \"")));
    }
    // Down over two multiples of the distance at least, and back over them.
    QVector<double> depths;
    QSet<int> rules;
    for (const support::SpokenMessage& message : m_dive->spoken()) {
        rules.insert(message.rule);
        if (message.rule == Added) {
            depths += message.depth;
            const QString words =
                QStringLiteral("Depth %1 m").arg(QString::number(message.depth, 'f', 2));
            if (message.words != words) {
                return QStringLiteral("instead of \"%1\" it says \"%2\"").arg(words, message.words);
            }
        }
    }
    const bool isOnTheWay = depths.size() >= 4 && depths.at(0) >= distance &&
                            depths.at(0) < 2 * distance && depths.at(1) >= 2 * distance &&
                            depths.last() <= distance;
    if (!isOnTheWay || !rules.contains(WhileDescending)) {
        return QStringLiteral("of the depth it says only \"%1\"")
            .arg(m_dive->words().join(QStringLiteral("\", \"")));
    }
    return rules.contains(TooDeep) ? QStringLiteral("it was never so deep") : QString();
}

QString Tour::table() const
{
    constexpr int nameWidth = -18;
    constexpr int width = 10;
    const QString empty;
    QString names = QStringLiteral("%1").arg(empty, nameWidth);
    QString sides = names;
    for (const Moment& moment : m_moments) {
        names += QStringLiteral(" |%1").arg(QString::fromLatin1(moment.name), 2 * width + 1);
        sides += QStringLiteral(" |%1 %2")
                     .arg(QStringLiteral("page"), width)
                     .arg(QStringLiteral("RAM"), width);
    }
    QString text = indent + names + indent + sides;
    for (int i = 0; i < m_moments.first().values.size(); ++i) {
        text += indent + QStringLiteral("%1").arg(
                             QString::fromLatin1(m_moments.first().values.at(i).name), nameWidth);
        for (const Moment& moment : m_moments) {
            const support::ComparedValue& value = moment.values.at(i);
            text += QStringLiteral(" |%1 %2").arg(value.onPage, width).arg(value.inRam, width);
        }
    }
    return text;
}
