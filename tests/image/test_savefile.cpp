// SPDX-FileCopyrightText: 2026 The MIOLKAsoft authors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "tests/support/posix.h"
#include "tests/support/savedfiles.h"

#include <QDir>
#include <QRandomGenerator>
#include <QTemporaryDir>
#include <QtTest>

#include <atomic>
#include <sys/mman.h>
#include <sys/stat.h>
#include <sys/wait.h>

/// Writing settings files: whatever happens, the path holds the old contents or the new.
class TestSaveFile : public QObject
{
    Q_OBJECT

private slots:
    void init();
    void templateIsSixtyFiveLines();
    void anUneditedFileIsSavedAsItWas();
    void onlyTheFirst1024BytesAreSaved();
    void savingClearsTheModifiedFlag();
    void symbolicLinksAreFollowed();
    void linksAreFollowedAsTheSystemDoes();
    void aDanglingLinkGetsItsTarget();
    void linksToUndecodableNamesAreLeftAlone_data();
    void linksToUndecodableNamesAreLeftAlone();
    void fileModesAreKept();
    void whatCannotBeReplacedIsLeftAlone_data();
    void whatCannotBeReplacedIsLeftAlone();
    void aWriteProtectedFileIsLeftAlone();
    void aDirectoryThatTakesNoFileIsWrittenInPlace();
    void aLimitAtEveryByte();
    void aLimitAtEveryByteInPlace_data();
    void aLimitAtEveryByteInPlace();
    void killedAtAnyMoment();

private:
    [[nodiscard]] QString path(const char* name = "settings.mio") const
    {
        return m_directory->filePath(QString::fromUtf8(name));
    }
    std::unique_ptr<QTemporaryDir> m_directory;
};

namespace {

using support::entriesOf;
using support::FileSizeLimit;
using support::fill;
using support::filledText;
using support::oldText;

/// A process that saves one image after the other to a path until it is killed.
class EndlessSaver
{
public:
    explicit EndlessSaver(const QString& path)
    {
        progress().isSaving = false;
        m_child = fork();
        if (m_child == 0) {
            saveForever(path);
        }
    }
    ~EndlessSaver()
    {
        kill(m_child, SIGKILL);
        waitpid(m_child, nullptr, 0);
    }
    Q_DISABLE_COPY_MOVE(EndlessSaver)

    /// What such processes tell about themselves, in memory that they share with the test.
    struct Progress
    {
        std::atomic<bool> isSaving;
        std::atomic<int> saves;
    };
    static Progress& progress()
    {
        static void* const shared = mmap(nullptr, sizeof(Progress), PROT_READ | PROT_WRITE,
                                         MAP_SHARED | MAP_ANONYMOUS, -1, 0);
        static auto* const progress = new (shared) Progress{{false}, {0}};
        return *progress;
    }

private:
    [[noreturn]] static void saveForever(const QString& path)
    {
        cMyMemoryArea images[2];
        fill(images[0], 0x11);
        fill(images[1], 0xEE);
        for (int i = 0;; ++i) {
            progress().isSaving = true;
            image::writeSettingsFile(path, images[i % 2]);
            progress().isSaving = false;
            ++progress().saves;
        }
    }

    pid_t m_child = -1;
};

/// Microseconds that a save takes, with its share of the start of a process.
unsigned timeOfASave(const QString& path)
{
    constexpr int few = 4;
    QElapsedTimer clock;
    clock.start();
    const EndlessSaver saver(path);
    while (EndlessSaver::progress().saves < few) {
        usleep(10);
    }
    return static_cast<unsigned>(clock.nsecsElapsed() / 1000 / few);
}

} // namespace

void TestSaveFile::init()
{
    m_directory = std::make_unique<QTemporaryDir>();
    QVERIFY(m_directory->isValid());
}

void TestSaveFile::templateIsSixtyFiveLines()
{
    cMyMemoryArea area;
    QVERIFY(image::readSettingsFile(QStringLiteral(":/pliki/clear.mio"), area));
    QVERIFY(image::writeSettingsFile(path(), area));
    const QByteArray text = support::readFile(path());
    const QList<QByteArray> lines = text.split('\n');
    QCOMPARE(lines.size(), 65);
    for (int i = 0; i < 64; ++i) {
        QCOMPARE(lines.at(i).size(), 43);
    }
    QCOMPARE(lines.last(), QByteArray(":00000001FF"));
    QCOMPARE(text, support::settingsText(support::templateImage()));
}

