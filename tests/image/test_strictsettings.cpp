// SPDX-FileCopyrightText: 2026 The MIOLKAsoft authors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "image/strictsettings.h"

#include "image/memoryarea.h"
#include "tests/support/offeredimage.h"
#include "tests/support/posix.h"
#include "tests/support/template.h"

#include <QTemporaryDir>
#include <QtTest>

/// Faults of settings files, each with its place.
class TestStrictSettings : public QObject
{
    Q_OBJECT

private slots:
    void faults_data();
    void faults();
    void sumsByThePublicRule_data();
    void sumsByThePublicRule();
    void filesThatCannotBeRead_data();
    void filesThatCannotBeRead();
    void aFileWithoutPermission();
    void everyFaultIsNamed();
    void manyFaultsAreCounted();
    void millionsOfLinesTakeNoMemory();
    void whatTheWindowTakesIsTheSame_data();
    void whatTheWindowTakesIsTheSame();
    void changedFilesAreAtFaultOrTheSame();
    void bytesThatAreGivenAreKnown();

private:
    [[nodiscard]] QStringList faultsOf(const QByteArray& text)
    {
        support::writeFile(m_path, text);
        return image::faultLines(QStringLiteral("x"), image::readStrictSettings(m_path));
    }

    QTemporaryDir m_directory;
    QString m_path = m_directory.filePath(QStringLiteral("settings.mio"));
};

namespace {

const QByteArray good = ":04000000AABBCCDDEE\n";
const QByteArray end = ":00000001FF";

/// What the window makes of a file on top of zeros.
QByteArray lenient(const QString& path)
{
    cMyMemoryArea area;
    area.setData(0, QVector<quint8>(image::settingsImageSize, 0));
    image::readSettingsFile(path, area);
    return support::bytesOf(area, 65535);
}

QByteArray strict(const cMyStrictSettings& settings)
{
    return {reinterpret_cast<const char*>(settings.bytes.data()), image::settingsImageSize};
}

} // namespace

void TestStrictSettings::faults_data()
{
    QTest::addColumn<QByteArray>("text");
    QTest::addColumn<QString>("fault");
    const auto row = [](const char* name, const QByteArray& text, const char* fault) {
        QTest::newRow(name) << text << QString::fromLatin1(fault);
    };
    const auto line = [&row](const char* name, const QByteArray& record, const char* fault) {
        row(name, good + record + '\n' + end, fault);
    };
    line("no colon", "10001000", "x:2: \"10001000\" is no record, which begins with a colon");
    line("a comment", "# mine", "x:2: \"#\" is no record, which begins with a colon");
    line("bad digit", ":02002000GG4467", "x:2: character 10 of the record, \"G\", is no hex digit");
    line("NUL", QByteArray(":02\0002000334467", 14),
         R"(x:2: character 4 of the record, "\x00", is no hex digit)");
    line("odd digits", ":0200200033467", "x:2: the record has an odd number of hex digits");
    line("colon alone", ":", "x:2: \":\" is too short for a record");
    line("header alone", ":00000001", "x:2: \":00000001\" is too short for a record");
    line("count over the data", ":0A002000334467",
         "x:2: the count says 10 bytes of data, but there are 2");
    line("count under the data, sum in its place", ":020020003344675566",
         "x:2: the count says 2 bytes of data, but there are 4");
    line("wrong sum", ":02002000334468", "x:2: checksum 68, expected 67");
    line("start address", ":04000005000000CD2A",
         "x:2: record type 05, which settings files do not have");
    line("type that nobody has", ":00000042BE",
         "x:2: record type 42, which settings files do not have");
    line("address that moves nothing", ":020000040000FA",
         "x:2: an extended address record (type 04), which settings files do not have");
    line("beyond the image", ":02040000334483",
         "x:2: address 0401 is beyond the settings, which end at 03FF");
    line("across the end of the image", ":0203FF00334485",
         "x:2: address 0400 is beyond the settings, which end at 03FF");
    line("across 64 KiB", ":02FFFF00334489",
         "x:2: address 10000 is beyond the settings, which end at 03FF");
    line("given twice", ":0100020001FC", "x:2: byte 2 is given once more, as 01 and not as CC");
    line("end with data", ":010004010AF0", "x:2: an end-of-file record with data");
    line("over-long word", ':' + QByteArray(600, '0'), "x:2: a word longer than any record is");
    row("behind the end", good + end + '\n' + good + good,
        "x:3: there is more behind the end-of-file record");
    row("no end", good, "x: has no end-of-file record (:00000001FF); is it all of the file?");
    row("empty", "", "x: is empty");
    row("blank", " \r\n\n ", "x: is empty");
    row("byte-order mark", "\xEF\xBB\xBF" + good + end,
        "x:1: begins with a byte-order mark; save the file without one");
    row("carriage returns and line feeds", ":04000000AABBCCDDEE\r\n\r\n:0100020001FC\r\n" + end,
        "x:3: byte 2 is given once more, as 01 and not as CC");
    row("several on one line", ":04000000AABBCCDDEE :0100020001FC " + end,
        "x:1: byte 2 is given once more, as 01 and not as CC");
}

