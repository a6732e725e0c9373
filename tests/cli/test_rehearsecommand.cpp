// SPDX-FileCopyrightText: 2026 The MIOLKAsoft authors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "tests/cli/rehearsedrules.h"
#include "tests/cli/toolrun.h"
#include "tests/support/posix.h"

#include <QDir>
#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>
#include <QTemporaryDir>
#include <QtTest>

#include <csignal>

/// The program itself, on logs and settings in files.
class TestRehearseCommand : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase();
    void theTimelineOfALogIsPrinted();
    void quietPrintsTheMessagesOnly();
    void jsonHoldsTheTimeline();
    void whatIsAddedToTheProfileIsTold();
    void whatIsLeftOutIsTold_data();
    void whatIsLeftOutIsTold();
    void anInterruptionEndsTheTimeline();
    void wrongUseIsTold_data();
    void wrongUseIsTold();
    void badFilesAreTold_data();
    void badFilesAreTold();
    void aPictureIsDrawn_data();
    void aPictureIsDrawn();
    void anOldPictureIsOnlyReplacedByForce();
    void aPictureThatCannotBeMadeIsToldBeforeTheDive_data();
    void aPictureThatCannotBeMadeIsToldBeforeTheDive();
    void aFailingConverterIsTold();

private:
    support::ToolResult rehearse(const QStringList& arguments)
    {
        support::ToolRun run(m_directory.filePath(QStringLiteral("data")));
        return run.run(QStringList{"rehearse", settings()} + arguments);
    }
    [[nodiscard]] QString settings() const { return path("three.mio"); }
    [[nodiscard]] QString path(const char* name) const
    {
        return m_directory.filePath(QLatin1String(name));
    }

    QTemporaryDir m_directory;
};

namespace {

const QString reef = QStringLiteral(MIOLKA_SOURCE_DIR "/tests/cli/data/reef.ssrf");

// Default settings: one sample in a second, a dive from 1 m to less than 0.5 m. Down to 10 m in the
// first minute, 10 m/min: 5 m after 30 s, 10 m after 60 s, 1 m after 6 s. Then to 18 m in the
// second one: 15 m after 97.5 s, seen after 98 s at 15.07 m, where 15.06 m is nearest in whole
// millibars. From 10:00 on 13 m up in two minutes: 15 m after 27.7 s, seen after 28 s at 14.97 m,
// 10 m after 73.8 s, seen after 74 s at 9.98 m, 5 m at 12:00. From 15:00 on up to the surface in a
// minute: 0.42 m after 55 s, the first below 0.5 m, 949 s after the beginning.
const char* const timeline = " 0:30.0    5.00 m   rule 1: Depth 5.00 m\n"
                             " 1:00.0   10.00 m   rule 1: Depth 10.00 m\n"
                             " 1:38.0   15.06 m   rule 1: Depth 15.06 m\n"
                             " 2:00.0   18.00 m   rule 2: Attention\n"
                             "10:28.0   14.97 m   rule 1: Depth 14.97 m\n"
                             "11:14.0    9.98 m   rule 1: Depth 9.98 m\n"
                             "12:00.0    5.00 m   rule 1: Depth 5.00 m\n"
                             "15:55.0    0.42 m   rule 3: Dive time 949 s\n";

} // namespace

void TestRehearseCommand::initTestCase()
{
    const QByteArray image = support::bytesOf(support::ThreeRules().settings());
    support::writeFile(settings(), support::settingsText(image));
}

void TestRehearseCommand::theTimelineOfALogIsPrinted()
{
    const support::ToolResult result = rehearse({"--profile", reef});
    QCOMPARE(result.status, 0);
    QCOMPARE(result.out, QString::fromLatin1(timeline));
    for (const QString& told :
         {QStringLiteral("reef.ssrf: there are 3 dives; this is the first (--dive N"),
          QStringLiteral("Settings: %1\n").arg(settings()),
          QStringLiteral("reef.ssrf, dive 1 of 3: 17:00 min, greatest depth 18.00 m\n"),
          QStringLiteral("no promise of what the real one says"),
          QStringLiteral("Messages: 8\n")}) {
        QVERIFY2(result.err.contains(told), qPrintable(told + QLatin1Char('\n') + result.err));
    }
    QVERIFY2(!result.err.contains(QLatin1String("not heard")), qPrintable(result.err));
}

