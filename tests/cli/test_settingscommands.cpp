// SPDX-FileCopyrightText: 2026 The MIOLKAsoft authors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "editor/fieldtext.h"
#include "tests/cli/settingsdirectory.h"

#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>

/// The commands that begin, show, compare and check settings files.
class TestSettingsCommands : public QObject
{
    Q_OBJECT

private slots:
    void init() { m_directory = std::make_unique<support::SettingsDirectory>(); }
    void newWritesTheDefaults();
    void newKeepsWhatIsThere();
    void newWhereNoFileCanBe_data();
    void newWhereNoFileCanBe();
    void showTellsFieldsAndSentences();
    void showTellsMembersIfAskedTo();
    void showAsJson();
    void getOneIsThePlainValue();
    void getAsJson();
    void diff_data();
    void diff();
    void diffAsJson();
    void bytesThatAFileDoesNotGiveAreTheDefaults();
    void checkTellsDoubts();
    void checkAsJson();
    void badFilesEndEveryCommand_data();
    void badFilesEndEveryCommand();
    void foreignTextIsEscaped();

private:
    std::unique_ptr<support::SettingsDirectory> m_directory;
};

namespace {

/// The line that begins with a name, or nothing.
QString lineOf(const QString& out, const QString& name)
{
    for (const QString& line : out.split('\n')) {
        if (line.startsWith(name + QLatin1Char(' '))) {
            return line.mid(name.size()).trimmed();
        }
    }
    return {};
}

} // namespace

void TestSettingsCommands::newWritesTheDefaults()
{
    const support::ToolResult result = m_directory->run({"new", m_directory->path()});
    QCOMPARE(result.status, 0);
    QCOMPARE(result.out, QString());
    QCOMPARE(support::readFile(m_directory->path()),
             support::settingsText(support::templateImage()));
    QCOMPARE(m_directory->backups(), QStringList());
}

void TestSettingsCommands::newKeepsWhatIsThere()
{
    support::writeFile(m_directory->path(), "mine");
    const support::ToolResult refused = m_directory->run({"new", m_directory->path()});
    QCOMPARE(refused.status, 5);
    QVERIFY2(refused.err.contains("a.mio: is there already"), qPrintable(refused.err));
    QCOMPARE(support::readFile(m_directory->path()), QByteArray("mine"));

    const support::ToolResult forced = m_directory->run({"new", "--force", m_directory->path()});
    QCOMPARE(forced.status, 0);
    QCOMPARE(support::readFile(m_directory->path()),
             support::settingsText(support::templateImage()));
    QCOMPARE(m_directory->backups().size(), 1);
    QVERIFY2(forced.err.contains(m_directory->backups().first()), qPrintable(forced.err));
    QCOMPARE(support::readFile(m_directory->backups().first()), QByteArray("mine"));
}

void TestSettingsCommands::newWhereNoFileCanBe_data()
{
    QTest::addColumn<QString>("file");
    QTest::addColumn<QString>("reason");
    QTest::newRow("no such directory") << "none/a.mio"
                                       << "is its directory there?";
    QTest::newRow("directory") << "."
                               << "is no regular file";
    QTest::newRow("no name") << ""
                             << "there can be no file of that name";
}

void TestSettingsCommands::newWhereNoFileCanBe()
{
    QFETCH(QString, file);
    QFETCH(QString, reason);
    const QString there = file.isEmpty() ? file : m_directory->path(qPrintable(file));
    const support::ToolResult result = m_directory->run({"new", "--force", there});
    QCOMPARE(result.status, 5);
    QVERIFY2(result.err.contains(reason), qPrintable(result.err));
}

void TestSettingsCommands::showTellsFieldsAndSentences()
{
    QByteArray image = support::with(support::templateImage(), "messageRule03.condition", 0);
    image = support::with(image, "messageRule03.measuredValue", 32);
    image = support::with(image, "messageRule03.threshold", 500);
    image = support::with(image, "messageRule03.message", 32);
    image = support::with(image, "messageRule03.form", 1);
    image = support::with(image, "messageRule03.repetition", 1);
    support::put(image, support::field("description"), {'a', '\n', 'b', 0});
    m_directory->write(image);
    const support::ToolResult result = m_directory->run({"show", m_directory->path()});
    QCOMPARE(result.status, 0);
    QCOMPARE(result.err, QString());
    const QString& out = result.out;
    QCOMPARE(lineOf(out, "programVersion"), QStringLiteral("1.0.1.0"));
    QCOMPARE(lineOf(out, "volume"), QStringLiteral("-5 dB"));
    QCOMPARE(lineOf(out, "depthSamplingRate"), QStringLiteral("1 [Hz]"));
    QCOMPARE(lineOf(out, "timerRule01 to timerRule08"), QStringLiteral("off"));
    QCOMPARE(lineOf(out, "messageRule01 to messageRule02"), QStringLiteral("off"));
    QCOMPARE(lineOf(out, "messageRule03"),
             QStringLiteral("underwater, when depth >= 5.00 m: say Depth (value & point & unit), "
                            "every period A"));
    QCOMPARE(lineOf(out, "messageRule04 to messageRule24"), QStringLiteral("off"));
    const QStringList lines = out.split('\n');
    const auto description = lines.size() - 3;
    QCOMPARE(lines.at(description).indexOf('a'), lines.at(description + 1).indexOf('b'));
    QCOMPARE(lines.at(description + 1).trimmed(), QStringLiteral("b"));
    QVERIFY(!out.contains("messageRule03.condition"));
}

