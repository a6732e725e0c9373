// SPDX-FileCopyrightText: 2026 The MIOLKAsoft authors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "image/settingsfile.h"

#include "tests/support/posix.h"
#include "tests/support/template.h"

#include <QTemporaryDir>
#include <QtTest>

#include <sys/stat.h>

/// Reading settings files, well-formed and otherwise.
class TestSettingsFile : public QObject
{
    Q_OBJECT

private slots:
    void builtInFileIsCrLfText();
    void contents_data();
    void contents();
    void aRecordBeyondTheImageGrowsTheArea();
    void whatIsNoRegularFileIsNotRead_data();
    void whatIsNoRegularFileIsNotRead();
    void aFileWithoutPermissionIsNotRead();
    void namesThatCannotBeEncodedAreNotRead();
    void aHundredMegabytesOnOneLine();
    void randomBytes();

private:
    [[nodiscard]] QString path(const char* name = "settings.mio") const
    {
        return m_directory.filePath(QString::fromUtf8(name));
    }
    QTemporaryDir m_directory;
};

namespace {

const QByteArray first = ":04000000AABBCCDDEE";
const QByteArray second = ":0200100011 22BB";

QByteArray withoutBlanks(QByteArray text)
{
    return text.replace(' ', "");
}

/// The image after the two records above.
QByteArray bothApplied()
{
    QByteArray image(1024, '\0');
    image.replace(0, 4, "\xAA\xBB\xCC\xDD");
    image.replace(16, 2, "\x11\x22");
    return image;
}

QByteArray firstApplied()
{
    QByteArray image(1024, '\0');
    return image.replace(0, 4, "\xAA\xBB\xCC\xDD");
}

} // namespace

void TestSettingsFile::builtInFileIsCrLfText()
{
    QCOMPARE(support::readFile(QStringLiteral(":/pliki/clear.mio")),
             support::settingsText(support::templateImage(), "\r\n"));
}

void TestSettingsFile::contents_data()
{
    QTest::addColumn<QByteArray>("text");
    QTest::addColumn<QByteArray>("image");
    const QByteArray one = first;
    const QByteArray two = withoutBlanks(second);
    const QByteArray end = ":00000001FF";
    const QByteArray none(1024, '\0');
    const QByteArray defaults = support::templateImage();
    QTest::newRow("canonical") << support::settingsText(defaults) << defaults;
    QTest::newRow("carriage returns") << support::settingsText(defaults, "\r\n") << defaults;
    QTest::newRow("lower case") << support::settingsText(defaults).toLower() << defaults;
    QTest::newRow("blank lines and tabs")
        << "\n \t" + one + "\r\n\r\n\t" + two + " \n" + end << bothApplied();
    QTest::newRow("no end record") << one + '\n' + two << bothApplied();
    QTest::newRow("nothing after the end record")
        << one + '\n' + end + '\n' + two << firstApplied();
    QTest::newRow("lower-case end record is read past")
        << one + "\n:00000001ff\n" + two << bothApplied();
    QTest::newRow("end record with text behind is read past")
        << one + '\n' + end + "x\n" + two << bothApplied();
    QTest::newRow("no line ends") << one + two + end << firstApplied();
    QTest::newRow("wrong checksum in the third line")
        << one + '\n' + two + "\n:0100000012EE\n" + one << bothApplied();
    QTest::newRow("comment") << one + "\n; comment\n" + two << firstApplied();
    QTest::newRow("two records on a line") << one + ' ' + two << bothApplied();
    QTest::newRow("count over the data") << one + "\n:FF001000112233\n" + two << firstApplied();
    QTest::newRow("count under the data, sum in its place") << one + "\n:020010001122BB445566\n"
                                                            << bothApplied();
    QTest::newRow("odd digits") << one + "\n:020010001122B\n" + two << firstApplied();
    QTest::newRow("sign for a digit") << one + "\n:02001000+1-2BB\n" + two << firstApplied();
    QTest::newRow("standard address record") << one + "\n:020000040000FA\n" + two << firstApplied();
    QTest::newRow("short address record") << one + "\n:000000040000FC\n" + two << firstApplied();
    QTest::newRow("data whatever the type") << one + "\n:020010031122EB\n" << firstApplied();
    QTest::newRow("data of an unknown type") << one + "\n:020010031122ED\n" << bothApplied();
    QTest::newRow("empty") << QByteArray() << none;
    QTest::newRow("white space") << QByteArray(" \r\n\t\n") << none;
    QTest::newRow("byte-order mark") << "\xEF\xBB\xBF" + one << none;
    QTest::newRow("UTF-16") << QByteArray::fromHex("FFFE3A0030003400") << none;
    QTest::newRow("NUL before") << QByteArray(1, '\0') + one << none;
    QTest::newRow("NUL inside") << one + '\n' + QByteArray(two).replace(5, 1, QByteArray(1, '\0'))
                                << firstApplied();
    QTest::newRow("NUL behind the sum") << one + QByteArray(3, '\0') + '\n' + two << bothApplied();
    QTest::newRow("over-long words with a record in front")
        << one + QByteArray(200000, 'x') + '\n' + two + QByteArray(70000, ':') + '\n' + end
        << bothApplied();
}

