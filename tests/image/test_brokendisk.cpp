// SPDX-FileCopyrightText: 2026 The MIOLKAsoft authors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "tests/support/brokendisk.h"
#include "tests/support/posix.h"
#include "tests/support/savedfiles.h"

#include <QTemporaryDir>
#include <QtTest>

#include <cerrno>
#include <sys/stat.h>

using support::BrokenDisk;
using support::DiskFault;

/// Saving on a disk on which any call may fail: the path holds the old contents or the new, what
/// is told is true, and nothing else is left.
class TestBrokenDisk : public QObject
{
    Q_OBJECT

private slots:
    void init();
    void fullAtEveryByte_data();
    void fullAtEveryByte();
    void aCallThatFails_data();
    void aCallThatFails();
    void aSystemThatDoesNotKnowTheCall_data();
    void aSystemThatDoesNotKnowTheCall();
    void fullWhenItIsWrittenInPlace();

private:
    [[nodiscard]] QString path() const
    {
        return m_directory->filePath(QStringLiteral("settings.mio"));
    }
    /// Tries to save, which must fail, be told of, and leave everything as it was.
    void verifyRefused(cMyMemoryArea& area, const DiskFault& fault);

    std::unique_ptr<QTemporaryDir> m_directory;
    QByteArray m_before; ///< null if there was no file
};

void TestBrokenDisk::init()
{
    m_directory = std::make_unique<QTemporaryDir>();
    QVERIFY(m_directory->isValid());
}

void TestBrokenDisk::verifyRefused(cMyMemoryArea& area, const DiskFault& fault)
{
    bool isSaved = true;
    int failures = 0;
    {
        const BrokenDisk disk(fault);
        isSaved = image::writeSettingsFile(path(), area);
        failures = BrokenDisk::failures();
    }
    const QByteArray room = QByteArray::number(fault.room);
    QVERIFY2(failures > 0, room);
    QVERIFY2(!isSaved, room);
    QVERIFY2(area.isModified(), room);
    QCOMPARE(QFile::exists(path()), !m_before.isNull());
    QCOMPARE(support::entriesOf(m_directory->path()).size(), m_before.isNull() ? 0 : 1);
    if (!m_before.isNull()) {
        QCOMPARE(support::readFile(path()), m_before);
    }
}

void TestBrokenDisk::fullAtEveryByte_data()
{
    QTest::addColumn<QByteArray>("before");
    QTest::addColumn<bool>("hasUnnamedFiles");
    for (const bool has : {true, false}) {
        const QByteArray files = has ? "" : ", no unnamed files";
        QTest::newRow("a new file" + files) << QByteArray() << has;
        QTest::newRow("a shorter one" + files) << support::oldText << has;
    }
}

void TestBrokenDisk::fullAtEveryByte()
{
    QFETCH(QByteArray, before);
    QFETCH(bool, hasUnnamedFiles);
    m_before = before;
    if (!before.isNull()) {
        support::writeFile(path(), before);
    }
    cMyMemoryArea area;
    support::fill(area, 0x11);
    const QByteArray newText = support::filledText(0x11);
    DiskFault fault;
    fault.hasUnnamedFiles = hasUnnamedFiles;
    for (fault.room = 0; fault.room < newText.size(); ++fault.room) {
        verifyRefused(area, fault);
        if (QTest::currentTestFailed()) {
            return;
        }
    }
    const BrokenDisk disk(fault);
    QVERIFY(image::writeSettingsFile(path(), area));
    QVERIFY(!area.isModified());
    QCOMPARE(support::readFile(path()), newText);
}

void TestBrokenDisk::aCallThatFails_data()
{
    QTest::addColumn<int>("sync");
    QTest::addColumn<int>("link");
    QTest::addColumn<int>("rename");
    QTest::addColumn<bool>("hasUnnamedFiles");
    for (const bool has : {true, false}) {
        const QByteArray files = has ? "" : ", no unnamed files";
        // Room that is found to be missing only when delayed writing is done.
        QTest::newRow("no room after all" + files) << ENOSPC << 0 << 0 << has;
        QTest::newRow("beyond the quota after all" + files) << EDQUOT << 0 << 0 << has;
        QTest::newRow("a bad sector" + files) << EIO << 0 << 0 << has;
        QTest::newRow("given up by the system" + files) << EROFS << 0 << 0 << has;
        QTest::newRow("gone from its server" + files) << ESTALE << 0 << 0 << has;
        QTest::newRow("not renamed" + files) << 0 << 0 << ENOSPC << has;
    }
    QTest::newRow("not named") << 0 << ENOSPC << 0 << true;
}

void TestBrokenDisk::aCallThatFails()
{
    QFETCH(int, sync);
    QFETCH(int, link);
    QFETCH(int, rename);
    QFETCH(bool, hasUnnamedFiles);
    DiskFault fault;
    fault.syncError = sync;
    fault.linkError = link;
    fault.renameError = rename;
    fault.hasUnnamedFiles = hasUnnamedFiles;
    m_before = support::oldText;
    support::writeFile(path(), m_before);
    cMyMemoryArea area;
    support::fill(area, 0x11);
    verifyRefused(area, fault);
}

void TestBrokenDisk::aSystemThatDoesNotKnowTheCall_data()
{
    QTest::addColumn<int>("error");
    QTest::newRow("not for such files") << EINVAL;
    QTest::newRow("not supported") << EOPNOTSUPP;
    QTest::newRow("not there") << ENOSYS;
}

void TestBrokenDisk::aSystemThatDoesNotKnowTheCall()
{
    QFETCH(int, error);
    support::writeFile(path(), support::oldText);
    cMyMemoryArea area;
    support::fill(area, 0x11);
    DiskFault fault;
    fault.syncError = error;
    const BrokenDisk disk(fault);
    QVERIFY(image::writeSettingsFile(path(), area));
    QCOMPARE(support::readFile(path()), support::filledText(0x11));
}

void TestBrokenDisk::fullWhenItIsWrittenInPlace()
{
    m_before = support::oldText;
    support::writeFile(path(), m_before);
    QCOMPARE(chmod(path().toUtf8().constData(), 0666), 0);
    QCOMPARE(chmod(m_directory->path().toUtf8().constData(), 0555), 0);
    cMyMemoryArea area;
    support::fill(area, 0x11);
    const auto growth = support::filledText(0x11).size() - m_before.size();
    {
        const support::WithoutPrivileges nobody;
        DiskFault fault;
        for (fault.room = 0; fault.room < growth && !QTest::currentTestFailed(); ++fault.room) {
            verifyRefused(area, fault);
        }
        fault.room = -1;
        fault.syncError = ENOSPC;
        for (const int goodSyncs : {0, 1}) { // of what is behind the old end, of all
            fault.goodSyncs = goodSyncs;
            verifyRefused(area, fault);
        }
    }
    QCOMPARE(chmod(m_directory->path().toUtf8().constData(), 0755), 0);
}

QTEST_GUILESS_MAIN(TestBrokenDisk)
#include "test_brokendisk.moc"
