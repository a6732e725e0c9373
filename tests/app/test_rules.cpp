// SPDX-FileCopyrightText: 2026 The MIOLKAsoft authors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "tests/support/offeredimage.h"
#include "tests/support/windowtest.h"

#include <QComboBox>
#include <QDoubleSpinBox>
#include <QGridLayout>
#include <QLabel>

using support::child;

/// The timer rules and the message rules.
class TestRules : public QObject
{
    Q_OBJECT

private slots:
    void init();
    void theGridOfTimerRules();
    void theGridOfMessageRules();
    void theDefaultRules();
    void aWrittenRuleIsShown_data();
    void aWrittenRuleIsShown();
    void aRuleMadeByHand();
    void aTimerRuleMadeByHand();
    void anEditWritesItsFieldOnly();
    void changingTheMeasuredValueResetsTheThreshold();
    void everyRecordIsRestored();
    void unknownBytesStayUntilAChoiceIsMade_data();
    void unknownBytesStayUntilAChoiceIsMade();
    void neverIsQuieter();
    void headings();

private:
    [[nodiscard]] QComboBox* choice(const QString& name) const
    {
        return child<QComboBox>(*m_window, name);
    }

    [[nodiscard]] QDoubleSpinBox* number(const QString& name) const
    {
        return child<QDoubleSpinBox>(*m_window, name);
    }

    void choose(const char* name, const char* label) const
    {
        QComboBox* box = choice(QString::fromLatin1(name));
        box->setCurrentIndex(box->findText(QString::fromLatin1(label)));
    }

    /// A row as a person reads it.
    [[nodiscard]] QString read(const QGridLayout& grid, int row) const;

    [[nodiscard]] QByteArray record(int address) const
    {
        return support::imageOf(*m_window).mid(address, 8).toHex(' ').toUpper();
    }

    void load(int address, const char* hex) const
    {
        QByteArray image = support::templateImage();
        support::load(*m_window, image.replace(address, 8, QByteArray::fromHex(hex)));
    }

    std::unique_ptr<MainWindow> m_window;
};

namespace {

/// What a row is made of: the class and the name of each cell.
QStringList cellsOf(const QGridLayout& grid, int row)
{
    QStringList cells;
    for (int column = 0; column < grid.columnCount(); ++column) {
        const QWidget* widget = grid.itemAtPosition(row, column)->widget();
        cells << QString::fromLatin1(widget->metaObject()->className()) + widget->objectName();
    }
    return cells;
}

} // namespace

void TestRules::init()
{
    if (m_window == nullptr) {
        m_window = std::make_unique<MainWindow>();
    }
    support::load(*m_window, support::templateImage());
}

QString TestRules::read(const QGridLayout& grid, int row) const
{
    QStringList texts;
    for (int column = 0; column < grid.columnCount(); ++column) {
        const QWidget* widget = grid.itemAtPosition(row, column)->widget();
        QString text =
            widget->property(widget->inherits("QComboBox") ? "currentText" : "text").toString();
        if (!widget->isEnabled()) {
            text = QLatin1Char('~') + text;
        }
        texts.append(text);
    }
    return texts.join(QLatin1Char('|'));
}

void TestRules::theGridOfTimerRules()
{
    const auto* grid = child<QGridLayout>(*m_window, "timLayout");
    QCOMPARE(grid->rowCount(), 8);
    QCOMPARE(grid->columnCount(), 7);
    for (int row = 0; row < 8; ++row) {
        const QStringList cells = cellsOf(*grid, row);
        const QString tim = QStringLiteral("tim%1").arg(row + 1);
        QCOMPARE(cells,
                 (QStringList{QStringLiteral("QLabel"), "cMyComboBoxW2" + tim + "Cb1",
                              "cMyComboBoxW6" + tim + "Cb2", "cMyComboBoxW2" + tim + "Cb3",
                              "cMyDoubleSpinBoxInt" + tim + "Sb1", "cMyComboBoxW2" + tim + "Cb4",
                              "cMyDoubleSpinBoxInt" + tim + "Sb2"}));
    }
}

