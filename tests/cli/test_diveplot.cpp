// SPDX-FileCopyrightText: 2026 The MIOLKAsoft authors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "cli/diveplot.h"

#include "cli/divelog.h"
#include "cli/rehearsal.h"
#include "tests/cli/rehearsedrules.h"

#include <QXmlStreamReader>
#include <QtTest>

class TestDivePlot : public QObject
{
    Q_OBJECT

private slots:
    void everythingLiesInsideThePicture_data();
    void everythingLiesInsideThePicture();
    void messagesAreMarkedAndNamed();
    void silenceIsTold();
    void whatHasNoWordsIsCounted();
    void foreignTextIsNoMarkup();
    void timesAreMinutesAndSeconds_data();
    void timesAreMinutesAndSeconds();
};

namespace {

struct Picture
{
    double width = 0;
    double height = 0;
    QStringList texts;
    int dots = 0;
    QVector<QPair<double, double>> places; ///< of everything that has one
};

void addPoints(const QString& points, Picture& picture)
{
    for (const QString& point : points.split(QLatin1Char(' '), Qt::SkipEmptyParts)) {
        const QStringList pair = point.split(QLatin1Char(','));
        picture.places.append({pair.value(0).toDouble(), pair.value(1).toDouble()});
    }
}

Picture read(const QByteArray& svg)
{
    Picture picture;
    QXmlStreamReader xml(svg);
    while (!xml.atEnd()) {
        if (xml.readNext() != QXmlStreamReader::StartElement) {
            continue;
        }
        const QXmlStreamAttributes attributes = xml.attributes();
        const auto number = [&attributes](const char* name) {
            return attributes.value(QLatin1String(name)).toDouble();
        };
        if (xml.name() == QLatin1String("svg")) {
            picture.width = number("width");
            picture.height = number("height");
        } else if (xml.name() == QLatin1String("text")) {
            picture.places.append({number("x"), number("y")});
            picture.texts.append(xml.readElementText());
        } else if (xml.name() == QLatin1String("circle")) {
            picture.places.append({number("cx"), number("cy")});
            ++picture.dots;
        } else if (xml.name() == QLatin1String("line")) {
            picture.places.append({number("x1"), number("y1")});
            picture.places.append({number("x2"), number("y2")});
        }
        addPoints(attributes.value(QLatin1String("points")).toString(), picture);
    }
    if (xml.hasError()) {
        qFatal("no XML: %s", qPrintable(xml.errorString()));
    }
    return picture;
}

QByteArray draw(const support::RuleBuilder& rules, const QString& profile,
                const QString& title = QStringLiteral("Title"))
{
    const cMyRehearsal rehearsal(rules.settings(), cli::builtInProfile(profile));
    return cli::drawDive(rehearsal, title, QStringLiteral("Subtitle"));
}

} // namespace

void TestDivePlot::everythingLiesInsideThePicture_data()
{
    QTest::addColumn<int>("rules");
    QTest::addColumn<QString>("profile");
    for (const QString& profile : cli::builtInProfiles()) {
        for (const int rules : {0, 1, 24}) {
            QTest::newRow(qPrintable(QStringLiteral("%1, %2 rules").arg(profile).arg(rules)))
                << rules << profile;
        }
    }
}

void TestDivePlot::everythingLiesInsideThePicture()
{
    QFETCH(int, rules);
    QFETCH(QString, profile);
    const Picture picture = read(draw(support::TalkativeRules(rules), profile));
    QVERIFY(picture.width > 1000 && picture.width < 1600);
    QVERIFY(picture.height > 400 && picture.height < 1200);
    QVERIFY(picture.places.size() > 20);
    for (const auto& [x, y] : picture.places) {
        QVERIFY2(x >= 0 && x <= picture.width && y >= 0 && y <= picture.height,
                 qPrintable(QStringLiteral("%1, %2").arg(x).arg(y)));
    }
}

void TestDivePlot::messagesAreMarkedAndNamed()
{
    const Picture picture = read(draw(support::ThreeRules(), QStringLiteral("square")));
    // 5, 10 and 15 m down and up, 18 m, and the end.
    const int messages = 8;
    QCOMPARE(picture.dots, 2 * messages); // each has a rim
    QCOMPARE(picture.texts.count(QStringLiteral("2: Attention")), 1);
    QCOMPARE(picture.texts.filter(QStringLiteral("1: Depth")).size(), 6);
    QCOMPARE(picture.texts.filter(QStringLiteral("3: Dive time")).size(), 1);
    for (const char* text :
         {"Title", "Subtitle", "Depth (m)", "Time (min:s)", "0", "20", "45:00"}) {
        QVERIFY2(picture.texts.contains(QLatin1String(text)), text);
    }
    QVERIFY(picture.texts.filter(QStringLiteral("no promise")).size() == 1);
    QVERIFY(picture.texts.filter(QStringLiteral("more only")).isEmpty());
}

void TestDivePlot::silenceIsTold()
{
    const Picture picture = read(draw(support::TalkativeRules(0), QStringLiteral("square")));
    QCOMPARE(picture.dots, 0);
    QVERIFY(picture.texts.contains(QStringLiteral("The device says nothing on this dive.")));
}

void TestDivePlot::whatHasNoWordsIsCounted()
{
    const Picture picture = read(draw(support::TalkativeRules(2), QStringLiteral("freedive")));
    const auto words = picture.texts.filter(QStringLiteral(": Depth")).size();
    const int messages = 2 * 201; // each second from 0 to 200
    QVERIFY(picture.texts.contains(
        QStringLiteral("%1 messages have their words here, and %2 more only their dots.")
            .arg(words)
            .arg(messages - words)));
}

void TestDivePlot::foreignTextIsNoMarkup()
{
    const QString title = QStringLiteral("<b>&amp;\x01\x9B");
    const Picture picture = read(draw(support::TalkativeRules(0), QStringLiteral("square"), title));
    QVERIFY(picture.texts.contains(QStringLiteral("<b>&amp;\\x01\\x9b")));
    const Picture longer =
        read(draw(support::TalkativeRules(0), QStringLiteral("square"), QString(500, 'W')));
    QCOMPARE(longer.texts.first().size(), 80);
}

void TestDivePlot::timesAreMinutesAndSeconds_data()
{
    QTest::addColumn<double>("seconds");
    QTest::addColumn<QString>("text");
    QTest::newRow("zero") << 0.0 << "0:00";
    QTest::newRow("rounded down") << 59.999 << "0:59";
    QTest::newRow("a minute") << 60.0 << "1:00";
    QTest::newRow("a day") << 86400.0 << "1440:00";
}

void TestDivePlot::timesAreMinutesAndSeconds()
{
    QFETCH(double, seconds);
    QFETCH(QString, text);
    QCOMPARE(cli::minutesAndSeconds(seconds), text);
}

QTEST_GUILESS_MAIN(TestDivePlot)
#include "test_diveplot.moc"
