// SPDX-FileCopyrightText: 2026 The MIOLKAsoft authors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "image/storedfile.h"

#include "tests/support/posix.h"

#include <QDir>
#include <QTemporaryDir>
#include <QtTest>

/// Files of any bytes. What happens on full and broken disks, test_savefile and test_fulldisk try
/// with settings files, which are stored the same way.
class TestStoredFile : public QObject
{
    Q_OBJECT

private slots:
    void bytesAreStoredAsTheyAre_data();
    void bytesAreStoredAsTheyAre();
    void whatIsNoFileIsLeftAlone_data();
    void whatIsNoFileIsLeftAlone();
};

void TestStoredFile::bytesAreStoredAsTheyAre_data()
{
    QTest::addColumn<QByteArray>("bytes");
    QTest::newRow("none") << QByteArray();
    QTest::newRow("line ends") << QByteArray("one\r\ntwo\n");
    QTest::newRow("no text") << QByteArray("\x89PNG\0\xFF\0", 7);
}

void TestStoredFile::bytesAreStoredAsTheyAre()
{
    QFETCH(QByteArray, bytes);
    const QTemporaryDir directory;
    const QString path = directory.filePath(QStringLiteral("file"));
    QVERIFY(image::storeFile(path, "something longer than all of them"));
    QVERIFY(image::storeFile(path, bytes));
    QCOMPARE(support::readFile(path), bytes);
    QCOMPARE(QDir(directory.path()).entryList(QDir::Files), QStringList("file"));
}

void TestStoredFile::whatIsNoFileIsLeftAlone_data()
{
    QTest::addColumn<QString>("name");
    QTest::newRow("directory") << "directory";
    QTest::newRow("pipe") << "pipe";
    QTest::newRow("in no directory") << "missing/file";
    QTest::newRow("no name of a file") << QString(QChar(0xDC80));
}

void TestStoredFile::whatIsNoFileIsLeftAlone()
{
    QFETCH(QString, name);
    const QTemporaryDir directory;
    QVERIFY(QDir(directory.path()).mkdir(QStringLiteral("directory")));
    const QByteArray pipe = QFile::encodeName(directory.filePath(QStringLiteral("pipe")));
    QCOMPARE(mkfifo(pipe.constData(), 0600), 0);
    QVERIFY(!image::storeFile(directory.filePath(name), "bytes"));
    QCOMPARE(QDir(directory.path()).entryList(QDir::AllEntries | QDir::NoDotAndDotDot),
             QStringList("directory"));
    QCOMPARE(QDir(directory.path()).entryList(QDir::System), QStringList("pipe"));
}

QTEST_GUILESS_MAIN(TestStoredFile)
#include "test_storedfile.moc"
