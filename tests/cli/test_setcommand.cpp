// SPDX-FileCopyrightText: 2026 The MIOLKAsoft authors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "editor/fieldtext.h"
#include "image/memoryarea.h"
#include "tests/cli/settingsdirectory.h"

#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>

/// What changes fields of settings files.
class TestSetCommand : public QObject
{
    Q_OBJECT

private slots:
    void init() { m_directory = std::make_unique<support::SettingsDirectory>(); }
    void whatGetPrintsIsWhatSetTakes();
    void setChangesNothingElse_data();
    void setChangesNothingElse();
    void setKeepsAndTellsWhatItChanges();
    void setThresholdsInAnyOrder();
    void setTellsWhatDoesNotFollow();
    void setOfTheSameWritesNothing();
    void setIsAllOrNothing_data();
    void setIsAllOrNothing();
    void setWithoutABackupChangesNothing();

private:
    std::unique_ptr<support::SettingsDirectory> m_directory;
};

void TestSetCommand::whatGetPrintsIsWhatSetTakes()
{
    QRandomGenerator random(11);
    QByteArray image = support::offeredImage(random);
    for (const char* name : {"author", "title", "description"}) {
        support::put(image, support::field(name), {'a', '\\', 'n', '=', ' ', 'b', 0});
    }
    for (int rule = 1; rule <= 32; ++rule) {
        const QString name = rule > 24 ? editor::ruleMember("timerRule", rule - 24, "threshold")
                                       : editor::ruleMember("messageRule", rule, "threshold");
        image = support::with(image, qPrintable(name), rule);
    }
    m_directory->write(image);
    QStringList names;
    for (const cMySettingsField& field : editor::settingsFields()) {
        if (editor::fieldKind(field) != editor::FieldKind::Version) {
            names += field.name;
        }
    }
    const support::ToolResult got =
        m_directory->run(QStringList{"get", m_directory->path()} + names);
    QCOMPARE(got.status, 0);
    const QStringList assignments = got.out.split('\n', Qt::SkipEmptyParts);
    QCOMPARE(assignments.size(), names.size());
    QCOMPARE(m_directory->run({"new", m_directory->path("b.mio")}).status, 0);
    const support::ToolResult set =
        m_directory->run(QStringList{"set", m_directory->path("b.mio")} + assignments);
    QVERIFY2(set.status == 0, qPrintable(set.err));
    cMyMemoryArea area;
    QVERIFY(image::readSettingsFile(m_directory->path("b.mio"), area));
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

void TestSetCommand::setChangesNothingElse_data()
{
    QTest::addColumn<QStringList>("assignments");
    QTest::addColumn<int>("address");
    QTest::addColumn<QByteArray>("bytes");
    QTest::newRow("byte") << QStringList{"diveThreshold=120"} << 136 << QByteArray("x");
    QTest::newRow("two bytes") << QStringList{"suspendDelay=12 [h]"} << 130
                               << QByteArray::fromHex("C0A8");
    QTest::newRow("place") << QStringList{"altitude=300"} << 220 << QByteArray::fromHex("2C01");
    QTest::newRow("text") << QStringList{"author=Me"} << 16 << QByteArray("Me\0", 3);
    QTest::newRow("member of a rule")
        << QStringList{"messageRule24.repetition=still"} << 511 << QByteArray("\xFF");
    QTest::newRow("two fields in a row")
        << QStringList{"periodB=7", "periodA=6 s"} << 240 << QByteArray("\x06\x07");
}

void TestSetCommand::setChangesNothingElse()
{
    QFETCH(QStringList, assignments);
    QFETCH(int, address);
    QFETCH(QByteArray, bytes);
    QRandomGenerator random(3);
    QByteArray image = support::randomImage(random);
    m_directory->write(image);
    const support::ToolResult result =
        m_directory->run(QStringList{"set", m_directory->path()} + assignments);
    QVERIFY2(result.status == 0, qPrintable(result.err));
    QCOMPARE(support::readFile(m_directory->path()),
             support::settingsText(image.replace(address, bytes.size(), bytes)));
}

void TestSetCommand::setKeepsAndTellsWhatItChanges()
{
    m_directory->write(support::templateImage());
    const QByteArray old = support::readFile(m_directory->path());
    const support::ToolResult result =
        m_directory->run({"set", m_directory->path(), "volume=0", "diveThreshold=120 cm"});
    QCOMPARE(result.status, 0);
    QCOMPARE(result.out,
             QStringLiteral("volume: -5 dB -> 0 dB\ndiveThreshold: 100 cm -> 120 cm\n"));
    QCOMPARE(m_directory->backups().size(), 1);
    QVERIFY2(result.err.contains(m_directory->backups().first()), qPrintable(result.err));
    QCOMPARE(support::readFile(m_directory->backups().first()), old);

    const QString elsewhere = m_directory->path("elsewhere");
    const support::ToolResult json = m_directory->run(
        {"set", m_directory->path(), "--backup-dir", elsewhere, "--json", "volume=1"});
    const QJsonObject object = QJsonDocument::fromJson(json.out.toUtf8()).object();
    QCOMPARE(object.value("changes").toArray(),
             (QJsonArray{QJsonObject{
                 {"name", "volume"}, {"before", "0 dB"}, {"after", "1 dB"}, {"isCounted", true}}}));
    QCOMPARE(QDir(elsewhere).entryList(QDir::Files).size(), 1);
}

void TestSetCommand::setThresholdsInAnyOrder()
{
    const QStringList assignments = {"messageRule01.threshold=5.00 m",
                                     "messageRule01.measuredValue=Depth"};
    const QStringList reversed = {assignments.at(1), assignments.at(0)};
    for (const QStringList& order : {assignments, reversed}) {
        m_directory->write(support::templateImage());
        QCOMPARE(m_directory->run(QStringList{"set", m_directory->path()} + order).status, 0);
        QCOMPARE(m_directory->run({"get", m_directory->path(), "messageRule01.threshold"}).out,
                 QStringLiteral("5.00 m\n"));
    }
}

void TestSetCommand::setTellsWhatDoesNotFollow()
{
    QByteArray image = support::with(support::templateImage(), "messageRule01.measuredValue", 32);
    m_directory->write(support::with(image, "messageRule01.threshold", 500));
    const support::ToolResult value =
        m_directory->run({"set", m_directory->path(), "messageRule01.measuredValue=Temperature"});
    QCOMPARE(value.status, 0);
    QVERIFY2(value.err.contains(QStringLiteral("messageRule01.threshold was not given: what was "
                                               "5.00 m means 50.0 \u00B0C now")),
             qPrintable(value.err));

    const support::ToolResult place = m_directory->run({"set", m_directory->path(), "latitude=0"});
    QVERIFY2(place.err.contains(QStringLiteral("gravity stays 9.806 m/s\u00B2, but is 9.7803")),
             qPrintable(place.err));
    QVERIFY(!m_directory->run({"set", m_directory->path(), "latitude=45"}).err.contains("gravity"));
    QVERIFY(!m_directory->run({"set", m_directory->path(), "latitude=0", "gravity=9.7803"})
                 .err.contains("gravity stays"));
}

void TestSetCommand::setOfTheSameWritesNothing()
{
    const QByteArray text = support::settingsText(support::templateImage(), "\r\n") + "\r\n";
    support::writeFile(m_directory->path(), text);
    const support::ToolResult result = m_directory->run(
        {"set", m_directory->path(), "diveThreshold=100", "title=", "depthSamplingRate=#150"});
    QCOMPARE(result.status, 0);
    QCOMPARE(result.out, QString());
    QVERIFY2(result.err.contains("nothing was written"), qPrintable(result.err));
    QCOMPARE(support::readFile(m_directory->path()), text);
    QCOMPARE(m_directory->backups(), QStringList());
}

void TestSetCommand::setIsAllOrNothing_data()
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

void TestSetCommand::setIsAllOrNothing()
{
    QFETCH(QString, assignment);
    QFETCH(QString, reason);
    m_directory->write(support::templateImage());
    const QByteArray old = support::readFile(m_directory->path());
    const support::ToolResult result =
        m_directory->run({"set", m_directory->path(), "volume=1", assignment, "periodA=9"});
    QCOMPARE(result.status, 2);
    QCOMPARE(result.out, QString());
    QVERIFY2(result.err.contains(reason), qPrintable(result.err));
    QCOMPARE(support::readFile(m_directory->path()), old);
    QCOMPARE(m_directory->backups(), QStringList());
}

void TestSetCommand::setWithoutABackupChangesNothing()
{
    m_directory->write(support::templateImage());
    support::writeFile(m_directory->path("file"), "no directory");
    const QByteArray old = support::readFile(m_directory->path());
    const support::ToolResult result = m_directory->run(
        {"set", m_directory->path(), "--backup-dir", m_directory->path("file"), "volume=1"});
    QCOMPARE(result.status, 5);
    QVERIFY2(result.err.contains("nothing was written"), qPrintable(result.err));
    QCOMPARE(support::readFile(m_directory->path()), old);
}

QTEST_GUILESS_MAIN(TestSetCommand)
#include "test_setcommand.moc"
