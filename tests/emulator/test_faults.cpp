// SPDX-FileCopyrightText: 2026 The MIOLKAsoft authors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "emulator/faults.h"

#include "device/lineassembler.h"

#include <QtTest>

class TestFaults : public QObject
{
    Q_OBJECT

private slots:
    void specs_data();
    void specs();
    void specsAddUp();
    void nothingGoesWrongByDefault();
    void splitAnswersAreWholeTogether();
    void joinedNoticeIsInThePacket();
    void noticeIsAPacketOfItsOwn();
    void nulsComeFirst();
    void garbageIsOneLineAndNoNotice();
    void onlyTheLastDigitIsWrong();
    void wordsHaveNoChecksum();
    void longLines();
    void probabilitiesAreKept();
    void silenceAfterSomeLines();
    void vanishingIsUsedUp();
    void sameSeedSameFaults();
};

namespace {

const QByteArray word = "#ROOT\r\n";
const QByteArray data = ":0100000001FE\r\n";

cMyFaultInjector injector(const char* specs, quint32 seed = 0)
{
    cMyFaults faults;
    if (!faults.add(QString::fromLatin1(specs))) {
        qFatal("no fault: %s", specs);
    }
    cMyFaultInjector result(seed);
    result.setFaults(faults);
    return result;
}

QByteArray joined(const QVector<cMyPacket>& packets)
{
    QByteArray bytes;
    for (const cMyPacket& packet : packets) {
        bytes += packet.bytes;
    }
    return bytes;
}

} // namespace

void TestFaults::specs_data()
{
    QTest::addColumn<QString>("specs");
    QTest::addColumn<bool>("isKnown");
    const auto row = [](const char* specs, bool isKnown) {
        QTest::newRow(specs) << QString::fromLatin1(specs) << isKnown;
    };
    for (const char* specs :
         {"none", "split", "join", "nul", "silent-after=0", "silent-after=12", "garbage=0",
          "garbage=1", "garbage=0.25", "notice=1", "bad-checksum=.5", "vanish-at=1", "long=1e-3",
          "split,join,nul", "split, nul"}) {
        row(specs, true);
    }
    for (const char* specs :
         {"", "Split", "split=1", "none=1", "silent-after", "silent-after=-1", "silent-after=x",
          "garbage", "garbage=", "garbage=1.1", "garbage=-0.1", "garbage=nan", "vanish-at=0",
          "long=yes", "split,", ",", "split;nul", "bogus=1"}) {
        row(specs, false);
    }
}

void TestFaults::specs()
{
    QFETCH(QString, specs);
    QFETCH(bool, isKnown);
    cMyFaults faults;
    faults.garbage = 0.75;
    QCOMPARE(faults.add(specs), isKnown);
    if (!isKnown) {
        QCOMPARE(faults.garbage, 0.75);
        QVERIFY(!faults.split);
    }
}

void TestFaults::specsAddUp()
{
    cMyFaults faults;
    QVERIFY(faults.add(QStringLiteral("split,garbage=0.5")));
    QVERIFY(faults.add(QStringLiteral("nul,vanish-at=3")));
    QVERIFY(faults.split && faults.nul && !faults.join);
    QCOMPARE(faults.garbage, 0.5);
    QCOMPARE(faults.vanishAt.value_or(0), 3);
    QVERIFY(faults.add(QStringLiteral("none,join")));
    QVERIFY(faults.join && !faults.split && !faults.nul && !faults.vanishAt);
    QCOMPARE(faults.garbage, 0.0);
}

void TestFaults::nothingGoesWrongByDefault()
{
    cMyFaultInjector none;
    QCOMPARE(int(none.nextLine()), int(cMyFaultInjector::Fate::Answer));
    const auto packets = none.packets(data);
    QCOMPARE(packets.size(), 1);
    QCOMPARE(packets.first().bytes, data);
    QCOMPARE(packets.first().delay, 0);
}

void TestFaults::splitAnswersAreWholeTogether()
{
    auto split = injector("split");
    QSet<int> firstSizes;
    for (int i = 0; i < 100; ++i) {
        const auto packets = split.packets(data);
        QVERIFY(packets.size() >= 2);
        QCOMPARE(joined(packets), data);
        for (const cMyPacket& packet : packets) {
            QVERIFY(!packet.bytes.isEmpty());
        }
        QVERIFY(packets.last().delay > 0);
        firstSizes.insert(static_cast<int>(packets.first().bytes.size()));
    }
    QVERIFY(firstSizes.size() > 3);
}

void TestFaults::joinedNoticeIsInThePacket()
{
    const auto packets = injector("join").packets(word);
    QCOMPARE(packets.size(), 1);
    const QByteArray bytes = packets.first().bytes;
    QVERIFY(bytes.startsWith('!'));
    QVERIFY(bytes.endsWith("\r\n" + word));
    QCOMPARE(bytes.count('\n'), 2);
}

