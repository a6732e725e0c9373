// SPDX-FileCopyrightText: 2026 The MIOLKAsoft authors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "editor/comboboxw6.h"
#include "editor/doublespinboxint.h"
#include "editor/imagegate.h"
#include "editor/tablemodel.h"
#include "image/memoryarea.h"
#include "tests/support/guitest.h"

#include <QAbstractItemView>
#include <QLineEdit>
#include <QSignalSpy>

/// The inputs that know their place in the image, each for itself.
class TestInputs : public QObject
{
    Q_OBJECT

private slots:
    void aChoiceIsStoredAsItsValue();
    void anUnknownStoredValueLeavesTheChoice();
    void choosingWhatIsShownReplacesAnUnknownValue();
    void anEmptyTableNeverWrites();
    void valuesAreCutToTheirField();
    void cellsThatAreNoNumbersStoreZero();
    void aMeasuredValueTellsItsValueBeforeItsUnit();
    void temperature();
    void regardlessOfAnyValue();
    void thresholdsAtTheirLimits_data();
    void thresholdsAtTheirLimits();
    void everyUnitChangeStartsAgainFromZero();
    void anUnknownFactorKeepsTheDecimals();
    void aNewFactorStoresWhatIsShown();
    void aFactorOfZeroStoresZero();
    void retypingTheShownNumberStoresIt();
    void passingThroughStoresNothing();
    void clearingAndLeavingStoresNothing();
    void whatWasTypedBeforeALoadIsForgotten();
    void aShutGateLetsNothingThrough();
    void correctionsPassAndRepeatNothing();

private:
    /// A measured value and its threshold, bound as in a rule at address 0.
    struct Pair
    {
        Pair();
        cMyMemoryArea area;
        cMyTableModel values{QStringLiteral(":/models/timCb2.csv")};
        cMyComboBoxW6 value;
        cMyDoubleSpinBoxInt threshold;

        void choose(const char* label)
        {
            value.setCurrentIndex(value.findText(QString::fromLatin1(label)));
        }

        [[nodiscard]] QVector<quint8> bytes() const { return area.data(0, 8); }
    };
};

namespace {

const auto bytesChanged = QOverload<quint32, QVector<quint8>>::of(&cMyComboBoxW2::valueChanged);
const auto numberChanged =
    QOverload<quint32, QVector<quint8>>::of(&cMyDoubleSpinBoxInt::valueChanged);
const auto setBytes = QOverload<quint32, QVector<quint8>>::of(&cMyMemoryArea::setData);

/// Picks a row of the list as a mouse click does, also the one that is shown.
void pick(QComboBox& box, int row)
{
    box.show();
    box.showPopup();
    box.view()->setCurrentIndex(box.model()->index(row, 0));
    QTest::keyClick(box.view(), Qt::Key_Return);
}

} // namespace

TestInputs::Pair::Pair()
{
    area.setData(7, 0);
    value.binding().setFilePosition(&area, 1, Length8, TypeUnsigned);
    threshold.binding().setFilePosition(&area, 3, Length16, TypeSigned);
    connect(&value, &cMyComboBoxW6::faktorChanged, &threshold, &cMyDoubleSpinBoxInt::mySetFaktor);
    connect(&value, &cMyComboBoxW6::unitChanged, &threshold, &cMyDoubleSpinBoxInt::mySetUnit);
    connect(&value, &cMyComboBoxW6::rangeChanged, &threshold, &cMyDoubleSpinBoxInt::mySetRange);
    connect(&value, bytesChanged, &area, setBytes);
    connect(&threshold, numberChanged, &area, setBytes);
    value.setModel(&values);
}

void TestInputs::aChoiceIsStoredAsItsValue()
{
    cMyMemoryArea area;
    const cMyTableModel delays(QStringLiteral(":/models/parCb2.csv"));
    cMyComboBoxW2 box;
    box.setModel(const_cast<cMyTableModel*>(&delays));
    box.binding().setFilePosition(&area, 130, Length16, TypeUnsigned);
    QSignalSpy changes(&box, bytesChanged);
    box.setCurrentIndex(6);
    QCOMPARE(changes.count(), 1);
    QCOMPARE(changes.first().at(0).toUInt(), 130U);
    QCOMPARE(changes.first().at(1).value<QVector<quint8>>(), (QVector<quint8>{0xC0, 0xA8}));
}

