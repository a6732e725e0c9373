// SPDX-FileCopyrightText: 2026 The MIOLKAsoft authors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "device/linechannel.h"
#include "tests/cli/devicetool.h"
#include "tests/support/librarytext.h"
#include "tests/support/posix.h"

#include <QtTest>

#include <atomic>

using support::DeviceTool;
using support::ToolResult;

class TestUploadCommand : public QObject
{
    Q_OBJECT

private slots:
    void libraryArrives();
    void asksAndSaysWhatIsLost();
    void faultyFileIsNotSent();
    void tooLargeForTheDevice();
    void aDeviceMayTakeItsTime();
    void cutOff_data();
    void cutOff();
    void interrupted();
    void unknownMemorySize();
    void goneAtTheQuestion();
    void virtualDeviceHasNoWayBack();

private:
    static QByteArray flash(DeviceTool& tool);
    static QByteArray library();
};

namespace {

/// Lines until the first record of the library, counted from 1.
constexpr int firstRecord = support::identityLines + 4 + 1;

} // namespace

QByteArray TestUploadCommand::flash(DeviceTool& tool)
{
    QByteArray bytes;
    tool.device.inThread([&] { bytes = tool.device.device().memory(FLASH); });
    return bytes;
}

/// Two segments, of which the second has only a little.
QByteArray TestUploadCommand::library()
{
    return support::libraryImage(0x10000 + 64, 7, "Polski", QByteArray("\x02\x00\x01\x00", 4));
}

void TestUploadCommand::libraryArrives()
{
    DeviceTool tool;
    support::writeFile(tool.file("a.mia"), support::libraryText(library()));
    const ToolResult result = tool.run({"upload", tool.file("a.mia"), "--yes"});
    QVERIFY2(result.status == 0, qPrintable(result.err));
    QVERIFY2(result.err.contains("a sound library (language \"Polski\", version 2.0.1.0), 65600 "
                                 "bytes"),
             qPrintable(result.err));
    QVERIFY(flash(tool).startsWith(library()));
}

void TestUploadCommand::asksAndSaysWhatIsLost()
{
    DeviceTool tool;
    const QByteArray before = flash(tool);
    support::writeFile(tool.file("a.mia"), support::libraryText(library()));
    const ToolResult result = tool.run({"upload", tool.file("a.mia")});
    QCOMPARE(result.status, 130);
    QVERIFY2(result.err.contains("is lost, and cannot be read back"), qPrintable(result.err));
    QVERIFY(flash(tool) == before);
}

void TestUploadCommand::faultyFileIsNotSent()
{
    DeviceTool tool;
    const QByteArray before = flash(tool);
    QByteArray text = support::libraryText(library());
    const auto last = text.lastIndexOf("\r\n:00000001FF") - 1;
    text[last] = text.at(last) == '0' ? '1' : '0';
    support::writeFile(tool.file("a.mia"), text);
    const ToolResult result = tool.run({"upload", tool.file("a.mia"), "--yes"});
    QCOMPARE(result.status, 5);
    const QString place =
        QStringLiteral("%1:%2: the checksum").arg(tool.file("a.mia")).arg(text.count('\n') - 1);
    QVERIFY2(result.err.contains(place), qPrintable(result.err));
    QVERIFY(flash(tool) == before);
}

void TestUploadCommand::tooLargeForTheDevice()
{
    DeviceTool tool;
    const QByteArray before = flash(tool);
    const QByteArray end = support::libraryRecord(image::EndOfFileRecord, 0, {});
    for (const char segment : {'\x7f', '\x80'}) {
        const QByteArray upper = QByteArray(1, '\0') + segment;
        support::writeFile(
            tool.file("a.mic"),
            support::libraryRecord(image::ExtendedLinearAddressRecord, 0, upper) +
                support::libraryRecord(image::DataRecord, 0xFFF8, QByteArray(8, 'x')) + end);
        const ToolResult result = tool.run({"upload", tool.file("a.mic"), "--yes"});
        QVERIFY2(result.status == (segment == '\x7f' ? 0 : 5), qPrintable(result.err));
        QVERIFY2(segment == '\x7f' ||
                     result.err.contains(":2: this record ends at address 0x810000"),
                 qPrintable(result.err));
    }
    QVERIFY(flash(tool).left(0x7FFFF8) == before.left(0x7FFFF8));
    QVERIFY(flash(tool).endsWith("xxxxxxxx"));
}

/// As one does that erases memory before it stores the first record.
void TestUploadCommand::aDeviceMayTakeItsTime()
{
    constexpr int latency = cMyLineChannel::answerPatience + 500;
    DeviceTool tool;
    support::writeFile(tool.file("a.mia"), support::libraryText(library()));
    tool.afterLine(firstRecord - 1, [&] { tool.device.port().setLatency(latency); });
    tool.afterLine(firstRecord, [&] { tool.device.port().setLatency(0); });
    const ToolResult result = tool.run({"upload", tool.file("a.mia"), "--yes"});
    QVERIFY2(result.status == 0, qPrintable(result.err));
    QVERIFY(flash(tool).startsWith(library()));
}

