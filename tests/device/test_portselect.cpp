// SPDX-FileCopyrightText: 2026 The MIOLKAsoft authors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "device/portselect.h"
#include "device/ttywatch.h"
#include "tests/support/mockedports.h"
#include "tests/support/posix.h"

#include <QTimer>

using support::MockedPorts;

/// The list of ports while devices come and go.
class TestPortSelect : public QObject
{
    Q_OBJECT

private slots:
    void init();
    void cleanup();
    void itLooksTenTimesASecond();
    void withoutADevice();
    void theFirstDevice();
    void twoDevicesInTheSystemsOrder();
    void theLastDeviceGoes();
    void theListIsToldBeforeTheChoice();
    void otherPortsAreNotListed_data();
    void otherPortsAreNotListed();
    void theChoiceOutlivesARebuild();
    void aSwapGoesUnnoticed();
    void nothingIsTouchedWhileTheCountStays();
    void aBootLoaderIsToldOnEveryTick();
    void aBootLoaderIsNoPort();
    void aHeldPortIsNotDisturbed();
    void aHeldPortThatGoesIsToldAtOnce();
    void aHeldPortThatGivesWayToAnother();
    void portChangedIsNeverEmitted();
    void propertiesThatComeLate();
    void theSystemIsAskedOnlyWhenItMatters();

private:
    [[nodiscard]] QStringList items() const
    {
        QStringList texts;
        for (int i = 0; i < m_select->count(); ++i) {
            texts.append(m_select->itemText(i));
        }
        return texts;
    }

    [[nodiscard]] QStringList toldTexts() const
    {
        QStringList texts;
        for (const QVariantList& each : *m_texts) {
            texts.append(each.at(0).toString());
        }
        return texts;
    }

    std::unique_ptr<MockedPorts> m_ports;
    std::unique_ptr<cMyPortSelect> m_select;
    std::unique_ptr<QSignalSpy> m_texts;
    std::unique_ptr<QSignalSpy> m_boots;
};

namespace {

const QString first = QStringLiteral("ttyACM0");
const QString second = QStringLiteral("ttyACM1");
const QString third = QStringLiteral("ttyACM2");
constexpr int severalTicks = 350; // ms

/// Occupies the nodes that have become free where the mocked ports lie. A disk gives the number of
/// a deleted file to the next one; the system gives a port a new one each time.
class FreeNodesTaken
{
public:
    FreeNodesTaken()
    {
        constexpr int plenty = 200;
        for (int i = 0; i < plenty; ++i) {
            m_names.append(
                QStringLiteral("%1/node%2").arg(qEnvironmentVariable("UMOCKDEV_DIR")).arg(i));
            support::writeFile(m_names.last(), QByteArray());
        }
    }
    ~FreeNodesTaken()
    {
        for (const QString& name : m_names) {
            QFile::remove(name);
        }
    }
    Q_DISABLE_COPY_MOVE(FreeNodesTaken)

private:
    QStringList m_names;
};

} // namespace

void TestPortSelect::init()
{
    m_ports = std::make_unique<MockedPorts>();
    m_select = std::make_unique<cMyPortSelect>(nullptr);
    m_texts = std::make_unique<QSignalSpy>(m_select.get(), &QComboBox::currentTextChanged);
    m_boots = std::make_unique<QSignalSpy>(m_select.get(), &cMyPortSelect::bootMode);
}

void TestPortSelect::cleanup()
{
    m_select.reset();
    m_ports.reset();
}

void TestPortSelect::itLooksTenTimesASecond()
{
    const auto timers = m_select->findChildren<QTimer*>(QString(), Qt::FindDirectChildrenOnly);
    QCOMPARE(timers.size(), 1);
    QVERIFY(timers.first()->isActive() && !timers.first()->isSingleShot());
    QCOMPARE(timers.first()->interval(), 100);
}

void TestPortSelect::withoutADevice()
{
    QTest::qWait(severalTicks);
    QCOMPARE(items(), QStringList(QStringLiteral("No devices found")));
    QVERIFY(!m_select->isEnabled());
    QCOMPARE(m_select->sizeAdjustPolicy(), QComboBox::AdjustToContents);
    QVERIFY(m_texts->isEmpty());
    QVERIFY(m_boots->isEmpty());
}

void TestPortSelect::theFirstDevice()
{
    m_ports->plug(first);
    QTRY_COMPARE(items(), QStringList(first));
    QVERIFY(m_select->isEnabled());
    QCOMPARE(toldTexts(), QStringList({QString(), first}));
    QVERIFY(m_select->itemData(0).isNull());
    QVERIFY(m_select->itemIcon(0).isNull());
}

