// SPDX-FileCopyrightText: 2026 The MIOLKAsoft authors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "cli/differences.h"

#include "cli/settingsource.h"
#include "editor/fieldcodec.h"
#include "image/memoryarea.h"
#include "tests/support/offeredimage.h"

#include <QtTest>

/// What two settings images do not share.
class TestDifferences : public QObject
{
    Q_OBJECT

private slots:
    void init();
    void cleanup();
    void equalImagesHaveNone();
    void lines_data();
    void lines();
    void severalComeInTheOrderOfAddresses();
    void theVersionIsShownButNotCounted();
    void everyChangedByteIsFound();

private:
    std::unique_ptr<cMyMemoryArea> m_before;
    std::unique_ptr<cMyMemoryArea> m_after;
};

void TestDifferences::init()
{
    m_before = std::make_unique<cMyMemoryArea>();
    m_after = std::make_unique<cMyMemoryArea>();
    cli::loadDefaults(*m_before);
    cli::loadDefaults(*m_after);
}

void TestDifferences::cleanup()
{
    m_before.reset();
    m_after.reset();
}

void TestDifferences::equalImagesHaveNone()
{
    QVERIFY(cli::differences(*m_before, *m_after).isEmpty());
    QVERIFY(!cli::isDifferent({}));
}

void TestDifferences::lines_data()
{
    QTest::addColumn<int>("address");
    QTest::addColumn<QByteArray>("bytes");
    QTest::addColumn<QString>("line");
    const auto row = [](const char* name, int address, const char* hex, const char* line) {
        QTest::newRow(name) << address << QByteArray::fromHex(hex) << QString::fromUtf8(line);
    };
    row("number", 136, "78", "diveThreshold: 100 cm -> 120 cm");
    row("high byte", 131, "0F", "suspendDelay: 1 [h] -> unknown (3856)");
    row("choice", 128, "0F", "depthSamplingRate: 1 [Hz] -> 10 [Hz]");
    row("member of a rule", 376, "20", "messageRule08.condition: never -> unknown (32)");
    row("text", 16, "4D 65 00", R"(author: "" -> "Me")");
    row("text of several lines", 512, "61 0A 62 00", "description: \"\" -> \"a\nb\"");
    row("behind the end of a text", 33, "4E 21 32 33",
        R"(title: "" and behind its end 20 31 -> "" and behind its end 21 32)");
    row("byte without a field", 9, "AB", "byte 9: 00 -> AB");
    row("bytes without a field", 4, "01 02 03 04 05 06 07 08 09 0A 0B 0C",
        "bytes 4 to 15: 00 00 00 00 00 00 00 00 00 00 00 00 -> "
        "01 02 03 04 05 06 07 08 09 0A 0B 0C");
    row("last byte without a field before one", 239, "01", "byte 239: 00 -> 01");
}

void TestDifferences::lines()
{
    QFETCH(int, address);
    QFETCH(QByteArray, bytes);
    QFETCH(QString, line);
    for (int i = 0; i < bytes.size(); ++i) {
        m_after->setData(static_cast<quint32>(address + i), static_cast<quint8>(bytes.at(i)));
    }
    const auto found = cli::differences(*m_before, *m_after);
    QCOMPARE(cli::differenceLines(found), QStringList{line});
    QVERIFY(cli::isDifferent(found));
}

void TestDifferences::severalComeInTheOrderOfAddresses()
{
    m_after->setData(129, 0);
    m_after->setData(1023, 1);
    m_after->setData(15, 1);
    m_after->setData(130, 44);
    m_after->setData(131, 1);
    QStringList names;
    for (const cMySettingsDifference& each : cli::differences(*m_before, *m_after)) {
        names += each.name;
    }
    QCOMPARE(names, (QStringList{"byte 15", "volume", "suspendDelay", "description"}));
}

void TestDifferences::theVersionIsShownButNotCounted()
{
    m_after->setData(2, 4);
    auto found = cli::differences(*m_before, *m_after);
    QCOMPARE(cli::differenceLines(found),
             QStringList{"program version: 1.0.1.0 -> 1.0.4.0 (not counted)"});
    QVERIFY(!cli::isDifferent(found));
    m_after->setData(129, 0);
    found = cli::differences(*m_before, *m_after);
    QCOMPARE(found.size(), 2);
    QVERIFY(cli::isDifferent(found));
}

void TestDifferences::everyChangedByteIsFound()
{
    for (int address = 0; address < image::settingsImageSize; ++address) {
        quint8 old = 0;
        m_after->data(address, &old);
        m_after->setData(static_cast<quint32>(address), static_cast<quint8>(old ^ 1U));
        const auto found = cli::differences(*m_before, *m_after);
        QCOMPARE(found.size(), 1);
        QVERIFY2(found.first().before != found.first().after, qPrintable(found.first().name));
        QCOMPARE(cli::isDifferent(found), address > 3);
        m_after->setData(static_cast<quint32>(address), old);
    }
}

QTEST_GUILESS_MAIN(TestDifferences)
#include "test_differences.moc"