void TestRehearseCommand::quietPrintsTheMessagesOnly()
{
    const support::ToolResult result = rehearse({"-q", "-p", reef});
    QCOMPARE(result.status, 0);
    QCOMPARE(result.out, QString::fromLatin1(timeline));
    QCOMPARE(result.err, QString());
}

void TestRehearseCommand::jsonHoldsTheTimeline()
{
    const support::ToolResult result = rehearse({"--json", "-p", reef, "--dive", "2"});
    QCOMPARE(result.status, 0);
    const QJsonObject object = QJsonDocument::fromJson(result.out.toUtf8()).object();
    QCOMPARE(object.value("source").toString(), settings());
    QCOMPARE(object.value("profile").toString(), QStringLiteral("reef.ssrf"));
    QCOMPARE(object.value("dive").toInt(), 2);
    QCOMPARE(object.value("dives").toInt(), 3);
    QCOMPARE(object.value("duration").toDouble(), 180.0);
    QCOMPARE(object.value("greatestDepth").toDouble(), 6.0);
    QCOMPARE(object.value("silentRules").toArray(), QJsonArray{2});
    const QJsonArray messages = object.value("messages").toArray();
    QCOMPARE(messages.size(), 2); // who turns a metre below 5 m does not hear of it again
    QCOMPARE(
        messages.first().toObject(),
        (QJsonObject{
            {"time", 50}, {"depth", 5}, {"rule", 1}, {"text", "Depth 5.00 m"}, {"hasty", false}}));
}

void TestRehearseCommand::whatIsAddedToTheProfileIsTold()
{
    support::writeFile(path("short.csv"), "0,0\n60,9\n");
    const support::ToolResult result = rehearse({"-p", path("short.csv")});
    QCOMPARE(result.status, 0);
    for (const char* told :
         {"The profile ends at 9.00 m; from there", "9 m/min", "The profile ends at 1:00;",
          "short.csv: 3:00 min", "On, but not heard on this dive: rule 2\n"}) {
        QVERIFY2(result.err.contains(QLatin1String(told)), qPrintable(told + result.err));
    }
}

void TestRehearseCommand::whatIsLeftOutIsTold_data()
{
    QTest::addColumn<QString>("option");
    QTest::newRow("text") << "--verbose";
    QTest::newRow("JSON") << "--json";
}

void TestRehearseCommand::whatIsLeftOutIsTold()
{
    QFETCH(QString, option);
    support::TalkativeRules rules(24);
    support::writeFile(path("talk.mio"), support::settingsText(support::bytesOf(rules.settings())));
    support::writeFile(
        path("long.ssrf"),
        "<divelog><dive><sample time='0:00' depth='0'/><sample time='1:00' "
        "depth='3' temp='-99 C'/><sample time='150:00' depth='0'/></dive></divelog>");
    support::ToolRun run;
    const support::ToolResult result =
        run.run({"rehearse", path("talk.mio"), option, "-p", path("long.ssrf")});
    QCOMPARE(result.status, 0);
    const QString told =
        QStringLiteral("The first 200000 messages are told, and the device goes on "
                       "talking: ");
    QVERIFY2(result.err.contains(told), qPrintable(result.err));
    QVERIFY2(result.err.contains(QLatin1String("long.ssrf: 1 temperatures that no water has")),
             qPrintable(result.err));
    if (option == QLatin1String("--json")) {
        const QJsonObject object = QJsonDocument::fromJson(result.out.toUtf8()).object();
        QCOMPARE(object.value("messages").toArray().size(), 200000);
        QVERIFY(object.value("leftOut").toInt() > 0);
    } else {
        QCOMPARE(result.out.count(QLatin1Char('\n')), 200000);
    }
}

