// SPDX-FileCopyrightText: 2026 The MIOLKAsoft authors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "cli/bootloader.h"
#include "device/protocol.h"
#include "emulator/mockedusb.h"
#include "tests/cli/toolrun.h"
#include "tests/support/preload.h"
#include "tests/support/serveddevice.h"
#include "tests/support/skipped.h"

#include <QDir>
#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>
#include <QTemporaryDir>

#include <algorithm>

#include <sys/stat.h>
#include <unistd.h>

/// The program looks for devices as on a real system, where the ports and their USB devices are
/// mocked.
class TestDoctor : public QObject
{
    Q_OBJECT

public:
    /// Whether privileges could not be given up, so that something was not tested.
    [[nodiscard]] bool wasSkipped() const { return m_wasSkipped; }

private slots:
    void initTestCase() { support::allowPreloadedLibraries(); }
    void init();
    void cleanup();
    void aDeviceIsFound();
    void listingSendsNothing();
    void noDevice();
    void aBusyPortNamesItsHolder();
    void aPortThatAnotherProgramReads();
    void aForbiddenPort();
    void aBootLoader();
    void aLinkStandsForItsPort();
    void aSilentDevice();
    void severalDevices();

private:
    void plug(const QString& name, quint16 product = device::productId)
    {
        QVERIFY(m_usb->add({name, device::vendorId, product, m_device->path()}));
    }
    [[nodiscard]] QProcessEnvironment environment() const
    {
        return m_usb->environment(QProcessEnvironment::systemEnvironment());
    }
    support::ToolResult run(const QStringList& arguments)
    {
        support::ToolRun tool;
        tool.process.setProcessEnvironment(environment());
        return tool.run(arguments);
    }
    support::ToolResult runWithoutPrivileges(const QStringList& arguments)
    {
        support::ToolRun tool;
        tool.process.setProcessEnvironment(environment());
        const QString program = tool.process.program();
        tool.process.setProgram(QStringLiteral("setpriv"));
        return tool.run(QStringList{"--bounding-set", "-all", "--inh-caps", "-all", program} +
                        arguments);
    }

    std::unique_ptr<cMyMockedUsb> m_usb;
    std::unique_ptr<support::ServedDevice> m_device;
    bool m_wasSkipped = false;
};

void TestDoctor::init()
{
    m_usb = std::make_unique<cMyMockedUsb>();
    QVERIFY2(m_usb->isAvailable(), qPrintable(m_usb->problem()));
    m_device = std::make_unique<support::ServedDevice>();
}

void TestDoctor::cleanup()
{
    m_usb.reset();
    m_device.reset();
}

void TestDoctor::aDeviceIsFound()
{
    plug("ttyACM0");
    const support::ToolResult ports = run({"ports"});
    QCOMPARE(ports.status, 0);
    QCOMPARE(ports.out, QStringLiteral("ttyACM0: Miolka\n"));
    const support::ToolResult doctor = run({"doctor"});
    QCOMPARE(doctor.status, 0);
    QCOMPARE(doctor.out, QStringLiteral("/dev/ttyACM0: the device answers; all is well\n"));
    QCOMPARE(doctor.err, QString());
    const QJsonObject json =
        QJsonDocument::fromJson(run({"ports", "--json"}).out.toUtf8()).object();
    const QJsonObject port = json.value("ports").toArray().first().toObject();
    QCOMPARE(port.value("path").toString(), QStringLiteral("/dev/ttyACM0"));
    QCOMPARE(port.value("access").toString(), QStringLiteral("free"));
    QCOMPARE(port.value("product").toInt(), int{device::productId});
}

void TestDoctor::listingSendsNothing()
{
    int lines = 0;
    m_device->inThread([&] {
        connect(&m_device->port(), &cMyVirtualPort::lineServed, &m_device->port(),
                [&lines] { ++lines; });
    });
    plug("ttyACM0");
    QCOMPARE(run({"ports"}).status, 0);
    m_device->inThread([] {});
    QCOMPARE(lines, 0);
    QCOMPARE(run({"doctor"}).status, 0);
    m_device->inThread([] {});
    QCOMPARE(lines, 1);
}

void TestDoctor::noDevice()
{
    QVERIFY(m_usb->add({"ttyUSB0", 0x0403, 0x6001, m_device->path()}));
    const support::ToolResult ports = run({"ports"});
    QCOMPARE(ports.status, 3);
    QCOMPARE(ports.out, QString());
    QVERIFY2(ports.err.contains("no device is attached"), qPrintable(ports.err));
    const support::ToolResult doctor = run({"doctor"});
    QCOMPARE(doctor.status, 3);
    QVERIFY2(doctor.out.contains("\nlsusb -d 03eb:\n"), qPrintable(doctor.out));
}

void TestDoctor::aBusyPortNamesItsHolder()
{
    plug("ttyACM0");
    QProcess holder;
    holder.setProcessEnvironment(environment());
    holder.start(QStringLiteral(MIOLKA_PORTHOLDER), {QStringLiteral("ttyACM0")});
    QVERIFY(holder.waitForReadyRead());
    QCOMPARE(holder.readAll(), QByteArray("open\n"));
    const support::ToolResult ports = run({"ports"});
    QCOMPARE(ports.status, 0);
    QVERIFY2(ports.out.contains("in use by another program"), qPrintable(ports.out));
    const support::ToolResult doctor = run({"doctor", "--json"});
    QCOMPARE(doctor.status, 4);
    const QJsonObject json = QJsonDocument::fromJson(doctor.out.toUtf8()).object();
    QCOMPARE(json.value("status").toInt(), 4);
    const QJsonObject finding = json.value("findings").toArray().first().toObject();
    QCOMPARE(finding.value("kind").toString(), QStringLiteral("busy"));
    const QString name = QStringLiteral("miolka_porthold (process %1)").arg(holder.processId());
    QVERIFY2(finding.value("text").toString().contains(name), qPrintable(doctor.out));
    holder.closeWriteChannel();
    QVERIFY(holder.waitForFinished());
}

