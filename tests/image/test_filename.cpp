// SPDX-FileCopyrightText: 2026 The MIOLKAsoft authors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "image/filename.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QTemporaryDir>
#include <QtTest>

#include <sys/stat.h>
#include <unistd.h>

class TestFileName : public QObject
{
    Q_OBJECT

private slots:
    void validUtf8IsKept_data();
    void validUtf8IsKept();
    void invalidUtf8IsNoFileName_data();
    void invalidUtf8IsNoFileName();
    void aNulIsNoPartOfAName();
    void aReplacementCharacterNeedsItsFile();
    void aRelativeNameInAnUndecodableDirectory();
    void whatASaveWouldWrite();
};

void TestFileName::validUtf8IsKept_data()
{
    QTest::addColumn<QByteArray>("bytes");
    QTest::newRow("plain") << QByteArray("dir/settings file.mio");
    QTest::newRow("Polish") << QByteArray("/tmp/\xC5\xBC\xC3\xB3\xC5\x82w.mio");
    QTest::newRow("beyond the first plane") << QByteArray("\xF0\x9F\x90\xA0.mio");
    QTest::newRow("leading byte-order mark") << QByteArray("\xEF\xBB\xBF"
                                                           "a.mio");
    QTest::newRow("a replacement character") << QByteArray("a\xEF\xBF\xBD.mio");
    QTest::newRow("empty") << QByteArray("");
}

void TestFileName::validUtf8IsKept()
{
    QFETCH(QByteArray, bytes);
    const QString name = image::decodeFileName(bytes);
    QCOMPARE(name.toUtf8(), bytes);
    QVERIFY(image::isEncodable(name));
}

void TestFileName::invalidUtf8IsNoFileName_data()
{
    QTest::addColumn<QByteArray>("bytes");
    QTest::newRow("Latin-1") << QByteArray("\xBF\xF3\xB3w.mio");
    QTest::newRow("cut sequence") << QByteArray("a.mio\xC5");
    QTest::newRow("encoded surrogate") << QByteArray("a\xED\xA0\x80.mio");
    QTest::newRow("overlong") << QByteArray("a\xC0\xAF.mio");
    QTest::newRow("beside a replacement character") << QByteArray("a\xEF\xBF\xBD\xFF.mio");
}

void TestFileName::invalidUtf8IsNoFileName()
{
    QFETCH(QByteArray, bytes);
    const QString name = image::decodeFileName(bytes);
    QVERIFY(!name.isEmpty());
    QVERIFY(!image::isEncodable(name));
    QVERIFY(image::isMangled(name));
}

void TestFileName::aNulIsNoPartOfAName()
{
    QVERIFY(!image::isEncodable(QStringLiteral("a.mio") + QChar(QChar::Null) + QLatin1Char('b')));
}

void TestFileName::aReplacementCharacterNeedsItsFile()
{
    const QTemporaryDir directory;
    const QString path = directory.filePath(QStringLiteral("a\uFFFD.mio"));
    QVERIFY(image::isMangled(path));
    QVERIFY(!image::isMangled(directory.filePath(QStringLiteral("missing.mio"))));
    QFile file(path);
    QVERIFY(file.open(QIODevice::WriteOnly));
    QVERIFY(!image::isMangled(path));
}

void TestFileName::aRelativeNameInAnUndecodableDirectory()
{
    const QTemporaryDir directory;
    const QByteArray before = QDir::currentPath().toUtf8();
    const QByteArray name = directory.path().toUtf8() + "/d\xFF";
    QCOMPARE(mkdir(name.constData(), 0777), 0);
    QVERIFY(QDir(directory.path()).mkdir(QStringLiteral("d\uFFFD")));
    QVERIFY(!image::isMangled(QStringLiteral("f.mio")));
    QCOMPARE(chdir(name.constData()), 0);
    QVERIFY(image::isMangled(QStringLiteral("f.mio")));
    QVERIFY(!image::isMangled(directory.filePath(QStringLiteral("f.mio"))));
    QCOMPARE(image::writeTarget(QStringLiteral("f.mio")), QString());
    QCOMPARE(chdir(before.constData()), 0);
    QCOMPARE(rmdir(name.constData()), 0);
}

void TestFileName::whatASaveWouldWrite()
{
    const QTemporaryDir directory;
    const QString real = QFileInfo(directory.path()).canonicalFilePath();
    QCOMPARE(image::writeTarget(directory.filePath(QStringLiteral("new.mio"))),
             real + QStringLiteral("/new.mio"));
    QCOMPARE(image::writeTarget(directory.filePath(QStringLiteral("./x/../new.mio"))), QString());
    QCOMPARE(image::writeTarget(directory.filePath(QStringLiteral("missing/new.mio"))), QString());
    QCOMPARE(image::writeTarget(QString()), QString());
    QVERIFY(QFile::link(QStringLiteral("loop"), directory.filePath(QStringLiteral("loop"))));
    QCOMPARE(image::writeTarget(directory.filePath(QStringLiteral("loop"))), QString());
}

QTEST_GUILESS_MAIN(TestFileName)
#include "test_filename.moc"
