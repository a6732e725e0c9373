// SPDX-FileCopyrightText: 2026 The MIOLKAsoft authors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "device/protocol.h"
#include "tests/packaging/desktopfiles.h"

#include <QDir>
#include <QImageReader>
#include <QRegularExpression>
#include <QtTest>

using support::desktopFile;
using support::elements;
using support::launcherValues;
using support::sourceFile;

/// That launcher, catalogue entry, file types and icons speak of one program.
class TestNames : public QObject
{
    Q_OBJECT

private slots:
    void allGoByOneId();
    void theLauncherStartsTheProgram();
    void onlySettingsAreOpened();
    void everyTypeHasItsSuffix();
    void everyIconIsThereInItsSize_data();
    void everyIconIsThereInItsSize();
    void everyIconIsAskedFor();
    void theReleaseIsTheProgramsVersion();
    void theReleaseIsThatOfTheChangelog();
    void theDevicesAreThoseOfTheProgram();
    void thePicturesAreThere();
    void thePictureOfTheProgramIsTheEmbeddedOne();
};

namespace {

const QString id = QStringLiteral("org.miolkasoft.MIOLKAsoft");
const QString metainfo = desktopFile(QStringLiteral(".metainfo.xml"));
const QString types = desktopFile(QStringLiteral(".xml"));

QDir iconTheme()
{
    return QDir(sourceFile(QStringLiteral("packaging/desktop/icons/hicolor")));
}

} // namespace

void TestNames::allGoByOneId()
{
    QCOMPARE(QStringLiteral(MIOLKA_APPLICATION_ID), id);
    QCOMPARE(elements(metainfo, "id"), QStringList{id});
    QCOMPARE(elements(metainfo, "launchable"), QStringList{id + ".desktop"});
    QVERIFY(QFile::exists(desktopFile(".desktop")));
    QCOMPARE(launcherValues("Icon"), QStringList{id});
    QCOMPARE(elements(metainfo, "icon"), QStringList{id});
    QCOMPARE(elements(types, "icon", "name"),
             (QStringList{id + "-settings", id + "-sounds", id + "-messages"}));
}

/// X11 knows a window's program by the name of its file.
void TestNames::theLauncherStartsTheProgram()
{
    QCOMPARE(launcherValues("Exec"), QStringList{"miolkasoft %f"});
    QCOMPARE(launcherValues("StartupWMClass"), QStringList{"miolkasoft"});
    QCOMPARE(launcherValues("Name"), elements(metainfo, "name").mid(0, 1));
    QCOMPARE(launcherValues("Categories"), elements(metainfo, "category"));
    QCOMPARE(elements(metainfo, "binary"),
             (QStringList{"miolkasoft", "miolkactl", "miolka-emulator"}));
}

/// A library that is opened as settings would be lost with the next saving.
void TestNames::onlySettingsAreOpened()
{
    const QStringList opened = {"application/vnd.miolka.settings"};
    QCOMPARE(launcherValues("MimeType"), opened);
    QCOMPARE(elements(metainfo, "mediatype"), opened);
}

void TestNames::everyTypeHasItsSuffix()
{
    QCOMPARE(elements(types, "mime-type", "type"),
             (QStringList{"application/vnd.miolka.settings", "application/vnd.miolka.sound-library",
                          "application/vnd.miolka.custom-messages"}));
    QCOMPARE(elements(types, "glob", "pattern"), (QStringList{"*.mio", "*.mia", "*.mic"}));
    QCOMPARE(elements(types, "sub-class-of", "type"),
             (QStringList{"text/plain", "text/plain", "text/plain"}));
}

void TestNames::everyIconIsThereInItsSize_data()
{
    QTest::addColumn<QString>("name");
    QTest::addColumn<int>("largest");
    QTest::newRow("program") << "apps/" + id << 512;
    for (const char* kind : {"settings", "sounds", "messages"}) {
        QTest::newRow(kind) << "mimetypes/" + id + '-' + kind << 256;
    }
}

