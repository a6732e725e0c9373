// SPDX-FileCopyrightText: 2026 The MIOLKAsoft authors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "device/replies.h"
#include "tests/device/devicewindowtest.h"
#include "tests/support/foreigntext.h"
#include "tests/support/librarytext.h"
#include "tests/support/pipetrap.h"

#include <QComboBox>
#include <QLoggingCategory>
#include <QPlainTextEdit>
#include <QPushButton>
#include <QStatusBar>
#include <QTabWidget>
#include <QToolBar>

using support::child;

/// What a device and its port say is shown letter by letter, wherever it is shown.
class TestForeignReplies : public support::DeviceWindowTest
{
    Q_OBJECT

private slots:
    void initTestCase();
    void textsOfTheStatus_data();
    void textsOfTheStatus();
    void versionsThatNeverEnd();
    void namesOfPorts_data();
    void namesOfPorts();
    void answersInATransfer_data();
    void answersInATransfer();
    void cleanupTestCase();

private:
    /// Answers every request for bytes of a memory out of m_memories.
    [[nodiscard]] QByteArray answer(const QByteArray& line);
    /// Whether the window can still be as small as it should.
    [[nodiscard]] bool isSmall() const
    {
        const QSize least = m_window->minimumSizeHint();
        return least.width() <= 640 && least.height() <= 480;
    }
    void showStartPage();
    void askForStatus();
    /// Waits for the one status that what was just done asks for.
    static void waitForStatus(const QSignalSpy& shown)
    {
        if (!support::waitFor([&shown] { return shown.count() == 1; })) {
            qFatal("no status was shown");
        }
    }
    [[nodiscard]] cMyMiolka* link() const { return m_window->findChild<cMyMiolka*>(); }

    QTemporaryDir m_directory;
    std::unique_ptr<support::PipeTrap> m_pipe;
    QByteArray m_memory;
    std::map<QByteArray, QByteArray> m_memories;
};

QByteArray TestForeignReplies::answer(const QByteArray& line)
{
    if (!line.startsWith(':') || line == ":00000001FF") {
        m_memory = line.startsWith('#') && line != "#READ" ? line : m_memory;
        return line + "\r\n";
    }
    const int count = line.mid(1, 2).toInt(nullptr, 16);
    const auto address = static_cast<quint16>(line.mid(3, 4).toUInt(nullptr, 16));
    constexpr int memorySize = 0x10000;
    const QByteArray bytes = m_memories[m_memory].leftJustified(memorySize, '\0');
    return support::libraryRecord(image::DataRecord, address, bytes.mid(address, count));
}

void TestForeignReplies::showStartPage()
{
    const QSignalSpy shown(link(), &cMyMiolka::statusChanged);
    child<QTabWidget>(*m_window, "tabWidget")->setCurrentIndex(0);
    waitForStatus(shown);
}

void TestForeignReplies::askForStatus()
{
    const QSignalSpy shown(link(), &cMyMiolka::statusChanged);
    child<QPushButton>(*m_window, "pbGetStatus")->click();
    waitForStatus(shown);
}

void TestForeignReplies::initTestCase()
{
    QLoggingCategory::setFilterRules(QStringLiteral("miolka.link.debug=false"));
    QVERIFY(QDir::setCurrent(m_directory.path()));
    m_pipe = std::make_unique<support::PipeTrap>(m_directory.filePath(QStringLiteral("pipe")));
}

void TestForeignReplies::textsOfTheStatus_data()
{
    support::addForeignTexts();
}

void TestForeignReplies::textsOfTheStatus()
{
    QFETCH(QString, text);
    support::Peer& peer = plugIn();
    showStartPage();
    const QByteArray bytes = text.toLatin1();
    m_memories["#EEPROM"] = QByteArray(16, '\1') + bytes.left(15).leftJustified(16, '\0') +
                            bytes.left(31).leftJustified(480, '\0') + bytes;
    m_memories["#FLASH"] = QByteArray(0xFFE0, '\1') + bytes.left(15);
    peer.setAnswer([this](const QByteArray& line) { return answer(line); });
    askForStatus();
    support::Showing showing;
    showing.end(*m_window);
    support::verifyLiteral(*label("lParamAutor"), text.left(15));
    support::verifyLiteral(*label("lParamTytul"), text.left(31));
    support::verifyLiteral(*label("lVoiceLang"), text.left(15));
    QCOMPARE(child<QPlainTextEdit>(*m_window, "pteParamDesc")
                 ->toPlainText()
                 .replace(QLatin1Char('\n'), QLatin1Char('\r')),
             text);
    QVERIFY(!m_pipe->wasOpened());
    QVERIFY(isSmall());
}