void TestSaveFile::anUneditedFileIsSavedAsItWas()
{
    const quint32 seed = QRandomGenerator::global()->generate();
    QRandomGenerator random(seed);
    for (int round = 0; round < 50; ++round) {
        QByteArray image(1024, '\0');
        for (char& byte : image) {
            byte = static_cast<char>(random.generate());
        }
        support::writeFile(path(), support::settingsText(image));
        cMyMemoryArea area;
        QVERIFY(image::readSettingsFile(path(), area));
        QVERIFY(image::writeSettingsFile(path("copy.mio"), area));
        QVERIFY2(support::readFile(path("copy.mio")) == support::readFile(path()),
                 qPrintable(QString::number(seed)));
    }
}

void TestSaveFile::onlyTheFirst1024BytesAreSaved()
{
    cMyMemoryArea area;
    fill(area, 0x11);
    area.setData(1024, 0x77);
    QVERIFY(image::writeSettingsFile(path(), area));
    QCOMPARE(support::readFile(path()), filledText(0x11));
}

void TestSaveFile::savingClearsTheModifiedFlag()
{
    cMyMemoryArea area;
    fill(area, 0x11);
    QVERIFY(!image::writeSettingsFile(m_directory->path(), area));
    QVERIFY(area.isModified());
    QVERIFY(image::writeSettingsFile(path(), area));
    QVERIFY(!area.isModified());
}

void TestSaveFile::symbolicLinksAreFollowed()
{
    QVERIFY(QDir(m_directory->path()).mkdir(QStringLiteral("far")));
    support::writeFile(path("far/real.mio"), oldText);
    QVERIFY(QFile::link(QStringLiteral("far/real.mio"), path("near.mio")));
    QVERIFY(QFile::link(path("near.mio"), path("link.mio")));
    cMyMemoryArea area;
    fill(area, 0x11);
    QVERIFY(image::writeSettingsFile(path("link.mio"), area));
    QVERIFY(QFileInfo(path("link.mio")).isSymLink());
    QVERIFY(QFileInfo(path("near.mio")).isSymLink());
    QVERIFY(!QFileInfo(path("far/real.mio")).isSymLink());
    QCOMPARE(support::readFile(path("far/real.mio")), filledText(0x11));
}

void TestSaveFile::linksAreFollowedAsTheSystemDoes()
{
    // p/dl leads to q/real, and there ".." is q, not p.
    for (const char* directory : {"p", "q", "q/real"}) {
        QVERIFY(QDir(m_directory->path()).mkdir(QString::fromLatin1(directory)));
    }
    QVERIFY(QFile::link(QStringLiteral("../q/real"), path("p/dl")));
    QVERIFY(QFile::link(QStringLiteral("../f.mio"), path("q/real/l.mio")));
    support::writeFile(path("p/f.mio"), oldText);
    support::writeFile(path("q/f.mio"), oldText);
    cMyMemoryArea area;
    fill(area, 0x11);
    QVERIFY(image::writeSettingsFile(path("p/dl/l.mio"), area));
    QCOMPARE(support::readFile(path("q/f.mio")), filledText(0x11));
    QCOMPARE(support::readFile(path("p/f.mio")), oldText);
}

void TestSaveFile::aDanglingLinkGetsItsTarget()
{
    QVERIFY(QFile::link(QStringLiteral("target.mio"), path("middle")));
    QVERIFY(QFile::link(QStringLiteral("middle"), path("link.mio")));
    cMyMemoryArea area;
    fill(area, 0x11);
    QVERIFY(image::writeSettingsFile(path("link.mio"), area));
    QVERIFY(QFileInfo(path("link.mio")).isSymLink());
    QVERIFY(QFileInfo(path("middle")).isSymLink());
    QCOMPARE(support::readFile(path("target.mio")), filledText(0x11));
}

void TestSaveFile::linksToUndecodableNamesAreLeftAlone_data()
{
    QTest::addColumn<bool>("exists");
    QTest::addColumn<bool>("hasLookalike");
    QTest::newRow("dangling") << false << false;
    QTest::newRow("existing") << true << false;
    QTest::newRow("existing beside a lookalike") << true << true;
}

