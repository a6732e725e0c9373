// SPDX-FileCopyrightText: 2026 The MIOLKAsoft authors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "device/protocol.h"
#include "tests/packaging/desktopfiles.h"
#include "tests/support/posix.h"
#include "tests/support/skipped.h"

#include <QRegularExpression>
#include <QTemporaryDir>
#include <QtTest>

/// What the rules give to whoever sits at the computer, read as text and by the system's own
/// reader. That rights follow from the mark "uaccess" is the login service's work and not seen
/// here.
class TestDeviceRules : public QObject
{
    Q_OBJECT

public:
    [[nodiscard]] bool wasSkipped() const { return m_wasSkipped; }

private slots:
    void theyComeInTime();
    void theyGiveNeitherGroupNorMode();
    void theyAreOfTheDeviceAlone();
    void theySkipWhatIsRemoved();
    void theSystemMarksTheDevice_data();
    void theSystemMarksTheDevice();

private:
    bool m_wasSkipped = false;
};

namespace {

const QString rulesName = QStringLiteral("70-miolkasoft.rules");
const QString devicePath = QStringLiteral("/sys/devices/usb1/1-4");

QString rulesFile()
{
    return support::sourceFile("packaging/desktop/" + rulesName);
}

/// Without comments and blank lines.
QStringList rules()
{
    return QString::fromUtf8(support::contentsOf(rulesFile()))
        .split('\n')
        .filter(QRegularExpression("^[^#]"));
}

QString hexId(int id)
{
    constexpr int digits = 4;
    constexpr int base = 16;
    return QStringLiteral("%1").arg(id, digits, base, QLatin1Char('0'));
}

/// A device on USB with an interface and a serial port below it.
QByteArray description(int vendor, int product)
{
    return QStringLiteral("P: /devices/usb1/1-4\n"
                          "N: bus/usb/001/007\n"
                          "E: SUBSYSTEM=usb\n"
                          "E: DEVTYPE=usb_device\n"
                          "E: DEVNAME=/dev/bus/usb/001/007\n"
                          "E: MAJOR=189\n"
                          "E: MINOR=6\n"
                          "A: idVendor=%1\\n\n"
                          "A: idProduct=%2\\n\n"
                          "\n"
                          "P: /devices/usb1/1-4/1-4:1.0\n"
                          "E: SUBSYSTEM=usb\n"
                          "E: DEVTYPE=usb_interface\n"
                          "\n"
                          "P: /devices/usb1/1-4/1-4:1.0/tty/ttyACM0\n"
                          "N: ttyACM0\n"
                          "E: SUBSYSTEM=tty\n"
                          "E: DEVNAME=/dev/ttyACM0\n"
                          "E: MAJOR=166\n"
                          "E: MINOR=0\n")
        .arg(hexId(vendor), hexId(product))
        .toLatin1();
}

/// What lets a program mount something that nobody else sees; root needs no more than that.
QStringList ownMounts()
{
    return geteuid() == 0 ? QStringList{"--mount"} : QStringList{"--map-root-user", "--mount"};
}

/// What the system says of an event at that path of the device; no other rules than ours and its
/// own are read, and nothing that it writes is left behind.
support::Spoken whatIsSaid(const QString& directory, const QString& action, const QString& path)
{
    const QString script = "set -e\n"
                           "mount -t tmpfs rules /etc/udev/rules.d\n"
                           "cp \"$1\" /etc/udev/rules.d\n"
                           "mkdir -p /run/udev\n"
                           "mount -t tmpfs data /run/udev\n"
                           "exec umockdev-run -d \"$2\" -- udevadm test --action=\"$3\" \"$4\"\n";
    return support::run("unshare",
                        ownMounts() + QStringList{"bash", "-c", script, "bash", rulesFile(),
                                                  directory + "/device.umockdev", action, path});
}

} // namespace

void TestDeviceRules::theyComeInTime()
{
    constexpr int numberOfRights = 73;
    QVERIFY(rulesName.section('-', 0, 0).toInt() < numberOfRights);
    QVERIFY(rules().size() > 2);
}

void TestDeviceRules::theyGiveNeitherGroupNorMode()
{
    for (const QString& rule : rules()) {
        QVERIFY2(!rule.contains(QRegularExpression("\\b(GROUP|MODE|OWNER|RUN|PROGRAM)\\b")),
                 qPrintable(rule));
    }
}

