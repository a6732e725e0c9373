// SPDX-FileCopyrightText: 2026 The MIOLKAsoft authors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "emulator/statefile.h"

#include "tests/support/posix.h"

#include <QCryptographicHash>
#include <QRandomGenerator>
#include <QTemporaryDir>
#include <QtTest>

class TestState : public QObject
{
    Q_OBJECT

private slots:
    void everyMemoryComesBack();
    void erasedFlashTakesNoRoom();
    void flashFullOfSoundsComesBack();
    void truncatedFilesAreRefused();
    void changedBytesAreRefused();
    void randomFilesAreRefused();
    void rightDigestWrongContents_data();
    void rightDigestWrongContents();
    void whatIsNoFileIsRefused();
    void aStateOfAnotherProgramIsRefused();
    void aFileLargerThanAnyStateIsNotRead();
    void aStateThatNobodyMayReadIsRefused();
    void aLimitAtEveryPageLeavesTheOldFile();
    void whatCannotBeWrittenLeavesTheOldFile();

private:
    [[nodiscard]] QString path() const { return m_directory.filePath(QStringLiteral("state")); }
    QTemporaryDir m_directory;
};

namespace {

QByteArray randomBytes(int size, quint32 seed)
{
    QRandomGenerator random(seed);
    QByteArray bytes(size, '\0');
    for (char& byte : bytes) {
        byte = static_cast<char>(random.bounded(256));
    }
    return bytes;
}

QByteArray withDigest(const QByteArray& body)
{
    return body + QCryptographicHash::hash(body, QCryptographicHash::Sha256);
}

bool areSame(const cMyDeviceMemories& left, const cMyDeviceMemories& right)
{
    for (const MemoryType area : {EEPROM, FLASH, OTP, RAM, ROM}) {
        if (left.bytes(area) != right.bytes(area)) {
            return false;
        }
    }
    return true;
}

} // namespace

void TestState::everyMemoryComesBack()
{
    QVector<cMyDeviceMemories> devices(2);
    for (const MemoryType area : {EEPROM, FLASH, OTP, RAM, ROM}) {
        const int size = emulator::memorySize(area);
        QVERIFY(devices[0].write(area, size / 2, randomBytes(size / 4, 1)));
        QVERIFY(devices[1].write(area, size - 3, "end"));
    }
    devices[1].setSerialNumber(54321);
    QVERIFY(emulator::writeState(path(), devices));
    const auto read = emulator::readState(path());
    QVERIFY(read.has_value());
    QCOMPARE(read->size(), 2);
    QVERIFY(areSame(read->at(0), devices.at(0)));
    QVERIFY(areSame(read->at(1), devices.at(1)));
}

void TestState::erasedFlashTakesNoRoom()
{
    QVERIFY(emulator::writeState(path(), {cMyDeviceMemories()}));
    QVERIFY(QFileInfo(path()).size() < 10000);
}

void TestState::flashFullOfSoundsComesBack()
{
    QVector<cMyDeviceMemories> devices(1);
    QVERIFY(devices[0].setBytes(FLASH, randomBytes(emulator::memorySize(FLASH), 2)));
    QVERIFY(emulator::writeState(path(), devices));
    const auto read = emulator::readState(path());
    QVERIFY(read.has_value());
    QVERIFY(areSame(read->at(0), devices.at(0)));
}

void TestState::truncatedFilesAreRefused()
{
    QVERIFY(emulator::writeState(path(), {cMyDeviceMemories()}));
    const QByteArray whole = support::readFile(path());
    for (int size = 0; size < whole.size(); size += size < 40 ? 1 : 97) {
        support::writeFile(path(), whole.left(size));
        QVERIFY2(!emulator::readState(path()), QByteArray::number(size).constData());
    }
    support::writeFile(path(), whole + 'x');
    QVERIFY(!emulator::readState(path()));
    support::writeFile(path(), whole);
    QVERIFY(emulator::readState(path()).has_value());
}

void TestState::changedBytesAreRefused()
{
    QVERIFY(emulator::writeState(path(), {cMyDeviceMemories()}));
    const QByteArray whole = support::readFile(path());
    for (int place = 0; place < whole.size(); place += 53) {
        QByteArray changed = whole;
        changed[place] = static_cast<char>(changed.at(place) ^ 1);
        support::writeFile(path(), changed);
        QVERIFY2(!emulator::readState(path()), QByteArray::number(place).constData());
    }
}

