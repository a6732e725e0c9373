// SPDX-FileCopyrightText: 2026 The MIOLKAsoft authors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "tests/endtoend/session.h"
#include "tests/support/posix.h"
#include "tests/support/template.h"

#include <QImage>
#include <QtTest>

#include <csignal>

/// The remote control itself, on the program without a device: it must see what is there, do what a
/// person can do and nothing else, and survive what it does not understand.
class TestSession : public QObject
{
    Q_OBJECT

private slots:
    void init();
    void cleanup();
    void seesTextsOfEveryKind();
    void knowsWhatIsMissing();
    void refusesWhatAPersonCouldNotDo_data();
    void refusesWhatAPersonCouldNotDo();
    void survivesWhatItDoesNotUnderstand_data();
    void survivesWhatItDoesNotUnderstand();
    void choosesAndTypesAsAPerson();
    void answersTheDialogInFront();
    void notesDialogsThatCameUp();
    void keepsPicturesOfTheDialogInFront();
    void measuresHowLongTheWindowDidNotReact();
    void endsWithTheProgramsStatus();
    void leavesNoProgramBehind();

private:
    void start(const QStringList& arguments);
    /// Asks for a file to open; the settings at the start count as changed.
    void openFile();
    [[nodiscard]] QByteArray saved();

    std::unique_ptr<support::Session> m_session;
};

namespace {

constexpr int startPage = 0;
constexpr int parametersPage = 1;
constexpr int messagesPage = 2;

} // namespace

void TestSession::init()
{
    start({});
}

void TestSession::start(const QStringList& arguments)
{
    support::SessionOptions options;
    options.withEmulator = false;
    options.arguments = arguments;
    m_session = std::make_unique<support::Session>(options);
    QVERIFY2(m_session->isRunning(), qPrintable(m_session->error()));
}

void TestSession::cleanup()
{
    m_session.reset();
}

void TestSession::openFile()
{
    QVERIFY(m_session->press(QStringLiteral("Ctrl+O")));
    QVERIFY(m_session->waitForDialog(QStringLiteral("Miolka")));
    QVERIFY(m_session->answer(QStringLiteral("No")));
    QVERIFY(m_session->waitForDialog(QStringLiteral("Open file")));
}

/// What the program saves now.
QByteArray TestSession::saved()
{
    static int number = 0;
    const QString file = m_session->path(QStringLiteral("saved%1.mio").arg(++number));
    if (!m_session->trigger(QStringLiteral("actionSaveAs")) ||
        !m_session->waitForDialog(QStringLiteral("Save to file")) || !m_session->chooseFile(file) ||
        !m_session->waitForNoDialog()) {
        return m_session->error().toUtf8();
    }
    return support::readFile(file);
}

void TestSession::seesTextsOfEveryKind()
{
    start({QStringLiteral(MIOLKA_SOURCE_DIR "/docs/example.mio")});
    QVERIFY(m_session->title().startsWith(QStringLiteral("MIOLKAsoft v1.0.4.0 --- /")));
    QCOMPARE(m_session->text(QStringLiteral("lParamAutorCaption")), QStringLiteral("Author:"));
    QCOMPARE(m_session->text(QStringLiteral("leTitle")), QStringLiteral("Training dives, 20 m"));
    QVERIFY(m_session->text(QStringLiteral("pteDescription")).contains(QLatin1Char('\n')));
    QCOMPARE(m_session->text(QStringLiteral("par01Cb1")), QStringLiteral("underwater"));
    QCOMPARE(m_session->text(QStringLiteral("gbParameters")), QStringLiteral("Parameters"));
    QCOMPARE(m_session->text(QStringLiteral("actionNew")), QStringLiteral("New..."));
    QCOMPARE(m_session->isVisible(QStringLiteral("par01Cb1")), std::make_optional(true));
    QCOMPARE(m_session->isVisible(QStringLiteral("leTitle")), std::make_optional(false));
    QCOMPARE(m_session->isEnabled(QStringLiteral("actionNew")), std::make_optional(true));
    QCOMPARE(m_session->isEnabled(QStringLiteral("actionReset")), std::make_optional(false));
    QCOMPARE(m_session->items(QStringLiteral("par01Cb1")).first(), QStringLiteral("anytime"));
    QCOMPARE(m_session->index(QStringLiteral("par01Cb1")), 1);
    QVERIFY(m_session->dialog().isEmpty());
}

