// SPDX-FileCopyrightText: 2026 The MIOLKAsoft authors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "image/memoryarea.h"

#include "tests/support/template.h"

#include <QtTest>

class TestMemoryArea : public QObject
{
    Q_OBJECT

private slots:
    void aNewAreaIsEmpty();
    void pagesGrowToTheHighestOffset();
    void aRunIsWrittenInOrder();
    void everyWriteCountsAsAChange();
    void settingsImageIs1024Bytes();
    void runsHaveNoHoles();
    void runsCrossPages();
    void addressesFromTheUpperHalf();
    void hexOfTheSettingsImage();
    void hexOfAShortLastRecord();
    void hexOfNothing();
    void hexAcrossSegments();
    void hexStartingInALaterSegment();
    void hexOfMissingBytes();
    void hexOfAnEmptyArea();
    void slotsAreVisibleByName();
};

void TestMemoryArea::aNewAreaIsEmpty()
{
    const cMyMemoryArea area;
    quint8 byte = 0x5A;
    QVERIFY(!area.data(0, &byte));
    QCOMPARE(int(byte), 0x5A);
    QVERIFY(area.data(0, 10).isEmpty());
    QVERIFY(!area.isModified());
}

void TestMemoryArea::pagesGrowToTheHighestOffset()
{
    cMyMemoryArea area;
    area.setData(0x10005, 7);
    quint8 byte = 0;
    QVERIFY(!area.data(0, &byte));
    QVERIFY(!area.data(0xFFFF, &byte));
    QCOMPARE(area.data(0x10000, 100), (QVector<quint8>{0, 0, 0, 0, 0, 7}));
    QVERIFY(!area.data(0x10006, &byte));
    QVERIFY(!area.data(0x20000, &byte));
}

void TestMemoryArea::aRunIsWrittenInOrder()
{
    cMyMemoryArea area;
    area.setData(5, {1, 2, 3});
    QCOMPARE(area.data(0, 100), (QVector<quint8>{0, 0, 0, 0, 0, 1, 2, 3}));
    QVERIFY(area.isModified());
}

void TestMemoryArea::everyWriteCountsAsAChange()
{
    cMyMemoryArea area;
    area.setData(3, QVector<quint8>());
    QVERIFY(!area.isModified());
    area.setData(3, 9);
    area.clearModified();
    QVERIFY(!area.isModified());
    area.setData(3, 9);
    QVERIFY(area.isModified());
}

void TestMemoryArea::settingsImageIs1024Bytes()
{
    cMyMemoryArea area;
    area.setData(1023, 0);
    QCOMPARE(area.data(0, 2000), QVector<quint8>(1024, 0));
}

void TestMemoryArea::runsHaveNoHoles()
{
    cMyMemoryArea area;
    area.setData(0, {1, 2});
    area.setData(0x10000, 3);
    QCOMPARE(area.data(0, 0x7FFF), (QVector<quint8>{1, 2}));
    QVERIFY(area.data(0, 0 * 10).isEmpty());
}

void TestMemoryArea::runsCrossPages()
{
    cMyMemoryArea area;
    area.setData(0xFFFE, {1, 2, 3, 4});
    QCOMPARE(area.data(0xFFFE, 4), (QVector<quint8>{1, 2, 3, 4}));
    QCOMPARE(area.data(0x10000, 9), (QVector<quint8>{3, 4}));
}

void TestMemoryArea::addressesFromTheUpperHalf()
{
    cMyMemoryArea area;
    area.setData(0x80000001U, 0x42);
    quint8 byte = 0;
    QVERIFY(area.data(static_cast<int>(0x80000001U), &byte));
    QCOMPARE(int(byte), 0x42);
    QVERIFY(!area.data(-1, &byte));
}