void TestSettingsCommands::showTellsMembersIfAskedTo()
{
    const support::ToolResult result = m_directory->run({"show", "-v", "default"});
    QCOMPARE(result.status, 0);
    for (const cMySettingsField& field : editor::settingsFields()) {
        QVERIFY2(('\n' + result.out).contains('\n' + field.name), qPrintable(field.name));
    }
    QCOMPARE(lineOf(result.out, "messageRule24.message"), QStringLiteral("Do nothing"));
}

void TestSettingsCommands::showAsJson()
{
    const support::ToolResult result = m_directory->run({"show", "default", "--json"});
    QCOMPARE(result.status, 0);
    const QJsonObject object = QJsonDocument::fromJson(result.out.toUtf8()).object();
    for (const cMySettingsField& field : editor::settingsFields()) {
        QVERIFY2(object.contains(field.name), qPrintable(field.name));
    }
    QCOMPARE(object.value("gravity").toObject(), (QJsonObject{{"bytes", "84 7D"},
                                                              {"value", 9.806},
                                                              {"unit", QStringLiteral("m/s\u00B2")},
                                                              {"label", QJsonValue()}}));
    QCOMPARE(object.value("depthSamplingRate").toObject(),
             (QJsonObject{
                 {"bytes", "96"}, {"value", 150}, {"unit", QJsonValue()}, {"label", "1 [Hz]"}}));
    QCOMPARE(object.value("messageRule01").toObject(),
             (QJsonObject{{"isOff", true}, {"sentence", "off"}}));
}

void TestSettingsCommands::getOneIsThePlainValue()
{
    QCOMPARE(m_directory->run({"get", "default", "diveThreshold"}).out, QStringLiteral("100 cm\n"));
    const support::ToolResult unknown =
        m_directory->run({"get", "default", "diveTreshold", "volume"});
    QCOMPARE(unknown.status, 2);
    QCOMPARE(unknown.out, QString());
    QVERIFY2(unknown.err.contains("do you mean diveThreshold"), qPrintable(unknown.err));
}

void TestSettingsCommands::getAsJson()
{
    const support::ToolResult result =
        m_directory->run({"get", "default", "periodA", "timerRule01", "--json"});
    const QJsonObject object = QJsonDocument::fromJson(result.out.toUtf8()).object();
    QCOMPARE(object.size(), 7);
    QCOMPARE(object.value("periodA").toObject().value("value"), QJsonValue(3));
    QCOMPARE(object.value("timerRule01.time").toObject().value("unit"), QJsonValue("s"));
}

void TestSettingsCommands::diff_data()
{
    QTest::addColumn<QByteArray>("other");
    QTest::addColumn<int>("status");
    QTest::addColumn<QString>("out");
    const QByteArray image = support::templateImage();
    QTest::newRow("the same") << image << 0 << QString();
    QTest::newRow("version") << QByteArray(image).replace(2, 1, "\x04") << 0
                             << "program version: 1.0.1.0 -> 1.0.4.0 (not counted)\n";
    QTest::newRow("field") << support::with(image, "volume", 0) << 1 << "volume: -5 dB -> 0 dB\n";
    QTest::newRow("no field") << QByteArray(image).replace(4, 2, "\x01\x02") << 1
                              << "bytes 4 to 5: 00 00 -> 01 02\n";
    QTest::newRow("rule") << support::with(support::with(image, "messageRule02.condition", 255),
                                           "messageRule02.message", 215)
                          << 1
                          << "messageRule02: off -> anytime: say Attention, only once\n"
                             "messageRule02.condition: never -> anytime\n"
                             "messageRule02.message: Do nothing -> Attention\n";
}

void TestSettingsCommands::diff()
{
    QFETCH(QByteArray, other);
    QFETCH(int, status);
    QFETCH(QString, out);
    m_directory->write(other);
    const support::ToolResult result = m_directory->run({"diff", "default", m_directory->path()});
    QCOMPARE(result.status, status);
    QCOMPARE(result.out, out);
    QCOMPARE(result.err.contains("the same"), status == 0);
}

void TestSettingsCommands::diffAsJson()
{
    m_directory->write(support::with(support::templateImage(), "messageRule02.condition", 255));
    const support::ToolResult result =
        m_directory->run({"diff", "default", m_directory->path(), "--json"});
    QCOMPARE(result.status, 1);
    const QJsonObject object = QJsonDocument::fromJson(result.out.toUtf8()).object();
    QCOMPARE(object.value("isDifferent"), QJsonValue(true));
    QCOMPARE(object.value("differences").toArray().first().toObject().value("name"),
             QJsonValue("messageRule02.condition"));
    QCOMPARE(object.value("rules").toObject().value("messageRule02").toObject().value("after"),
             QJsonValue("anytime: do nothing"));
}