void TestSaveFile::linksToUndecodableNamesAreLeftAlone()
{
    QFETCH(bool, exists);
    QFETCH(bool, hasLookalike);
    const QByteArray name = m_directory->path().toUtf8() + "/a\xFF.mio";
    if (exists) {
        support::writeRawFile(name, oldText);
    }
    if (hasLookalike) {
        support::writeFile(path("a\xEF\xBF\xBD.mio"), oldText);
    }
    QCOMPARE(symlink("a\xFF.mio", path("link.mio").toUtf8().constData()), 0);
    const QStringList before = entriesOf(m_directory->path());
    cMyMemoryArea area;
    fill(area, 0x11);
    QVERIFY(!image::writeSettingsFile(path("link.mio"), area));
    QCOMPARE(entriesOf(m_directory->path()), before);
    if (hasLookalike) {
        QCOMPARE(support::readFile(path("a\xEF\xBF\xBD.mio")), oldText);
    }
}

void TestSaveFile::fileModesAreKept()
{
    for (const mode_t mode : {0600U, 0640U, 0664U, 0755U}) {
        support::writeFile(path(), oldText);
        const QByteArray name = path().toUtf8();
        QCOMPARE(chmod(name.constData(), mode), 0);
        cMyMemoryArea area;
        fill(area, 0x11);
        QVERIFY(image::writeSettingsFile(path(), area));
        struct stat state
        {
        };
        QCOMPARE(stat(name.constData(), &state), 0);
        QCOMPARE(state.st_mode & 07777U, mode);
    }
}

void TestSaveFile::whatCannotBeReplacedIsLeftAlone_data()
{
    QTest::addColumn<QString>("name");
    QTest::newRow("empty name") << QString();
    QTest::newRow("directory") << QStringLiteral(".");
    QTest::newRow("missing directory") << QStringLiteral("missing/settings.mio");
    QTest::newRow("FIFO") << QStringLiteral("fifo");
    QTest::newRow("lone surrogate") << QStringLiteral("a") + QChar(0xDC80) + QStringLiteral(".mio");
    QTest::newRow("NUL") << QStringLiteral("a") + QChar(QChar::Null) + QStringLiteral(".mio");
    QTest::newRow("undecodable") << QStringLiteral("a\uFFFD.mio");
    QTest::newRow("link to itself") << QStringLiteral("loop");
}

void TestSaveFile::whatCannotBeReplacedIsLeftAlone()
{
    QFETCH(QString, name);
    QCOMPARE(mkfifo(path("fifo").toUtf8().constData(), 0600), 0);
    QVERIFY(QFile::link(path("loop"), path("loop")));
    const QStringList before = entriesOf(m_directory->path());
    cMyMemoryArea area;
    fill(area, 0x11);
    QVERIFY(!image::writeSettingsFile(name.isEmpty() ? name : m_directory->filePath(name), area));
    QVERIFY(area.isModified());
    QCOMPARE(entriesOf(m_directory->path()), before);
    QVERIFY(QFileInfo(path("loop")).isSymLink());
}

void TestSaveFile::aWriteProtectedFileIsLeftAlone()
{
    support::writeFile(path(), oldText);
    QCOMPARE(chmod(path().toUtf8().constData(), 0444), 0);
    QCOMPARE(chmod(m_directory->path().toUtf8().constData(), 0777), 0);
    cMyMemoryArea area;
    fill(area, 0x11);
    {
        const support::WithoutPrivileges nobody;
        QVERIFY(!image::writeSettingsFile(path(), area));
    }
    QVERIFY(area.isModified());
    QCOMPARE(support::readFile(path()), oldText);
    QCOMPARE(entriesOf(m_directory->path()), QStringList{QStringLiteral("settings.mio")});
}

void TestSaveFile::aDirectoryThatTakesNoFileIsWrittenInPlace()
{
    support::writeFile(path(), oldText);
    QCOMPARE(chmod(path().toUtf8().constData(), 0666), 0);
    QCOMPARE(chmod(m_directory->path().toUtf8().constData(), 0555), 0);
    cMyMemoryArea area;
    fill(area, 0x11);
    {
        const support::WithoutPrivileges nobody;
        QVERIFY(!image::writeSettingsFile(path("new.mio"), area));
        QVERIFY(area.isModified());
        QVERIFY(image::writeSettingsFile(path(), area));
    }
    QCOMPARE(support::readFile(path()), filledText(0x11));
    QCOMPARE(chmod(m_directory->path().toUtf8().constData(), 0755), 0);
}