void TestUploadCommand::cutOff_data()
{
    QTest::addColumn<QString>("fault");
    QTest::newRow("gone") << QStringLiteral("vanish-at=%1").arg(firstRecord + 100);
    QTest::newRow("garbage") << "garbage=0.02";
}

void TestUploadCommand::cutOff()
{
    QFETCH(QString, fault);
    DeviceTool tool;
    support::writeFile(tool.file("my library.mia"), support::libraryText(library()));
    tool.afterLine(firstRecord, [&] {
        cMyFaults faults;
        faults.add(fault);
        tool.device.port().setFaults(faults);
    });
    const ToolResult result = tool.run({"upload", tool.file("my library.mia"), "--yes"});
    QVERIFY2(result.status == 6, qPrintable(result.err));
    QVERIFY2(result.err.contains("incomplete"), qPrintable(result.err));
    QVERIFY2(result.err.contains(
                 QStringLiteral("miolkactl upload '%1'").arg(tool.file("my library.mia"))),
             qPrintable(result.err));
    tool.mend();
    QCOMPARE(tool.run({"upload", tool.file("my library.mia"), "--yes"}).status, 0);
    QVERIFY(flash(tool).startsWith(library()));
}

void TestUploadCommand::interrupted()
{
    DeviceTool tool;
    support::writeFile(tool.file("a.mia"), support::libraryText(library()));
    std::atomic<qint64> process{0};
    tool.afterLine(firstRecord + 1000,
                   [&process] { ::kill(static_cast<pid_t>(process.load()), SIGINT); });
    tool.start({"upload", tool.file("a.mia"), "--yes", "--trace", tool.file("trace")});
    process = tool.tool.process.processId();
    const ToolResult result = tool.tool.finish();
    QVERIFY2(result.status == 130, qPrintable(result.err));
    QVERIFY2(result.err.contains("incomplete"), qPrintable(result.err));
    QVERIFY2(result.err.contains("miolkactl upload " + tool.file("a.mia")), qPrintable(result.err));
    QVERIFY(support::readFile(tool.file("trace")).endsWith(" < #ROOT\\r\\n\n"));
}

void TestUploadCommand::unknownMemorySize()
{
    DeviceTool tool;
    tool.device.inThread([&] {
        QByteArray otp = tool.device.device().memory(OTP);
        otp[6] = '\0';
        tool.device.device().setMemory(OTP, otp);
    });
    support::writeFile(tool.file("a.mia"), support::libraryText(library()));
    const ToolResult result = tool.run({"upload", tool.file("a.mia"), "--yes"});
    QVERIFY2(result.status == 0, qPrintable(result.err));
    QVERIFY2(result.err.contains("does not say how large its memory is"), qPrintable(result.err));
    QVERIFY(flash(tool).startsWith(library()));
}

void TestUploadCommand::goneAtTheQuestion()
{
    DeviceTool tool;
    support::writeFile(tool.file("a.mia"), support::libraryText(library()));
    tool.start({"upload", tool.file("a.mia")});
    QByteArray shown;
    QTRY_VERIFY((shown += tool.tool.process.readAllStandardError()).contains("[y/N]"));
    tool.device.inThread([&] { tool.device.port().unplug(); });
    tool.tool.process.write("y\n");
    const ToolResult result = tool.tool.finish();
    QVERIFY2(result.status == 6, qPrintable(result.err));
    QVERIFY2(result.err.contains("nothing was changed on the device"), qPrintable(result.err));
    QVERIFY2(!result.err.contains("incomplete"), qPrintable(result.err));
}

void TestUploadCommand::virtualDeviceHasNoWayBack()
{
    QTemporaryDir directory;
    const QString file = directory.filePath("a.mia");
    const QString trace = directory.filePath("trace");
    support::writeFile(file, support::libraryText(support::libraryImage(
                                 0x100000, 7, "Polski", QByteArray("\x02\x00\x01\x00", 4))));
    support::ToolRun tool(directory.path());
    tool.start({"upload", file, "--yes", "--emulator", "--trace", trace});
    QTRY_VERIFY(QFileInfo(trace).size() > 10000);
    ::kill(static_cast<pid_t>(tool.process.processId()), SIGINT);
    const ToolResult result = tool.finish();
    QVERIFY2(result.status == 130, qPrintable(result.err));
    QVERIFY2(result.err.contains("the virtual device is gone"), qPrintable(result.err));
    QVERIFY2(!result.err.contains("miolkactl upload"), qPrintable(result.err));
}

QTEST_GUILESS_MAIN(TestUploadCommand)
#include "test_uploadcommand.moc"