void TestSettingsCommands::bytesThatAFileDoesNotGiveAreTheDefaults()
{
    support::writeFile(m_directory->path(), ":010081000678\n:00000001FF");
    QCOMPARE(m_directory->run({"diff", "default", m_directory->path()}).out,
             QStringLiteral("volume: -5 dB -> 6 dB\n"));
    QCOMPARE(m_directory->run({"set", m_directory->path(), "volume=-5"}).status, 0);
    QCOMPARE(support::readFile(m_directory->path()),
             support::settingsText(support::templateImage()));
}

void TestSettingsCommands::checkTellsDoubts()
{
    m_directory->write(support::templateImage());
    const support::ToolResult good = m_directory->run({"check", m_directory->path()});
    QCOMPARE(good.status, 0);
    QCOMPARE(good.out, QString());
    QVERIFY2(good.err.contains("no faults, no doubts"), qPrintable(good.err));

    m_directory->write(support::with(support::templateImage(), "surfacingThreshold", 95).left(512));
    const support::ToolResult doubtful = m_directory->run({"check", m_directory->path()});
    QCOMPARE(doubtful.status, 0);
    QCOMPARE(doubtful.out,
             m_directory->path() +
                 QStringLiteral(": gives only 512 of 1024 bytes; the others are those of the "
                                "default settings\n"
                                "surfacingThreshold: 95 cm is not at least 10 cm less than "
                                "diveThreshold, 100 cm\n"));
}

void TestSettingsCommands::checkAsJson()
{
    m_directory->write(support::with(support::templateImage(), "surfacingThreshold", 95));
    QJsonObject object =
        QJsonDocument::fromJson(
            m_directory->run({"check", m_directory->path(), "--json"}).out.toUtf8())
            .object();
    QCOMPARE(object.value("faultCount"), QJsonValue(0));
    QCOMPARE(object.value("bytesGiven"), QJsonValue(1024));
    QCOMPARE(object.value("doubts").toArray().first().toObject().value("field"),
             QJsonValue("surfacingThreshold"));

    support::writeFile(m_directory->path(), "\n\njunk\n");
    const support::ToolResult bad = m_directory->run({"check", m_directory->path(), "--json"});
    QCOMPARE(bad.status, 5);
    object = QJsonDocument::fromJson(bad.out.toUtf8()).object();
    QCOMPARE(object.value("faultCount"), QJsonValue(2));
    QCOMPARE(object.value("faults").toArray().first().toObject().value("line"), QJsonValue(3));
    QCOMPARE(object.value("faults").toArray().last().toObject().value("line"), QJsonValue());
}

void TestSettingsCommands::badFilesEndEveryCommand_data()
{
    QTest::addColumn<QByteArray>("text");
    QTest::addColumn<QString>("fault");
    QByteArray text = support::settingsText(support::templateImage());
    QTest::newRow("empty") << QByteArray() << "a.mio: is empty";
    QTest::newRow("cut off") << text.left(text.size() / 2) << "a.mio: has no end-of-file record";
    QTest::newRow("wrong sum") << QByteArray(text).replace(42, 1, "9") << "a.mio:1: checksum";
    QTest::newRow("another program's file")
        << QByteArray("\x7F\x45LF\0\x01\x02\xFF", 8) << "a.mio:1: \"";
}

void TestSettingsCommands::badFilesEndEveryCommand()
{
    QFETCH(QByteArray, text);
    QFETCH(QString, fault);
    support::writeFile(m_directory->path(), text);
    const QVector<QStringList> commands = {{"show", m_directory->path()},
                                           {"get", m_directory->path(), "volume"},
                                           {"set", m_directory->path(), "volume=1"},
                                           {"diff", m_directory->path(), "default"},
                                           {"diff", "default", m_directory->path()},
                                           {"check", m_directory->path()}};
    for (const QStringList& command : commands) {
        const support::ToolResult result = m_directory->run(command);
        QCOMPARE(result.status, 5);
        QCOMPARE(result.out, QString());
        QVERIFY2(result.err.contains(fault), qPrintable(result.err));
    }
    QCOMPARE(support::readFile(m_directory->path()), text);
    QCOMPARE(m_directory->run({"show", m_directory->path("none.mio")}).status, 5);
}

void TestSettingsCommands::foreignTextIsEscaped()
{
    QByteArray image = support::templateImage();
    support::put(image, support::field("author"), {0x1B, '[', '2', 'J', 0x9B, 'x', 0});
    m_directory->write(image);
    for (const QStringList& command : {QStringList{"show", m_directory->path()},
                                       QStringList{"get", m_directory->path(), "author"},
                                       QStringList{"diff", "default", m_directory->path()}}) {
        const QString out = m_directory->run(command).out;
        QVERIFY(out.contains("\\x1b[2J\\x9bx"));
        QVERIFY(!out.contains(QChar(0x1B)));
    }
}

QTEST_GUILESS_MAIN(TestSettingsCommands)
#include "test_settingscommands.moc"
