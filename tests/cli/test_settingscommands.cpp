// SPDX-FileCopyrightText: 2026 The MIOLKAsoft authors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "editor/fieldtext.h"
#include "image/memoryarea.h"
#include "image/settingsfile.h"
#include "tests/cli/toolrun.h"
#include "tests/support/offeredimage.h"
#include "tests/support/posix.h"
#include "tests/support/template.h"

#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>
#include <QTemporaryDir>

/// The commands that work on settings files.
class TestSettingsCommands : public QObject
{
    Q_OBJECT

private slots:
    void init();
    void newWritesTheDefaults();
    void newKeepsWhatIsThere();
    void newWhereNoFileCanBe_data();
    void newWhereNoFileCanBe();
    void showTellsFieldsAndSentences();
    void showTellsMembersIfAskedTo();
    void showAsJson();
    void getOneIsThePlainValue();
    void whatGetPrintsIsWhatSetTakes();
    void getAsJson();
    void setChangesNothingElse_data();
    void setChangesNothingElse();
    void setKeepsAndTellsWhatItChanges();
    void setThresholdsInAnyOrder();
    void setTellsWhatDoesNotFollow();
    void setOfTheSameWritesNothing();
    void setIsAllOrNothing_data();
    void setIsAllOrNothing();
    void setWithoutABackupChangesNothing();
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
    support::ToolResult run(const QStringList& arguments)
    {
        return support::ToolRun(m_directory->filePath(QStringLiteral("data"))).run(arguments);
    }

    [[nodiscard]] QString path(const char* name = "a.mio") const
    {
        return m_directory->filePath(QString::fromLatin1(name));
    }

    void write(const QByteArray& image, const char* name = "a.mio") const
    {
        support::writeFile(path(name), support::settingsText(image));
    }

    [[nodiscard]] QStringList backups() const
    {
        const QDir directory(m_directory->filePath(QStringLiteral("data/MIOLKAsoft/backups")));
        QStringList paths;
        for (const QFileInfo& each : directory.entryInfoList(QDir::Files)) {
            paths += each.filePath();
        }
        return paths;
    }

    std::unique_ptr<QTemporaryDir> m_directory;
};