void TestMemoryArea::hexOfTheSettingsImage()
{
    cMyMemoryArea area;
    const QByteArray image = support::templateImage();
    for (int i = 0; i < image.size(); ++i) {
        area.setData(static_cast<quint32>(i), static_cast<quint8>(image.at(i)));
    }
    const QStringList lines = area.toHex(0, 1024, 16);
    QCOMPARE(lines.size(), 65);
    for (int i = 0; i < 64; ++i) {
        QCOMPARE(lines.at(i).mid(3, 4),
                 QStringLiteral("%1").arg(16 * i, 4, 16, QLatin1Char('0')).toUpper());
    }
    QCOMPARE(lines.join(QLatin1Char('\n')).toLatin1(), support::settingsText(image));
}

void TestMemoryArea::hexOfAShortLastRecord()
{
    cMyMemoryArea area;
    area.setData(1023, 0);
    QCOMPARE(area.toHex(0, 20, 16),
             (QStringList{QStringLiteral(":10000000") + QString(32, QLatin1Char('0')) +
                              QStringLiteral("F0"),
                          QStringLiteral(":0400040000000000F8"), QStringLiteral(":00000001FF")}));
}

void TestMemoryArea::hexOfNothing()
{
    cMyMemoryArea area;
    area.setData(1023, 0);
    const QStringList end{QStringLiteral(":00000001FF")};
    QCOMPARE(area.toHex(0, 0, 16), end);
    QCOMPARE(area.toHex(0, -5, 16), end);
}

void TestMemoryArea::hexAcrossSegments()
{
    cMyMemoryArea area;
    area.setData(0xFFFE, {1, 2, 3, 4});
    QCOMPARE(area.toHex(0xFFFE, 4, 2),
             (QStringList{QStringLiteral(":02FFFE000102FE"), QStringLiteral(":000000040001FB"),
                          QStringLiteral(":020000000304F7"), QStringLiteral(":00000001FF")}));
}

void TestMemoryArea::hexStartingInALaterSegment()
{
    cMyMemoryArea area;
    area.setData(0x20000, 0xAA);
    QCOMPARE(area.toHex(0x20000, 1, 1),
             (QStringList{QStringLiteral(":000000040002FA"), QStringLiteral(":01000000AA55"),
                          QStringLiteral(":00000001FF")}));
}

void TestMemoryArea::hexOfMissingBytes()
{
    // Two bytes exist out of eight: no record is ever full, so they come out with the last address.
    cMyMemoryArea area;
    area.setData(0, {0x11, 0x22});
    QCOMPARE(area.toHex(0, 8, 4),
             (QStringList{QStringLiteral(":0200040011 22C7").remove(QLatin1Char(' ')),
                          QStringLiteral(":00000001FF")}));
}

void TestMemoryArea::hexOfAnEmptyArea()
{
    const cMyMemoryArea area;
    QCOMPARE(area.toHex(0, 8, 4),
             (QStringList{QStringLiteral(":00000001FF"), QStringLiteral(":00000001FF")}));
}

void TestMemoryArea::slotsAreVisibleByName()
{
    cMyMemoryArea area;
    QVERIFY(QMetaObject::invokeMethod(&area, "setData", Q_ARG(quint32, 4), Q_ARG(quint8, 6)));
    QVERIFY(QMetaObject::invokeMethod(&area, "setData", Q_ARG(quint32, 5),
                                      Q_ARG(QVector<quint8>, (QVector<quint8>{7, 8}))));
    QCOMPARE(area.data(4, 9), (QVector<quint8>{6, 7, 8}));
    const QMetaObject* meta = area.metaObject();
    const QMetaMethod slot = meta->method(meta->indexOfSlot("setData(quint32,quint8)"));
    QCOMPARE(slot.parameterNames(), (QList<QByteArray>{"address", "value"}));
    const QMetaMethod run = meta->method(meta->indexOfSlot("setData(quint32,QVector<quint8>)"));
    QCOMPARE(run.parameterNames(), (QList<QByteArray>{"address", "data"}));
}

QTEST_GUILESS_MAIN(TestMemoryArea)
#include "test_memoryarea.moc"
