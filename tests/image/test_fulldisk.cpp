// SPDX-FileCopyrightText: 2026 The MIOLKAsoft authors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "tests/support/posix.h"
#include "tests/support/savedfiles.h"
#include "tests/support/skipped.h"
#include "tests/support/smalldisk.h"

#include <QTemporaryDir>
#include <QtTest>

/// Saving on a disk that has no room: whatever happens, the path holds the old contents or the new.
class TestFullDisk : public QObject
{
    Q_OBJECT

public:
    /// Whether the disk could not be mounted, so that nothing was tested.
    [[nodiscard]] bool wasSkipped() const { return m_wasSkipped; }

private slots:
    void oldOrNewAtEveryAmountOfFreeSpace();
    void oldWhenThereIsNoRoomForAnotherFile();

private:
    QTemporaryDir m_directory;
    bool m_wasSkipped = false;
};

namespace {

using support::entriesOf;
using support::fill;
using support::filledText;
using support::oldText;
using support::SmallDisk;

} // namespace

void TestFullDisk::oldOrNewAtEveryAmountOfFreeSpace()
{
    constexpr int page = 4096;
    int refused = 0;
    int saved = 0;
    for (int pages = 2; pages <= 8; ++pages) {
        for (int fillerPages = 0; fillerPages <= pages; ++fillerPages) {
            const QString disk = m_directory.filePath(QStringLiteral("disk"));
            const QByteArray options = "size=" + QByteArray::number(pages * page);
            const SmallDisk tmpfs(disk, options.constData());
            if (!tmpfs.isMounted()) {
                m_wasSkipped = true;
                QSKIP("a tmpfs cannot be mounted here: the sweep over free space was not run");
            }
            support::writeFile(disk + QStringLiteral("/settings.mio"), oldText);
            QFile filler(disk + QStringLiteral("/filler"));
            QVERIFY(filler.open(QIODevice::WriteOnly | QIODevice::Unbuffered));
            filler.write(QByteArray(fillerPages * page, 'x'));
            cMyMemoryArea area;
            fill(area, 0x11);
            const bool done =
                image::writeSettingsFile(disk + QStringLiteral("/settings.mio"), area);
            QCOMPARE(support::readFile(disk + QStringLiteral("/settings.mio")),
                     done ? filledText(0x11) : oldText);
            QCOMPARE(area.isModified(), !done);
            QCOMPARE(entriesOf(disk).size(), 2);
            ++(done ? saved : refused);
        }
    }
    QVERIFY(saved > 0);
    QVERIFY(refused > 0);
}

void TestFullDisk::oldWhenThereIsNoRoomForAnotherFile()
{
    const QString disk = m_directory.filePath(QStringLiteral("disk"));
    const SmallDisk tmpfs(disk, "size=64k,nr_inodes=2"); // its root and one file
    if (!tmpfs.isMounted()) {
        m_wasSkipped = true;
        QSKIP("a tmpfs cannot be mounted here: saving without room for a file was not run");
    }
    const QString path = disk + QStringLiteral("/settings.mio");
    support::writeFile(path, oldText);
    cMyMemoryArea area;
    fill(area, 0x11);
    QVERIFY(!image::writeSettingsFile(path, area));
    QVERIFY(area.isModified());
    QCOMPARE(support::readFile(path), oldText);
}

int main(int argc, char* argv[])
{
    support::enterNamespaceUnlessRoot();
    const QCoreApplication application(argc, argv);
    TestFullDisk test;
    const int failures = QTest::qExec(&test, argc, argv);
    return support::exitStatus(failures, test.wasSkipped());
}

#include "test_fulldisk.moc"