void TestSaveFile::aLimitAtEveryByte()
{
    cMyMemoryArea area;
    fill(area, 0x11);
    support::writeFile(path(), oldText);
    const QByteArray newText = filledText(0x11);
    for (int limit = 0; limit < newText.size(); ++limit) {
        bool saved = false;
        {
            const FileSizeLimit full(static_cast<rlim_t>(limit));
            saved = image::writeSettingsFile(path(), area);
        }
        QVERIFY2(!saved, qPrintable(QString::number(limit)));
        QVERIFY(area.isModified());
        QCOMPARE(support::readFile(path()), oldText);
        QCOMPARE(entriesOf(m_directory->path()).size(), 1);
    }
    const FileSizeLimit enough(static_cast<rlim_t>(newText.size()));
    QVERIFY(image::writeSettingsFile(path(), area));
    QCOMPARE(support::readFile(path()), newText);
}

void TestSaveFile::aLimitAtEveryByteInPlace_data()
{
    QTest::addColumn<QByteArray>("before");
    QTest::newRow("shorter") << oldText;
    QTest::newRow("as long") << filledText(0x22);
    QTest::newRow("longer") << filledText(0x22) + oldText;
    QTest::newRow("empty") << QByteArray();
}

void TestSaveFile::aLimitAtEveryByteInPlace()
{
    QFETCH(QByteArray, before);
    cMyMemoryArea area;
    fill(area, 0x11);
    const QByteArray newText = filledText(0x11);
    support::writeFile(path(), before);
    QCOMPARE(chmod(path().toUtf8().constData(), 0666), 0);
    QCOMPARE(chmod(m_directory->path().toUtf8().constData(), 0555), 0);
    {
        const support::WithoutPrivileges nobody;
        for (auto limit = before.size(); limit < newText.size(); ++limit) {
            const FileSizeLimit full(static_cast<rlim_t>(limit));
            QVERIFY2(!image::writeSettingsFile(path(), area), qPrintable(QString::number(limit)));
            QVERIFY(area.isModified());
            QCOMPARE(support::readFile(path()), before);
        }
        const FileSizeLimit enough(static_cast<rlim_t>(newText.size()));
        QVERIFY(image::writeSettingsFile(path(), area));
    }
    QCOMPARE(support::readFile(path()), newText);
    QCOMPARE(chmod(m_directory->path().toUtf8().constData(), 0755), 0);
}

void TestSaveFile::killedAtAnyMoment()
{
#if defined(__SANITIZE_ADDRESS__) || defined(__SANITIZE_THREAD__)
    constexpr int kills = 200; // a sanitizer's memory is slow to fork; others do all
#else
    constexpr int kills = 1000;
#endif
    const QByteArray one = filledText(0x11);
    const QByteArray other = filledText(static_cast<char>(0xEE));
    support::writeFile(path(), one);
    const quint32 seed = QRandomGenerator::global()->generate();
    QRandomGenerator random(seed);
    EndlessSaver::progress();
    const unsigned window = timeOfASave(path());
    constexpr int mostSaves = 3; // up to the one that is cut off
    int amidASave = 0;
    int changed = 0;
    QByteArray last = support::readFile(path());
    for (int round = 0; round < kills; ++round) {
        {
            // Counted, since a disk may be slower now than it was.
            const int wanted = EndlessSaver::progress().saves + random.bounded(mostSaves);
            const EndlessSaver saver(path());
            while (!EndlessSaver::progress().isSaving || EndlessSaver::progress().saves < wanted) {
                usleep(10);
            }
            usleep(random.bounded(window));
        }
        const QByteArray now = support::readFile(path());
        QVERIFY2(now == one || now == other, qPrintable(QString::number(seed)));
        changed += now == last ? 0 : 1;
        last = now;
        amidASave += EndlessSaver::progress().isSaving ? 1 : 0;
    }
    qInfo("%d kills, %d amid a save, the other contents found %d times", kills, amidASave, changed);
    QVERIFY(amidASave > kills / 2);
    QVERIFY(changed > kills / 10);
}

QTEST_GUILESS_MAIN(TestSaveFile)
#include "test_savefile.moc"
