// SPDX-FileCopyrightText: 2026 The MIOLKAsoft authors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "cli/backups.h"
#include "cli/invocation.h"
#include "image/memoryarea.h"
#include "image/settingsfile.h"
#include "tests/support/brokendisk.h"
#include "tests/support/contents.h"

#include <QDir>
#include <QTemporaryDir>
#include <QtTest>

#include <cerrno>

class TestBackups : public QObject
{
    Q_OBJECT

private slots:
    void init();
    void noBackupIsWrittenOver();
    void copiesAreWhole();
    void whatIsNotThereNeedsNoBackup();
    void brokenDiskLeavesNoFile_data();
    void brokenDiskLeavesNoFile();
    void reasonIsTold_data();
    void reasonIsTold();

private:
    [[nodiscard]] QStringList files() const
    {
        return QDir(m_place->path()).entryList(QDir::Files | QDir::Hidden);
    }

    std::unique_ptr<QTemporaryDir> m_place;
    cMyInvocation m_invocation;
    cMyMemoryArea m_image;
};

void TestBackups::init()
{
    m_place = std::make_unique<QTemporaryDir>();
    m_invocation.options.insert("backup-dir", m_place->path());
    m_image.setData(image::settingsImageSize - 1, 7);
}

void TestBackups::noBackupIsWrittenOver()
{
    // Several fall into one millisecond.
    constexpr int count = 50;
    for (int i = 0; i < count; ++i) {
        m_image.setData(0, static_cast<quint8>(i));
        cMyBackups backups(m_invocation);
        QVERIFY(backups.keepImage(m_image, "ttyACM0-1001").isDone());
    }
    const QStringList names = files();
    QCOMPARE(names.size(), count);
    QSet<int> firstBytes;
    for (const QString& name : names) {
        cMyMemoryArea kept;
        QVERIFY(image::readSettingsFile(m_place->filePath(name), kept));
        firstBytes.insert(kept.data(0, 1).value(0));
    }
    QCOMPARE(firstBytes.size(), count);
}

void TestBackups::copiesAreWhole()
{
    const QString path = m_place->filePath("odd name.v2.mio");
    const QByteArray text = QByteArray("\0no settings\r\n", 14);
    QVERIFY(support::replaceContents(path, text));
    cMyBackups backups(m_invocation);
    QVERIFY(backups.keepFile(path).isDone());
    QCOMPARE(support::contentsOf(backups.path()), text);
    QVERIFY(QFileInfo(backups.path()).fileName().startsWith("odd name.v2-"));
    QVERIFY(backups.path().endsWith(".mio"));
}

void TestBackups::whatIsNotThereNeedsNoBackup()
{
    cMyBackups backups(m_invocation);
    QVERIFY(backups.keepFile(m_place->filePath("none.mio")).isDone());
    QCOMPARE(backups.path(), QString());
    QCOMPARE(files(), QStringList());
}

void TestBackups::brokenDiskLeavesNoFile_data()
{
    QTest::addColumn<int>("room");
    QTest::addColumn<int>("syncError");
    QTest::newRow("no room") << 0 << 0;
    QTest::newRow("room for some") << 1000 << 0;
    QTest::newRow("refused at the sync") << -1 << EIO;
}

void TestBackups::brokenDiskLeavesNoFile()
{
    QFETCH(int, room);
    QFETCH(int, syncError);
    support::DiskFault fault;
    fault.room = room;
    fault.syncError = syncError;
    cMyBackups backups(m_invocation);
    cMyOutcome outcome;
    {
        const support::BrokenDisk disk(fault);
        outcome = backups.keepImage(m_image, "ttyACM0-1001");
        QVERIFY(support::BrokenDisk::failures() > 0);
    }
    QCOMPARE(outcome.status, cli::ExitStatus::BadFile);
    QCOMPARE(backups.path(), QString());
    QCOMPARE(files(), QStringList());
}

void TestBackups::reasonIsTold_data()
{
    QTest::addColumn<QString>("place");
    QTest::addColumn<QString>("origin");
    QTest::addColumn<QString>("reason");
    QTest::newRow("no directory") << "file/backups"
                                  << "x"
                                  << "Not a directory";
    QTest::newRow("long name") << "backups" << QString(300, 'x') << "File name too long";
}

void TestBackups::reasonIsTold()
{
    QFETCH(QString, place);
    QFETCH(QString, origin);
    QFETCH(QString, reason);
    QVERIFY(support::replaceContents(m_place->filePath("file"), ""));
    m_invocation.options.insert("backup-dir", m_place->filePath(place));
    cMyBackups backups(m_invocation);
    const cMyOutcome outcome = backups.keepImage(m_image, origin);
    QCOMPARE(outcome.status, cli::ExitStatus::BadFile);
    QVERIFY2(outcome.reasons.value(0).contains(reason), qPrintable(outcome.reasons.value(0)));
}

QTEST_GUILESS_MAIN(TestBackups)
#include "test_backups.moc"