/// More is printed than a pipe holds, so that the program waits for its reader.
void TestRehearseCommand::anInterruptionEndsTheTimeline()
{
    support::TalkativeRules rules(8);
    support::writeFile(path("talk.mio"), support::settingsText(support::bytesOf(rules.settings())));
    support::ToolRun run;
    run.start({"rehearse", path("talk.mio"), "-p", "sawtooth"});
    QVERIFY(run.process.waitForReadyRead(support::ToolRun::patience));
    while (run.process.bytesAvailable() == 0) {
        QVERIFY(run.process.waitForReadyRead(support::ToolRun::patience));
    }
    QCOMPARE(::kill(static_cast<pid_t>(run.process.processId()), SIGINT), 0);
    const support::ToolResult result = run.finish();
    QCOMPARE(result.status, 130);
    QVERIFY2(result.err.contains(QLatin1String("cancelled")), qPrintable(result.err));
    QVERIFY(!result.err.contains(QLatin1String("Messages: ")));
}

void TestRehearseCommand::wrongUseIsTold_data()
{
    QTest::addColumn<QStringList>("arguments");
    QTest::addColumn<QString>("word");
    QTest::newRow("no profile") << QStringList() << "freedive, square, sawtooth";
    QTest::newRow("dive 0") << QStringList{"-p", reef, "--dive", "0"} << "--dive takes a number";
    QTest::newRow("dive that is none") << QStringList{"-p", reef, "--dive", "x"} << "--dive takes";
    QTest::newRow("second dive of a built-in profile")
        << QStringList{"-p", "square", "--dive", "2"} << "square: this is one dive";
    QTest::newRow("no picture") << QStringList{"-p", reef, "--plot", "dive.gif"} << ".svg or .png";
}

void TestRehearseCommand::wrongUseIsTold()
{
    QFETCH(QStringList, arguments);
    QFETCH(QString, word);
    const support::ToolResult result = rehearse(arguments);
    QCOMPARE(result.status, 2);
    QCOMPARE(result.out, QString());
    QVERIFY2(result.err.contains(word), qPrintable(result.err));
}

void TestRehearseCommand::badFilesAreTold_data()
{
    QTest::addColumn<QStringList>("arguments");
    QTest::addColumn<QString>("word");
    QTest::newRow("no such profile")
        << QStringList{"-p", "round"} << "round: there is no such file";
    QTest::newRow("too deep for the sensor") << QStringList{"-p", path("deep.csv")}
                                             << path("deep.csv") + ": the profile is 330.00 m deep";
    QTest::newRow("no such dive") << QStringList{"-p", reef, "--dive", "9"} << "no dive 9";
    QTest::newRow("no log") << QStringList{"-p", path("three.mio")} << "three.mio:2: ";
    QTest::newRow("picture in no directory")
        << QStringList{"-p", reef, "--plot", path("none/dive.svg")} << "is its directory there";
    QTest::newRow("picture that is a directory")
        << QStringList{"-p", reef, "--plot", path("dir.svg"), "--force"}
        << "dir.svg: is no regular file";
}

void TestRehearseCommand::badFilesAreTold()
{
    QFETCH(QStringList, arguments);
    QFETCH(QString, word);
    QDir(m_directory.path()).mkpath(QStringLiteral("dir.svg"));
    support::writeFile(path("deep.csv"), "0,0\n10,330\n");
    const support::ToolResult result = rehearse(arguments);
    QCOMPARE(result.status, 5);
    QCOMPARE(result.out, QString());
    QVERIFY2(result.err.contains(word), qPrintable(result.err));
}

void TestRehearseCommand::aPictureIsDrawn_data()
{
    QTest::addColumn<QString>("name");
    QTest::addColumn<QByteArray>("start");
    QTest::newRow("SVG") << "dive.svg" << QByteArray("<?xml version=");
    QTest::newRow("PNG") << "dive.PNG" << QByteArray("\x89PNG\r\n");
}

