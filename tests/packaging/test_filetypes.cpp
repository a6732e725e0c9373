// SPDX-FileCopyrightText: 2026 The MIOLKAsoft authors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "editor/fieldcodec.h"
#include "image/memoryarea.h"
#include "image/settingsfile.h"
#include "tests/packaging/desktopfiles.h"
#include "tests/support/librarytext.h"
#include "tests/support/posix.h"
#include "tests/support/skipped.h"

#include <QTemporaryDir>
#include <QtTest>

/// As what the desktop knows files, from a database of the system's types and ours.
class TestFileTypes : public QObject
{
    Q_OBJECT

public:
    [[nodiscard]] bool wasSkipped() const { return m_wasSkipped; }

private slots:
    void initTestCase();
    void aFileIsKnown_data();
    void aFileIsKnown();
    void whatTheProgramSavesIsKnownWithoutItsName_data();
    void whatTheProgramSavesIsKnownWithoutItsName();

private:
    [[nodiscard]] QString typeOf(const QString& name, const QByteArray& bytes) const;

    QTemporaryDir m_directory;
    bool m_wasSkipped = false;
};

namespace {

const QString settings = QStringLiteral("application/vnd.miolka.settings");
const QString sounds = QStringLiteral("application/vnd.miolka.sound-library");
const QString messages = QStringLiteral("application/vnd.miolka.custom-messages");
const QString text = QStringLiteral("text/plain");

QByteArray exampleSettings()
{
    return support::contentsOf(support::sourceFile("docs/example.mio"));
}

QByteArray exampleLibrary()
{
    constexpr int size = 0x20000;
    return support::libraryText(support::libraryImage(size, 1, "English", "1.0"));
}

/// As large and as divided as settings are: the memory of a small controller.
QByteArray memoryDump()
{
    return exampleSettings().replace(":1000000001000100000000000000000000000000EE",
                                     ":1000000001020300000000000000000000000000EA");
}

} // namespace

void TestFileTypes::initTestCase()
{
    for (const char* program : {"update-mime-database", "gio"}) {
        if (!support::isInstalled(program)) {
            m_wasSkipped = true;
            QSKIP(qPrintable(QString::fromLatin1(program) + " is missing"));
        }
    }
    qputenv("XDG_DATA_HOME", m_directory.path().toLocal8Bit());
    const QDir packages(m_directory.filePath("mime/packages"));
    QVERIFY(packages.mkpath("."));
    QVERIFY(QFile::copy(support::desktopFile(".xml"), packages.filePath("ours.xml")));
    const support::Spoken spoken =
        support::run("update-mime-database", {m_directory.filePath("mime")});
    QVERIFY2(spoken.status == 0 && spoken.text.isEmpty(), qPrintable(spoken.text));
}

QString TestFileTypes::typeOf(const QString& name, const QByteArray& bytes) const
{
    const QString path = m_directory.filePath(name);
    if (!support::replaceContents(path, bytes)) {
        return {};
    }
    const QString attribute = QStringLiteral("standard::content-type");
    const QString told = support::run("gio", {"info", "-a", attribute, path}).text;
    return told.section(attribute + ": ", 1).section('\n', 0, 0);
}

void TestFileTypes::aFileIsKnown_data()
{
    QTest::addColumn<QString>("name");
    QTest::addColumn<QByteArray>("bytes");
    QTest::addColumn<QString>("type");
    const auto row = [](const char* what, const char* name, const QByteArray& bytes,
                        const QString& type) {
        QTest::newRow(what) << QString::fromLatin1(name) << bytes << type;
    };
    row("settings", "a.mio", exampleSettings(), settings);
    row("settings in upper case", "A.MIO", exampleSettings(), settings);
    row("settings cut off", "b.mio", exampleSettings().left(100), settings);
    // Of an empty file the desktop says so, whatever its name.
    row("no settings yet", "empty.mio", {}, text);
    row("settings without a suffix", "settings", exampleSettings(), settings);
    row("settings with Windows line ends", "windows", exampleSettings().replace("\n", "\r\n"),
        settings);
    row("sound library", "a.mia", exampleLibrary(), sounds);
    row("sound library in upper case", "A.MIA", exampleLibrary(), sounds);
    row("custom messages", "a.mic", exampleLibrary(), messages);
    row("custom messages in upper case", "A.MIC", exampleLibrary(), messages);
    row("other Intel HEX", "firmware.hex", exampleLibrary(), text);
    row("other Intel HEX without a suffix", "firmware", exampleLibrary(), text);
    row("a small controller's memory", "memory.hex", memoryDump(), text);
}

void TestFileTypes::aFileIsKnown()
{
    QFETCH(QString, name);
    QFETCH(QByteArray, bytes);
    QVERIFY(!bytes.isEmpty() || name == "empty.mio");
    QTEST(typeOf(name, bytes), "type");
}

void TestFileTypes::whatTheProgramSavesIsKnownWithoutItsName_data()
{
    QTest::addColumn<QVector<quint8>>("version");
    QTest::newRow("as the program begins") << QVector<quint8>();
    QTest::newRow("as they are on a device")
        << editor::versionBytes(QStringLiteral(MIOLKA_VERSION));
    QTest::newRow("as a later program writes them")
        << editor::versionBytes(QStringLiteral("1.0.255.0"));
}

void TestFileTypes::whatTheProgramSavesIsKnownWithoutItsName()
{
    QFETCH(QVector<quint8>, version);
    cMyMemoryArea area;
    QVERIFY(image::readSettingsFile(":/pliki/clear.mio", area));
    area.setData(0, version);
    const QString path = m_directory.filePath("saved.mio");
    QVERIFY(image::writeSettingsFile(path, area));
    QCOMPARE(typeOf("saved", support::contentsOf(path)), settings);
}

int main(int argc, char* argv[])
{
    QCoreApplication application(argc, argv);
    TestFileTypes test;
    const int failures = QTest::qExec(&test, argc, argv);
    return support::exitStatus(failures, test.wasSkipped());
}

#include "test_filetypes.moc"