void TestPortSelect::twoDevicesInTheSystemsOrder()
{
    m_ports->plug(second);
    m_ports->plug(first);
    QTRY_COMPARE(m_select->count(), 2);
    QStringList expected;
    for (const QSerialPortInfo& port : QSerialPortInfo::availablePorts()) {
        expected.append(port.portName());
    }
    QCOMPARE(items(), expected);
}

void TestPortSelect::theLastDeviceGoes()
{
    m_ports->plug(first);
    QTRY_COMPARE(m_select->currentText(), first);
    m_texts->clear();
    m_ports->unplug(first);
    QTRY_COMPARE(items(), QStringList(QString()));
    QVERIFY(!m_select->isEnabled());
    QCOMPARE(toldTexts(), QStringList(QString()));
}

void TestPortSelect::theListIsToldBeforeTheChoice()
{
    QStringList told;
    connect(m_select.get(), &cMyPortSelect::portsListed, m_select.get(),
            [&told](const QStringList& names) {
                told.append(QStringLiteral("list ") + names.join(QLatin1Char(' ')));
            });
    connect(m_select.get(), &QComboBox::currentTextChanged, m_select.get(),
            [&told](const QString& text) { told.append(QStringLiteral("choice ") + text); });
    m_ports->plug(first);
    QTRY_COMPARE(items(), QStringList(first));
    QCOMPARE(told, QStringList({QStringLiteral("list ttyACM0"), QStringLiteral("choice "),
                                QStringLiteral("choice ttyACM0")}));
    told.clear();
    m_ports->unplug(first);
    QTRY_COMPARE(items(), QStringList(QString()));
    QCOMPARE(told, QStringList({QStringLiteral("list "), QStringLiteral("choice ")}));
}

void TestPortSelect::otherPortsAreNotListed_data()
{
    QTest::addColumn<int>("vendor");
    QTest::addColumn<int>("product");
    QTest::newRow("another vendor") << 0x0403 << 0x2018;
    QTest::newRow("another product") << 0x03EB << 0x2019;
    QTest::newRow("both") << 0x0403 << 0x6001;
}

void TestPortSelect::otherPortsAreNotListed()
{
    QFETCH(int, vendor);
    QFETCH(int, product);
    m_ports->plug(QStringLiteral("ttyUSB0"), static_cast<quint16>(product),
                  static_cast<quint16>(vendor));
    QTRY_COMPARE(QSerialPortInfo::availablePorts().size(), 1);
    QTest::qWait(severalTicks);
    QCOMPARE(items(), QStringList(QStringLiteral("No devices found")));
    m_ports->plug(first);
    QTRY_COMPARE(items(), QStringList(first));
}

void TestPortSelect::theChoiceOutlivesARebuild()
{
    m_ports->plug(first);
    m_ports->plug(second);
    QTRY_COMPARE(m_select->count(), 2);
    m_select->setCurrentText(second);
    m_texts->clear();
    m_ports->plug(third);
    QTRY_COMPARE(m_select->count(), 3);
    QCOMPARE(m_select->currentText(), second);
    QCOMPARE(toldTexts(), QStringList({QString(), first, second}));
    m_texts->clear();
    m_ports->unplug(first);
    QTRY_COMPARE(m_select->count(), 2);
    QCOMPARE(m_select->currentText(), second);
    QCOMPARE(toldTexts(), QStringList({QString(), second}));
}

void TestPortSelect::aSwapGoesUnnoticed()
{
    m_ports->plug(first);
    QTRY_COMPARE(m_select->currentText(), first);
    m_texts->clear();
    m_ports->unplug(first);
    m_ports->plug(second);
    QTest::qWait(severalTicks);
    QCOMPARE(items(), QStringList(first));
    QVERIFY(m_texts->isEmpty());
}

void TestPortSelect::nothingIsTouchedWhileTheCountStays()
{
    m_ports->plug(first);
    m_ports->plug(second);
    QTRY_COMPARE(m_select->count(), 2);
    m_texts->clear();
    const QSignalSpy inserted(m_select->model(), &QAbstractItemModel::rowsInserted);
    QTest::qWait(severalTicks);
    QVERIFY(inserted.isEmpty());
    QVERIFY(m_texts->isEmpty());
}