void TestRules::theGridOfMessageRules()
{
    const auto* grid = child<QGridLayout>(*m_window, "msgLayout");
    QCOMPARE(grid->rowCount(), 24);
    QCOMPARE(grid->columnCount(), 9);
    for (int row = 0; row < 24; ++row) {
        const QStringList cells = cellsOf(*grid, row);
        const QString par = QStringLiteral("par%1").arg(row + 1, 2, 10, QLatin1Char('0'));
        QCOMPARE(cells, (QStringList{QStringLiteral("QLabel"), "cMyComboBoxW2" + par + "Cb1",
                                     "cMyComboBoxW6" + par + "Cb2", "cMyComboBoxW2" + par + "Cb3",
                                     "cMyDoubleSpinBoxInt" + par + "Sb1", QStringLiteral("QLabel"),
                                     "cMyComboBoxW2" + par + "Cb4", "cMyComboBoxW2" + par + "Cb5",
                                     "cMyComboBoxW2" + par + "Cb6"}));
    }
}

void TestRules::theDefaultRules()
{
    const auto* timers = child<QGridLayout>(*m_window, "timLayout");
    const auto* messages = child<QGridLayout>(*m_window, "msgLayout");
    for (int row = 0; row < 8; ++row) {
        QCOMPARE(read(*timers, row),
                 QStringLiteral("%1|never|Regardless of any value|>=|~0 |Do nothing|0 [s]")
                     .arg(row + 1));
    }
    for (int row = 0; row < 24; ++row) {
        QCOMPARE(read(*messages, row),
                 QStringLiteral("%1|never|Regardless of any value|>=|~0 |say|Do nothing|"
                                "(value & point)|only once")
                     .arg(row + 1));
    }
}

void TestRules::aWrittenRuleIsShown_data()
{
    QTest::addColumn<int>("address");
    QTest::addColumn<QByteArray>("bytes");
    QTest::addColumn<QString>("shown");
    const auto row = [](const char* name, int address, const char* bytes, const char* shown) {
        QTest::newRow(name) << address << QByteArray(bytes) << QString::fromUtf8(shown);
    };
    row("temperature", 256, "00 10 00 7D 00 80 E8 03",
        "1|underwater|Temperature|>=|12.5 [°C]|Stopwatch 0 - START|1000 [s]");
    row("fastest ascent", 312, "06 30 01 00 80 93 FF FF",
        "8|during ascent|Vertical speed|<=|-327.68 [m/s]|Timer 3 - Continue|65535 [s]");
    row("full battery", 320, "09 1F 00 00 80 1F 03 00",
        "1|at the beginning of charging|Battery level|>=|100.00 [%]|say|Battery level|"
        "(value & unit)|only once");
    row("depth every period", 504, "00 20 00 F4 01 20 01 01",
        "24|underwater|Depth|>=|5.00 [m]|say|Depth|(value & point & unit)|every period A");
    row("off the battery's grid", 328, "FF 1F 01 01 00 F8 05 FF",
        "2|anytime|Battery level|<=|0.00 [%]|say|Custom message 8|"
        "(caption & value & point & unit)|still");
    row("threshold out of range", 328, "FF 20 01 FF FF F8 05 FF",
        "2|anytime|Depth|<=|0.00 [m]|say|Custom message 8|(caption & value & point & unit)|still");
    row("threshold beside no value", 328, "FF FF 01 34 12 F8 05 FF",
        "2|anytime|Regardless of any value|<=|~0 |say|Custom message 8|"
        "(caption & value & point & unit)|still");
}

void TestRules::aWrittenRuleIsShown()
{
    QFETCH(int, address);
    QFETCH(QByteArray, bytes);
    load(address, bytes);
    const bool isTimer = address < 320;
    const auto* grid = child<QGridLayout>(*m_window, isTimer ? "timLayout" : "msgLayout");
    QTEST(read(*grid, (address - (isTimer ? 256 : 320)) / 8), "shown");
    QCOMPARE(record(address), bytes);
}