void TestDeviceRules::theyAreOfTheDeviceAlone()
{
    const QStringList marks = rules().filter("TAG+=");
    QCOMPARE(marks.size(), 2);
    const QString products = hexId(device::productId) + '|' + hexId(device::bootLoaderProductId);
    for (const QString& rule : marks) {
        const QString key = rule.startsWith("SUBSYSTEM==\"tty\"") ? "ATTRS" : "ATTR";
        QVERIFY(rule.contains(key + "{idVendor}==\"" + hexId(device::vendorId) + '"'));
        QVERIFY(rule.contains(key + "{idProduct}==\"" + products + '"'));
        QVERIFY(rule.endsWith("TAG+=\"uaccess\", ENV{ID_MM_DEVICE_IGNORE}=\"1\""));
    }
    QVERIFY(marks.first().startsWith("SUBSYSTEM==\"usb\", ENV{DEVTYPE}==\"usb_device\", "));
    QVERIFY(marks.last().startsWith("SUBSYSTEM==\"tty\", "));
}

void TestDeviceRules::theySkipWhatIsRemoved()
{
    QCOMPARE(rules().first(), QStringLiteral("ACTION==\"remove\", GOTO=\"miolkasoft_end\""));
    QCOMPARE(rules().last(), QStringLiteral("LABEL=\"miolkasoft_end\""));
}

void TestDeviceRules::theSystemMarksTheDevice_data()
{
    QTest::addColumn<int>("vendor");
    QTest::addColumn<int>("product");
    QTest::addColumn<QString>("action");
    QTest::addColumn<QString>("path");
    QTest::addColumn<bool>("isMarked");
    const QString interface = devicePath + "/1-4:1.0";
    const QString port = interface + "/tty/ttyACM0";
    const int ours = device::vendorId;
    const int normal = device::productId;
    const int waiting = device::bootLoaderProductId;
    QTest::newRow("the device") << ours << normal << "add" << devicePath << true;
    QTest::newRow("its change") << ours << normal << "change" << devicePath << true;
    QTest::newRow("its port") << ours << normal << "add" << port << true;
    QTest::newRow("its boot loader") << ours << waiting << "add" << devicePath << true;
    QTest::newRow("its interface") << ours << normal << "add" << interface << false;
    QTest::newRow("its removal") << ours << normal << "remove" << devicePath << false;
    QTest::newRow("another product") << ours << normal + 1 << "add" << devicePath << false;
    QTest::newRow("another product's port") << ours << normal + 1 << "add" << port << false;
    QTest::newRow("another vendor") << ours + 1 << normal << "add" << devicePath << false;
}

void TestDeviceRules::theSystemMarksTheDevice()
{
    QFETCH(int, vendor);
    QFETCH(int, product);
    QFETCH(QString, action);
    QFETCH(QString, path);
    for (const char* program : {"udevadm", "umockdev-run", "unshare"}) {
        if (!support::isInstalled(program)) {
            m_wasSkipped = true;
            QSKIP(qPrintable(QString::fromLatin1(program) + " is missing"));
        }
    }
    if (support::run("unshare", ownMounts() + QStringList{"true"}).status != 0) {
        m_wasSkipped = true;
        QSKIP("this system allows no namespace");
    }
    const QTemporaryDir directory;
    support::writeFile(directory.filePath("device.umockdev"), description(vendor, product));
    const support::Spoken spoken = whatIsSaid(directory.path(), action, path);
    QVERIFY2(spoken.status == 0, qPrintable(spoken.text));
    QVERIFY(spoken.text.contains("/" + rulesName));
    QVERIFY2(!spoken.text.contains(QRegularExpression(rulesName + ":\\d+")),
             qPrintable(spoken.text)); // a complaint about a line
    const QRegularExpression rights("^CURRENT_TAGS=.*:uaccess:",
                                    QRegularExpression::MultilineOption);
    QTEST(spoken.text.contains(rights), "isMarked");
    QTEST(spoken.text.contains("\nID_MM_DEVICE_IGNORE=1\n"), "isMarked");
}

int main(int argc, char* argv[])
{
    QCoreApplication application(argc, argv);
    TestDeviceRules test;
    const int failures = QTest::qExec(&test, argc, argv);
    return support::exitStatus(failures, test.wasSkipped());
}

#include "test_devicerules.moc"
