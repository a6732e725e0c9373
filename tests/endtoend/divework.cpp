// SPDX-FileCopyrightText: 2026 The MIOLKAsoft authors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "tests/endtoend/divework.h"

#include "tests/endtoend/exchanges.h"
#include "tests/endtoend/session.h"

#include <algorithm>
#include <cstdlib>

namespace support {

namespace {

constexpr int simulationPage = 3;

const QString startButton = QStringLiteral("pbStartSim");
const QString stopButton = QStringLiteral("pbStopSim");

/// A label on the page, and the measured value that it stands for.
struct Shown
{
    const char* name;
    const char* label;
    std::size_t number;
    int decimals;
    const char* unit;
};

constexpr Shown everyShown[] = {
    {"absolute pressure", "simAbsP", 0, 0, "mbar"},
    {"surface pressure", "simSurfaceP", 8, 0, "mbar"},
    {"depth", "simDepth", 32, 2, "m"},
    {"depth max", "simDepthMax", 34, 2, "m"},
    {"depth avg", "simDepthAvr", 35, 2, "m"},
    {"dive time", "simDiveTime", 40, 0, "s"},
    {"surface time", "simSurfaceTime", 41, 0, "s"},
    {"descent time", "simDescentTime", 42, 0, "s"},
    {"bottom time", "simBottomTime", 43, 0, "s"},
    {"ascent time", "simAscentTime", 44, 0, "s"},
    {"vertical speed", "simSpeed", 48, 2, "m/s"},
    {"ascent speed max", "simSpeedMin", 49, 2, "m/s"},
    {"descent speed max", "simSpeedMax", 50, 2, "m/s"},
    {"ascent speed avg", "simSpeedUpAvr", 51, 2, "m/s"},
    {"descent speed avg", "simSpeedDownAvr", 52, 2, "m/s"},
    {"stopwatch 0", "simStoper0", 56, 0, "s"},
    {"timer 1", "simTimer1", 57, 0, "s"},
    {"timer 2", "simTimer2", 58, 0, "s"},
    {"timer 3", "simTimer3", 59, 0, "s"},
};

QString shownAs(const Shown& shown, const RamValues& values)
{
    constexpr int hundred = 100;
    const int stored = values.at(shown.number);
    QString number = QString::number(stored);
    if (shown.decimals > 0) {
        number = QStringLiteral("%1%2.%3")
                     .arg(stored < 0 ? QStringLiteral("-") : QString())
                     .arg(std::abs(stored) / hundred)
                     .arg(std::abs(stored) % hundred, shown.decimals, 10, QLatin1Char('0'));
    }
    return number + QLatin1Char(' ') + QString::fromLatin1(shown.unit);
}

QString refusal(const Session& session)
{
    return session.error().isEmpty() ? QStringLiteral("it was refused") : session.error();
}

} // namespace

QString enterRule(Session& session, const MessageRule& rule)
{
    const QString row =
        QStringLiteral("par%1").arg(rule.number, 2, 10, QLatin1Char('0')) + QStringLiteral("%1");
    const auto choose = [&](const char* input, const char* text) {
        return text == nullptr ||
               session.chooseText(row.arg(QString::fromLatin1(input)), QString::fromLatin1(text));
    };
    const bool isEntered =
        choose("Cb1", rule.when) && choose("Cb2", rule.value) && choose("Cb3", rule.sign) &&
        (!rule.threshold || session.setValue(row.arg(QStringLiteral("Sb1")), *rule.threshold)) &&
        choose("Cb4", rule.message) && choose("Cb5", rule.form) && choose("Cb6", rule.repetition);
    return isEntered ? QString() : refusal(session);
}

QString enterDiveParameters(Session& session, const char* rate, int ascentSpeed, int bottomSpeed,
                            double distance)
{
    const bool isEntered =
        session.chooseText(QStringLiteral("par1Cb"), QString::fromLatin1(rate)) &&
        session.setValue(QStringLiteral("par6Sb"), ascentSpeed) &&
        session.setValue(QStringLiteral("par7Sb"), bottomSpeed) &&
        session.setValue(QStringLiteral("lDystansE"), distance);
    return isEntered ? QString() : refusal(session);
}

bool isIdle(Session& session)
{
    return session.isEnabled(stopButton) == std::make_optional(false) &&
           session.isEnabled(QStringLiteral("menuBar")) == std::make_optional(true);
}

QString startDive(Session& session, DiveLog& log)
{
    if (!session.page(simulationPage) || !session.click(startButton)) {
        return refusal(session);
    }
    const auto before = log.cycles().size();
    const bool begins = session.waitFor([&] {
        log.update();
        return log.cycles().size() > before + 1;
    });
    return begins ? QString() : QStringLiteral("the simulation does not begin");
}

QString stopDive(Session& session, DiveLog& log)
{
    if (!session.click(stopButton)) {
        return refusal(session);
    }
    if (!session.waitFor([&session] { return isIdle(session); })) {
        return QStringLiteral("the simulation does not end");
    }
    log.update();
    return log.hasTakenLeave()
               ? QString()
               : QStringLiteral("the last lines to the device were: ") +
                     QStringList(log.sent().mid(log.sent().size() - 2)).join(QLatin1Char(' '));
}

QString steer(Session& session, const char* button, int times)
{
    for (int i = 0; i < times; ++i) {
        if (!session.click(QString::fromLatin1(button))) {
            return refusal(session);
        }
    }
    return {};
}

double numberIn(const QString& text)
{
    return text.section(QLatin1Char(' '), 0, 0).toDouble();
}

QString waitForDepth(Session& session, double depth, bool isDescent)
{
    const QString label = QStringLiteral("simDepth");
    const bool isThere = session.waitFor([&] {
        const double shown = numberIn(session.text(label));
        return isDescent ? shown >= depth : shown <= depth;
    });
    return isThere ? QString() : QStringLiteral("the depth stays at ") + session.text(label);
}

QString checkLock(Session& session, bool isLocked)
{
    // Who cannot reach a menu or the tool bar has none of the actions either.
    for (const char* widget :
         {"menuBar", "mainToolBar", "tabStart", "tabTimery", "tabKomunikaty", "portSelect"}) {
        const QString name = QString::fromLatin1(widget);
        if (session.isEnabled(name) != std::make_optional(!isLocked)) {
            return name +
                   (isLocked ? QStringLiteral(" is not locked") : QStringLiteral(" is not free"));
        }
    }
    return {};
}

QString returnToStartPage(Session& session)
{
    constexpr int startPage = 0;
    DiveLog log(session);
    if (!session.page(startPage)) {
        return session.error();
    }
    const int wanted = linesOf(Operation::Status);
    session.waitFor([&] {
        log.update();
        return log.sent().size() >= wanted && log.isAnswered();
    });
    return log.sent().size() == wanted
               ? QString()
               : QStringLiteral("%1 lines were sent for the status").arg(log.sent().size());
}

QString diveShortly(Session& session)
{
    DiveLog log(session);
    const QString error = startDive(session, log);
    return error.isEmpty() ? stopDive(session, log) : error;
}

QVector<ComparedValue> compareValues(Session& session, DiveLog& log)
{
    QVector<ComparedValue> compared;
    for (const Shown& shown : everyShown) {
        log.update();
        // The page may still show the cycle before the last.
        const int first = std::max(0, static_cast<int>(log.cycles().size()) - 2);
        const QString onPage = session.text(QString::fromLatin1(shown.label));
        log.update();
        const auto matches = [&](const RamValues& values) {
            return shownAs(shown, values) == onPage;
        };
        const auto& cycles = log.cycles();
        const QString inRam = cycles.isEmpty() ? QString() : shownAs(shown, cycles.last());
        compared.append({shown.name, onPage, inRam,
                         std::any_of(cycles.cbegin() + first, cycles.cend(), matches)});
    }
    return compared;
}

QString disagreement(const QVector<ComparedValue>& values)
{
    QStringList texts;
    for (const ComparedValue& value : values) {
        if (!value.agrees) {
            texts += QStringLiteral("%1: the page shows \"%2\", in RAM is \"%3\"")
                         .arg(QString::fromLatin1(value.name), value.onPage, value.inRam);
        }
    }
    return texts.join(QStringLiteral("; "));
}

} // namespace support
