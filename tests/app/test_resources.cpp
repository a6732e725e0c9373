// SPDX-FileCopyrightText: 2026 The MIOLKAsoft authors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "tests/support/contrast.h"
#include "tests/support/guitest.h"

#include <QFile>
#include <QImageReader>
#include <QXmlStreamReader>

/// Everything that is embedded in the program, asked for by name.
class TestResources : public QObject
{
    Q_OBJECT

private slots:
    void everyResourceIsThere_data();
    void everyResourceIsThere();
    void picturesCanBeShown_data();
    void picturesCanBeShown();
    void theStartPictureIsDarkAndLarge();
    void iconsAreOfOneFamily_data();
    void iconsAreOfOneFamily();
};

namespace {

using support::contrast;

const char* const icons[] = {"new", "open", "save", "save_as", "exit", "upload", "download"};

} // namespace

void TestResources::everyResourceIsThere_data()
{
    QTest::addColumn<QString>("path");
    const auto row = [](const QString& path) {
        QTest::newRow(qPrintable(path)) << path;
    };
    row(QStringLiteral(":/language/english.qm"));
    row(QStringLiteral(":/pliki/clear.mio"));
    row(QStringLiteral(":/grafika/grafika/odslona2_soft_max_05.jpg"));
    row(QStringLiteral(":/icons/ikony/miolka_soft_128.png"));
    for (const char* icon : icons) {
        row(QStringLiteral(":/icons/ikony/%1.svg").arg(QString::fromLatin1(icon)));
    }
}

void TestResources::everyResourceIsThere()
{
    QFETCH(QString, path);
    QFile file(path);
    QVERIFY(file.open(QIODevice::ReadOnly));
    QVERIFY(file.size() > 100);
}

void TestResources::picturesCanBeShown_data()
{
    QTest::addColumn<QString>("path");
    QTest::addColumn<QSize>("size");
    QTest::newRow("start page") << QStringLiteral(":/grafika/grafika/odslona2_soft_max_05.jpg")
                                << QSize(2560, 1440);
    QTest::newRow("program icon") << QStringLiteral(":/icons/ikony/miolka_soft_128.png")
                                  << QSize(128, 128);
}

void TestResources::picturesCanBeShown()
{
    QFETCH(QString, path);
    QFETCH(QSize, size);
    QImageReader reader(path);
    const QImage picture = reader.read();
    QVERIFY2(!picture.isNull(), qPrintable(reader.errorString()));
    QCOMPARE(picture.size(), size);
}

void TestResources::theStartPictureIsDarkAndLarge()
{
    // White text wants 4.5 to 1; tiles of 8 pixels leave out single bright points in bubbles.
    const QImage picture(QStringLiteral(":/grafika/grafika/odslona2_soft_max_05.jpg"));
    const QImage tiles =
        picture.scaled(picture.size() / 8, Qt::IgnoreAspectRatio, Qt::SmoothTransformation);
    double least = 21;
    for (int y = 0; y < tiles.height(); ++y) {
        for (int x = 0; x < tiles.width(); ++x) {
            least = std::min(least, contrast(Qt::white, tiles.pixelColor(x, y)));
        }
    }
    QVERIFY2(least >= 4.5, qPrintable(QString::number(least)));
}

void TestResources::iconsAreOfOneFamily_data()
{
    QTest::addColumn<QString>("path");
    for (const char* icon : icons) {
        QTest::newRow(icon)
            << QStringLiteral(":/icons/ikony/%1.svg").arg(QString::fromLatin1(icon));
    }
}

void TestResources::iconsAreOfOneFamily()
{
    QFETCH(QString, path);
    QFile file(path);
    QVERIFY(file.open(QIODevice::ReadOnly));
    QXmlStreamReader xml(&file);
    QVERIFY(xml.readNextStartElement());
    const QXmlStreamAttributes attributes = xml.attributes();
    QCOMPARE(attributes.value(QLatin1String("viewBox")).toString(), QStringLiteral("0 0 24 24"));
    QCOMPARE(attributes.value(QLatin1String("stroke-width")).toString(), QStringLiteral("2"));
    QCOMPARE(attributes.value(QLatin1String("stroke-linecap")).toString(), QStringLiteral("round"));
    const QColor stroke(attributes.value(QLatin1String("stroke")).toString());
    for (const QColor& bar : {QColor(0xEF, 0xEF, 0xEF), QColor(Qt::white), QColor(0x35, 0x35, 0x35),
                              QColor(0x1E, 0x1E, 0x1E)}) {
        QVERIFY2(contrast(stroke, bar) >= 3.0, qPrintable(bar.name()));
    }
    while (xml.readNextStartElement()) {
        QCOMPARE(xml.name().toString(), QStringLiteral("path"));
        QVERIFY(!xml.attributes().hasAttribute(QLatin1String("stroke")));
        xml.skipCurrentElement();
    }
}

MIOLKA_GUI_TEST_MAIN(TestResources)
#include "test_resources.moc"
