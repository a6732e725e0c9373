// SPDX-FileCopyrightText: 2026 The MIOLKAsoft authors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "cli/plotlabels.h"

#include <QtTest>

#include <algorithm>

class TestPlotLabels : public QObject
{
    Q_OBJECT

private slots:
    void noLabelCoversAnother_data();
    void noLabelCoversAnother();
    void everyRuleKeepsItsFirstMessage();
    void labelsSayWhatWasSaid();
    void longTextsAreCut();
};

namespace {

/// So many rules that each speak every so many seconds, for so long.
QVector<cMySpokenMessage> messages(int rules, int period, int duration)
{
    QVector<cMySpokenMessage> spoken;
    for (int time = 0; time <= duration; time += period) {
        for (int rule = 1; rule <= rules; ++rule) {
            spoken.append({qint64{time} * 1000, 500, rule, QStringLiteral("Depth 5.00 m")});
        }
    }
    return spoken;
}

bool isCovered(const cMyPlotLabel& one, const cMyPlotLabel& other)
{
    return one.lane == other.lane && one.x < other.x + other.width && other.x < one.x + one.width;
}

/// Whether the line down from the one goes through the text of the other.
bool isCrossed(const cMyPlotLabel& line, const cMyPlotLabel& text)
{
    return text.lane < line.lane && line.x > text.x && line.x < text.x + text.width;
}

} // namespace

void TestPlotLabels::noLabelCoversAnother_data()
{
    QTest::addColumn<int>("rules");
    QTest::addColumn<int>("period");
    QTest::addColumn<int>("duration");
    QTest::addColumn<int>("least"); // labels
    QTest::newRow("none") << 0 << 1 << 100 << 0;
    QTest::newRow("one") << 1 << 1000 << 100 << 1;
    QTest::newRow("some far from each other") << 1 << 20 << 100 << 6;
    QTest::newRow("two at a time") << 2 << 10 << 100 << 22;
    QTest::newRow("one all the time") << 1 << 1 << 2700 << 20;
    QTest::newRow("all rules all the time") << 24 << 1 << 2700 << 24;
    QTest::newRow("all rules for a day") << 24 << 100 << 86400 << 24;
}

void TestPlotLabels::noLabelCoversAnother()
{
    QFETCH(int, rules);
    QFETCH(int, period);
    QFETCH(int, duration);
    QFETCH(int, least);
    const auto labels = cli::placeLabels(messages(rules, period, duration), 1000.0 / duration);
    QVERIFY2(labels.size() >= least, qPrintable(QString::number(labels.size())));
    for (const cMyPlotLabel& one : labels) {
        QVERIFY(one.lane >= 0 && one.lane < cli::mostPlotLanes);
        QVERIFY(one.x >= 0 && one.x <= 1000);
        for (const cMyPlotLabel& other : labels) {
            QVERIFY(&one == &other || !isCovered(one, other));
            QVERIFY(!isCrossed(one, other));
        }
    }
}

void TestPlotLabels::everyRuleKeepsItsFirstMessage()
{
    QVector<cMySpokenMessage> spoken = messages(10, 1, 600);
    spoken.append({601000, 0, 24, QStringLiteral("once")});
    const auto labels = cli::placeLabels(spoken, 1000.0 / 601);
    QVERIFY(labels.size() < spoken.size());
    for (int rule = 1; rule <= 10; ++rule) {
        const QString start = QStringLiteral("%1: ").arg(rule);
        const QVector<cMyPlotLabel>::const_iterator first =
            std::find_if(labels.cbegin(), labels.cend(),
                         [&](const cMyPlotLabel& label) { return label.text.startsWith(start); });
        QVERIFY(first != labels.cend());
        QCOMPARE(first->x, 0.0);
    }
    QCOMPARE(labels.last().text, QStringLiteral("24: once"));
}

void TestPlotLabels::labelsSayWhatWasSaid()
{
    const auto labels = cli::placeLabels({{2500, 1234, 7, QStringLiteral("Say\x1B")}}, 10);
    QCOMPARE(labels.size(), 1);
    QCOMPARE(labels.first().text, QStringLiteral("7: Say\\x1b"));
    QCOMPARE(labels.first().x, 25.0);
    QCOMPARE(labels.first().depth, 12.34);
}

void TestPlotLabels::longTextsAreCut()
{
    QCOMPARE(cli::plotText(QStringLiteral("12345"), 5), QStringLiteral("12345"));
    QCOMPARE(cli::plotText(QStringLiteral("123456"), 5), QStringLiteral("1234") + QChar(0x2026));
}

QTEST_GUILESS_MAIN(TestPlotLabels)
#include "test_plotlabels.moc"
