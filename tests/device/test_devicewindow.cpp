// SPDX-FileCopyrightText: 2026 The MIOLKAsoft authors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "tests/device/devicewindowtest.h"
#include "tests/support/dialogscript.h"

#include <QComboBox>
#include <QLineEdit>
#include <QPlainTextEdit>
#include <QProgressBar>
#include <QPushButton>
#include <QStatusBar>
#include <QTabWidget>
#include <QTimer>

using support::child;

/// What the window does about a device, from the user's seat.
class TestDeviceWindow : public support::DeviceWindowTest
{
    Q_OBJECT

private slots:
    void withoutADevice();
    void withADevice();
    void whenTheDeviceGoes();
    void whenTheDeviceIsForgottenBeforeItGoes();
    void writing();
    void reading();
    void otherMemoriesStayOut();
    void theProgressDialog_data();
    void theProgressDialog();
    void aTransferThatCannotStart();
    void aVanishedDeviceTakesTheDialogAway();
    void detailsOfTheSelfTest();
    void questions_data();
    void questions();
    void theBootLoaderWarning();
    void anotherPortThanTheLinks();
    void aSimulationKeepsItsPage();
    void aSimulationEndsWhatTheLinkDoes();
    void aQuestionWithoutAnAnswer();
    void closingTheWindow();
    void theStatusPageNeverLoops();
};

namespace {

const char* const actions[] = {"actionReadSettings", "actionWriteSettings", "actionReset",
                               "actionClearStats",   "actionPowerOff",      "actionFirmwareUpdate",
                               "actionLibraryUpdate"};
const char* const widgets[] = {"pbGetStatus", "pbDetails", "simWidget"};
const char* const statusLabels[] = {"lMiolkaPort",   "lSerialNumber", "lHardwareVesrion",
                                    "lMemoryAmount", "lMiolkaStatus", "lFirmwareVersion",
                                    "lVoiceLang",    "lVoiceVersion", "lParamVersion",
                                    "lParamAutor",   "lParamTytul"};

QString notAvailable()
{
    return QStringLiteral("N/A");
}

} // namespace

void TestDeviceWindow::withoutADevice()
{
    for (const char* name : actions) {
        const auto* action = child<QAction>(*m_window, name);
        QVERIFY2(!action->isEnabled(), name);
        QCOMPARE(action->statusTip(), QStringLiteral("Connect a Miolka first."));
    }
    for (const char* name : widgets) {
        QVERIFY2(!child<QWidget>(*m_window, name)->isEnabled(), name);
        QCOMPARE(child<QWidget>(*m_window, name)->toolTip(),
                 QStringLiteral("Connect a Miolka first."));
    }
    QCOMPARE(text("lMiolkaPort"), notAvailable());
    QCOMPARE(text("lmaxDepth"), notAvailable());
}

void TestDeviceWindow::withADevice()
{
    plugIn();
    for (const char* name : actions) {
        const auto* action = child<QAction>(*m_window, name);
        QVERIFY2(action->isEnabled(), name);
        QVERIFY(action->statusTip() != QStringLiteral("Connect a Miolka first."));
    }
    for (const char* name : widgets) {
        QVERIFY2(child<QWidget>(*m_window, name)->isEnabled(), name);
        QVERIFY(child<QWidget>(*m_window, name)->toolTip().isEmpty());
    }
    QCOMPARE(text("lMiolkaPort"), QStringLiteral("ttyACM0"));
    // A peer that echoes holds zeros everywhere.
    QCOMPARE(text("lMiolkaStatus"), QStringLiteral("Self-test: Error"));
    QCOMPARE(text("lMemoryAmount"), QStringLiteral("0 MB"));
    QCOMPARE(text("lFirmwareVersion"), QStringLiteral("0.0.0.0"));
    QCOMPARE(text("lmaxDepth"), QStringLiteral("0.0 m"));
    QCOMPARE(text("lDiveTime"), QStringLiteral("0:00"));
}

