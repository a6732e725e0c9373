// SPDX-FileCopyrightText: 2026 The MIOLKAsoft authors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "maintenance/libraryfile.h"

#include "image/filename.h"
#include "image/hexcodec.h"
#include "tests/support/posix.h"

#include <QTemporaryDir>
#include <QtTest>

#include <sys/stat.h>

/// Library files as lines for the device.
class TestLibraryFile : public QObject
{
    Q_OBJECT

private slots:
    void linesOfAFile_data();
    void linesOfAFile();
    void everyByteIsKept();
    void aWordLongerThanARecordIsCut();
    void whatCannotBeRead_data();
    void whatCannotBeRead();
    void aFileThatNobodyMayRead();
    void onlyTheSizeIsHeldAgainstAFile();
    void soIsTheNumberOfLines();
    void cleanupTestCase();

private:
    [[nodiscard]] QString path(const char* name) const
    {
        return m_directory.filePath(QString::fromLatin1(name));
    }

    [[nodiscard]] QStringList linesOf(const QByteArray& contents) const
    {
        support::writeFile(path("library.mia"), contents);
        const cMyLibrary library = maintenance::readLibraryFile(path("library.mia"));
        return library.fault == LibraryFault::None ? library.lines : QStringList(QString());
    }

    [[nodiscard]] QByteArray rawPath() const { return path("caf").toUtf8() + "\xE9.mia"; }

    QTemporaryDir m_directory;
};

namespace {

const QByteArray first = ":0400000001020304F2";
const QByteArray second = ":02000400050607080000";
const QByteArray end = ":00000001FF";

} // namespace

void TestLibraryFile::linesOfAFile_data()
{
    QTest::addColumn<QByteArray>("contents");
    QTest::addColumn<QByteArray>("lines");
    const QByteArray plain = first + ' ' + second + ' ' + end;
    const auto row = [](const char* name, const QByteArray& contents, const QByteArray& lines) {
        QTest::newRow(name) << contents << lines;
    };
    row("plain line ends", first + '\n' + second + '\n' + end + '\n', plain);
    row("Windows line ends", first + "\r\n" + second + "\r\n" + end + "\r\n", plain);
    row("old Macintosh line ends", first + '\r' + second + '\r' + end + '\r', plain);
    row("trailing blanks", first + "  \n" + second + "\t\n" + end + " \n", plain);
    row("blank lines", "\n\n" + first + "\n \n\n" + second + "\n\f\v\n" + end, plain);
    row("several on a line", first + ' ' + second + '\t' + end, plain);
    row("no line end after the last", first + '\n' + second + '\n' + end, plain);
    row("text after the end record", first + '\n' + end + '\n' + second + "\njunk\n",
        first + ' ' + end);
    row("no end record", first + '\n' + second + '\n', first + ' ' + second);
    row("end record in lower case", ":00000001ff\n" + first, ":00000001ff " + first);
    row("end record with more behind it", end + "00\n" + first, end + "00 " + first);
    row("end record with something before it", "x" + end + '\n' + first, "x" + end + ' ' + first);
    row("two end records", first + '\n' + end + '\n' + end, first + ' ' + end);
    row("words that are no records", "not a :library\n" + first + "\n:zz\n",
        "not a :library " + first + " :zz");
    row("only the end record", end, end);
    row("an empty file", {}, {});
    row("nothing but white space", " \r\n\t\n", {});
}

void TestLibraryFile::linesOfAFile()
{
    QFETCH(QByteArray, contents);
    QFETCH(QByteArray, lines);
    const QString expected = QString::fromLatin1(lines);
    QCOMPARE(linesOf(contents),
             expected.isEmpty() ? QStringList() : expected.split(QLatin1Char(' ')));
}

void TestLibraryFile::everyByteIsKept()
{
    QByteArray word;
    constexpr int byteCount = 256;
    for (int byte = 0; byte < byteCount; ++byte) {
        const bool isWhiteSpace = byte == ' ' || (byte >= '\t' && byte <= '\r');
        word.append(isWhiteSpace ? "" : QByteArray(1, static_cast<char>(byte)));
    }
    const QByteArray mark = "\xEF\xBB\xBF";
    const QStringList lines = linesOf(mark + first + '\n' + word + '\n' + end);
    QCOMPARE(lines.size(), 3);
    QCOMPARE(lines.at(0).toLatin1(), mark + first);
    QCOMPARE(lines.at(1).toLatin1(), word);
}