void TestNames::everyIconIsThereInItsSize()
{
    QFETCH(QString, name);
    QFETCH(int, largest);
    int found = 0;
    for (const int size : {16, 22, 24, 32, 36, 48, 64, 72, 96, 128, 192, 256, 512}) {
        const QString file =
            iconTheme().filePath(QStringLiteral("%1x%1/%2.png").arg(size).arg(name));
        QCOMPARE(QFile::exists(file), size <= largest);
        if (size <= largest) {
            QCOMPARE(QImageReader(file).read().size(), QSize(size, size));
            ++found;
        }
    }
    QVERIFY(found > 0);
    QVERIFY(
        !elements(iconTheme().filePath("scalable/" + name + ".svg"), "svg", "viewBox").isEmpty());
}

/// None is left over that nothing names any longer.
void TestNames::everyIconIsAskedFor()
{
    const QStringList asked = QStringList{id, id + "-symbolic"} + elements(types, "icon", "name");
    QDirIterator files(iconTheme().path(), QDir::Files, QDirIterator::Subdirectories);
    int count = 0;
    while (files.hasNext()) {
        files.next();
        QVERIFY2(asked.contains(files.fileInfo().completeBaseName()), qPrintable(files.filePath()));
        ++count;
    }
    QVERIFY(count > 0);
    QVERIFY(QFile::exists(iconTheme().filePath("symbolic/apps/" + id + "-symbolic.svg")));
}

void TestNames::theReleaseIsTheProgramsVersion()
{
    QCOMPARE(elements(metainfo, "release", "version").value(0), QStringLiteral(MIOLKA_VERSION));
}

/// The changelog names a release once it is one; what comes before is not yet released.
void TestNames::theReleaseIsThatOfTheChangelog()
{
    const QString changes = QString::fromUtf8(support::contentsOf(sourceFile("CHANGELOG.md")));
    QVERIFY(changes.contains("\n## ["));
    const QRegularExpression heading("\n## \\[(\\d[\\d.]*)\\] - (\\S+)");
    const QRegularExpressionMatch newest = heading.match(changes);
    if (newest.hasMatch()) {
        QCOMPARE(newest.captured(1), elements(metainfo, "release", "version").value(0));
        QCOMPARE(newest.captured(2), elements(metainfo, "release", "date").value(0));
    }
}

void TestNames::theDevicesAreThoseOfTheProgram()
{
    QStringList expected;
    for (const quint16 product : {device::productId, device::bootLoaderProductId}) {
        constexpr int digits = 4;
        constexpr int base = 16;
        expected += QStringLiteral("usb:v%1p%2d*")
                        .arg(device::vendorId, digits, base, QLatin1Char('0'))
                        .arg(product, digits, base, QLatin1Char('0'));
    }
    QStringList found = elements(metainfo, "modalias");
    for (QString& alias : found) {
        alias = alias.toLower();
    }
    QCOMPARE(found, expected);
}

void TestNames::thePicturesAreThere()
{
    const QStringList pictures = elements(metainfo, "image");
    const QStringList widths = elements(metainfo, "image", "width");
    const QStringList heights = elements(metainfo, "image", "height");
    QVERIFY(!pictures.isEmpty());
    for (int i = 0; i < static_cast<int>(pictures.size()); ++i) {
        const QString file = sourceFile("docs/images/" + QFileInfo(pictures.at(i)).fileName());
        QCOMPARE(QImageReader(file).size(), QSize(widths.at(i).toInt(), heights.at(i).toInt()));
    }
}

void TestNames::thePictureOfTheProgramIsTheEmbeddedOne()
{
    const QImage installed(iconTheme().filePath("128x128/apps/" + id + ".png"));
    const QImage embedded(sourceFile("resources/ikony/miolka_soft_128.png"));
    QVERIFY(!installed.isNull());
    QCOMPARE(installed.convertToFormat(QImage::Format_ARGB32),
             embedded.convertToFormat(QImage::Format_ARGB32));
}

QTEST_GUILESS_MAIN(TestNames)
#include "test_names.moc"