void TestStrictSettings::faults()
{
    QFETCH(QByteArray, text);
    QFETCH(QString, fault);
    const QStringList found = faultsOf(text);
    QVERIFY(!found.isEmpty());
    QString first = found.first();
    QCOMPARE(first.replace(QChar(u'\0'), QLatin1String("\\x00")), fault);
}

void TestStrictSettings::sumsByThePublicRule_data()
{
    QTest::addColumn<QByteArray>("text");
    QTest::newRow("as we write") << good + end;
    QTest::newRow("lower case") << (good + end).toLower();
    QTest::newRow("no bytes") << good + ":0000000000\n" + end;
    QTest::newRow("no bytes behind the last one") << good + ":00040100FB\n" + end;
    QTest::newRow("line end behind the end") << good + end + "\r\n\r\n";
    QTest::newRow("twice the same") << good + good + end;
    QTest::newRow("nothing but the end") << end;
    QTest::newRow("last byte") << ":0103FF005AA3\n" + end;
}

void TestStrictSettings::sumsByThePublicRule()
{
    QFETCH(QByteArray, text);
    QCOMPARE(faultsOf(text), QStringList());
    QCOMPARE(strict(image::readStrictSettings(m_path)), lenient(m_path));
}

void TestStrictSettings::filesThatCannotBeRead_data()
{
    QTest::addColumn<QString>("path");
    QTest::addColumn<QString>("fault");
    QTest::newRow("no file") << m_directory.filePath("none.mio") << "there is no such file";
    QTest::newRow("no name") << QString() << "there is no such file";
    QTest::newRow("directory") << m_directory.path() << "is no regular file";
    QTest::newRow("device without an end") << "/dev/zero"
                                           << "is no regular file";
    QTest::newRow("name that no file can have")
        << QString(QChar(0xDC80)) << "there is no such file";
}

void TestStrictSettings::filesThatCannotBeRead()
{
    QFETCH(QString, path);
    QFETCH(QString, fault);
    const cMyStrictSettings settings = image::readStrictSettings(path);
    QCOMPARE(settings.faultCount, qint64(1));
    QCOMPARE(settings.faults.first().line, qint64(0));
    QCOMPARE(settings.faults.first().reason, fault);
}

void TestStrictSettings::aFileWithoutPermission()
{
    support::writeFile(m_path, good + end);
    QVERIFY(QFile::setPermissions(m_path, QFileDevice::WriteOwner));
    QVERIFY(support::letOthersIn(m_directory.path()));
    cMyStrictSettings settings;
    {
        const support::WithoutPrivileges nobody;
        settings = image::readStrictSettings(m_path);
    }
    QVERIFY(QFile::remove(m_path));
    QCOMPARE(settings.faultCount, qint64(1));
    QCOMPARE(settings.faults.first().reason, QStringLiteral("cannot be opened: Permission denied"));
}

