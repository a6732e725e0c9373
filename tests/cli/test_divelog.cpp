// SPDX-FileCopyrightText: 2026 The MIOLKAsoft authors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "cli/divelog.h"

#include "tests/support/posix.h"

#include <QFile>
#include <QTemporaryDir>
#include <QtTest>

class TestDiveLog : public QObject
{
    Q_OBJECT

private slots:
    void tablesAreRead_data();
    void tablesAreRead();
    void faultsOfTablesHaveTheirLine_data();
    void faultsOfTablesHaveTheirLine();
    void logsOfSubsurfaceAreRead();
    void theDiveAskedForIsRead();
    void logsInTheUniversalFormatAreRead_data();
    void logsInTheUniversalFormatAreRead();
    void faultsOfXmlHaveTheirLine_data();
    void faultsOfXmlHaveTheirLine();
    void hostileXmlIsRefused_data();
    void hostileXmlIsRefused();
    void longTextsAreNoLongTags();
    void aTimeIsOfOneWaypoint();
    void whatSensorsGetWrongIsMended();
    void theKindOfFileIsSeen_data();
    void theKindOfFileIsSeen();
    void aFileNamedAsABuiltInProfileIsReadByItsPath();
    void whatIsNoFileIsRefused_data();
    void whatIsNoFileIsRefused();
    void hugeFilesAreRefused();
};

namespace {

QString dataFile(const char* name)
{
    return QStringLiteral(MIOLKA_SOURCE_DIR "/tests/cli/data/") + QLatin1String(name);
}

/// "0/0 60/12.5@18.5": seconds, metres, degrees.
QString textOf(const cMyDiveProfile& profile)
{
    QStringList points;
    for (const cMyProfilePoint& point : profile.points()) {
        QString text = QStringLiteral("%1/%2").arg(point.time).arg(point.depth);
        if (point.temperature) {
            text += QStringLiteral("@%1").arg(*point.temperature);
        }
        points.append(text);
    }
    return points.join(QLatin1Char(' '));
}

/// The profile in a file of these contents, or what is wrong with it.
QString parsed(const QByteArray& contents, const char* file, int dive = 1)
{
    cMyDiveLog log;
    const cMyOutcome outcome = cli::parseDiveLog(contents, QLatin1String(file), dive, log);
    if (outcome.isDone() != outcome.reasons.isEmpty() ||
        (!outcome.isDone() && outcome.status != cli::ExitStatus::BadFile)) {
        return QStringLiteral("an outcome that is none");
    }
    return outcome.isDone() ? textOf(log.profile) : outcome.reasons.join(QLatin1Char('|'));
}

QByteArray subsurface(const QByteArray& samples)
{
    return "<divelog>\n<dives><dive><divecomputer>\n" + samples +
           "\n</divecomputer></dive></dives></divelog>";
}

} // namespace

void TestDiveLog::tablesAreRead_data()
{
    QTest::addColumn<QByteArray>("table");
    QTest::addColumn<QString>("points");
    const auto row = [](const char* name, const char* table, const char* points) {
        QTest::newRow(name) << QByteArray(table) << points;
    };
    row("commas", "0,0\n60,12.5\n", "0/0 60/12.5");
    row("semicolons", "0;0\n60;12.5", "0/0 60/12.5");
    row("tabs", "0\t0\n60\t12.5", "0/0 60/12.5");
    row("decimal commas and semicolons", "0;0,0\n60,5;12,5", "0/0 60.5/12.5");
    row("decimal commas and tabs", "0\t0,0\n60,5\t12,5", "0/0 60.5/12.5");
    row("blanks", "  0 , 0 \n 60 ,   12.5 ", "0/0 60/12.5");
    row("heading", "time (s), depth (m)\n0,0\n60,12.5", "0/0 60/12.5");
    row("heading behind a comment", "# a dive\n\ntime;depth\n0;0\n60;12.5", "0/0 60/12.5");
    row("comments and empty lines", "0,0\n\n# down\n60,12.5 # there\n\n", "0/0 60/12.5");
    row("CR LF", "time,depth\r\n0,0\r\n60,12.5\r\n", "0/0 60/12.5");
    row("byte-order mark",
        "\xEF\xBB\xBF"
        "0,0\n60,12.5",
        "0/0 60/12.5");
    row("CR", "time,depth\r0,0\r60,12.5\r", "0/0 60/12.5");
    row("quotes", "\"time\",\"depth\"\n\"0\",\"0\"\n\"60\",\"12.5\"", "0/0 60/12.5");
    row("quotes and decimal commas", "\"0\";\"0\"\n\"60\";\"12,5\"", "0/0 60/12.5");
    row("empty cells at the end", "0,0,\n60,12.5,,\n90;0;", "0/0 60/12.5 90/0");
    row("a step", "0,0\n60,0\n60,12.5", "0/0 60/0 60/12.5");
}