void TestState::randomFilesAreRefused()
{
    for (quint32 seed = 0; seed < 200; ++seed) {
        support::writeFile(path(), randomBytes(static_cast<int>(seed) * 31, seed));
        QVERIFY(!emulator::readState(path()));
        // The same behind a good start and before a digest that matches.
        const QByteArray start("MIOLKAVD\0\0\0\1\0\0\0\1", 16);
        support::writeFile(path(),
                           withDigest(start + randomBytes(static_cast<int>(seed) * 31, seed)));
        QVERIFY(!emulator::readState(path()));
    }
}

void TestState::rightDigestWrongContents_data()
{
    QTest::addColumn<QByteArray>("body");
    const auto row = [](const char* name, const QByteArray& hex) {
        QTest::newRow(name) << "MIOLKAVD" + QByteArray::fromHex(hex);
    };
    row("nothing behind the magic word", "");
    row("another version", "0000000200000000");
    row("more devices than there can be", "0000000100000011");
    row("four thousand million devices", "00000001ffffffff");
    row("no device where one is announced", "0000000100000001");
    row("bytes behind the last device", "000000010000000000");
    row("run of nothing", "0000000100000001 01 00000000 ff");
    row("run that is longer than the memory", "0000000100000001 01 00000401 ff");
    row("run of four thousand million", "0000000100000001 01 ffffffff ff");
    row("bytes that are announced only", "0000000100000001 00 00000400 ff");
    row("run of no kind", "0000000100000001 02 00000400 ff");
}

void TestState::rightDigestWrongContents()
{
    QFETCH(QByteArray, body);
    support::writeFile(path(), withDigest(body));
    QVERIFY(!emulator::readState(path()));
    // The file of no devices is one, so that it is not the digest that is refused above.
    support::writeFile(path(), withDigest("MIOLKAVD" + QByteArray::fromHex("0000000100000000")));
    QVERIFY(emulator::readState(path()).has_value());
}

void TestState::whatIsNoFileIsRefused()
{
    QVERIFY(!emulator::readState(m_directory.filePath(QStringLiteral("missing"))));
    QVERIFY(!emulator::readState(m_directory.path()));
    QVERIFY(!emulator::readState(QStringLiteral("/dev/zero")));
    QVERIFY(!emulator::readState(path() + QChar(0xD800))); // half a character
}

void TestState::aStateOfAnotherProgramIsRefused()
{
    support::writeFile(path(), withDigest("MIOLKAVE" + QByteArray::fromHex("0000000100000000")));
    QVERIFY(!emulator::readState(path()));
}

void TestState::aFileLargerThanAnyStateIsNotRead()
{
    constexpr qint64 large = qint64(1) << 32;
    QFile file(path());
    QVERIFY(file.open(QIODevice::WriteOnly) && file.resize(large));
    file.close();
    QVERIFY(!emulator::readState(path()));
    QVERIFY(file.remove());
}

void TestState::aStateThatNobodyMayReadIsRefused()
{
    QVERIFY(support::letOthersIn(m_directory.path()));
    QVERIFY(emulator::writeState(path(), {}));
    QVERIFY(emulator::readState(path()).has_value());
    QVERIFY(QFile::setPermissions(path(), QFileDevice::Permissions()));
    {
        const support::WithoutPrivileges nobody;
        QVERIFY(!emulator::readState(path()));
    }
    QVERIFY(QFile::remove(path()));
}

void TestState::whatCannotBeWrittenLeavesTheOldFile()
{
    QVERIFY(!emulator::writeState(m_directory.filePath(QStringLiteral("no/such/place")), {}));
    QVERIFY(!emulator::writeState(m_directory.path(), {cMyDeviceMemories()}));
}

void TestState::aLimitAtEveryPageLeavesTheOldFile()
{
    QVERIFY(emulator::writeState(path(), {}));
    const QByteArray before = support::readFile(path());
    cMyDeviceMemories device;
    constexpr int someBytes = 50'000;
    QVERIFY(device.setBytes(FLASH, randomBytes(emulator::memorySize(FLASH), 1)));
    constexpr int page = 4096;
    for (int limit = 0; limit <= someBytes; limit += page) {
        const support::FileSizeLimit full(static_cast<rlim_t>(limit));
        QVERIFY2(!emulator::writeState(path(), {device}), qPrintable(QString::number(limit)));
        QCOMPARE(support::readFile(path()), before);
    }
}

QTEST_GUILESS_MAIN(TestState)
#include "test_state.moc"