void TestInputs::anUnknownStoredValueLeavesTheChoice()
{
    cMyTableModel rates(QStringLiteral(":/models/parCb1.csv"));
    cMyComboBoxW2 box;
    box.setModel(&rates);
    box.showValue(50);
    QCOMPARE(box.currentText(), QStringLiteral("3 [Hz]"));
    box.showValue(100);
    QCOMPARE(box.currentText(), QStringLiteral("3 [Hz]"));
}

void TestInputs::choosingWhatIsShownReplacesAnUnknownValue()
{
    cMyMemoryArea area;
    area.setData(0, 100);
    cMyTableModel rates(QStringLiteral(":/models/parCb1.csv"));
    cMyComboBoxW2 box;
    box.setModel(&rates);
    box.binding().setFilePosition(&area, 0, Length8, TypeUnsigned);
    connect(&box, bytesChanged, &area, setBytes);
    QSignalSpy changes(&box, bytesChanged);
    pick(box, 0);
    QCOMPARE(area.data(0, 1), QVector<quint8>{150});
    QCOMPARE(changes.count(), 1);
    pick(box, 0);
    QCOMPARE(changes.count(), 1);
}

void TestInputs::anEmptyTableNeverWrites()
{
    cMyTableModel none(QStringLiteral(":/models/none.csv"));
    cMyComboBoxW6 box;
    QSignalSpy changes(&box, bytesChanged);
    QSignalSpy units(&box, &cMyComboBoxW6::unitChanged);
    box.setModel(&none);
    box.showValue(0);
    box.setCurrentIndex(0);
    QCOMPARE(changes.count() + units.count(), 0);
    QCOMPARE(box.currentIndex(), -1);
}

void TestInputs::valuesAreCutToTheirField()
{
    cMyTableModel odd({{QStringLiteral("a"), QStringLiteral("0")},
                       {QStringLiteral("b"), QStringLiteral("65536")},
                       {QStringLiteral("c"), QStringLiteral("70000")},
                       {QStringLiteral("d"), QStringLiteral("300")}});
    cMyMemoryArea area;
    cMyComboBoxW2 box;
    box.setModel(&odd);
    QSignalSpy changes(&box, bytesChanged);
    box.binding().setFilePosition(&area, 0, Length16, TypeUnsigned);
    box.setCurrentIndex(2);
    box.setCurrentIndex(1);
    box.binding().setFilePosition(&area, 0, Length8, TypeUnsigned);
    box.setCurrentIndex(3);
    QCOMPARE(changes.at(0).at(1).value<QVector<quint8>>(), (QVector<quint8>{0x70, 0x11}));
    QCOMPARE(changes.at(1).at(1).value<QVector<quint8>>(), (QVector<quint8>{0, 0}));
    QCOMPARE(changes.at(2).at(1).value<QVector<quint8>>(), QVector<quint8>{0x2C});
}

void TestInputs::cellsThatAreNoNumbersStoreZero()
{
    cMyTableModel odd(
        {{QStringLiteral("a"), QStringLiteral("1")}, {QStringLiteral("b"), QStringLiteral("x")}});
    cMyComboBoxW2 box;
    box.setModel(&odd);
    QSignalSpy changes(&box, bytesChanged);
    box.setCurrentIndex(1);
    QCOMPARE(changes.first().at(1).value<QVector<quint8>>(), QVector<quint8>{0});
}

void TestInputs::aMeasuredValueTellsItsValueBeforeItsUnit()
{
    Pair pair;
    QStringList order;
    connect(&pair.value, bytesChanged, this, [&] { order << QStringLiteral("value"); });
    connect(&pair.value, &cMyComboBoxW6::faktorChanged, this,
            [&](double factor) { order << QString::number(factor); });
    connect(&pair.value, &cMyComboBoxW6::unitChanged, this,
            [&](const QString& unit) { order << unit; });
    connect(&pair.value, &cMyComboBoxW6::rangeChanged, this, [&](double least, double greatest) {
        order << QStringLiteral("%1..%2").arg(least).arg(greatest);
    });
    pair.choose("Battery level");
    QCOMPARE(order, (QStringList{QStringLiteral("value"), QStringLiteral("327.68"),
                                 QStringLiteral("[%]"), QStringLiteral("0..100")}));
}