void TestDoctor::aPortThatAnotherProgramReads()
{
    plug("ttyACM0");
    QProcess reader;
    reader.start(QStringLiteral("cat"), {m_device->path()});
    QVERIFY(reader.waitForStarted());
    const QDir files(QStringLiteral("/proc/%1/fd").arg(reader.processId()));
    QTRY_VERIFY([&] {
        const QStringList names = files.entryList(QDir::Files | QDir::System);
        return std::any_of(names.cbegin(), names.cend(), [&](const QString& name) {
            return QFile::symLinkTarget(files.filePath(name)) == m_device->path();
        });
    }());
    const support::ToolResult doctor = run({"doctor", "--json"});
    QCOMPARE(doctor.status, 4);
    const QJsonObject json = QJsonDocument::fromJson(doctor.out.toUtf8()).object();
    const QJsonObject finding = json.value("findings").toArray().first().toObject();
    QCOMPARE(finding.value("kind").toString(), QStringLiteral("busy"));
    const QString name = QStringLiteral("cat (process %1)").arg(reader.processId());
    QVERIFY2(finding.value("text").toString().contains(name), qPrintable(doctor.out));
    reader.kill();
    QVERIFY(reader.waitForFinished());
    QCOMPARE(run({"doctor"}).status, 0);
}

void TestDoctor::aForbiddenPort()
{
    plug("ttyACM0");
    const QByteArray terminal = QFile::encodeName(m_device->path());
    QCOMPARE(chmod(terminal.constData(), 0), 0);
    const bool isRoot = geteuid() == 0;
    const support::ToolResult ports = isRoot ? runWithoutPrivileges({"ports"}) : run({"ports"});
    if (ports.err.contains("setpriv: ")) {
        m_wasSkipped = true;
        QSKIP("this system does not let the program give up its privileges");
    }
    QVERIFY2(ports.out.contains("Permission denied"), qPrintable(ports.out));
    const support::ToolResult doctor = isRoot ? runWithoutPrivileges({"doctor"}) : run({"doctor"});
    QCOMPARE(doctor.status, 4);
    QVERIFY2(doctor.out.contains("with the mode ---------"), qPrintable(doctor.out));
    QVERIFY2(doctor.out.contains("\nsudo udevadm control --reload"), qPrintable(doctor.out));
}

void TestDoctor::aBootLoader()
{
    plug("ttyACM0", device::bootLoaderProductId);
    const support::ToolResult ports = run({"ports"});
    QCOMPARE(ports.status, 0);
    QVERIFY2(ports.out.startsWith("ttyACM0: boot loader"), qPrintable(ports.out));
    const support::ToolResult doctor = run({"doctor"});
    QCOMPARE(doctor.status, 3);
    QVERIFY2(doctor.out.contains(cli::bootLoaderWayOut()), qPrintable(doctor.out));
    const support::ToolResult named = run({"doctor", "--port", "ttyACM0", "--json"});
    QCOMPARE(named.status, 3);
    const QJsonObject json = QJsonDocument::fromJson(named.out.toUtf8()).object();
    QCOMPARE(json.value("status").toInt(), 3);
    const support::ToolResult status = run({"status"});
    QCOMPARE(status.status, 3);
    QVERIFY2(status.err.contains(cli::bootLoaderWayOut()), qPrintable(status.err));
}

void TestDoctor::aLinkStandsForItsPort()
{
    plug("ttyACM0");
    const QTemporaryDir directory;
    const QString link = directory.filePath("miolka");
    QVERIFY(QFile::link(m_device->path(), link));
    const support::ToolResult doctor = run({"doctor", "--port", link});
    QCOMPARE(doctor.status, 0);
    QCOMPARE(doctor.out, QStringLiteral("/dev/ttyACM0: the device answers; all is well\n"));
}

void TestDoctor::aSilentDevice()
{
    cMyFaults faults;
    QVERIFY(faults.add("silent-after=0"));
    m_device->inThread([&] { m_device->port().setFaults(faults); });
    plug("ttyACM0");
    const support::ToolResult doctor = run({"doctor"});
    QCOMPARE(doctor.status, 6);
    QVERIFY2(doctor.out.contains("does not answer"), qPrintable(doctor.out));
}

void TestDoctor::severalDevices()
{
    support::ServedDevice second;
    plug("ttyACM0");
    QVERIFY(m_usb->add({"ttyACM1", device::vendorId, device::productId, second.path()}));
    const support::ToolResult doctor = run({"doctor"});
    QCOMPARE(doctor.status, 0);
    QVERIFY2(doctor.out.contains("2 devices are attached"), qPrintable(doctor.out));
    const support::ToolResult chosen = run({"doctor", "--port", "ttyACM1"});
    QCOMPARE(chosen.status, 0);
    QCOMPARE(chosen.out, QStringLiteral("/dev/ttyACM1: the device answers; all is well\n"));
    m_usb->remove("ttyACM1");
}

int main(int argc, char* argv[])
{
    const QCoreApplication application(argc, argv);
    TestDoctor test;
    const int failures = QTest::qExec(&test, argc, argv);
    return support::exitStatus(failures, test.wasSkipped());
}

#include "test_doctor.moc"