void TestDeviceWindow::whenTheDeviceGoes()
{
    plugIn();
    child<QPlainTextEdit>(*m_window, "pteParamDesc")->setPlainText(QStringLiteral("text"));
    m_ports->unplug(QStringLiteral("ttyACM0"));
    QTRY_VERIFY(box() != nullptr);
    for (const char* name : actions) {
        QVERIFY2(!child<QAction>(*m_window, name)->isEnabled(), name);
    }
    for (const char* name : widgets) {
        QVERIFY2(!child<QWidget>(*m_window, name)->isEnabled(), name);
    }
    for (const char* name : statusLabels) {
        QCOMPARE(text(name), notAvailable());
    }
    QCOMPARE(child<QPlainTextEdit>(*m_window, "pteParamDesc")->toPlainText(), QString());
    // What a diver wants to know after the dive stays.
    QCOMPARE(text("lmaxDepth"), QStringLiteral("0.0 m"));
    QCOMPARE(text("lDiveTime"), QStringLiteral("0:00"));
    QCOMPARE(box()->windowTitle(), QStringLiteral("Error"));
    box()->button(QMessageBox::Ok)->click();
    QTest::qWait(300);
    QVERIFY(box() == nullptr);
}

void TestDeviceWindow::whenTheDeviceIsForgottenBeforeItGoes()
{
    support::Peer& peer = plugIn();
    peer.fallSilentAt(1);
    m_ports->forget(QStringLiteral("ttyACM0"));
    QTRY_COMPARE(text("lMiolkaPort"), notAvailable());
    QTRY_COMPARE(peer.lines().size(), 1);
    QVERIFY(box() == nullptr);
    peer.hangUp();
    QTRY_VERIFY(box() != nullptr);
    QCOMPARE(box()->windowTitle(), QStringLiteral("Error"));
    box()->button(QMessageBox::Ok)->click();
    QTest::qWait(300);
    QVERIFY(box() == nullptr);
}

void TestDeviceWindow::writing()
{
    support::Peer& peer = plugIn();
    support::load(*m_window, support::markedImage('m').replace(0, 4, "\t\t\t\t"));
    trigger("actionWriteSettings");
    QVERIFY(support::waitFor([&] { return peer.lines().size() == 69; }));
    // The settings carry the version of the program that wrote them.
    const QByteArray image = support::markedImage('m').replace(0, 4, QByteArray("\1\0\4\0", 4));
    QCOMPARE(peer.lines().mid(4),
             QString::fromLatin1(support::settingsText(image)).split(QLatin1Char('\n')));
    QCOMPARE(peer.lines().mid(0, 4),
             QStringList({QStringLiteral("#ROOT"), QStringLiteral("#HEX"),
                          QStringLiteral("#EEPROM"), QStringLiteral("#WRITE")}));
    QCOMPARE(support::imageOf(*m_window), image);
    QTRY_VERIFY(progress() == nullptr);
}

void TestDeviceWindow::reading()
{
    support::Peer& peer = plugIn();
    const QByteArray held = support::markedImage('d').replace(32, 5, QByteArray("Mine\0", 5));
    const QList<QByteArray> records = support::settingsText(held).split('\n');
    peer.setAnswer([&peer, records](const QByteArray& line) {
        const auto record = peer.lines().size() - 5;
        return (record >= 0 && record < records.size() ? records.at(record) : line) + "\r\n";
    });
    trigger("actionReadSettings");
    QVERIFY(support::waitFor([&] { return support::imageOf(*m_window) == held; }));
    QCOMPARE(child<QLineEdit>(*m_window, "leTitle")->text(), QStringLiteral("Mine"));
    QCOMPARE(peer.lines().size(), 69);
}

void TestDeviceWindow::otherMemoriesStayOut()
{
    support::Peer& peer = plugIn();
    const QByteArray before = support::imageOf(*m_window);
    peer.setAnswer([](const QByteArray& line) {
        return line == "#EEPROM" ? QByteArray("#FLASH\r\n") : QByteArray(":0100000041BE\r\n");
    });
    trigger("actionReadSettings");
    QVERIFY(support::waitFor([&] { return peer.lines().size() == 69; }));
    QTest::qWait(20);
    // What came before a memory was named counts as settings; what the device called FLASH does
    // not.
    QCOMPARE(support::differences(before, support::imageOf(*m_window)), QStringLiteral("0:01->41"));
}

void TestDeviceWindow::theProgressDialog_data()
{
    QTest::addColumn<QByteArray>("action");
    QTest::addColumn<QString>("label");
    QTest::newRow("write") << QByteArray("actionWriteSettings") << "Download..";
    QTest::newRow("read") << QByteArray("actionReadSettings") << "Upload..";
}