void TestSettingsFile::contents()
{
    QFETCH(QByteArray, text);
    QFETCH(QByteArray, image);
    support::writeFile(path(), text);
    cMyMemoryArea area;
    area.setData(1023, 0);
    QVERIFY(image::readSettingsFile(path(), area));
    QCOMPARE(support::bytesOf(area), image);
}

void TestSettingsFile::aRecordBeyondTheImageGrowsTheArea()
{
    support::writeFile(path(), ":01FFFF0042BF\n:02FFFF0042437B\n");
    cMyMemoryArea area;
    area.setData(1023, 0);
    QVERIFY(image::readSettingsFile(path(), area));
    quint8 byte = 0;
    QVERIFY(area.data(0xFFFF, &byte));
    QCOMPARE(int(byte), 0x42);
    QVERIFY(area.data(0x10000, &byte));
    QCOMPARE(int(byte), 0x43);
    QCOMPARE(support::bytesOf(area), QByteArray(1024, '\0'));
    QVERIFY(image::writeSettingsFile(path(), area));
    QCOMPARE(support::readFile(path()), support::settingsText(QByteArray(1024, '\0')));
}

void TestSettingsFile::whatIsNoRegularFileIsNotRead_data()
{
    QTest::addColumn<QString>("name");
    QTest::newRow("missing") << path("missing.mio");
    QTest::newRow("empty name") << QString();
    QTest::newRow("directory") << m_directory.path();
    QTest::newRow("device") << QStringLiteral("/dev/zero");
    const QByteArray fifo = path("fifo").toUtf8();
    QVERIFY(QFile::exists(path("fifo")) || mkfifo(fifo.constData(), 0600) == 0);
    QTest::newRow("FIFO") << path("fifo");
    QFile::link(path("nowhere"), path("dangling"));
    QTest::newRow("dangling link") << path("dangling");
    QFile::link(path("loop"), path("loop"));
    QTest::newRow("link to itself") << path("loop");
}

void TestSettingsFile::whatIsNoRegularFileIsNotRead()
{
    QFETCH(QString, name);
    cMyMemoryArea area;
    QVERIFY(!image::readSettingsFile(name, area));
    QVERIFY(!area.isModified());
    QVERIFY(area.data(0, 1).isEmpty());
}

void TestSettingsFile::aFileWithoutPermissionIsNotRead()
{
    QVERIFY(support::letOthersIn(m_directory.path()));
    support::writeFile(path(), first);
    QVERIFY(QFile::setPermissions(path(), QFileDevice::Permissions()));
    cMyMemoryArea area;
    {
        const support::WithoutPrivileges nobody;
        QVERIFY(!image::readSettingsFile(path(), area));
    }
    QVERIFY(!area.isModified());
    QVERIFY(QFile::remove(path()));
}

void TestSettingsFile::namesThatCannotBeEncodedAreNotRead()
{
    // What an encoder would make of a lone surrogate; it must not be taken for that file.
    support::writeFile(path("a?.mio"), first);
    cMyMemoryArea area;
    QVERIFY(!image::readSettingsFile(
        m_directory.filePath(QStringLiteral("a") + QChar(0xDCFF) + QStringLiteral(".mio")), area));
    QVERIFY(!image::readSettingsFile(path("a?.mio") + QChar(QChar::Null), area));
    QVERIFY(!area.isModified());
}

void TestSettingsFile::aHundredMegabytesOnOneLine()
{
    {
        QFile file(path("huge.mio"));
        QVERIFY(file.open(QIODevice::WriteOnly));
        file.write(first);
        const QByteArray block(1 << 20, 'A');
        for (int i = 0; i < 100; ++i) {
            QCOMPARE(file.write(block), qint64(block.size()));
        }
        file.write("\n" + withoutBlanks(second));
    }
    cMyMemoryArea area;
    area.setData(1023, 0);
    const long before = support::peakMemory();
    QVERIFY(image::readSettingsFile(path("huge.mio"), area));
    const long growth = support::peakMemory() - before;
    QCOMPARE(support::bytesOf(area), bothApplied());
    QVERIFY2(growth < 4096, qPrintable(QString::number(growth)));
    QVERIFY(QFile::remove(path("huge.mio")));
}

void TestSettingsFile::randomBytes()
{
    const quint32 seed = QRandomGenerator::global()->generate();
    QRandomGenerator random(seed);
    const QByteArray alphabet = ":0123456789ABCDEFabcdef \r\n\t;G+-x\xFF";
    for (int round = 0; round < 500; ++round) {
        QByteArray text(static_cast<int>(random.bounded(3000)), '\0');
        for (char& character : text) {
            character = alphabet.at(static_cast<int>(random.bounded(alphabet.size())));
        }
        support::writeFile(path(), first + '\n' + text);
        cMyMemoryArea area;
        QVERIFY2(image::readSettingsFile(path(), area), qPrintable(QString::number(seed)));
        quint8 byte = 0;
        QVERIFY2(area.data(3, &byte), qPrintable(QString::number(seed)));
    }
}

QTEST_GUILESS_MAIN(TestSettingsFile)
#include "test_settingsfile.moc"
