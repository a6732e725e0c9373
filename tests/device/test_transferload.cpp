// SPDX-FileCopyrightText: 2026 The MIOLKAsoft authors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "device/miolka.h"
#include "device/transferprogress.h"
#include "image/memoryarea.h"
#include "tests/support/guitest.h"
#include "tests/support/peer.h"
#include "tests/support/posix.h"
#include "tests/support/serveddevice.h"

#include <QEventLoop>
#include <QProgressDialog>
#include <QPushButton>
#include <QRandomGenerator>
#include <QTimer>

/// Long transfers with the modal dialog to a device that answers at once, from a thread of its own.
class TestTransferLoad : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase();
    void cleanupTestCase();
    void manyTransfers();
    void oneTransfer();
    void oneLongTransfer();
    void aStatusQueryFollowsAnUpload();
    void cancelAtRandomLines();

private:
    void write(int lineCount);
    /// A true event loop: QTest's own waiting sleeps between its looks.
    bool isDoneWithin(int milliseconds)
    {
        QTimer patience;
        patience.setSingleShot(true);
        connect(&patience, &QTimer::timeout, &m_loop, [this] { m_loop.exit(1); });
        patience.start(milliseconds);
        return m_loop.exec() == 0;
    }

    support::ServedDevice m_device;
    cMyMemoryArea m_image;
    std::unique_ptr<QWidget> m_window;
    cMyMiolka* m_link = nullptr;
    cMyTransferProgress* m_progress = nullptr;
    QEventLoop m_loop;
    int m_depth = 0;
    int m_deepest = 0;
    int m_answers = 0;
};

namespace {

#if defined(__SANITIZE_ADDRESS__) || defined(__SANITIZE_THREAD__)
constexpr int runs = 10;
constexpr int manyLines = 20000;
#else
constexpr int runs = 100;
constexpr int manyLines = 100000;
#endif
constexpr int linesEach = 3000;
constexpr int wordLines = 4;

QStringList records(int count)
{
    QStringList lines;
    lines.reserve(count);
    for (int i = 1; i < count; ++i) {
        lines.append(QStringLiteral(":100100002146017E17C20001FF5F16002148011988"));
    }
    return lines << QStringLiteral(":00000001FF");
}

} // namespace

void TestTransferLoad::initTestCase()
{
    QLoggingCategory::setFilterRules(QStringLiteral("miolka.link.debug=false"));
    m_window = std::make_unique<QWidget>();
    m_window->show();
    m_link = new cMyMiolka(&m_image, m_window.get());
    m_progress = new cMyTransferProgress(*m_window);
    connect(m_progress, &cMyTransferProgress::canceled, m_link, &cMyMiolka::breakCommunication);
    connect(m_link, &cMyMiolka::writeProgress, this, [this](int min, int max, int progress) {
        ++m_depth;
        m_deepest = std::max(m_deepest, m_depth);
        m_answers = progress;
        m_progress->show(min, max, progress);
        --m_depth;
    });
    connect(m_link, &cMyMiolka::portHeld, &m_loop, [this](const QString& port) {
        if (port.isEmpty()) {
            m_loop.exit(0);
        }
    });
    const QSignalSpy shown(m_link, &cMyMiolka::statusChanged);
    m_link->setPort(m_device.path());
    QVERIFY(support::waitFor([&shown] { return shown.count() == 1; }));
}

void TestTransferLoad::cleanupTestCase()
{
    m_window.reset();
}

void TestTransferLoad::write(int lineCount)
{
    QStringList lines = records(lineCount - wordLines);
    m_answers = 0;
    m_progress->open(QStringLiteral("Download.."));
    m_link->writeSettings(FLASH, lines);
}

void TestTransferLoad::manyTransfers()
{
    long settled = 0;
    for (int run = 0; run < runs; ++run) {
        write(linesEach);
        QVERIFY(isDoneWithin(60000));
        QCOMPARE(m_answers, linesEach);
        QCOMPARE(m_deepest, 1);
        QVERIFY(m_window->findChildren<QProgressDialog*>().size() <= 1);
        if (run == runs / 2) {
            settled = support::peakMemory();
        }
    }
#if !defined(__SANITIZE_ADDRESS__) && !defined(__SANITIZE_THREAD__)
    QVERIFY(support::peakMemory() - settled < 2048); // KiB
#else
    Q_UNUSED(settled)
#endif
}

void TestTransferLoad::oneTransfer()
{
    write(linesEach);
    QVERIFY(isDoneWithin(200000));
    QCOMPARE(m_answers, linesEach);
}

void TestTransferLoad::oneLongTransfer()
{
    write(manyLines);
    QVERIFY(isDoneWithin(300000));
    QCOMPARE(m_answers, manyLines);
    QCOMPARE(m_deepest, 1);
}

void TestTransferLoad::aStatusQueryFollowsAnUpload()
{
    const QSignalSpy shown(m_link, &cMyMiolka::statusChanged);
    write(linesEach);
    m_link->readStatus(); // while it runs
    QVERIFY(isDoneWithin(60000));
    QVERIFY(support::waitFor([&shown] { return shown.count() == 1; }));
    QCOMPARE(shown.at(0).at(0).toStringList().at(0), QStringLiteral("1"));
    QCOMPARE(shown.at(0).at(0).toStringList().at(7), QStringLiteral("English"));
}

void TestTransferLoad::cancelAtRandomLines()
{
    QRandomGenerator random(4050);
    for (int run = 0; run < 10; ++run) {
        const int last = random.bounded(1, 299);
        const auto cancelling =
            connect(m_link, &cMyMiolka::writeProgress, this, [this, last](int, int, int progress) {
                if (progress == last) {
                    m_window->findChild<QProgressDialog*>()->findChild<QPushButton*>()->click();
                }
            });
        write(300);
        QVERIFY(isDoneWithin(60000));
        disconnect(cancelling);
        QCOMPARE(m_answers, last);
        write(100);
        QVERIFY(isDoneWithin(60000));
        QCOMPARE(m_answers, 100);
    }
}

MIOLKA_GUI_TEST_MAIN(TestTransferLoad)
#include "test_transferload.moc"