void TestDeviceWindow::theProgressDialog()
{
    QFETCH(QByteArray, action);
    QFETCH(QString, label);
    support::Peer& peer = plugIn();
    const QByteArray before = support::imageOf(*m_window).mid(4);
    peer.fallSilentAt(10);
    trigger(action.constData());
    QVERIFY(progress() != nullptr); // from the first moment on
    QCOMPARE(progress()->labelText(), label);
    QCOMPARE(progress()->windowModality(), Qt::WindowModal);
    QVERIFY(progress()->autoClose() && progress()->autoReset());
    QCOMPARE(progress()->minimumDuration(), 0);
    QVERIFY(progress()->testAttribute(Qt::WA_DeleteOnClose));
    QCOMPARE(progress()->parentWidget(), m_window.get());
    QTRY_COMPARE(progress()->value(), 9);
    QCOMPARE(qMakePair(progress()->minimum(), progress()->maximum()), qMakePair(0, 69));
    auto* cancel = progress()->findChild<QPushButton*>();
    QCOMPARE(cancel->text(), QStringLiteral("Cancel"));
    cancel->click();
    QVERIFY(progress() == nullptr);
    m_window->miolkaWriteProgress(0, 69, 12); // would bring the dialog back for good
    QVERIFY(progress() == nullptr);
    peer.send("late\r\n");
    QTRY_COMPARE(peer.lines().last(), QStringLiteral("#ROOT"));
    QTest::qWait(50);
    QVERIFY(progress() == nullptr && m_window->isEnabled());
    QCOMPARE(support::imageOf(*m_window).mid(4), before);
}

void TestDeviceWindow::aTransferThatCannotStart()
{
    plugIn();
    m_ports->unplug(QStringLiteral("ttyACM0"));
    QTRY_VERIFY(box() != nullptr);
    box()->close();
    m_window->writeSettingsToMiolka();
    QTRY_VERIFY(box() != nullptr);
    box()->close();
    // The dialog waits for the user; what is cancelled then is nothing.
    QVERIFY(progress() != nullptr);
    QCOMPARE(progress()->value(), -1);
    QCOMPARE(progress()->maximum(), 100);
    progress()->findChild<QPushButton*>()->click();
    QVERIFY(progress() == nullptr);
    support::Peer& peer = m_ports->plug(QStringLiteral("ttyACM0"));
    // The cancel that was left over ends the first query.
    QTRY_VERIFY(peer.lines().size() >= 2);
    QTest::qWait(200);
    QCOMPARE(peer.lines().filter(QStringLiteral("#ROOT")), peer.lines());
    QCOMPARE(text("lMiolkaStatus"), notAvailable());
    peer.forgetLines();
    m_window->writeSettingsToMiolka();
    QVERIFY(support::waitFor([&] { return peer.lines().size() == 69; }));
}

void TestDeviceWindow::aVanishedDeviceTakesTheDialogAway()
{
    support::Peer& peer = plugIn();
    const QByteArray before = support::imageOf(*m_window);
    peer.fallSilentAt(40);
    trigger("actionReadSettings");
    QVERIFY(support::waitFor([&] { return peer.lines().size() == 40; }));
    m_ports->unplug(QStringLiteral("ttyACM0"));
    QTRY_VERIFY(progress() == nullptr);
    QTRY_VERIFY(box() != nullptr);
    box()->close();
    QCOMPARE(support::imageOf(*m_window), before);
    QCOMPARE(
        m_window->statusBar()->currentMessage(),
        QStringLiteral("The connection to the Miolka was lost before the transfer was complete."));
    QTest::qWait(200);
    QVERIFY(box() == nullptr);
    support::Peer& again = plugIn();
    trigger("actionWriteSettings");
    QVERIFY(support::waitFor([&] { return again.lines().size() == 69; }));
}

void TestDeviceWindow::detailsOfTheSelfTest()
{
    plugIn();
    child<QTabWidget>(*m_window, "tabWidget")->setCurrentIndex(0);
    support::DialogScript user;
    user.dismiss();
    QTest::mouseClick(child<QPushButton>(*m_window, "pbDetails"), Qt::LeftButton);
    QVERIFY(user.isFinished());
    QCOMPARE(user.seen().at(0).title, QStringLiteral("Device status"));
    QCOMPARE(user.seen().at(0).parent, static_cast<const QWidget*>(m_window.get()));
}