void TestDiveLog::tablesAreRead()
{
    QFETCH(QByteArray, table);
    QFETCH(QString, points);
    QCOMPARE(parsed(table, "dive.csv"), points);
}

void TestDiveLog::faultsOfTablesHaveTheirLine_data()
{
    QTest::addColumn<QByteArray>("table");
    QTest::addColumn<QString>("fault");
    const auto row = [](const char* name, const QByteArray& table, const char* fault) {
        QTest::newRow(name) << table << fault;
    };
    row("empty", "", "a/dive.csv:1: a profile needs at least 2 points");
    row("one point", "time,depth\n0,0\n", "a/dive.csv:2: a profile needs at least 2 points");
    row("no number", "0,0\n60,deep\n", "a/dive.csv:2: \"deep\" is not a number");
    row("two headings", "time,depth\ns,m\n0,0\n", "a/dive.csv:2: \"s\" is not a number");
    row("one column", "0,0\n60\n", "a/dive.csv:2: a line needs two numbers");
    row("decimal commas and commas", "0,0\n60,12,5\n", "a/dive.csv:2: there are more than two");
    row("three columns", "0;0;18\n", "a/dive.csv:1: there are more than two columns");
    row("no second number", "0,\n", "a/dive.csv:1: a line needs two numbers");
    row("nothing but commas", "0,0\n,,\n", "a/dive.csv:2: a line needs two numbers");
    row("the line behind CRs", "0,0\r\r60,deep\r", R"(a/dive.csv:3: "deep")");
    row("the line behind CR LFs", "0,0\r\n\r\n60,deep\r\n", R"(a/dive.csv:3: "deep")");
    row("half a quote", "0,\"1\n", R"(a/dive.csv:1: ""1" is not a number)");
    row("not a number", "0,0\n60,nan\n", "a/dive.csv:2: the depth is nan m");
    row("no end", "0,0\ninf,1\n", "a/dive.csv:2: the time is inf s");
    row("too deep", "0,0\n# deep\n60,1e308\n", "a/dive.csv:3: the depth is 1e+308 m");
    row("above the water", "0,0\n60,-2\n", "a/dive.csv:2: the depth is -2 m");
    row("back in time", "0,0\n60,2\n59,2\n", "a/dive.csv:3: the time goes back");
    row("a NUL", QByteArray("0,0\n6\0,1", 8), "a/dive.csv:2: this is not a text");
    row("UTF-16", QByteArray("\xFF\xFE\x30\0,\0", 6), "a/dive.csv:1: this is not a text");
}

void TestDiveLog::faultsOfTablesHaveTheirLine()
{
    QFETCH(QByteArray, table);
    QFETCH(QString, fault);
    const QString found = parsed(table, "a/dive.csv");
    QVERIFY2(found.startsWith(fault), qPrintable(found));
}

void TestDiveLog::logsOfSubsurfaceAreRead()
{
    cMyDiveLog log;
    const cMyOutcome outcome = cli::readDiveLog(dataFile("reef.ssrf"), 1, log);
    QCOMPARE(outcome.reasons, QStringList());
    QCOMPARE(log.name, QStringLiteral("reef.ssrf"));
    QCOMPARE(log.dives, 3);
    // A depth or temperature that a sample lacks is that of the one before; the second device of
    // the same dive is left out.
    QCOMPARE(textOf(log.profile),
             QStringLiteral("0/0@18 60/10@18 120/18@14 600/18@14 720/5@16 900/5@16 960/0@16"));
}

void TestDiveLog::theDiveAskedForIsRead()
{
    cMyDiveLog log;
    QVERIFY(cli::readDiveLog(dataFile("reef.ssrf"), 2, log).isDone());
    QCOMPARE(textOf(log.profile), QStringLiteral("0/0 60/6 120/0"));
    QCOMPARE(log.dive, 2);
    const auto fault = [&log](int dive) {
        return cli::readDiveLog(dataFile("reef.ssrf"), dive, log).reasons.value(0);
    };
    QVERIFY2(fault(3).contains(QLatin1String("dive 3: a profile needs")), qPrintable(fault(3)));
    QVERIFY2(fault(4).contains(QLatin1String("no dive 4 (dives: 3)")), qPrintable(fault(4)));
    const cMyOutcome table = cli::parseDiveLog("0,0\n1,1", "dive.csv", 2, log);
    QVERIFY(table.reasons.value(0).contains(QLatin1String("no dive 2")));
    QCOMPARE(table.status, cli::ExitStatus::Usage);
    const cMyOutcome builtIn = cli::readDiveLog(QStringLiteral("square"), 2, log);
    QCOMPARE(builtIn.status, cli::ExitStatus::Usage);
    QVERIFY(builtIn.reasons.value(0).contains(QLatin1String("no dive 2")));
}