void TestRules::aRuleMadeByHand()
{
    m_window->show();
    choose("par01Cb1", "underwater");
    choose("par01Cb2", "Depth");
    choose("par01Cb3", ">=");
    QDoubleSpinBox* threshold = number(QStringLiteral("par01Sb1"));
    threshold->setFocus();
    threshold->selectAll();
    QTest::keyClicks(threshold, QStringLiteral("5.00"));
    choose("par01Cb4", "Depth");
    choose("par01Cb5", "(value & point & unit)");
    choose("par01Cb6", "every period A");
    QCOMPARE(record(320), QByteArray("00 20 00 F4 01 20 01 01"));
}

void TestRules::aTimerRuleMadeByHand()
{
    choose("tim8Cb1", "at the beginning of dive");
    choose("tim8Cb2", "Temperature min");
    choose("tim8Cb3", "<=");
    number(QStringLiteral("tim8Sb1"))->setValue(-1.5);
    choose("tim8Cb4", "Timer 1 - STOP");
    number(QStringLiteral("tim8Sb2"))->setValue(65535);
    QCOMPARE(record(312), QByteArray("02 11 01 F1 FF 89 FF FF"));
}

void TestRules::anEditWritesItsFieldOnly()
{
    for (const cMySettingsField& field : editor::settingsFields()) {
        if (!field.name.contains(QLatin1String("Rule"))) {
            continue;
        }
        // tim3Cb4, par07Sb1: by the order of the inputs in a rule.
        const bool isTimer = field.name.startsWith(QLatin1String("timer"));
        const int rule = field.name.mid(isTimer ? 9 : 11, 2).toInt();
        const QString member = field.name.section(QLatin1Char('.'), 1);
        static const QHash<QString, QString> names{
            {QStringLiteral("condition"), QStringLiteral("Cb1")},
            {QStringLiteral("measuredValue"), QStringLiteral("Cb2")},
            {QStringLiteral("comparison"), QStringLiteral("Cb3")},
            {QStringLiteral("threshold"), QStringLiteral("Sb1")},
            {QStringLiteral("action"), QStringLiteral("Cb4")},
            {QStringLiteral("time"), QStringLiteral("Sb2")},
            {QStringLiteral("message"), QStringLiteral("Cb4")},
            {QStringLiteral("form"), QStringLiteral("Cb5")},
            {QStringLiteral("repetition"), QStringLiteral("Cb6")}};
        const QString name =
            (isTimer ? QStringLiteral("tim%1").arg(rule)
                     : QStringLiteral("par%1").arg(rule, 2, 10, QLatin1Char('0'))) +
            names.value(member);
        if (member == QLatin1String("threshold")) {
            choice(name.left(name.size() - 3) + QStringLiteral("Cb2"))->setCurrentIndex(1);
        }
        const QByteArray before = support::imageOf(*m_window);
        if (name.contains(QLatin1String("Sb"))) {
            number(name)->setValue(1234);
        } else {
            choice(name)->setCurrentIndex((choice(name)->currentIndex() + 1) %
                                          choice(name)->count());
        }
        const QByteArray after = support::imageOf(*m_window);
        QVERIFY2(before != after, qPrintable(field.name));
        const int last = field.address + field.width;
        QCOMPARE(before.left(field.address), after.left(field.address));
        QCOMPARE(before.mid(last), after.mid(last));
    }
}

void TestRules::changingTheMeasuredValueResetsTheThreshold()
{
    load(320, "00 20 00 F4 01 20 01 01");
    choose("par01Cb2", "Dive time");
    QCOMPARE(record(320), QByteArray("00 28 00 00 00 20 01 01"));
    const QDoubleSpinBox* threshold = number(QStringLiteral("par01Sb1"));
    QCOMPARE(threshold->decimals(), 0);
    QCOMPARE(threshold->suffix(), QStringLiteral(" [s]"));
    QCOMPARE(threshold->minimum(), 0.0);
    QCOMPARE(threshold->maximum(), 32767.0);
}

void TestRules::everyRecordIsRestored()
{
    QRandomGenerator random(3004);
    for (int round = 0; round < 50; ++round) {
        QByteArray image = support::templateImage();
        image.replace(256, 256, support::randomImage(random).left(256));
        support::load(*m_window, image);
        QCOMPARE(support::differences(image, support::imageOf(*m_window)), QString());
    }
}