void TestDeviceWindow::questions_data()
{
    QTest::addColumn<QByteArray>("action");
    QTest::addColumn<QString>("title");
    QTest::addColumn<QString>("question");
    QTest::addColumn<QString>("word");
    QTest::newRow("reset") << QByteArray("actionReset") << "Reset..."
                           << "The Miolka will be reset without loss of data. If the connection is "
                              "lost, please unplug the USB cable and plug it in again.\nDo you "
                              "want to continue?"
                           << "#RESET";
    QTest::newRow("clear statistics")
        << QByteArray("actionClearStats") << "Clear statistics..."
        << "Do you want to clear the statistics (MIN and MAX values: depth, time, temperature and "
           "any others)?"
        << "#CLEAR";
    QTest::newRow("power off")
        << QByteArray("actionPowerOff") << "Switch Miolka Off..."
        << "To protect the battery, the Miolka should be switched off before it is left unused for "
           "a longer time. It will switch off as soon as the USB cable is unplugged, and on again "
           "by itself when it is connected to USB or a charger. Do you want to switch the Miolka "
           "off?"
        << "#OFF";
    QTest::newRow("firmware update")
        << QByteArray("actionFirmwareUpdate") << "Firmware update..."
        << "The Miolka will enter its firmware update mode, where only the external program FLIP "
           "by ATMEL can go on. See the Help file for details.\nAre you sure that you want to "
           "install new firmware?"
        << "#BOOT";
}

void TestDeviceWindow::questions()
{
    QFETCH(QByteArray, action);
    QFETCH(QString, title);
    QFETCH(QString, question);
    QFETCH(QString, word);
    const support::Peer& peer = plugIn();
    support::DialogScript user;
    user.press(QMessageBox::No);
    trigger(action.constData());
    user.dismiss();
    trigger(action.constData());
    QTest::qWait(50);
    QVERIFY(peer.lines().isEmpty());
    user.press(QMessageBox::Yes);
    trigger(action.constData());
    QTRY_COMPARE(peer.lines(), QStringList(word));
    QVERIFY(user.isFinished());
    QCOMPARE(user.seen().size(), 3);
    for (const support::SeenDialog& seen : user.seen()) {
        QCOMPARE(seen.title, title);
        QCOMPARE(seen.text, question);
        QCOMPARE(seen.buttons, QMessageBox::Yes | QMessageBox::No);
        QCOMPARE(seen.icon, QMessageBox::Question);
        QVERIFY(!seen.hasDefaultButton);
        QCOMPARE(seen.parent, static_cast<const QWidget*>(m_window.get()));
    }
}

void TestDeviceWindow::theBootLoaderWarning()
{
    m_ports->plug(QStringLiteral("ttyACM0"), device::bootLoaderProductId);
    QTRY_VERIFY(box() != nullptr);
    const QString gap(27, QLatin1Char(' '));
    QCOMPARE(box()->windowTitle(), QStringLiteral("Error"));
    QCOMPARE(box()->text(),
             QStringLiteral("Miolka znajduje się w trybie serwisowym.\n") + gap +
                 QStringLiteral("Kontynuacja możliwa tylko z poziomu zewnętrznego oprogramowania "
                                "FLIP firmy ATMEL.\n") +
                 gap +
                 QStringLiteral("Wyjście z trybu serwisowego za pomocą [Start Application] (na "
                                "formularzu FLIP).\n") +
                 gap + QStringLiteral("Dalsze informacje w pliku Pomocy"));
    QCOMPARE(box()->standardButtons(), QMessageBox::Ok);
    QCOMPARE(box()->icon(), QMessageBox::Critical);
    QCOMPARE(box()->parentWidget(), m_window.get());
    QTest::qWait(500);
    const auto boxes = m_window->findChildren<QMessageBox*>();
    QCOMPARE(boxes.size(), 1);
    box()->button(QMessageBox::Ok)->click();
    // Time to use the window, or to close it.
    QTest::qWait(3000);
    QVERIFY(box() == nullptr);
    QTRY_VERIFY_WITH_TIMEOUT(box() != nullptr, 5000);
}

void TestDeviceWindow::anotherPortThanTheLinks()
{
    plugIn();
    QCOMPARE(text("lPortNote"), QString());
    m_ports->plug(QStringLiteral("ttyACM1"));
    auto* select = child<QComboBox>(*m_window, "portSelect");
    QTRY_COMPARE(select->count(), 2);
    QCOMPARE(text("lPortNote"), QString());
    select->setCurrentIndex(select->findText(QStringLiteral("ttyACM1")));
    QCOMPARE(text("lPortNote"),
             QStringLiteral("Transfers use ttyACM0; restart the program to use ttyACM1"));
    QCOMPARE(label("lPortNote")->textFormat(), Qt::PlainText);
    select->setCurrentIndex(select->findText(QStringLiteral("ttyACM0")));
    QCOMPARE(text("lPortNote"), QString());
}