void TestDiveLog::logsInTheUniversalFormatAreRead_data()
{
    QTest::addColumn<QByteArray>("from");
    QTest::addColumn<QByteArray>("to");
    QTest::newRow("default namespace") << QByteArray() << QByteArray();
    QTest::newRow("no namespace") << QByteArray(" xmlns=\"http://www.streit.cc/uddf/3.2/\"")
                                  << QByteArray();
    QTest::newRow("prefixed") << QByteArray("<") << QByteArray("<u:");
}

void TestDiveLog::logsInTheUniversalFormatAreRead()
{
    QFETCH(QByteArray, from);
    QFETCH(QByteArray, to);
    QByteArray contents = support::readFile(dataFile("pool.uddf"));
    if (!from.isEmpty()) {
        contents.replace(from, to);
        contents.replace("<u:/", "</u:");
        contents.replace("<u:?", "<?");
        contents.replace("uddf xmlns=", "uddf xmlns:u=");
    }
    QCOMPARE(parsed(contents, "pool.uddf"),
             QStringLiteral("0/0@20 20/12.5@20 30/12.5@17.5 50/0@17.5"));
    QCOMPARE(parsed(contents, "pool.uddf", 2), QStringLiteral("10/3 20/0"));
}

void TestDiveLog::faultsOfXmlHaveTheirLine_data()
{
    QTest::addColumn<QByteArray>("xml");
    QTest::addColumn<QString>("fault");
    const auto row = [](const char* name, const QByteArray& xml, const char* fault) {
        QTest::newRow(name) << xml << fault;
    };
    const QByteArray first = "<sample time='0:00 min' depth='0.0 m'/>\n";
    row("empty", "", "a/x.xml:1: Premature end");
    row("another format", "\n<html/>", "a/x.xml:2: the file begins with <html>");
    row("no dives", "<divelog/>", "a/x.xml:1: there is no dive 1 (dives: 0)");
    row("no samples", subsurface(""), "a/x.xml:4: dive 1: a profile needs");
    row("cut off", subsurface(first).chopped(5), "a/x.xml:5: ");
    row("no time", subsurface("<sample depth='1 m'/>"), "a/x.xml:3: the time of a sample \"\"");
    row("time is not one", subsurface(first + "<sample time='soon' depth='1 m'/>"),
        "a/x.xml:4: the time of a sample \"soon\"");
    row("depth in feet", subsurface(first + "<sample time='1:00 min' depth='10 ft'/>"),
        "a/x.xml:4: the depth of a sample \"10 ft\"");
    row("depth is no number", subsurface(first + "<sample time='1:00 min' depth='nan m'/>"),
        "a/x.xml:4: the depth is nan m");
    row("above the water", subsurface(first + "<sample time='1:00 min' depth='-1.1 m'/>"),
        "a/x.xml:4: the depth is -1.1 m");
    row("too deep", subsurface(first + "<sample time='1:00 min' depth='1e308 m'/>"),
        "a/x.xml:4: the depth is 1e+308 m");
    row("too long", subsurface(first + "<sample time='999999:00 min' depth='1 m'/>"),
        "a/x.xml:4: the time is 59999940 s");
    row("temperature is not one", subsurface("<sample time='0:00 min' temp='warm'/>"),
        "a/x.xml:3: the temperature of a sample \"warm\"");
    const QByteArray dive = "<uddf><dive><samples>\n<waypoint>";
    row("waypoint without a time", dive + "<depth>1</depth></waypoint></samples></dive></uddf>",
        "a/x.xml:2: a waypoint has no <divetime>");
    row("waypoint with a word", dive + "<depth>deep</depth></waypoint></samples></dive></uddf>",
        "a/x.xml:2: the depth of a waypoint \"deep\"");
}

void TestDiveLog::faultsOfXmlHaveTheirLine()
{
    QFETCH(QByteArray, xml);
    QFETCH(QString, fault);
    const QString found = parsed(xml, "a/x.xml");
    QVERIFY2(found.startsWith(fault), qPrintable(found));
}