void TestPortSelect::aBootLoaderIsToldOnEveryTick()
{
    m_ports->plug(first, device::bootLoaderProductId);
    m_ports->plug(second, device::bootLoaderProductId);
    QTRY_VERIFY(!m_boots->isEmpty());
    // A bare timer tells how many ticks this machine has room for; the second time the system was
    // last asked a while ago.
    for (const int pause : {0, 3300}) {
        QTest::qWait(pause);
        QTimer timer;
        const QSignalSpy ticks(&timer, &QTimer::timeout);
        timer.start(100);
        m_boots->clear();
        QTest::qWait(1000);
        QVERIFY2(qAbs(m_boots->count() - ticks.count()) <= 2,
                 qPrintable(QString::number(m_boots->count())));
    }
    m_ports->unplugAll();
    QTest::qWait(severalTicks);
    m_boots->clear();
    QTest::qWait(severalTicks);
    QVERIFY(m_boots->isEmpty());
}

void TestPortSelect::aBootLoaderIsNoPort()
{
    m_ports->plug(first, device::bootLoaderProductId);
    QTRY_VERIFY(!m_boots->isEmpty());
    QCOMPARE(items(), QStringList(QStringLiteral("No devices found")));
}

void TestPortSelect::aHeldPortIsNotDisturbed()
{
    m_ports->plug(first);
    QTRY_COMPARE(m_select->currentText(), first);
    m_texts->clear();
    m_select->hold(first);
    m_ports->plug(second);
    QTest::qWait(severalTicks);
    QCOMPARE(items(), QStringList(first));
    QVERIFY(m_texts->isEmpty());
    m_select->hold(QString());
    QTRY_COMPARE(m_select->count(), 2);
    QCOMPARE(m_select->currentText(), first);
}

void TestPortSelect::aHeldPortThatGoesIsToldAtOnce()
{
    m_ports->plug(first);
    m_ports->plug(second);
    QTRY_COMPARE(m_select->count(), 2);
    m_select->hold(first);
    m_ports->unplug(first);
    QTRY_COMPARE(items(), QStringList(second));
}

void TestPortSelect::aHeldPortThatGivesWayToAnother()
{
    m_ports->plug(first);
    QTRY_COMPARE(m_select->currentText(), first);
    m_select->hold(first);
    m_ports->plug(second);
    QTest::qWait(severalTicks);
    QCOMPARE(items(), QStringList(first));
    m_ports->unplug(first); // there are as many as before
    QTRY_COMPARE(items(), QStringList(second));
    m_select->hold(QString());
    QTest::qWait(severalTicks);
    QCOMPARE(items(), QStringList(second));
}

void TestPortSelect::portChangedIsNeverEmitted()
{
    const QSignalSpy changed(m_select.get(), &cMyPortSelect::portChanged);
    m_ports->plug(first);
    QTRY_COMPARE(m_select->currentText(), first);
    m_ports->unplug(first);
    QTRY_COMPARE(m_select->currentText(), QString());
    QVERIFY(changed.isEmpty());
}

void TestPortSelect::propertiesThatComeLate()
{
    QTest::qWait(3300); // longer than the first look takes
    // The name is there before the system knows who made the port.
    m_ports->plug(first, 0, 0);
    QTest::qWait(severalTicks);
    m_ports->plug(first);
    QTRY_COMPARE(items(), QStringList(first));
}

void TestPortSelect::theSystemIsAskedOnlyWhenItMatters()
{
    cMyTtyWatch watch;
    QVERIFY(watch.isWorthLooking());
    QTest::qWait(1000);
    QVERIFY(watch.isWorthLooking()); // properties may come late
    QTest::qWait(2700);
    watch.isWorthLooking();
    QVERIFY(!watch.isWorthLooking());
    m_ports->plug(first);
    QVERIFY(watch.isWorthLooking());
    QTest::qWait(3500);
    watch.isWorthLooking();
    QVERIFY(!watch.isWorthLooking());
    m_ports->unplug(first);
    {
        const FreeNodesTaken taken;
        m_ports->plug(first); // back before anybody looked
    }
    QVERIFY(watch.isWorthLooking());
    m_ports->unplug(first);
    QVERIFY(watch.isWorthLooking());
    QTest::qWait(3500);
    watch.isWorthLooking();
    int looks = 0;
    for (int i = 0; i < 105; ++i) {
        QTest::qWait(100);
        looks += watch.isWorthLooking() ? 1 : 0;
    }
    QVERIFY2(looks >= 1 && looks <= 3, qPrintable(QString::number(looks)));
}

MIOLKA_MOCKED_TEST_MAIN(TestPortSelect)
#include "test_portselect.moc"