void TestDeviceWindow::aSimulationKeepsItsPage()
{
    plugIn();
    auto* page = child<QWidget>(*m_window, "simWidget");
    m_window->simulationInProgress(true);
    m_ports->plug(QStringLiteral("ttyACM1"));
    QTest::qWait(300);
    QCOMPARE(child<QComboBox>(*m_window, "portSelect")->count(), 1);
    m_ports->unplug(QStringLiteral("ttyACM0"));
    m_ports->unplug(QStringLiteral("ttyACM1"));
    QTRY_COMPARE(text("lMiolkaPort"), notAvailable());
    QVERIFY(page->isEnabled());
    m_window->simulationInProgress(false);
    QVERIFY(!page->isEnabled());
    QTRY_VERIFY(box() != nullptr);
    box()->close();
}

void TestDeviceWindow::aSimulationEndsWhatTheLinkDoes()
{
    support::Peer& peer = plugIn();
    peer.fallSilentAt(10);
    trigger("actionWriteSettings");
    QVERIFY(support::waitFor([&] { return peer.lines().size() == 10; }));
    progress()->findChild<QPushButton*>()->click();
    peer.setAnswer([](const QByteArray& line) { return line + "\r\n"; });
    child<QPushButton>(*m_window, "pbStartSim")->click();
    QVERIFY(support::waitFor([&] { return peer.lines().size() > 30; }));
    QCOMPARE(peer.lines().mid(10, 2), QStringList({"#ROOT", "#SIMUL"}));
    // The port is the simulation's, whatever is plugged in.
    m_ports->plug(QStringLiteral("ttyACM1"));
    QTest::qWait(300);
    QCOMPARE(child<QComboBox>(*m_window, "portSelect")->count(), 1);
    child<QPushButton>(*m_window, "pbStopSim")->click();
    QTRY_COMPARE(child<QComboBox>(*m_window, "portSelect")->count(), 2);
    QCOMPARE(peer.lines().last(), QStringLiteral("#CLEAR"));
}

void TestDeviceWindow::aQuestionWithoutAnAnswer()
{
    const support::Peer& peer = plugIn();
    QEventLoop loop; // as the program's own, which the end of the program ends
    QTimer::singleShot(0, &loop, [&] {
        QTimer::singleShot(50, &loop, [&] {
            QVERIFY(box() != nullptr);
            QCoreApplication::exit(); // quit() would close windows first, with some versions of Qt
        });
        trigger("actionPowerOff");
        loop.quit();
    });
    loop.exec();
    QTest::qWait(50);
    QVERIFY(peer.lines().isEmpty());
}

void TestDeviceWindow::closingTheWindow()
{
    support::Peer& peer = plugIn();
    peer.fallSilentAt(20);
    trigger("actionWriteSettings");
    QVERIFY(support::waitFor([&] { return peer.lines().size() == 20; }));
    m_window->close();
    QTRY_COMPARE(peer.lines().last(), QStringLiteral("#ROOT"));
    QVERIFY(progress() == nullptr);
    // Also while a box stands that belongs to no window.
    m_window->show();
    m_ports->unplug(QStringLiteral("ttyACM0"));
    QTRY_VERIFY(box() != nullptr);
    m_window->close();
    QVERIFY(box() == nullptr);
}

void TestDeviceWindow::theStatusPageNeverLoops()
{
    support::Peer& peer = plugIn();
    auto* tabs = child<QTabWidget>(*m_window, "tabWidget");
    for (int i = 0; i < 5; ++i) {
        tabs->setCurrentIndex(0);
        tabs->setCurrentIndex(1);
    }
    // The first request starts a query; however many come while it runs, one follows.
    QVERIFY(support::waitFor([&] { return peer.lines().size() == 2 * 93; }));
    QTest::qWait(200);
    QCOMPARE(peer.lines().size(), 2 * 93);
    QVERIFY(box() == nullptr);
}

MIOLKA_MOCKED_TEST_MAIN(TestDeviceWindow)
#include "test_devicewindow.moc"