void TestRules::unknownBytesStayUntilAChoiceIsMade_data()
{
    QTest::addColumn<int>("address");
    QTest::addColumn<QByteArray>("known");
    QTest::addColumn<QString>("last"); // the input, its choice and what is stored then
    QTest::addColumn<QString>("choice");
    QTest::addColumn<QByteArray>("afterIt");
    QTest::addColumn<QString>("measured"); // the input of the measured value
    QTest::addColumn<QByteArray>("afterBoth");
    QTest::newRow("message") << 320 << QByteArray("00 20 00 F4 01 20 01 01") << "par01Cb4"
                             << "Surface protocol" << QByteArray("63 64 65 66 67 E4 69 6A")
                             << "par01Cb2" << QByteArray("63 3B 65 00 00 E4 69 6A");
    QTest::newRow("timer") << 256 << QByteArray("00 20 00 F4 01 80 E8 03") << "tim1Cb4"
                           << "Timer 1 - STOP" << QByteArray("63 64 65 66 67 89 69 6A") << "tim1Cb2"
                           << QByteArray("63 3B 65 00 00 89 69 6A");
}

void TestRules::unknownBytesStayUntilAChoiceIsMade()
{
    QFETCH(int, address);
    QFETCH(QByteArray, known);
    QFETCH(QString, last);
    QFETCH(QString, choice);
    QFETCH(QString, measured);
    load(address, known);
    const QByteArray unknown("63 64 65 66 67 68 69 6A");
    load(address, unknown);
    // The previous choices, over the bytes that nobody knows.
    const auto* grid = child<QGridLayout>(*m_window, address < 320 ? "timLayout" : "msgLayout");
    QVERIFY(read(*grid, 0).startsWith(QStringLiteral("1|underwater|Depth|>=|")));
    QCOMPARE(record(address), unknown);
    choose(qPrintable(last), qPrintable(choice));
    QTEST(record(address), "afterIt");
    choose(qPrintable(measured), "Timer 3");
    QTEST(record(address), "afterBoth");
}

void TestRules::neverIsQuieter()
{
    m_window->resize(1400, 900);
    m_window->show();
    choose("par01Cb2", "Depth");
    const auto* say = child<QGridLayout>(*m_window, "msgLayout")->itemAtPosition(0, 5)->widget();
    const QVector<const QWidget*> cells{child<QWidget>(*m_window, "par01Cb4"),
                                        child<QWidget>(*m_window, "par01Sb1"), say};
    const auto ink = [this, &cells] {
        // The darkest point of what is written in each of them.
        QVector<int> darkest;
        for (const QWidget* widget : cells) {
            const QRect place(widget->mapTo(m_window.get(), QPoint(0, 0)), widget->size());
            const QImage cell = m_window->grab(place).toImage();
            int least = 255;
            for (int y = 0; y < cell.height(); ++y) {
                for (int x = 0; x < cell.width(); ++x) {
                    least = std::min(least, qGray(cell.pixel(x, y)));
                }
            }
            darkest.append(least);
        }
        return darkest;
    };
    const QVector<int> quiet = ink();
    choose("par01Cb1", "underwater");
    const QVector<int> active = ink();
    for (int i = 0; i < cells.size(); ++i) {
        QVERIFY2(active.at(i) + 40 < quiet.at(i),
                 qPrintable(QStringLiteral("%1: %2 %3").arg(i).arg(active.at(i)).arg(quiet.at(i))));
        QVERIFY(cells.at(i)->isEnabled()); // style only
    }
    choose("par01Cb1", "never");
    QCOMPARE(ink(), quiet);
}

void TestRules::headings()
{
    m_window->show();
    for (const char* name : {"timHeading", "msgHeading"}) {
        QStringList captions;
        for (const QLabel* label : child<QWidget>(*m_window, name)->findChildren<QLabel*>()) {
            captions.append(label->text());
        }
        const QString expected = qstrcmp(name, "timHeading") == 0
                                     ? QStringLiteral("No. When Value Is Threshold Action Time")
                                     : QStringLiteral("No. When Value Is Threshold Message Form "
                                                      "Repetition");
        QCOMPARE(captions.join(QLatin1Char(' ')), expected);
    }
}

MIOLKA_GUI_TEST_MAIN(TestRules)
#include "test_rules.moc"