void TestInputs::temperature()
{
    Pair pair;
    pair.choose("Depth");
    pair.threshold.setValue(5);
    QCOMPARE(pair.bytes(), (QVector<quint8>{0, 32, 0, 0xF4, 0x01, 0, 0, 0}));
    pair.choose("Temperature");
    QCOMPARE(pair.bytes(), (QVector<quint8>{0, 16, 0, 0, 0, 0, 0, 0}));
    QCOMPARE(pair.threshold.decimals(), 1);
    QCOMPARE(pair.threshold.suffix(), QString::fromUtf8(" [°C]"));
    QCOMPARE(pair.threshold.minimum(), -50.0);
    QCOMPARE(pair.threshold.maximum(), 100.0);
    QCOMPARE(pair.threshold.value(), 0.0);
    QVERIFY(pair.threshold.isEnabled());
}

void TestInputs::regardlessOfAnyValue()
{
    Pair pair;
    pair.choose("Depth");
    pair.threshold.setValue(7.5);
    pair.choose("Regardless of any value");
    QCOMPARE(pair.bytes(), (QVector<quint8>{0, 255, 0, 0, 0, 0, 0, 0}));
    QVERIFY(!pair.threshold.isEnabled());
    QCOMPARE(pair.threshold.minimum(), 0.0);
    QCOMPARE(pair.threshold.maximum(), 0.0);
    QCOMPARE(pair.threshold.text(), QStringLiteral("0 "));
}

void TestInputs::thresholdsAtTheirLimits_data()
{
    QTest::addColumn<QString>("value");
    QTest::addColumn<double>("shown");
    QTest::addColumn<int>("low");
    QTest::addColumn<int>("high");
    const auto row = [](const char* name, const char* value, double shown, int low, int high) {
        QTest::newRow(name) << QString::fromLatin1(value) << shown << low << high;
    };
    row("12.5 degrees", "Temperature", 12.5, 0x7D, 0x00);
    row("greatest depth", "Depth", 327.67, 0xFF, 0x7F);
    row("fastest ascent", "Vertical speed", -327.68, 0x00, 0x80);
    row("battery full", "Battery level", 100, 0x00, 0x80);
    row("a minute", "Dive time", 60, 60, 0);
}

void TestInputs::thresholdsAtTheirLimits()
{
    QFETCH(QString, value);
    QFETCH(double, shown);
    QFETCH(int, low);
    QFETCH(int, high);
    Pair pair;
    pair.value.setCurrentIndex(pair.value.findText(value));
    pair.threshold.setValue(shown);
    QCOMPARE(pair.area.data(3, 2),
             (QVector<quint8>{static_cast<quint8>(low), static_cast<quint8>(high)}));
}

void TestInputs::everyUnitChangeStartsAgainFromZero()
{
    Pair pair;
    pair.choose("Dive time");
    pair.threshold.setValue(60);
    pair.choose("Surface time");
    QCOMPARE(pair.threshold.value(), 0.0);
    QCOMPARE(pair.bytes(), (QVector<quint8>{0, 41, 0, 0, 0, 0, 0, 0}));
    pair.threshold.setValue(30);
    pair.threshold.mySetUnit(QStringLiteral("[s]"));
    QCOMPARE(pair.threshold.value(), 0.0);
    QCOMPARE(pair.threshold.suffix(), QStringLiteral(" [s]"));
}

void TestInputs::anUnknownFactorKeepsTheDecimals()
{
    cMyDoubleSpinBoxInt box;
    for (const auto& [factor, decimals] :
         {std::pair(1.0, 0), std::pair(10.0, 1), std::pair(7.0, 1), std::pair(100.0, 2),
          std::pair(0.0, 2), std::pair(10.0, 1), std::pair(327.68, 2)}) {
        box.mySetFaktor(factor);
        QCOMPARE(box.decimals(), decimals);
        QCOMPARE(box.faktor(), factor);
    }
}

void TestInputs::aNewFactorStoresWhatIsShown()
{
    cMyDoubleSpinBoxInt box;
    cMyMemoryArea area;
    box.binding().setFilePosition(&area, 9, Length16, TypeSigned);
    box.setValue(12);
    QSignalSpy changes(&box, numberChanged);
    box.mySetFaktor(100);
    QCOMPARE(changes.count(), 1);
    QCOMPARE(changes.first().at(0).toUInt(), 9U);
    QCOMPARE(changes.first().at(1).value<QVector<quint8>>(), (QVector<quint8>{0xB0, 0x04}));
}

