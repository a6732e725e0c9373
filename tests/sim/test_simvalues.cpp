// SPDX-FileCopyrightText: 2026 The MIOLKAsoft authors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "tests/sim/paneltest.h"

#include <QLocale>

namespace simulation = support::simulation;

/// What the page makes of the device's values.
class TestSimValues : public support::PanelTest
{
    Q_OBJECT

private slots:
    void firstTexts_data();
    void firstTexts();
    void captions_data();
    void captions();
    void valuesAreShown_data();
    void valuesAreShown();
    void everyValueFromItsPlace_data();
    void everyValueFromItsPlace();
    void unreadableLines_data();
    void unreadableLines();
    void lastValuesStay();

private:
    [[nodiscard]] QString captionOf(const char* label) const;
};

namespace {

struct Value
{
    const char* label;
    const char* polish;
    const char* english;
    int record;
    int offset;
    bool isHundredths;
    const char* unit;
};

const Value allValues[] = {
    {"simAbsP", "Ciśnienie aktualne", "Absolute pressure", 0, 0, false, " mbar"},
    {"simSurfaceP", "Ciśnienie na powierzchni", "Atmospheric pressure", 1, 0, false, " mbar"},
    {"simDepth", "Głębokość aktualna", "Depth", 4, 0, true, " m"},
    {"simDepthMax", "Głębokość maksymalna", "Depth max", 4, 4, true, " m"},
    {"simDepthAvr", "Głębokość średnia", "Depth avg", 4, 6, true, " m"},
    {"simDiveTime", "Czas nurkowania", "Dive time", 5, 0, false, " s"},
    {"simSurfaceTime", "Czas spędzony na powierzchni", "Surface time", 5, 2, false, " s"},
    {"simDescentTime", "Czas zanurzania", "Descent time", 5, 4, false, " s"},
    {"simBottomTime", "Czas spędzony na dnie", "Bottom time", 5, 6, false, " s"},
    {"simAscentTime", "Czas wynurzania", "Ascent time", 5, 8, false, " s"},
    {"simSpeed", "Prędkość aktualna", "Vertical speed", 6, 0, true, " m/s"},
    {"simSpeedMin", "Prędkość min.", "Ascent speed max", 6, 2, true, " m/s"},
    {"simSpeedMax", "Prędkość max.", "Descent speed max", 6, 4, true, " m/s"},
    {"simSpeedUpAvr", "Prędkość średnia wynurzania", "Ascent speed avg", 6, 6, true, " m/s"},
    {"simSpeedDownAvr", "Prędkość średnia zanurzania", "Descent speed avg", 6, 8, true, " m/s"},
    {"simStoper0", "Stoper 0", "Stopwatch 0", 7, 0, false, " s"},
    {"simTimer1", "Timer 1", "Timer 1", 7, 2, false, " s"},
    {"simTimer2", "Timer 2", "Timer 2", 7, 4, false, " s"},
    {"simTimer3", "Timer 3", "Timer 3", 7, 6, false, " s"},
};

void valueRows()
{
    QTest::addColumn<int>("value");
    int row = 0;
    for (const Value& value : allValues) {
        QTest::newRow(value.label) << row++;
    }
}

/// Eight lines, of which one holds these bytes.
QVector<QString> block(int record, const QVector<unsigned char>& bytes)
{
    QVector<QString> lines;
    for (int i = 0; i < 8; ++i) {
        const auto address = static_cast<unsigned short>(0x0100 + 16 * i);
        const QVector<unsigned char> zeros(16, 0);
        lines.append(cMyHexRecord(address, i == record ? bytes : zeros).toString() +
                     QStringLiteral("\r\n"));
    }
    return lines;
}

} // namespace

/// The label that stands next to the left of a value, on the same line.
QString TestSimValues::captionOf(const char* label) const
{
    const auto placeOf = [this](const QWidget& widget) {
        return QRect(widget.mapTo(m_panel.get(), QPoint()), widget.size());
    };
    const QRect place = placeOf(*child<QLabel>(label));
    const QLabel* nearest = nullptr;
    for (const QLabel* other : m_panel->findChildren<QLabel*>()) {
        const QRect at = placeOf(*other);
        const bool isBeside =
            at.right() < place.left() && qAbs(at.center().y() - place.center().y()) <= 2;
        if (isBeside && (nearest == nullptr || at.right() > placeOf(*nearest).right())) {
            nearest = other;
        }
    }
    return nearest == nullptr ? QString() : nearest->text();
}

void TestSimValues::firstTexts_data()
{
    valueRows();
}

void TestSimValues::firstTexts()
{
    QFETCH(int, value);
    const Value& each = allValues[value];
    QCOMPARE(text(each.label), QString::fromLatin1(each.isHundredths ? "0.00" : "0") + each.unit);
}

void TestSimValues::captions_data()
{
    valueRows();
}

void TestSimValues::captions()
{
    QFETCH(int, value);
    const Value& each = allValues[value];
    QCOMPARE(captionOf(each.label), QString::fromLatin1(each.english));
    showInPolish();
    QCOMPARE(captionOf(each.label), QString::fromUtf8(each.polish));
}