void TestStrictSettings::everyFaultIsNamed()
{
    const QStringList expected = {
        "x:1: checksum EF, expected EE", "x:3: \"junk\" is no record, which begins with a colon",
        "x:4: address 0400 is beyond the settings, which end at 03FF",
        "x: has no end-of-file record (:00000001FF); is it all of the file?"};
    QCOMPARE(faultsOf(":04000000AABBCCDDEF\n" + good + "junk\n:01040000FFFC\n"), expected);
    const QStringList moved = {
        "x:1: an extended address record (type 04), which settings files do not have",
        "x:2: address FFFF0003 is beyond the settings, which end at 03FF",
        "x:3: an extended address record (type 02), which settings files do not have",
        "x:4: address 0403 is beyond the settings, which end at 03FF"};
    QCOMPARE(faultsOf(":02000004FFFFFC\n" + good + ":020000020040BC\n" + good + end), moved);
    // As far up as addresses go, and then beyond.
    QCOMPARE(faultsOf(":02000004FFFFFC\n:02FFFF00334489\n" + end).last(),
             QStringLiteral("x:2: address 100000000 is beyond the settings, which end at 03FF"));
}

void TestStrictSettings::manyFaultsAreCounted()
{
    QByteArray text;
    for (int i = 0; i < image::mostNamedFaults + 150; ++i) {
        text += "junk\n";
    }
    const QStringList found = faultsOf(text + end);
    QCOMPARE(found.size(), image::mostNamedFaults + 1);
    QVERIFY(found.at(1999).startsWith(QLatin1String("x:2000: ")));
    QCOMPARE(found.last(), QStringLiteral("x: and 150 more faults"));
}

void TestStrictSettings::millionsOfLinesTakeNoMemory()
{
    constexpr int count = 3000000;
    support::writeFile(m_path, QByteArray("x\n").repeated(count));
    const long before = support::peakMemory();
    const cMyStrictSettings settings = image::readStrictSettings(m_path);
    const long growth = support::peakMemory() - before; // in KiB
    QCOMPARE(settings.faultCount, qint64(count) + 1);
#ifndef __SANITIZE_ADDRESS__ // which keeps what was freed
    QVERIFY(growth < 4096);
#else
    Q_UNUSED(growth)
#endif
}

void TestStrictSettings::whatTheWindowTakesIsTheSame_data()
{
    QTest::addColumn<quint32>("seed");
    for (quint32 seed = 1; seed <= 20; ++seed) {
        QTest::addRow("seed %u", seed) << seed;
    }
}

void TestStrictSettings::whatTheWindowTakesIsTheSame()
{
    QFETCH(quint32, seed);
    QRandomGenerator random(seed);
    const QByteArray bytes = support::randomImage(random);
    support::writeFile(m_path, support::settingsText(bytes, seed % 2 == 0 ? "\r\n" : "\n"));
    const cMyStrictSettings settings = image::readStrictSettings(m_path);
    QCOMPARE(image::faultLines(m_path, settings), QStringList());
    QCOMPARE(strict(settings), bytes);
    QCOMPARE(lenient(m_path), bytes);
    QVERIFY(settings.isGiven.all());
}

/// A file in which characters were changed is either at fault, or the same to both readers.
void TestStrictSettings::changedFilesAreAtFaultOrTheSame()
{
    QRandomGenerator random(7);
    const QByteArray text = support::settingsText(support::randomImage(random).left(64));
    const QByteArray characters = ":0123456789ABCDEFabcdef \n\rG";
    int same = 0;
    for (int run = 0; run < 4000; ++run) {
        QByteArray changed = text;
        for (int i = random.bounded(1, 3); i > 0; --i) {
            changed[random.bounded(static_cast<int>(changed.size()))] =
                characters.at(random.bounded(static_cast<int>(characters.size())));
        }
        support::writeFile(m_path, changed);
        const cMyStrictSettings settings = image::readStrictSettings(m_path);
        if (settings.faultCount == 0) {
            ++same;
            QVERIFY2(strict(settings) == lenient(m_path), changed.constData());
        }
    }
    QVERIFY(same > 0);
}

void TestStrictSettings::bytesThatAreGivenAreKnown()
{
    support::writeFile(m_path, good + ":0103FF005AA3\n" + end);
    const cMyStrictSettings settings = image::readStrictSettings(m_path);
    QCOMPARE(settings.faultCount, qint64(0));
    QCOMPARE(settings.isGiven.count(), std::size_t(5));
    for (const std::size_t address : {0U, 3U, 1023U}) {
        QVERIFY(settings.isGiven[address]);
    }
    QVERIFY(!settings.isGiven[4]);
}

QTEST_GUILESS_MAIN(TestStrictSettings)
#include "test_strictsettings.moc"