void TestLibraryFile::aWordLongerThanARecordIsCut()
{
    const QByteArray longest = ":FF" + QByteArray(image::maxRecordText - 3, '0');
    QCOMPARE(linesOf(longest + '\n' + end), QStringList({longest, end}));
    QCOMPARE(linesOf(longest + "1\n" + end), QStringList({longest, end}));
    constexpr int huge = 5'000'000;
    QCOMPARE(linesOf(longest + QByteArray(huge, 'x') + '\n' + end), QStringList({longest, end}));
}

void TestLibraryFile::whatCannotBeRead_data()
{
    QTest::addColumn<QString>("path");
    QTest::newRow("no such file") << path("missing.mia");
    QTest::newRow("no name") << QString();
    QTest::newRow("a directory") << m_directory.path();
    mkfifo(path("fifo.mia").toLocal8Bit().constData(), S_IRUSR | S_IWUSR);
    QTest::newRow("a FIFO that nobody writes to") << path("fifo.mia");
    QTest::newRow("a file whose reading fails") << QStringLiteral("/proc/self/mem");
    QTest::newRow("a device node") << QStringLiteral("/dev/zero");
    // What the name would become if it were taken for another encoding.
    support::writeFile(QString::fromUtf8(rawPath()), end);
    support::writeRawFile(rawPath(), end);
    QTest::newRow("a name that is not UTF-8") << image::decodeFileName(rawPath());
}

void TestLibraryFile::whatCannotBeRead()
{
    QFETCH(QString, path);
    const cMyLibrary library = maintenance::readLibraryFile(path);
    QCOMPARE(library.fault, LibraryFault::Unreadable);
    QCOMPARE(library.lines, QStringList());
}

void TestLibraryFile::aFileThatNobodyMayRead()
{
    QVERIFY(support::letOthersIn(m_directory.path()));
    support::writeFile(path("secret.mia"), end);
    QVERIFY(QFile::setPermissions(path("secret.mia"), QFileDevice::Permissions()));
    const support::WithoutPrivileges nobody;
    QCOMPARE(maintenance::readLibraryFile(path("secret.mia")).fault, LibraryFault::Unreadable);
}

void TestLibraryFile::onlyTheSizeIsHeldAgainstAFile()
{
    QFile file(path("large.mia"));
    QVERIFY(file.open(QIODevice::WriteOnly));
    file.write(first + '\n' + end + '\n');
    // Nothing lies behind the end that is stored anywhere.
    QVERIFY(file.resize(maintenance::largestLibraryFile));
    const cMyLibrary largest = maintenance::readLibraryFile(file.fileName());
    QCOMPARE(largest.fault, LibraryFault::None);
    QCOMPARE(largest.lines, QStringList({first, end}));
    QVERIFY(file.resize(maintenance::largestLibraryFile + 1));
    const cMyLibrary tooLarge = maintenance::readLibraryFile(file.fileName());
    QCOMPARE(tooLarge.fault, LibraryFault::TooLarge);
    QCOMPARE(tooLarge.lines, QStringList());
}

void TestLibraryFile::soIsTheNumberOfLines()
{
    const QByteArray most = QByteArray("0\n").repeated(maintenance::mostLibraryLines - 1) + end;
    support::writeFile(path("lines.mia"), most);
    QCOMPARE(maintenance::readLibraryFile(path("lines.mia")).lines.size(),
             maintenance::mostLibraryLines);
    support::writeFile(path("lines.mia"), "0\n" + most);
    const cMyLibrary tooLarge = maintenance::readLibraryFile(path("lines.mia"));
    QCOMPARE(tooLarge.fault, LibraryFault::TooLarge);
    QCOMPARE(tooLarge.lines, QStringList());
}

void TestLibraryFile::cleanupTestCase()
{
    QCOMPARE(unlink(rawPath().constData()), 0); // which the directory cannot name
}

QTEST_GUILESS_MAIN(TestLibraryFile)
#include "test_libraryfile.moc"