void TestInputs::aFactorOfZeroStoresZero()
{
    cMyDoubleSpinBoxInt box;
    cMyMemoryArea area;
    box.binding().setFilePosition(&area, 0, Length16, TypeSigned);
    connect(&box, numberChanged, &area, setBytes);
    box.setValue(12);
    QCOMPARE(area.data(0, 2), (QVector<quint8>{12, 0}));
    box.mySetFaktor(0);
    QCOMPARE(area.data(0, 2), (QVector<quint8>{0, 0}));
    QCOMPARE(box.value(), 12.0);
    area.setData(0, {0xFB, 0xFF});
    box.setValue(34);
    QCOMPARE(area.data(0, 2), (QVector<quint8>{0, 0}));
}

void TestInputs::retypingTheShownNumberStoresIt()
{
    Pair pair;
    pair.choose("Depth");
    pair.area.setData(3, {0xFB, 0xFF}); // out of range, shown as 0.00
    pair.threshold.show();
    pair.threshold.setFocus();
    pair.threshold.selectAll();
    QTest::keyClicks(&pair.threshold, QStringLiteral("0"));
    QTest::keyClick(&pair.threshold, Qt::Key_Return);
    QCOMPARE(pair.area.data(3, 2), (QVector<quint8>{0, 0}));
}

void TestInputs::passingThroughStoresNothing()
{
    Pair pair;
    pair.choose("Battery level");
    pair.threshold.setValue(12.34);
    pair.area.setData(3, {0xCB, 0x0F}); // 4043; 12.34 itself is 4044
    QSignalSpy changes(&pair.threshold, numberChanged);
    pair.threshold.show();
    pair.threshold.setFocus();
    QTest::keyClick(&pair.threshold, Qt::Key_End);
    QTest::keyClick(&pair.threshold, Qt::Key_Return);
    pair.threshold.clearFocus();
    QCOMPARE(changes.count(), 0);
}

void TestInputs::clearingAndLeavingStoresNothing()
{
    Pair pair;
    pair.choose("Battery level");
    pair.area.setData(3, {1, 0}); // shown as 0.00
    pair.threshold.show();
    pair.threshold.setFocus();
    pair.threshold.selectAll();
    QTest::keyClick(&pair.threshold, Qt::Key_Delete);
    QFocusEvent leave(QEvent::FocusOut, Qt::TabFocusReason);
    QCoreApplication::sendEvent(&pair.threshold, &leave);
    QCOMPARE(pair.threshold.text(), QStringLiteral("0.00 [%]"));
    QCOMPARE(pair.area.data(3, 2), (QVector<quint8>{1, 0}));
}

void TestInputs::whatWasTypedBeforeALoadIsForgotten()
{
    Pair pair;
    pair.choose("Battery level");
    pair.threshold.show();
    pair.threshold.setFocus();
    pair.threshold.selectAll();
    QTest::keyClicks(&pair.threshold, QStringLiteral("40"));
    pair.area.setData(3, {1, 0});
    pair.threshold.disconnect(&pair.area);
    pair.threshold.showValue(0);
    connect(&pair.threshold, numberChanged, &pair.area, setBytes);
    QTest::keyClick(&pair.threshold, Qt::Key_Return);
    QCOMPARE(pair.area.data(3, 2), (QVector<quint8>{1, 0}));
}

void TestInputs::aShutGateLetsNothingThrough()
{
    cMyMemoryArea area;
    area.setData(3, 0);
    cMyImageGate gate(area);
    {
        const cMyImageGate::Shut shut(gate);
        gate.setData(0, {1});
        {
            const cMyImageGate::Shut again(gate);
        }
        gate.setData(1, {1});
    }
    QCOMPARE(area.data(0, 4), (QVector<quint8>{0, 0, 0, 0}));
    gate.setData(2, {1});
    QCOMPARE(area.data(0, 4), (QVector<quint8>{0, 0, 1, 0}));
}

void TestInputs::correctionsPassAndRepeatNothing()
{
    cMyMemoryArea area;
    area.setData(0, {1, 2});
    area.clearModified();
    cMyImageGate gate(area);
    const cMyImageGate::Shut shut(gate);
    gate.correct(0, {1, 2});
    QVERIFY(!area.isModified());
    gate.correct(0, {1, 3});
    QVERIFY(area.isModified());
    QCOMPARE(area.data(0, 2), (QVector<quint8>{1, 3}));
}

MIOLKA_GUI_TEST_MAIN(TestInputs)
#include "test_inputs.moc"