void TestSession::knowsWhatIsMissing()
{
    QVERIFY(m_session->text(QStringLiteral("nothing")).isNull());
    QVERIFY(!m_session->error().isEmpty());
    QVERIFY(m_session->isEnabled(QStringLiteral("nothing")) != std::make_optional(false));
    QVERIFY(m_session->isVisible(QStringLiteral("nothing")) != std::make_optional(false));
    QCOMPARE(m_session->index(QStringLiteral("nothing")), -1);
    QVERIFY(m_session->items(QStringLiteral("nothing")).isEmpty());
}

void TestSession::refusesWhatAPersonCouldNotDo_data()
{
    QTest::addColumn<QByteArray>("line");

    const auto row = [](const char* name, const char* line) {
        QTest::newRow(name) << QByteArray(line);
    };
    row("a disabled action", R"({"request":"trigger","name":"actionReset"})");
    row("an action that is not there", R"({"request":"trigger","name":"actionNothing"})");
    row("a box on another page", R"({"request":"choose","name":"tim1Cb1","index":1})");
    row("an item before the first", R"({"request":"choose","name":"par01Cb1","index":-1})");
    row("an item behind the last", R"({"request":"choose","name":"par01Cb1","index":99999})");
    row("a page that is not there", R"({"request":"page","index":9})");
    row("a page before the first", R"({"request":"page","index":-1})");
    row("an answer without a dialog", R"({"request":"answer","button":"Yes"})");
    row("to cancel nothing", R"({"request":"cancel"})");
    row("a file without a dialog", R"({"request":"chooseFile","path":"/nowhere"})");
    row("a click on what is no button", R"({"request":"click","name":"leTitle"})");
    row("a text on a page out of sight", R"({"request":"type","name":"leTitle","text":"x"})");
    row("no key", R"({"request":"key","key":""})");
    row("a picture in no directory", R"({"request":"grab","file":"/nowhere/picture.png"})");
}

void TestSession::refusesWhatAPersonCouldNotDo()
{
    QFETCH(QByteArray, line);

    const QJsonObject answer = m_session->askRaw(line);
    QCOMPARE(answer.value(QStringLiteral("ok")), QJsonValue(false));
    QVERIFY(!answer.value(QStringLiteral("error")).toString().isEmpty());
    QCOMPARE(saved(), support::settingsText(support::templateImage()));
}

void TestSession::survivesWhatItDoesNotUnderstand_data()
{
    QTest::addColumn<QByteArray>("line");

    QTest::newRow("nothing") << QByteArray();
    QTest::newRow("no JSON") << QByteArray("hello");
    QTest::newRow("bytes") << QByteArray::fromHex("00 FF FE 00 80");
    QTest::newRow("a list") << QByteArray("[1,2]");
    QTest::newRow("an empty object") << QByteArray("{}");
    QTest::newRow("an unknown request") << QByteArray(R"({"request":"explode"})");
    QTest::newRow("no text as a request") << QByteArray(R"({"request":{"a":[]}})");
    QTest::newRow("no text as a name") << QByteArray(R"({"request":"text","name":[1]})");
    QTest::newRow("no name") << QByteArray(R"({"request":"text"})");
    QTest::newRow("no file") << QByteArray(R"({"request":"grab"})");
    QTest::newRow("no number") << QByteArray(R"({"request":"setValue","name":"par01Sb1"})");
    QTest::newRow("deep") << QByteArray(100000, '[');
    QTest::newRow("long") << QByteArray(900000, 'x');
}

void TestSession::survivesWhatItDoesNotUnderstand()
{
    QFETCH(QByteArray, line);

    QCOMPARE(m_session->askRaw(line).value(QStringLiteral("ok")), QJsonValue(false));
    QVERIFY2(m_session->isRunning(), qPrintable(m_session->error()));
}

void TestSession::choosesAndTypesAsAPerson()
{
    const auto did = [this](bool done) {
        return done ? QByteArray() : m_session->error().toUtf8();
    };
    QCOMPARE(did(m_session->page(messagesPage)), QByteArray());
    QCOMPARE(did(m_session->chooseText(QStringLiteral("par01Cb1"), QStringLiteral("underwater"))),
             QByteArray());
    QCOMPARE(m_session->text(QStringLiteral("par01Cb1")), QStringLiteral("underwater"));
    QCOMPARE(did(m_session->chooseText(QStringLiteral("par01Cb2"), QStringLiteral("Depth"))),
             QByteArray());
    QCOMPARE(did(m_session->setValue(QStringLiteral("par01Sb1"), 5)), QByteArray());
    QCOMPARE(did(m_session->page(parametersPage)), QByteArray());
    QCOMPARE(did(m_session->type(QStringLiteral("leTitle"), QStringLiteral("By hand"))),
             QByteArray());
    QCOMPARE(m_session->text(QStringLiteral("leTitle")), QStringLiteral("By hand"));

    // Every field's own bytes: condition, measured value, threshold in centimetres; title.
    QByteArray expected = support::templateImage();
    expected.replace(320, 5, QByteArray::fromHex("00 20 00 F4 01"));
    expected.replace(32, 8, QByteArray("By hand").append('\0'));
    QCOMPARE(saved(), support::settingsText(expected));
}

