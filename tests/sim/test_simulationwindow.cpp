// SPDX-FileCopyrightText: 2026 The MIOLKAsoft authors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "tests/device/devicewindowtest.h"
#include "tests/sim/simulation.h"

#include <QComboBox>
#include <QElapsedTimer>
#include <QMenuBar>
#include <QPushButton>
#include <QTabWidget>
#include <QToolBar>

namespace simulation = support::simulation;
using support::child;
using support::waitFor;

/// A simulation in the window: what is locked meanwhile, who has the port, and what comes after it.
class TestSimulationWindow : public support::DeviceWindowTest
{
    Q_OBJECT

private slots:
    void withoutADevice();
    void lockedWhileItRuns();
    void startPageAsksOnceAfterManySimulations();
    void startDuringAStatusQuery_data();
    void startDuringAStatusQuery();
    void aCommandThatWaitedFollowsTheSimulation();
    void aSecondDeviceDuringADive();
    void theDeviceVanishes_data();
    void theDeviceVanishes();
    void closedWhileItRuns();
    void filesAreNotDroppedMeanwhile();
    void thePageHasItsBackground();

private:
    [[nodiscard]] QPushButton* button(const char* name) const
    {
        return child<QPushButton>(*m_window, name);
    }
    [[nodiscard]] QTabWidget* pages() const { return child<QTabWidget>(*m_window, "tabWidget"); }
    [[nodiscard]] bool isIdle() const
    {
        return button("pbStartSim")->isEnabledTo(child<QWidget>(*m_window, "simWidget"));
    }
    [[nodiscard]] bool isLocked() const;

    /// Until a few cycles were made.
    void start(const support::Peer& peer)
    {
        button("pbStartSim")->click();
        const auto some = peer.lines().size() + 50;
        QVERIFY(waitFor([&] { return peer.lines().size() > some; }));
    }
    void stop()
    {
        button("pbStopSim")->click();
        QVERIFY(waitFor([this] { return isIdle(); }));
    }
};

bool TestSimulationWindow::isLocked() const
{
    const QList<QWidget*> widgets = {m_window->menuBar(), child<QToolBar>(*m_window, "mainToolBar"),
                                     child<QWidget>(*m_window, "tabStart"),
                                     child<QWidget>(*m_window, "tabTimery"),
                                     child<QWidget>(*m_window, "tabKomunikaty")};
    const auto locked = std::count_if(widgets.cbegin(), widgets.cend(),
                                      [](QWidget* widget) { return !widget->isEnabled(); });
    if (locked != 0 && locked != widgets.size()) {
        qFatal("some of the window is locked");
    }
    return locked != 0;
}

void TestSimulationWindow::withoutADevice()
{
    auto* page = child<QWidget>(*m_window, "simWidget");
    QVERIFY(!page->isEnabled());
    QCOMPARE(page->toolTip(), QStringLiteral("Connect a Miolka first."));
    plugIn();
    QVERIFY(page->isEnabled());
    QVERIFY(button("pbStartSim")->isEnabled());
    QVERIFY(page->toolTip().isEmpty());
}

void TestSimulationWindow::lockedWhileItRuns()
{
    support::Peer& peer = plugIn();
    pages()->setCurrentIndex(3);
    QVERIFY(!isLocked());
    start(peer);
    QVERIFY(isLocked());
    QVERIFY(button("pbStopSim")->isEnabled());
    peer.forgetLines();
    pages()->setCurrentIndex(0);
    pages()->setCurrentIndex(3);
    QVERIFY(waitFor([&peer] { return peer.lines().size() > 100; }));
    QVERIFY(!peer.lines().contains(QStringLiteral("#HEX"))); // no status query
    stop();
    QVERIFY(!isLocked());
    QCOMPARE(peer.lines().mid(peer.lines().size() - 2), simulation::end());
}

void TestSimulationWindow::startPageAsksOnceAfterManySimulations()
{
    support::Peer& peer = plugIn();
    pages()->setCurrentIndex(3);
    constexpr int count = 10;
    for (int i = 0; i < count; ++i) {
        start(peer);
        stop();
    }
    const QSignalSpy asked(m_window.get(), &MainWindow::statusRequested);
    const QSignalSpy shown(m_window->findChild<cMyMiolka*>(), &cMyMiolka::statusChanged);
    pages()->setCurrentIndex(0);
    QVERIFY(waitFor([&shown] { return shown.count() == 1; }));
    QCOMPARE(asked.count(), 1);
    pages()->setCurrentIndex(1);
    pages()->setCurrentIndex(0);
    QVERIFY(waitFor([&shown] { return shown.count() == 2; }));
    QCOMPARE(asked.count(), 2);
}

void TestSimulationWindow::startDuringAStatusQuery_data()
{
    QTest::addColumn<int>("line");
    QTest::newRow("before its first answer") << 1;
    QTest::newRow("in its middle") << 40;
    QTest::newRow("before its last answer") << 93;
}