void TestRehearseCommand::aPictureIsDrawn()
{
    QFETCH(QString, name);
    QFETCH(QByteArray, start);
    const QString picture = path(qPrintable(name));
    const support::ToolResult result = rehearse({"-p", reef, "--plot", picture});
    QCOMPARE(result.status, 0);
    QCOMPARE(result.out, QString::fromLatin1(timeline));
    QVERIFY(support::readFile(picture).startsWith(start));
}

void TestRehearseCommand::anOldPictureIsOnlyReplacedByForce()
{
    const QString picture = path("old.svg");
    support::writeFile(picture, "old");
    const support::ToolResult refused = rehearse({"-p", reef, "--plot", picture});
    QCOMPARE(refused.status, 5);
    QCOMPARE(refused.out, QString()); // before the dive
    QVERIFY2(refused.err.contains(QLatin1String("--force")), qPrintable(refused.err));
    QCOMPARE(support::readFile(picture), QByteArray("old"));

    const QStringList forced = {"-p",      reef,           "--plot", picture,
                                "--force", "--backup-dir", path("b")};
    const support::ToolResult replaced = rehearse(forced);
    QCOMPARE(replaced.status, 0);
    QVERIFY(support::readFile(picture).startsWith("<?xml"));
    const QStringList kept = QDir(path("b")).entryList(QDir::Files);
    QCOMPARE(kept.size(), 1);
    QVERIFY2(replaced.err.contains(kept.first()), qPrintable(replaced.err));
    QCOMPARE(support::readFile(path("b/") + kept.first()), QByteArray("old"));
}

void TestRehearseCommand::aPictureThatCannotBeMadeIsToldBeforeTheDive_data()
{
    QTest::addColumn<QString>("name");
    QTest::addColumn<int>("status");
    QTest::newRow("a PNG needs another program") << "other.png" << 5;
    QTest::newRow("an SVG does not") << "other.svg" << 0;
}

void TestRehearseCommand::aPictureThatCannotBeMadeIsToldBeforeTheDive()
{
    QFETCH(QString, name);
    QFETCH(int, status);
    support::ToolRun run;
    QProcessEnvironment environment = run.process.processEnvironment();
    environment.insert(QStringLiteral("PATH"), m_directory.path()); // with no programs in it
    run.process.setProcessEnvironment(environment);
    const support::ToolResult result =
        run.run({"rehearse", settings(), "-p", reef, "--plot", path(qPrintable(name))});
    QCOMPARE(result.status, status);
    QCOMPARE(result.out.isEmpty(), status != 0);
    QCOMPARE(result.err.contains(QLatin1String("librsvg2-bin")), status != 0);
    QCOMPARE(QFile::exists(path(qPrintable(name))), status == 0);
}

void TestRehearseCommand::aFailingConverterIsTold()
{
    const QString converter = path("rsvg-convert");
    support::writeFile(converter, "#!/bin/sh\nprintf '\\211PNG'\necho no canvas >&2\nexit 3\n");
    QFile(converter).setPermissions(QFile::ReadOwner | QFile::ExeOwner);
    support::ToolRun run;
    QProcessEnvironment environment = run.process.processEnvironment();
    environment.insert(QStringLiteral("PATH"),
                       m_directory.path() + QLatin1Char(':') + environment.value("PATH"));
    run.process.setProcessEnvironment(environment);
    const support::ToolResult result =
        run.run({"rehearse", settings(), "-p", reef, "--plot", path("never.png")});
    QFile::remove(converter);
    QCOMPARE(result.status, 5);
    QVERIFY2(result.err.contains(QLatin1String("no canvas")), qPrintable(result.err));
    QVERIFY(!QFile::exists(path("never.png")));
}

QTEST_GUILESS_MAIN(TestRehearseCommand)
#include "test_rehearsecommand.moc"