void TestFaults::noticeIsAPacketOfItsOwn()
{
    const auto packets = injector("notice=1").packets(word);
    QCOMPARE(packets.size(), 2);
    QVERIFY(packets.first().bytes.startsWith('!'));
    QVERIFY(packets.first().bytes.endsWith("\r\n"));
    QCOMPARE(packets.last().bytes, word);
    // Written back to back they would be read as one.
    QVERIFY(packets.last().delay > 0);
    QVERIFY(injector("notice=1,split").packets(word).at(1).delay > 0);
}

void TestFaults::nulsComeFirst()
{
    const QByteArray bytes = joined(injector("nul").packets(word));
    QVERIFY(bytes.startsWith('\0'));
    QVERIFY(bytes.endsWith(word));
    QCOMPARE(bytes.count('\0'), bytes.size() - word.size());
}

void TestFaults::garbageIsOneLineAndNoNotice()
{
    auto garbage = injector("garbage=1", 7);
    QSet<QByteArray> lines;
    for (int i = 0; i < 5000; ++i) {
        const QByteArray bytes = joined(garbage.packets(data));
        QCOMPARE(bytes.count('\n'), 1);
        QVERIFY(bytes.size() > 1 && bytes.endsWith('\n'));
        // As the program puts it together, NULs at the start being dropped.
        cMyLineAssembler assembler;
        assembler.append(bytes.constData(), bytes.size());
        const auto line = assembler.takeLine();
        QVERIFY(line.has_value());
        QVERIFY(!line->startsWith('!'));
        lines.insert(bytes);
    }
    QVERIFY(lines.size() > 4000);
}

void TestFaults::onlyTheLastDigitIsWrong()
{
    auto wrong = injector("bad-checksum=1");
    QCOMPARE(joined(wrong.packets(data)), QByteArray(":0100000001F0\r\n"));
    QCOMPARE(joined(wrong.packets(":0100000000F0\r\n")), QByteArray(":0100000000F1\r\n"));
}

void TestFaults::wordsHaveNoChecksum()
{
    QCOMPARE(joined(injector("bad-checksum=1").packets(word)), word);
}

void TestFaults::longLines()
{
    const QByteArray bytes = joined(injector("long=1").packets(word));
    QCOMPARE(bytes.size(), 100000 + 2);
    QVERIFY(bytes.endsWith("\r\n"));
    QCOMPARE(bytes.count('\n'), 1);
}

void TestFaults::probabilitiesAreKept()
{
    auto sometimes = injector("bad-checksum=0.25", 3);
    int wrong = 0;
    for (int i = 0; i < 4000; ++i) {
        wrong += joined(sometimes.packets(data)) == data ? 0 : 1;
    }
    QVERIFY2(wrong > 800 && wrong < 1200, QByteArray::number(wrong).constData());
}

void TestFaults::silenceAfterSomeLines()
{
    using Fate = cMyFaultInjector::Fate;
    auto silent = injector("silent-after=2");
    for (int plugged = 0; plugged < 2; ++plugged) {
        silent.plugged();
        QCOMPARE(int(silent.nextLine()), int(Fate::Answer));
        QCOMPARE(int(silent.nextLine()), int(Fate::Answer));
        QCOMPARE(int(silent.nextLine()), int(Fate::Silence));
        QCOMPARE(int(silent.nextLine()), int(Fate::Silence));
        QCOMPARE(silent.lines(), 4);
    }
}

void TestFaults::vanishingIsUsedUp()
{
    using Fate = cMyFaultInjector::Fate;
    auto vanishing = injector("vanish-at=2");
    QCOMPARE(int(vanishing.nextLine()), int(Fate::Answer));
    QCOMPARE(int(vanishing.nextLine()), int(Fate::Vanish));
    vanishing.plugged();
    for (int i = 0; i < 5; ++i) {
        QCOMPARE(int(vanishing.nextLine()), int(Fate::Answer));
    }
}

void TestFaults::sameSeedSameFaults()
{
    const auto run = [](quint32 seed) {
        auto all = injector("split,garbage=0.3,notice=0.3,nul,bad-checksum=0.5", seed);
        QList<QByteArray> packets;
        for (int i = 0; i < 100; ++i) {
            for (const cMyPacket& packet : all.packets(data)) {
                packets.append(packet.bytes);
            }
        }
        return packets;
    };
    QCOMPARE(run(42), run(42));
    QVERIFY(run(42) != run(43));
}

QTEST_GUILESS_MAIN(TestFaults)
#include "test_faults.moc"
