// SPDX-FileCopyrightText: 2026 The MIOLKAsoft authors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "emulator/mockedusb.h"

#include <QDir>
#include <QFileInfo>
#include <QtTest>

#include <array>

class TestMockedUsb : public QObject
{
    Q_OBJECT

private slots:
    void aLibraryThatIsNotThere();
    void aLibraryThatIsAnother();
    void environmentIsAddedTo();
    void portsComeAndGo();
    void nothingIsLeftBehind();
};

namespace {

QString rootOf(const QProcessEnvironment& environment)
{
    return environment.value(QStringLiteral("UMOCKDEV_DIR"));
}

} // namespace

void TestMockedUsb::aLibraryThatIsNotThere()
{
    const cMyMockedUsb usb(QStringLiteral("miolka-no-such-library"));
    QVERIFY(!usb.isAvailable());
}

void TestMockedUsb::aLibraryThatIsAnother()
{
    // It is there, in version 0, and has nothing of what is needed.
    const cMyMockedUsb usb(QStringLiteral("gobject-2.0"));
    QVERIFY(!usb.isAvailable());
}

void TestMockedUsb::environmentIsAddedTo()
{
    const cMyMockedUsb usb;
    QVERIFY(usb.isAvailable());
    QProcessEnvironment base;
    base.insert(QStringLiteral("OWN"), QStringLiteral("value"));
    const QString preload = QStringLiteral("LD_PRELOAD");
    const QString alone = usb.environment(base).value(preload);
    QVERIFY(alone.contains(QLatin1String("umockdev-preload")));
    base.insert(preload, QStringLiteral("first.so"));
    const QProcessEnvironment environment = usb.environment(base);
    QCOMPARE(environment.value(preload), QStringLiteral("first.so:") + alone);
    QCOMPARE(environment.value(QStringLiteral("OWN")), QStringLiteral("value"));
    QCOMPARE(rootOf(environment), usb.rootDirectory());
}

void TestMockedUsb::portsComeAndGo()
{
    cMyMockedUsb usb;
    const QString link = usb.rootDirectory() + QStringLiteral("/dev/ttyACM0");
    const QDir ttys(usb.rootDirectory() + QStringLiteral("/sys/class/tty"));
    const auto names = [&ttys] {
        return ttys.entryList(QDir::AllEntries | QDir::System | QDir::NoDotAndDotDot);
    };
    for (const quint16 product : std::array<quint16, 3>{0x2018, 0x2FF0, 0x2018}) {
        QVERIFY(usb.add({QStringLiteral("ttyACM0"), 0x03EB, product, QStringLiteral("/dev/null")}));
        QCOMPARE(QFileInfo(link).symLinkTarget(), QStringLiteral("/dev/null"));
        QCOMPARE(names(), QStringList(QStringLiteral("ttyACM0")));
    }
    QVERIFY(usb.add({QStringLiteral("ttyUSB0"), 0x0403, 0x6001, QStringLiteral("/dev/null")}));
    usb.remove(QStringLiteral("ttyACM0"));
    usb.remove(QStringLiteral("ttyACM0"));
    usb.remove(QStringLiteral("ttyACM7"));
    QVERIFY(!QFileInfo(link).isSymLink());
    QCOMPARE(names(), QStringList(QStringLiteral("ttyUSB0")));
}

void TestMockedUsb::nothingIsLeftBehind()
{
    QString root;
    {
        cMyMockedUsb usb;
        root = usb.rootDirectory();
        QVERIFY(QFileInfo(root).isDir());
        QVERIFY(usb.add({QStringLiteral("ttyACM0"), 0x03EB, 0x2018, QStringLiteral("/dev/null")}));
    }
    QVERIFY(!QFileInfo::exists(root));
    QVERIFY(QFileInfo::exists(QStringLiteral("/dev/null")));
}

QTEST_GUILESS_MAIN(TestMockedUsb)
#include "test_mockedusb.moc"
