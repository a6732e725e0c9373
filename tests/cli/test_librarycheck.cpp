// SPDX-FileCopyrightText: 2026 The MIOLKAsoft authors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "cli/librarycheck.h"
#include "tests/support/librarytext.h"
#include "tests/support/posix.h"

#include <QTemporaryDir>
#include <QtTest>

class TestLibraryCheck : public QObject
{
    Q_OBJECT

private slots:
    void faults_data();
    void faults();
    void settingsAreNoLibrary();
    void kinds_data();
    void kinds();
    void whatIsSentIsTheFile();
    void sizes_data();
    void sizes();
    void unreadableFiles();

private:
    QTemporaryDir m_directory;
};

namespace {

const QByteArray endRecord = QByteArrayLiteral(":00000001FF\r\n");
const QByteArray dataRecord = QByteArrayLiteral(":0100000007F8\r\n");

QByteArray named(int size)
{
    return support::libraryRecord(image::DataRecord, 0xFFE0,
                                  QByteArray("English\0\0\0\0\0\0\0\0\0"
                                             "............\x01\x02\x03\x04",
                                             32)
                                      .left(size));
}

} // namespace

void TestLibraryCheck::faults_data()
{
    QTest::addColumn<QByteArray>("text");
    QTest::addColumn<QString>("reason"); ///< empty if there is nothing wrong
    const QByteArray upper =
        support::libraryRecord(image::ExtendedLinearAddressRecord, 0, QByteArray("\0\x01", 2));
    QTest::newRow("in order") << dataRecord + endRecord << "";
    QTest::newRow("two segments") << dataRecord + upper + dataRecord + endRecord << "";
    QTest::newRow("short address record") << ":000000040001FB\n" + dataRecord + endRecord << "";
    QTest::newRow("behind the end") << dataRecord + endRecord + "rubbish"
                                    << "";
    QTest::newRow("several in a line") << ":0100000007F8 :0100000007F8\n\n" + endRecord << "";
    QTest::newRow("empty") << QByteArray() << ": holds no data";
    QTest::newRow("end only") << endRecord << ": holds no data";
    QTest::newRow("no end") << dataRecord + dataRecord << ":2: the file ends here";
    QTest::newRow("no record") << dataRecord + "hello\n" + endRecord << ":2: this is no Intel HEX";
    QTest::newRow("second in a line")
        << "\n\n" + dataRecord.trimmed() + " hello\n" + endRecord << ":3: this is no Intel HEX";
    QTest::newRow("too short") << ":0200000007F7\n" + endRecord << ":1: this is no Intel HEX";
    QTest::newRow("too long") << ":0100000007F800\n" + endRecord << ":1: this is no Intel HEX";
    QTest::newRow("wrong sum") << dataRecord + "\n:0100000007F9\n" + endRecord
                               << ":3: the checksum";
    QTest::newRow("address record")
        << ":02000004000100\n" + dataRecord + endRecord << ":1: this address record";
    QTest::newRow("segment record")
        << support::libraryRecord(2, 0, QByteArray("\x10\0", 2)) + dataRecord + endRecord
        << ":1: the device takes no records of type 2";
    QTest::newRow("end with data")
        << dataRecord + ":00000101FE\n" + endRecord << ":2: the device takes no end record";
}

void TestLibraryCheck::faults()
{
    QFETCH(QByteArray, text);
    QFETCH(QString, reason);
    const QString path = m_directory.filePath("library.mia");
    support::writeFile(path, text);
    cMyCheckedLibrary library;
    const cMyOutcome outcome = cli::checkLibrary(path, library);
    const QString told = outcome.reasons.value(0);
    QCOMPARE(outcome.isDone(), reason.isEmpty());
    QVERIFY2(reason.isEmpty() || told.startsWith(path + reason), qPrintable(told));
}

void TestLibraryCheck::settingsAreNoLibrary()
{
    cMyCheckedLibrary library;
    for (const char* name : {"a.mio", "A.MIO"}) {
        const QString path = m_directory.filePath(QLatin1String(name));
        support::writeFile(path, dataRecord + endRecord);
        const cMyOutcome outcome = cli::checkLibrary(path, library);
        QCOMPARE(outcome.status, cli::ExitStatus::BadFile);
        QVERIFY(outcome.reasons.value(0).startsWith(path + ": this is a settings file"));
    }
}

void TestLibraryCheck::kinds_data()
{
    QTest::addColumn<QByteArray>("text");
    QTest::addColumn<QString>("kind");
    QTest::newRow("name") << named(32) << "a sound library (language \"English\", version 1.2.3.4)";
    QTest::newRow("part of a name") << named(31) << "a library without a language";
    QTest::newRow("no name") << dataRecord << "a library without a language";
}

void TestLibraryCheck::kinds()
{
    QFETCH(QByteArray, text);
    QFETCH(QString, kind);
    const QString path = m_directory.filePath("library.mia");
    support::writeFile(path, text + endRecord);
    cMyCheckedLibrary library;
    QVERIFY(cli::checkLibrary(path, library).isDone());
    QVERIFY2(cli::libraryKind(library).startsWith(kind), qPrintable(cli::libraryKind(library)));
}

void TestLibraryCheck::whatIsSentIsTheFile()
{
    const QString path = m_directory.filePath("library.mia");
    support::writeFile(path, named(32) + dataRecord + endRecord);
    cMyCheckedLibrary library;
    QVERIFY(cli::checkLibrary(path, library).isDone());
    const QStringList lines{QString::fromLatin1(named(32).trimmed()), ":0100000007F8",
                            ":00000001FF"};
    QCOMPARE(library.lines, lines);
    QCOMPARE(library.bytes, qint64{33});
    QCOMPARE(library.end, qint64{0x10000});
}

void TestLibraryCheck::sizes_data()
{
    QTest::addColumn<qint64>("end");
    QTest::addColumn<int>("megabytes");
    QTest::addColumn<bool>("fits");
    QTest::newRow("full") << qint64{8} * 1024 * 1024 << 8 << true;
    QTest::newRow("one byte more") << qint64{8} * 1024 * 1024 + 1 << 8 << false;
    QTest::newRow("larger device") << qint64{8} * 1024 * 1024 + 1 << 16 << true;
    QTest::newRow("no memory") << qint64{1} << 0 << false;
}

void TestLibraryCheck::sizes()
{
    QFETCH(qint64, end);
    QFETCH(int, megabytes);
    cMyCheckedLibrary library;
    library.end = end;
    QTEST(cli::checkLibrarySize("library.mia", library, megabytes).isDone(), "fits");
}

void TestLibraryCheck::unreadableFiles()
{
    cMyCheckedLibrary library;
    for (const QString& path : {m_directory.filePath("none.mia"), m_directory.path()}) {
        const cMyOutcome outcome = cli::checkLibrary(path, library);
        QCOMPARE(outcome.status, cli::ExitStatus::BadFile);
        QVERIFY(outcome.reasons.value(0).startsWith(path));
    }
}

QTEST_GUILESS_MAIN(TestLibraryCheck)
#include "test_librarycheck.moc"