void TestSession::answersTheDialogInFront()
{
    QVERIFY(m_session->choose(QStringLiteral("par01Cb1"), 1));
    QVERIFY(m_session->trigger(QStringLiteral("actionNew")));
    QVERIFY(m_session->waitForDialog(QStringLiteral("Miolka")));
    QCOMPARE(m_session->dialog().value(QStringLiteral("class")).toString(),
             QStringLiteral("QMessageBox"));
    QCOMPARE(m_session->dialog().value(QStringLiteral("text")).toString(),
             QStringLiteral("Do you want to save changes?"));
    QVERIFY(!m_session->trigger(QStringLiteral("actionOpen")));
    QVERIFY(!m_session->choose(QStringLiteral("par01Cb1"), 0));
    QVERIFY(!m_session->page(startPage));
    QVERIFY(!m_session->answer(QStringLiteral("Retry")));
    QCOMPARE(m_session->index(QStringLiteral("par01Cb1")), 1);
    QVERIFY(m_session->answer(QStringLiteral("No")));
    QVERIFY(m_session->waitForNoDialog());
    QCOMPARE(m_session->text(QStringLiteral("par01Cb1")), QStringLiteral("never"));
}

void TestSession::notesDialogsThatCameUp()
{
    QVERIFY(m_session->takeDialogs().isEmpty());
    openFile();
    QVERIFY(m_session->answer(QStringLiteral("escape")));
    QVERIFY(m_session->waitForNoDialog());
    const QJsonArray dialogs = m_session->takeDialogs();
    QCOMPARE(dialogs.size(), 2);
    QCOMPARE(dialogs.first().toObject().value(QStringLiteral("title")).toString(),
             QStringLiteral("Miolka"));
    QCOMPARE(dialogs.last().toObject().value(QStringLiteral("title")).toString(),
             QStringLiteral("Open file"));
    QVERIFY(m_session->takeDialogs().isEmpty());
}

void TestSession::keepsPicturesOfTheDialogInFront()
{
    const auto picture = [this](const char* name) {
        const QString file = m_session->path(QString::fromLatin1(name));
        return m_session->grab(file) ? QImage(file) : QImage();
    };
    const QImage bare = picture("bare.png");
    QCOMPARE(bare.size(), QSize(1116, 761));
    openFile();
    const QImage covered = picture("covered.png");
    QCOMPARE(covered.size(), bare.size());
    QVERIFY(covered != bare);
    QVERIFY(m_session->answer(QStringLiteral("escape")));
    QVERIFY(m_session->waitForNoDialog());
}

void TestSession::measuresHowLongTheWindowDidNotReact()
{
    constexpr int stop = 400;
    QTest::qWait(stop); // the program is still drawing itself
    QVERIFY(m_session->takeLongestGap() >= 0);
    QTest::qWait(stop);
    const int usual = m_session->takeLongestGap();
    m_session->pauseProgram(stop);
    const int paused = m_session->takeLongestGap();
    QVERIFY2(usual < stop, qPrintable(QString::number(usual)));
    QVERIFY2(paused >= stop, qPrintable(QString::number(paused)));
}

void TestSession::endsWithTheProgramsStatus()
{
    QVERIFY(m_session->close());
    QCOMPARE(m_session->exitStatus(), std::make_optional(0));
    QVERIFY(!m_session->isRunning());
    QVERIFY(m_session->text(QStringLiteral("leTitle")).isNull());
}

void TestSession::leavesNoProgramBehind()
{
    const auto process = static_cast<pid_t>(m_session->processId());
    QVERIFY(process > 0);
    QCOMPARE(kill(process, 0), 0);
    m_session.reset();
    QVERIFY(kill(process, 0) != 0);
}

QTEST_GUILESS_MAIN(TestSession)
#include "test_session.moc"