void TestSimValues::valuesAreShown_data()
{
    QTest::addColumn<int>("stored");
    QTest::addColumn<QString>("whole");
    QTest::addColumn<QString>("hundredths");
    QTest::newRow("0") << 0 << "0"
                       << "0.00";
    QTest::newRow("one") << 1 << "1"
                         << "0.01";
    QTest::newRow("minus one") << -1 << "-1"
                               << "-0.01";
    QTest::newRow("100") << 100 << "100"
                         << "1.00";
    QTest::newRow("1234") << 1234 << "1234"
                          << "12.34";
    QTest::newRow("minus a hundred and fifty") << -150 << "-150"
                                               << "-1.50";
    QTest::newRow("greatest") << 32767 << "32767"
                              << "327.67";
    QTest::newRow("least") << -32768 << "-32768"
                           << "-327.68";
}

void TestSimValues::valuesAreShown()
{
    QFETCH(int, stored);
    QFETCH(QString, whole);
    QFETCH(QString, hundredths);
    const QLocale before;
    // A point separates the decimals, whatever the user's locale says.
    QLocale::setDefault(QLocale(QLocale::Polish, QLocale::Poland));
    for (const Value& each : allValues) {
        QVector<unsigned char> bytes(16, 0);
        bytes[each.offset] = static_cast<unsigned char>(stored);
        bytes[each.offset + 1] = static_cast<unsigned char>(stored >> 8);
        m_panel->updateSimValues(block(each.record, bytes));
        QCOMPARE(text(each.label), (each.isHundredths ? hundredths : whole) + each.unit);
        const auto* label = child<QLabel>(each.label);
        QVERIFY(label->fontMetrics().horizontalAdvance(label->text()) <= label->width());
    }
    QLocale::setDefault(before);
}

void TestSimValues::everyValueFromItsPlace_data()
{
    valueRows();
}

void TestSimValues::everyValueFromItsPlace()
{
    QFETCH(int, value);
    // No other bytes than its own two say anything about it.
    const Value& mine = allValues[value];
    QVector<QString> lines;
    for (int record = 0; record < 8; ++record) {
        QVector<unsigned char> bytes(16, 0x55);
        if (record == mine.record) {
            bytes[mine.offset] = 0x39;
            bytes[mine.offset + 1] = 0x30;
        }
        const auto address = static_cast<unsigned short>(0x0100 + 16 * record);
        lines.append(cMyHexRecord(address, bytes).toString());
    }
    m_panel->updateSimValues(lines);
    for (const Value& each : allValues) {
        const int number = &each == &mine ? 12345 : 21845;
        const QString shown =
            each.isHundredths ? QString::number(number / 100.0, 'f', 2) : QString::number(number);
        QCOMPARE(text(each.label), shown + each.unit);
    }
}

void TestSimValues::unreadableLines_data()
{
    QTest::addColumn<QString>("line"); // instead of that for the depths
    QTest::addColumn<QString>("depth");
    // What was read before it, the record of the atmospheric pressure, stays.
    QTest::newRow("garbage") << "garbage"
                             << "10.13 m";
    QTest::newRow("empty") << ""
                           << "10.13 m";
    QTest::newRow("not understood") << "?\r\n"
                                    << "10.13 m";
    QTest::newRow("end record") << ":00000001FF"
                                << "0.00 m";
    QTest::newRow("two bytes") << ":020140001027A6"
                               << "0.00 m";
    QTest::newRow("three bytes") << ":03014000102700A5"
                                 << "100.00 m";
    QTest::newRow("wrong checksum") << ":0301400010270000"
                                    << "100.00 m";
}

void TestSimValues::unreadableLines()
{
    QFETCH(QString, line);
    QFETCH(QString, depth);
    QVector<unsigned char> pressure(16, 0);
    pressure[0] = 0xF5;
    pressure[1] = 0x03;
    QVector<QString> lines = block(1, pressure);
    lines[4] = line;
    m_panel->updateSimValues(lines);
    QCOMPARE(text("simSurfaceP"), QStringLiteral("1013 mbar"));
    QCOMPARE(text("simDepth"), depth);
    // Fewer lines than there are records.
    m_panel->updateSimValues({});
    QCOMPARE(text("simSurfaceP"), QStringLiteral("0 mbar"));
}

void TestSimValues::lastValuesStay()
{
    m_peer->setAnswer([](const QByteArray& line) {
        const bool isDepths = line.startsWith(":100140");
        const QByteArray depths =
            cMyHexRecord(0x0140, QVector<unsigned char>(16, 0x11)).toString().toLatin1();
        return (isDepths ? depths : simulation::answering(1013)(line).trimmed()) + "\r\n";
    });
    button("pbStartSim")->click();
    QVERIFY(support::waitFor([this] { return text("simDepth") == QLatin1String("43.69 m"); }));
    button("pbStopSim")->click();
    QVERIFY(support::waitFor([this] { return isIdle(); }));
    QCOMPARE(text("simDepth"), QStringLiteral("43.69 m"));
    button("pbStartSim")->click();
    QCOMPARE(text("simDepth"), QStringLiteral("43.69 m"));
}

MIOLKA_GUI_TEST_MAIN(TestSimValues)
#include "test_simvalues.moc"