void TestForeignReplies::versionsThatNeverEnd()
{
    support::Peer& peer = plugIn();
    showStartPage();
    bool isFirst = true;
    const QByteArray most(255, '\xFF');
    peer.setAnswer([&isFirst, most](const QByteArray&) {
        return std::exchange(isFirst, false) ? QByteArray("#ROM\r\n")
                                             : support::libraryRecord(image::DataRecord, 0, most);
    });
    QString::size_type length = 0;
    connect(link(), &cMyMiolka::statusChanged, this, [&length](const QStringList& texts) {
        length = texts.at(device::FirmwareVersion).size();
    });
    askForStatus();
    support::Showing showing;
    showing.end(*m_window);
    QVERIFY(length > 70000);
    // The beginning, and that there is more.
    QVERIFY(text("lFirmwareVersion").startsWith(QStringLiteral("255.255.255.")));
    QVERIFY(text("lFirmwareVersion").endsWith(QChar(0x2026)));
    constexpr int widestScreen = 4096;
    QVERIFY(child<QWidget>(*m_window, "startContents")->width() < widestScreen);
    QVERIFY(isSmall());
}

void TestForeignReplies::namesOfPorts_data()
{
    QTest::addColumn<QString>("name");
    QTest::newRow("a picture") << QStringLiteral("<img src=pipe>");
    QTest::newRow("nested tables") << QStringLiteral("<table><tr><td>").repeated(16);
    QTest::newRow("places and mnemonics") << QStringLiteral("%2 a&b [*]");
    QTest::newRow("wide") << QString(200, QLatin1Char('W'));
}

void TestForeignReplies::namesOfPorts()
{
    QFETCH(QString, name);
    m_ports->plug(name);
    auto* select = child<QComboBox>(*m_window, "portSelect");
    QTRY_COMPARE(select->currentText(), name);
    child<QTabWidget>(*m_window, "tabWidget")->setCurrentIndex(0);
    support::Showing showing;
    showing.end(*m_window);
    support::verifyLiteral(*label("lMiolkaPort"), name);
    m_ports->plug(name + QLatin1Char('2'));
    QTRY_COMPARE(select->count(), 2);
    select->setCurrentIndex(1 - select->currentIndex());
    support::Showing note;
    note.end(*m_window);
    QVERIFY(text("lPortNote").contains(name));
    QCOMPARE(label("lPortNote")->textFormat(), Qt::PlainText);
    // The list of ports is still there at the smallest size, and so is what stands after it, once
    // the tool bar has found its layout.
    m_window->resize(640, 480);
    for (const QWidget* each : {static_cast<QWidget*>(select),
                                child<QToolBar>(*m_window, "mainToolBar")
                                    ->widgetForAction(child<QAction>(*m_window, "actionExit"))}) {
        QVERIFY(support::waitFor([this, each] {
            const QRect place(each->mapTo(m_window.get(), QPoint(0, 0)), each->size());
            return each->isVisible() && m_window->rect().contains(place);
        }));
    }
    QVERIFY(!m_pipe->wasOpened());
    QVERIFY(isSmall());
}

void TestForeignReplies::answersInATransfer_data()
{
    support::addForeignTexts();
}

void TestForeignReplies::answersInATransfer()
{
    QFETCH(QString, text);
    support::Peer& peer = plugIn();
    const QByteArray words = QByteArray(text.toUtf8()).replace('\r', ' ');
    peer.setAnswer([words](const QByteArray& /*line*/) { return words + "\r\n"; });
    trigger("actionReadSettings");
    QVERIFY(progress() != nullptr);
    QCOMPARE(progress()->labelText(), QStringLiteral("Upload.."));
    QVERIFY(support::waitFor([] { return progress() == nullptr; }));
    QVERIFY(box() == nullptr);
    askForStatus();
    QCOMPARE(child<QStatusBar>(*m_window, "statusBar")->currentMessage(), QString());
    QCOMPARE(label("lVoiceLang")->text(), QString());
    QCOMPARE(support::imageOf(*m_window), support::templateImage());
    QVERIFY(!m_pipe->wasOpened());
}

void TestForeignReplies::cleanupTestCase()
{
    support::Showing::report();
    QVERIFY(support::Showing::longest() < support::Showing::hang);
    m_pipe.reset();
}

MIOLKA_MOCKED_TEST_MAIN(TestForeignReplies)
#include "test_foreignreplies.moc"