void TestDiveLog::hostileXmlIsRefused_data()
{
    QTest::addColumn<QByteArray>("xml");
    QTest::addColumn<QString>("word");
    const auto row = [](const char* name, const QByteArray& xml, const char* word) {
        QTest::newRow(name) << xml << word;
    };
    const auto document = [](const QByteArray& entities, const QByteArray& content) {
        return "<?xml version='1.0'?>\n<!DOCTYPE divelog [" + entities + "]>\n<divelog>" + content +
               "</divelog>";
    };
    QByteArray growing = "<!ENTITY a0 'ha'>";
    for (int i = 1; i < 30; ++i) {
        const QByteArray before = "&a" + QByteArray::number(i - 1) + ";";
        growing += "<!ENTITY a" + QByteArray::number(i) + " '" + before.repeated(10) + "'>";
    }
    row("an entity", document("<!ENTITY a 'b'>", ""), "entities");
    row("entities of entities", document(growing, "&a29;"), "entities");
    row("a file as an entity", document("<!ENTITY a SYSTEM 'file:///etc/passwd'>", "&a;"),
        "entities");
    row("an entity that is not there", "<divelog>&a;</divelog>", "Entity 'a' not declared");
    row("too deep", "<divelog>" + QByteArray("<a>").repeated(1000000), "nested more than 100 deep");
    row("no UTF-8", "<divelog>\xFF\xFE\xC0</divelog>", "encod");
    row("an encoding that is none", "<?xml version='1.0' encoding='none'?><divelog/>",
        "Encoding none");
    row("a NUL", QByteArray("<divelog>\0</divelog>", 20), "x.xml:1: this is not a text");
    row("an endless attribute", "<divelog a='" + QByteArray(1000000, 'a'), "a tag is longer");
    row("an endless name", '<' + QByteArray(1000000, 'a') + "/>", "a tag is longer");
    QByteArray attributes;
    QByteArray defaults;
    for (int i = 0; i < 100000; ++i) {
        const QByteArray name = 'a' + QByteArray::number(i);
        attributes += ' ' + name + "='>'";
        defaults += "<!ATTLIST r " + name + " CDATA '>'>";
    }
    row("endless attributes", "<divelog><r" + attributes + "/></divelog>", "a tag is longer");
    row("behind what is no tag",
        "<divelog><!-- <' --><![CDATA[<\"]]><?a <'?><r" + attributes + "/></divelog>",
        "a tag is longer");
    row("behind a comment in a declaration",
        "<!DOCTYPE divelog [<!-- ' -->]><divelog><r" + attributes + "/></divelog>",
        "a tag is longer");
    row("endless attributes by default", document(defaults, "<r/>"), "declarations are longer");
    row("many attributes",
        "<divelog><r" + attributes.left(attributes.indexOf(" a300=")) + "/></divelog>",
        "more than 256 attributes");
    row("UTF-16", QByteArray("\xFF\xFE<\0d\0", 6), "this is not a text in UTF-8");
}

void TestDiveLog::hostileXmlIsRefused()
{
    QFETCH(QByteArray, xml);
    QFETCH(QString, word);
    const QString found = parsed(xml, "x.xml");
    QVERIFY2(found.startsWith(QLatin1String("x.xml:")) && found.contains(word), qPrintable(found));
    QVERIFY2(found.size() < 200, qPrintable(found));
}

void TestDiveLog::longTextsAreNoLongTags()
{
    const QByteArray samples = "<sample time='0:00' depth='0'/>\n<sample time='1:00' depth='3'/>";
    const QByteArray text(100000, '\'');
    for (const QByteArray& filler :
         {"<notes>" + text + "</notes>", "<!--" + text + "-->", "<![CDATA[" + text + "]]>"}) {
        QCOMPARE(parsed(subsurface(filler + samples), "x.xml"), QStringLiteral("0/0 60/3"));
    }
    const QByteArray comment = "<!DOCTYPE divelog [<!--" + text + "-->]>";
    QCOMPARE(parsed(comment + subsurface(samples), "x.xml"), QStringLiteral("0/0 60/3"));
}

void TestDiveLog::aTimeIsOfOneWaypoint()
{
    const QString found =
        parsed("<uddf><dive><samples><waypoint><depth>0</depth><divetime>5</divetime></waypoint>\n"
               "<waypoint><depth>1</depth></waypoint></samples></dive></uddf>",
               "x.uddf");
    QCOMPARE(found, QStringLiteral("x.uddf:2: a waypoint has no <divetime>"));
}