void TestSimulationWindow::startDuringAStatusQuery()
{
    QFETCH(int, line);
    support::Peer& peer = plugIn();
    peer.setAnswer(simulation::answering(1013));
    pages()->setCurrentIndex(3);
    const QSignalSpy shown(m_window->findChild<cMyMiolka*>(), &cMyMiolka::statusChanged);
    // The line has come and its answer is on its way when Start is pressed.
    QMetaObject::Connection once = connect(&peer, &support::Peer::lineTaken, this, [&](int count) {
        if (count == line) {
            disconnect(once);
            button("pbStartSim")->click();
        }
    });
    child<QPushButton>(*m_window, "pbGetStatus")->click();
    QVERIFY(waitFor([&] { return simulation::pressures(peer.lines()).size() > 3; }));
    QVERIFY(shown.isEmpty());
    QVERIFY(box() == nullptr);
    const QStringList lines = peer.lines().mid(line);
    // The query takes its leave, and then the simulation begins.
    QCOMPARE(lines.mid(0, 5), QStringList("#ROOT") + simulation::begin());
    QCOMPARE(simulation::pressures(lines).mid(0, 3), QVector<int>(3, 1013));
    stop();
    button("pbGetStatus")->click();
    QVERIFY(waitFor([&shown] { return shown.count() == 1; }));
}

void TestSimulationWindow::aCommandThatWaitedFollowsTheSimulation()
{
    support::Peer& peer = plugIn();
    auto* link = m_window->findChild<cMyMiolka*>();
    child<QPushButton>(*m_window, "pbGetStatus")->click();
    QVERIFY(waitFor([&peer] { return peer.lines().size() > 10; }));
    link->clearStats(); // as after its question
    start(peer);
    QVERIFY(!peer.lines().contains(QStringLiteral("#CLEAR")));
    stop();
    QVERIFY(waitFor([&peer] { return peer.lines().count(QStringLiteral("#CLEAR")) == 2; }));
    QCOMPARE(peer.lines().mid(peer.lines().size() - 3), simulation::end() + QStringList("#CLEAR"));
    const QSignalSpy shown(link, &cMyMiolka::statusChanged);
    child<QPushButton>(*m_window, "pbGetStatus")->click();
    QVERIFY(waitFor([&shown] { return shown.count() == 1; }));
}

void TestSimulationWindow::aSecondDeviceDuringADive()
{
    support::Peer& peer = plugIn();
    auto* ports = child<QComboBox>(*m_window, "portSelect");
    start(peer);
    m_ports->plug(QStringLiteral("ttyACM1"));
    QTest::qWait(500);
    QVERIFY(!isIdle());
    QCOMPARE(ports->count(), 1);
    const auto lines = peer.lines().size();
    QVERIFY(waitFor([&] { return peer.lines().size() > lines + 50; }));
    QVERIFY(m_ports->peer(QStringLiteral("ttyACM1")).lines().isEmpty());
    stop();
    QVERIFY(waitFor([ports] { return ports->count() == 2; }));
    QCOMPARE(ports->currentText(), QStringLiteral("ttyACM0"));
}

void TestSimulationWindow::theDeviceVanishes_data()
{
    QTest::addColumn<bool>("isSilent");
    QTest::newRow("in the middle of it") << false;
    QTest::newRow("after it fell silent") << true;
}

void TestSimulationWindow::theDeviceVanishes()
{
    QFETCH(bool, isSilent);
    support::Peer& peer = plugIn();
    start(peer);
    if (isSilent) {
        peer.fallSilentAt(5);
        QTest::qWait(100);
    }
    QElapsedTimer clock;
    clock.start();
    m_ports->unplug(QStringLiteral("ttyACM0"));
    QVERIFY(waitFor([this] { return isIdle(); }));
    QVERIFY(clock.elapsed() < cMyLineChannel::answerPatience / 2);
    QVERIFY(!isLocked());
    QVERIFY(waitFor([this] { return !child<QWidget>(*m_window, "simWidget")->isEnabled(); }));
    // Whoever unplugged it sees one box, as after any unplugging.
    QVERIFY(waitFor([] { return box() != nullptr; }));
    box()->close();
    QTest::qWait(300);
    QVERIFY(box() == nullptr);
    // And it can be plugged in again.
    support::Peer& again = plugIn();
    start(again);
    stop();
}

void TestSimulationWindow::closedWhileItRuns()
{
    support::Peer& peer = plugIn();
    start(peer);
    const QSignalSpy shown(m_window->findChild<cMyMiolka*>(), &cMyMiolka::statusChanged);
    QVERIFY(m_window->close());
    QVERIFY(isIdle());
    const auto lines = peer.lines().size();
    QTest::qWait(300);
    // What was in the line when it was closed still comes, and no more.
    QVERIFY(peer.lines().size() <= lines + 3);
    QVERIFY(shown.isEmpty());
}

void TestSimulationWindow::filesAreNotDroppedMeanwhile()
{
    support::Peer& peer = plugIn();
    start(peer);
    QMimeData file;
    file.setUrls({QUrl::fromLocalFile(QStringLiteral("/tmp/some.mio"))});
    QDragEnterEvent enter(QPoint(10, 10), Qt::CopyAction, &file, Qt::LeftButton, Qt::NoModifier);
    enter.ignore();
    QCoreApplication::sendEvent(m_window.get(), &enter);
    QVERIFY(!enter.isAccepted());
    stop();
}

void TestSimulationWindow::thePageHasItsBackground()
{
    pages()->setCurrentIndex(3);
    auto* page = child<QWidget>(*m_window, "simWidget");
    QVERIFY(page->styleSheet().startsWith(QStringLiteral("QWidget#simWidget {")));
    const QImage picture = page->grab().toImage();
    // The gradient gets lighter towards its end.
    const QColor start = picture.pixelColor(2, 2);
    const QColor end = picture.pixelColor(picture.width() - 3, picture.height() - 3);
    QVERIFY(end.lightness() > start.lightness() + 30);
}

MIOLKA_MOCKED_TEST_MAIN(TestSimulationWindow)
#include "test_simulationwindow.moc"