namespace {

QByteArray with(QByteArray image, const char* name, int number)
{
    const cMySettingsField& field = support::field(name);
    support::put(image, field, editor::numberBytes(number, field));
    return image;
}

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

void TestSettingsCommands::init()
{
    m_directory = std::make_unique<QTemporaryDir>();
}

void TestSettingsCommands::newWritesTheDefaults()
{
    const support::ToolResult result = run({"new", path()});
    QCOMPARE(result.status, 0);
    QCOMPARE(result.out, QString());
    QCOMPARE(support::readFile(path()), support::settingsText(support::templateImage()));
    QCOMPARE(backups(), QStringList());
}

void TestSettingsCommands::newKeepsWhatIsThere()
{
    support::writeFile(path(), "mine");
    const support::ToolResult refused = run({"new", path()});
    QCOMPARE(refused.status, 5);
    QVERIFY2(refused.err.contains("a.mio: is there already"), qPrintable(refused.err));
    QCOMPARE(support::readFile(path()), QByteArray("mine"));

    const support::ToolResult forced = run({"new", "--force", path()});
    QCOMPARE(forced.status, 0);
    QCOMPARE(support::readFile(path()), support::settingsText(support::templateImage()));
    QCOMPARE(backups().size(), 1);
    QVERIFY2(forced.err.contains(backups().first()), qPrintable(forced.err));
    QCOMPARE(support::readFile(backups().first()), QByteArray("mine"));
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
    const QString there = file.isEmpty() ? file : m_directory->path() + '/' + file;
    const support::ToolResult result = run({"new", "--force", there});
    QCOMPARE(result.status, 5);
    QVERIFY2(result.err.contains(reason), qPrintable(result.err));
}

void TestSettingsCommands::showTellsFieldsAndSentences()
{
    QByteArray image = with(support::templateImage(), "messageRule03.condition", 0);
    image = with(image, "messageRule03.measuredValue", 32);
    image = with(image, "messageRule03.threshold", 500);
    image = with(image, "messageRule03.message", 32);
    image = with(image, "messageRule03.form", 1);
    image = with(image, "messageRule03.repetition", 1);
    support::put(image, support::field("description"), {'a', '\n', 'b', 0});
    write(image);
    const support::ToolResult result = run({"show", path()});
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
    const int description = lines.size() - 3;
    QCOMPARE(lines.at(description).indexOf('a'), lines.at(description + 1).indexOf('b'));
    QCOMPARE(lines.at(description + 1).trimmed(), QStringLiteral("b"));
    QVERIFY(!out.contains("messageRule03.condition"));
}

void TestSettingsCommands::showTellsMembersIfAskedTo()
{
    const support::ToolResult result = run({"show", "-v", "default"});
    QCOMPARE(result.status, 0);
    for (const cMySettingsField& field : editor::settingsFields()) {
        QVERIFY2(('\n' + result.out).contains('\n' + field.name), qPrintable(field.name));
    }
    QCOMPARE(lineOf(result.out, "messageRule24.message"), QStringLiteral("Do nothing"));
}

void TestSettingsCommands::showAsJson()
{
    const support::ToolResult result = run({"show", "default", "--json"});
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
    QCOMPARE(run({"get", "default", "diveThreshold"}).out, QStringLiteral("100 cm\n"));
    const support::ToolResult unknown = run({"get", "default", "diveTreshold", "volume"});
    QCOMPARE(unknown.status, 2);
    QCOMPARE(unknown.out, QString());
    QVERIFY2(unknown.err.contains("do you mean diveThreshold"), qPrintable(unknown.err));
}

void TestSettingsCommands::whatGetPrintsIsWhatSetTakes()
{
    QRandomGenerator random(11);
    QByteArray image = support::offeredImage(random);
    for (const char* name : {"author", "title", "description"}) {
        support::put(image, support::field(name), {'a', '\\', 'n', '=', ' ', 'b', 0});
    }
    for (int rule = 1; rule <= 32; ++rule) {
        const QString name = rule > 24 ? editor::ruleMember("timerRule", rule - 24, "threshold")
                                       : editor::ruleMember("messageRule", rule, "threshold");
        image = with(image, qPrintable(name), rule);
    }
    write(image);
    QStringList names;
    for (const cMySettingsField& field : editor::settingsFields()) {
        if (editor::fieldKind(field) != editor::FieldKind::Version) {
            names += field.name;
        }
    }
    const support::ToolResult got = run(QStringList{"get", path()} + names);
    QCOMPARE(got.status, 0);
    const QStringList assignments = got.out.split('\n', Qt::SkipEmptyParts);
    QCOMPARE(assignments.size(), names.size());
    QCOMPARE(run({"new", path("b.mio")}).status, 0);
    const support::ToolResult set = run(QStringList{"set", path("b.mio")} + assignments);
    QVERIFY2(set.status == 0, qPrintable(set.err));
    cMyMemoryArea area;
    QVERIFY(image::readSettingsFile(path("b.mio"), area));
    const QByteArray copied = support::bytesOf(area);
    for (const cMySettingsField& field : editor::settingsFields()) {
        // Behind the end of a text there may be anything, and the version is not copied.
        const int width = editor::fieldKind(field) == editor::FieldKind::Text      ? 7
                          : editor::fieldKind(field) == editor::FieldKind::Version ? 0
                                                                                   : field.width;
        QVERIFY2(copied.mid(field.address, width) == image.mid(field.address, width),
                 qPrintable(field.name));
    }
}

void TestSettingsCommands::getAsJson()
{
    const support::ToolResult result = run({"get", "default", "periodA", "timerRule01", "--json"});
    const QJsonObject object = QJsonDocument::fromJson(result.out.toUtf8()).object();
    QCOMPARE(object.size(), 7);
    QCOMPARE(object.value("periodA").toObject().value("value"), QJsonValue(3));
    QCOMPARE(object.value("timerRule01.time").toObject().value("unit"), QJsonValue("s"));
}

void TestSettingsCommands::setChangesNothingElse_data()
{
    QTest::addColumn<QStringList>("assignments");
    QTest::addColumn<int>("address");
    QTest::addColumn<QByteArray>("bytes");
    QTest::newRow("byte") << QStringList{"diveThreshold=120"} << 136 << QByteArray("\x78");
    QTest::newRow("two bytes") << QStringList{"suspendDelay=12 [h]"} << 130
                               << QByteArray::fromHex("C0A8");
    QTest::newRow("place") << QStringList{"altitude=300"} << 220 << QByteArray::fromHex("2C01");
    QTest::newRow("text") << QStringList{"author=Me"} << 16 << QByteArray("Me\0", 3);
    QTest::newRow("member of a rule")
        << QStringList{"messageRule24.repetition=still"} << 511 << QByteArray("\xFF");
    QTest::newRow("two fields in a row")
        << QStringList{"periodB=7", "periodA=6 s"} << 240 << QByteArray("\x06\x07");
}

void TestSettingsCommands::setChangesNothingElse()
{
    QFETCH(QStringList, assignments);
    QFETCH(int, address);
    QFETCH(QByteArray, bytes);
    QRandomGenerator random(3);
    QByteArray image = support::randomImage(random);
    write(image);
    const support::ToolResult result = run(QStringList{"set", path()} + assignments);
    QVERIFY2(result.status == 0, qPrintable(result.err));
    QCOMPARE(support::readFile(path()),
             support::settingsText(image.replace(address, bytes.size(), bytes)));
}

void TestSettingsCommands::setKeepsAndTellsWhatItChanges()
{
    write(support::templateImage());
    const QByteArray old = support::readFile(path());
    const support::ToolResult result = run({"set", path(), "volume=0", "diveThreshold=120 cm"});
    QCOMPARE(result.status, 0);
    QCOMPARE(result.out,
             QStringLiteral("volume: -5 dB -> 0 dB\ndiveThreshold: 100 cm -> 120 cm\n"));
    QCOMPARE(backups().size(), 1);
    QVERIFY2(result.err.contains(backups().first()), qPrintable(result.err));
    QCOMPARE(support::readFile(backups().first()), old);

    const QString elsewhere = path("elsewhere");
    const support::ToolResult json =
        run({"set", path(), "--backup-dir", elsewhere, "--json", "volume=1"});
    const QJsonObject object = QJsonDocument::fromJson(json.out.toUtf8()).object();
    QCOMPARE(object.value("changes").toArray(),
             (QJsonArray{QJsonObject{
                 {"name", "volume"}, {"before", "0 dB"}, {"after", "1 dB"}, {"isCounted", true}}}));
    QCOMPARE(QDir(elsewhere).entryList(QDir::Files).size(), 1);
}

void TestSettingsCommands::setThresholdsInAnyOrder()
{
    const QStringList assignments = {"messageRule01.threshold=5.00 m",
                                     "messageRule01.measuredValue=Depth"};
    const QStringList reversed = {assignments.at(1), assignments.at(0)};
    for (const QStringList& order : {assignments, reversed}) {
        write(support::templateImage());
        QCOMPARE(run(QStringList{"set", path()} + order).status, 0);
        QCOMPARE(run({"get", path(), "messageRule01.threshold"}).out, QStringLiteral("5.00 m\n"));
    }
}

void TestSettingsCommands::setTellsWhatDoesNotFollow()
{
    QByteArray image = with(support::templateImage(), "messageRule01.measuredValue", 32);
    write(with(image, "messageRule01.threshold", 500));
    const support::ToolResult value =
        run({"set", path(), "messageRule01.measuredValue=Temperature"});
    QCOMPARE(value.status, 0);
    QVERIFY2(value.err.contains(QStringLiteral("messageRule01.threshold was not given: what was "
                                               "5.00 m means 50.0 \u00B0C now")),
             qPrintable(value.err));

    const support::ToolResult place = run({"set", path(), "latitude=0"});
    QVERIFY2(place.err.contains(QStringLiteral("gravity stays 9.806 m/s\u00B2, but is 9.7803")),
             qPrintable(place.err));
    QVERIFY(!run({"set", path(), "latitude=45"}).err.contains("gravity"));
    QVERIFY(!run({"set", path(), "latitude=0", "gravity=9.7803"}).err.contains("gravity stays"));
}

void TestSettingsCommands::setOfTheSameWritesNothing()
{
    const QByteArray text = support::settingsText(support::templateImage(), "\r\n") + "\r\n";
    support::writeFile(path(), text);
    const support::ToolResult result =
        run({"set", path(), "diveThreshold=100", "title=", "depthSamplingRate=150"});
    QCOMPARE(result.status, 0);
    QCOMPARE(result.out, QString());
    QVERIFY2(result.err.contains("nothing was written"), qPrintable(result.err));
    QCOMPARE(support::readFile(path()), text);
    QCOMPARE(backups(), QStringList());
}

void TestSettingsCommands::setIsAllOrNothing_data()
{
    QTest::addColumn<QString>("assignment");
    QTest::addColumn<QString>("reason");
    const auto row = [](const char* name, const char* assignment, const char* reason) {
        QTest::newRow(name) << QString::fromLatin1(assignment) << QString::fromLatin1(reason);
    };
    row("out of range", "diveThreshold=4", "it takes 5 to 255 cm");
    row("unknown field", "diveTreshold=100", "do you mean diveThreshold");
    row("no value", "diveThreshold", "is no FIELD=VALUE");
    row("whole rule", "messageRule01=off", "is a whole rule");
    row("twice", "volume=2", "volume is given two values");
    row("version", "programVersion=1.0.0.0", "cannot be set");
}

void TestSettingsCommands::setIsAllOrNothing()
{
    QFETCH(QString, assignment);
    QFETCH(QString, reason);
    write(support::templateImage());
    const QByteArray old = support::readFile(path());
    const support::ToolResult result = run({"set", path(), "volume=1", assignment, "periodA=9"});
    QCOMPARE(result.status, 2);
    QCOMPARE(result.out, QString());
    QVERIFY2(result.err.contains(reason), qPrintable(result.err));
    QCOMPARE(support::readFile(path()), old);
    QCOMPARE(backups(), QStringList());
}

void TestSettingsCommands::setWithoutABackupChangesNothing()
{
    write(support::templateImage());
    support::writeFile(path("file"), "no directory");
    const QByteArray old = support::readFile(path());
    const support::ToolResult result =
        run({"set", path(), "--backup-dir", path("file"), "volume=1"});
    QCOMPARE(result.status, 5);
    QVERIFY2(result.err.contains("nothing was written"), qPrintable(result.err));
    QCOMPARE(support::readFile(path()), old);
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
    QTest::newRow("field") << with(image, "volume", 0) << 1 << "volume: -5 dB -> 0 dB\n";
    QTest::newRow("no field") << QByteArray(image).replace(4, 2, "\x01\x02") << 1
                              << "bytes 4 to 5: 00 00 -> 01 02\n";
    QTest::newRow("rule") << with(with(image, "messageRule02.condition", 255),
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
    write(other);
    const support::ToolResult result = run({"diff", "default", path()});
    QCOMPARE(result.status, status);
    QCOMPARE(result.out, out);
    QCOMPARE(result.err.contains("the same"), status == 0);
}

void TestSettingsCommands::diffAsJson()
{
    write(with(support::templateImage(), "messageRule02.condition", 255));
    const support::ToolResult result = run({"diff", "default", path(), "--json"});
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
    support::writeFile(path(), ":010081000678\n:00000001FF");
    QCOMPARE(run({"diff", "default", path()}).out, QStringLiteral("volume: -5 dB -> 6 dB\n"));
    QCOMPARE(run({"set", path(), "volume=-5"}).status, 0);
    QCOMPARE(support::readFile(path()), support::settingsText(support::templateImage()));
}

void TestSettingsCommands::checkTellsDoubts()
{
    write(support::templateImage());
    const support::ToolResult good = run({"check", path()});
    QCOMPARE(good.status, 0);
    QCOMPARE(good.out, QString());
    QVERIFY2(good.err.contains("no faults, no doubts"), qPrintable(good.err));

    write(with(support::templateImage(), "surfacingThreshold", 95).left(512));
    const support::ToolResult doubtful = run({"check", path()});
    QCOMPARE(doubtful.status, 0);
    QCOMPARE(doubtful.out,
             path() + QStringLiteral(": gives only 512 of 1024 bytes; the others are those of the "
                                     "default settings\n"
                                     "surfacingThreshold: 95 cm is not at least 10 cm less than "
                                     "diveThreshold, 100 cm\n"));
}

void TestSettingsCommands::checkAsJson()
{
    write(with(support::templateImage(), "surfacingThreshold", 95));
    QJsonObject object =
        QJsonDocument::fromJson(run({"check", path(), "--json"}).out.toUtf8()).object();
    QCOMPARE(object.value("faultCount"), QJsonValue(0));
    QCOMPARE(object.value("bytesGiven"), QJsonValue(1024));
    QCOMPARE(object.value("doubts").toArray().first().toObject().value("field"),
             QJsonValue("surfacingThreshold"));

    support::writeFile(path(), "\n\njunk\n");
    const support::ToolResult bad = run({"check", path(), "--json"});
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
    support::writeFile(path(), text);
    const QVector<QStringList> commands = {{"show", path()},
                                           {"get", path(), "volume"},
                                           {"set", path(), "volume=1"},
                                           {"diff", path(), "default"},
                                           {"diff", "default", path()},
                                           {"check", path()}};
    for (const QStringList& command : commands) {
        const support::ToolResult result = run(command);
        QCOMPARE(result.status, 5);
        QCOMPARE(result.out, QString());
        QVERIFY2(result.err.contains(fault), qPrintable(result.err));
    }
    QCOMPARE(support::readFile(path()), text);
    QCOMPARE(run({"show", path("none.mio")}).status, 5);
}

void TestSettingsCommands::foreignTextIsEscaped()
{
    QByteArray image = support::templateImage();
    support::put(image, support::field("author"), {0x1B, '[', '2', 'J', 0x9B, 'x', 0});
    write(image);
    for (const QStringList& command :
         {QStringList{"show", path()}, QStringList{"get", path(), "author"},
          QStringList{"diff", "default", path()}}) {
        const QString out = run(command).out;
        QVERIFY(out.contains("\\x1b[2J\\x9bx"));
        QVERIFY(!out.contains(QChar(0x1B)));
    }
}

QTEST_GUILESS_MAIN(TestSettingsCommands)
#include "test_settingscommands.moc"