void TestDiveLog::whatSensorsGetWrongIsMended()
{
    QCOMPARE(parsed("0,-0.05\n60,-1\n90,3", "a.csv"), QStringLiteral("0/0 60/0 90/3"));
    cMyDiveLog log;
    const QByteArray samples = "<sample time='0:00' depth='-0.1 m' temp='18.0 C'/>"
                               "<sample time='1:00' depth='3.0 m' temp='-273.2 C'/>"
                               "<sample time='2:00' depth='3.0 m' temp='nan C'/>"
                               "<sample time='3:00' depth='3.0 m' temp='17.0 C'/>";
    QVERIFY(cli::parseDiveLog(subsurface(samples), "x.ssrf", 1, log).isDone());
    QCOMPARE(textOf(log.profile), QStringLiteral("0/0@18 60/3@18 120/3@18 180/3@17"));
    QCOMPARE(log.strangeTemperatures, 2);
    const QByteArray dive = "<uddf><dive><samples>"
                            "<waypoint><depth>0</depth><divetime>0</divetime>"
                            "<temperature>0</temperature></waypoint>"
                            "<waypoint><depth>2</depth><divetime>9</divetime>"
                            "<temperature>291.15</temperature></waypoint>"
                            "</samples></dive></uddf>";
    QVERIFY(cli::parseDiveLog(dive, "x.uddf", 1, log).isDone());
    QCOMPARE(textOf(log.profile), QStringLiteral("0/0 9/2@18"));
    QCOMPARE(log.strangeTemperatures, 1);
}

void TestDiveLog::theKindOfFileIsSeen_data()
{
    QTest::addColumn<QByteArray>("contents");
    QTest::addColumn<QString>("file");
    const QByteArray xml =
        subsurface("<sample time='0:00' depth='0'/><sample time='1:00' depth='3 m'/>");
    const QByteArray table = "0,0\n60,3\n";
    QTest::newRow("xml") << xml << "dive.xml";
    QTest::newRow("ssrf") << xml << "dive.ssrf";
    QTest::newRow("capitals") << xml << "DIVE.SSRF";
    QTest::newRow("XML by its contents") << xml << "dive";
    QTest::newRow("XML behind a mark") << "\xEF\xBB\xBF\n" + xml << "dive.txt";
    QTest::newRow("table") << table << "dive.csv";
    QTest::newRow("table by its contents") << table << "dive";
}

void TestDiveLog::theKindOfFileIsSeen()
{
    QFETCH(QByteArray, contents);
    QFETCH(QString, file);
    if (file == QLatin1String("dive.txt")) {
        contents.replace("\n<divelog", "<divelog");
    }
    QCOMPARE(parsed(contents, qPrintable(file)), QStringLiteral("0/0 60/3"));
}

void TestDiveLog::aFileNamedAsABuiltInProfileIsReadByItsPath()
{
    const QTemporaryDir directory;
    const QString path = directory.filePath(QStringLiteral("square"));
    support::writeFile(path, "0,0\n60,3\n");
    cMyDiveLog log;
    QVERIFY(cli::readDiveLog(path, 1, log).isDone());
    QCOMPARE(textOf(log.profile), QStringLiteral("0/0 60/3"));
    QVERIFY(cli::readDiveLog(QStringLiteral("square"), 1, log).isDone());
    QCOMPARE(log.profile.maximumDepth(), 18.0);
}

void TestDiveLog::whatIsNoFileIsRefused_data()
{
    QTest::addColumn<QString>("name");
    QTest::addColumn<QString>("why");
    const char* missing = "there is no such file, and no such built-in profile (freedive, square, "
                          "sawtooth)";
    QTest::newRow("nothing") << "" << missing;
    QTest::newRow("missing") << "missing.csv" << missing;
    QTest::newRow("directory") << "/"
                               << "is a directory";
    QTest::newRow("device") << "/dev/zero"
                            << "is no regular file";
}

void TestDiveLog::whatIsNoFileIsRefused()
{
    QFETCH(QString, name);
    QFETCH(QString, why);
    cMyDiveLog log;
    const cMyOutcome outcome = cli::readDiveLog(name, 1, log);
    QCOMPARE(outcome.status, cli::ExitStatus::BadFile);
    QCOMPARE(outcome.reasons, QStringList{name + QStringLiteral(": ") + why});
}

void TestDiveLog::hugeFilesAreRefused()
{
    const QTemporaryDir directory;
    QFile file(directory.filePath(QStringLiteral("huge.csv")));
    QVERIFY(file.open(QIODevice::WriteOnly));
    QVERIFY(file.resize(cli::longestDiveLog + 1)); // takes no room
    cMyDiveLog log;
    const QString reason = cli::readDiveLog(file.fileName(), 1, log).reasons.value(0);
    QVERIFY2(reason.contains(QLatin1String("longer than 67108864 bytes")), qPrintable(reason));
}

QTEST_GUILESS_MAIN(TestDiveLog)
#include "test_divelog.moc"
