// SPDX-FileCopyrightText: 2026 The MIOLKAsoft authors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "emulator/mockedusb.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QLibrary>

#include <dlfcn.h>

namespace {

constexpr int libraryVersion = 0;

/// What the library is put before other libraries with, so that it answers for the system.
const QString preload = QStringLiteral("libumockdev-preload.so.0");

QString hexId(quint16 id)
{
    constexpr int digits = 4;
    constexpr int base = 16;
    return QStringLiteral("%1").arg(id, digits, base, QLatin1Char('0'));
}

/// A number within each driver's range, for programs that look at it.
int minorOf(const QString& name)
{
    QString digits = name;
    while (!digits.isEmpty() && !digits.at(0).isDigit()) {
        digits.remove(0, 1);
    }
    return digits.toInt();
}

/// The device in the library's text form. There is no line for the node: a node cannot be made
/// twice, and ours is a link to the pseudo-terminal.
QString description(const cMyMockedPort& port, const QString& usbPath, const QString& ttyPath)
{
    return QStringLiteral("P: %1\n"
                          "E: DEVTYPE=usb_device\n"
                          "E: SUBSYSTEM=usb\n"
                          "E: ID_VENDOR_ID=%3\n"
                          "E: ID_MODEL_ID=%4\n"
                          "A: idVendor=%3\\n\n"
                          "A: idProduct=%4\\n\n"
                          "\n"
                          "P: %2\n"
                          "E: DEVNAME=/dev/%5\n"
                          "E: SUBSYSTEM=tty\n"
                          "E: MAJOR=166\n"
                          "E: MINOR=%6\n"
                          "E: ID_BUS=usb\n"
                          "E: ID_VENDOR_ID=%3\n"
                          "E: ID_MODEL_ID=%4\n")
        .arg(usbPath, ttyPath, hexId(port.vendor), hexId(port.product), port.name,
             QString::number(minorOf(port.name)));
}

QString ttyPathOf(const QString& usbPath, const QString& name)
{
    return usbPath + QStringLiteral("/interface/tty/") + name;
}

} // namespace

/// The library's functions, by their names there; the types are those of its C interface.
struct cMyMockedUsb::Functions
{
    explicit Functions(const QString& name) : library(name, libraryVersion)
    {
        if (!library.load()) {
            return;
        }
        resolve(testbedNew, "umockdev_testbed_new");
        resolve(addFromString, "umockdev_testbed_add_from_string");
        resolve(removeDevice, "umockdev_testbed_remove_device");
        resolve(getRootDir, "umockdev_testbed_get_root_dir");
        resolve(objectUnref, "g_object_unref");
        resolve(errorFree, "g_error_free");
        resolve(memoryFree, "g_free");
    }

    /// Beside the library lies the one that programs load first; another package may hold it.
    [[nodiscard]] bool isPreloadThere() const
    {
        Dl_info info = {};
        return ::dladdr(reinterpret_cast<void*>(testbedNew), &info) != 0 &&
               QFileInfo(QFile::decodeName(info.dli_fname)).dir().exists(preload);
    }

    [[nodiscard]] bool areComplete() const
    {
        return testbedNew != nullptr && addFromString != nullptr && removeDevice != nullptr &&
               getRootDir != nullptr && objectUnref != nullptr && errorFree != nullptr &&
               memoryFree != nullptr;
    }

    template <typename Function>
    void resolve(Function& function, const char* name)
    {
        function = reinterpret_cast<Function>(library.resolve(name));
    }

    QLibrary library;
    void* (*testbedNew)() = nullptr;
    int (*addFromString)(void*, const char*, void**) = nullptr;
    void (*removeDevice)(void*, const char*) = nullptr;
    char* (*getRootDir)(void*) = nullptr;
    void (*objectUnref)(void*) = nullptr;
    void (*errorFree)(void*) = nullptr;
    void (*memoryFree)(void*) = nullptr;
};

cMyMockedUsb::cMyMockedUsb(const QString& library)
    : m_functions(std::make_unique<Functions>(library))
{
    m_problem = findProblem();
    if (!m_problem.isEmpty()) {
        return;
    }
    m_testbed = m_functions->testbedNew();
    char* const root = m_functions->getRootDir(m_testbed);
    m_root = QFile::decodeName(root);
    m_functions->memoryFree(root);
    QDir().mkpath(m_root + QStringLiteral("/dev"));
}

QString cMyMockedUsb::findProblem() const
{
    if (!m_functions->areComplete() || !m_functions->isPreloadThere()) {
        return QStringLiteral("the mocked USB port needs libumockdev (Debian package umockdev)");
    }
    // The library itself would abort.
    const QFileInfo temporary(QDir::tempPath());
    if (!temporary.isDir() || !temporary.isWritable()) {
        return QStringLiteral("the mocked USB port needs a temporary directory that takes files; "
                              "TMPDIR may name one");
    }
    return {};
}

cMyMockedUsb::~cMyMockedUsb()
{
    if (!isAvailable()) {
        return;
    }
    const QStringList names = m_usbPaths.keys();
    for (const QString& name : names) {
        remove(name);
    }
    m_functions->objectUnref(m_testbed);
}

QProcessEnvironment cMyMockedUsb::environment(const QProcessEnvironment& base) const
{
    const QString preloadName = QStringLiteral("LD_PRELOAD");
    QProcessEnvironment result = base;
    const QString before = base.value(preloadName);
    result.insert(preloadName, before.isEmpty() ? preload : before + QLatin1Char(':') + preload);
    result.insert(QStringLiteral("UMOCKDEV_DIR"), m_root);
    return result;
}

bool cMyMockedUsb::add(const cMyMockedPort& port)
{
    remove(port.name);
    const QString usbPath = QStringLiteral("/devices/miolka/usb1/1-%1").arg(++m_made);
    const QString ttyPath = ttyPathOf(usbPath, port.name);
    if (!QFile::link(port.terminal, link(port.name))) {
        return false;
    }
    void* error = nullptr;
    const QByteArray text = description(port, usbPath, ttyPath).toLatin1();
    if (m_functions->addFromString(m_testbed, text.constData(), &error) == 0) {
        if (error != nullptr) {
            m_functions->errorFree(error);
        }
        QFile::remove(link(port.name));
        return false;
    }
    m_usbPaths.insert(port.name, usbPath);
    return true;
}

void cMyMockedUsb::remove(const QString& name)
{
    const QString usbPath = m_usbPaths.take(name);
    if (usbPath.isEmpty()) {
        return;
    }
    removePaths(usbPath, ttyPathOf(usbPath, name));
    QFile::remove(link(name));
}

void cMyMockedUsb::removePaths(const QString& usbPath, const QString& ttyPath)
{
    for (const QString& path : {ttyPath, usbPath}) {
        const QByteArray full = "/sys" + path.toLatin1();
        m_functions->removeDevice(m_testbed, full.constData());
    }
}

QString cMyMockedUsb::link(const QString& name) const
{
    return m_root + QStringLiteral("/dev/") + name;
}
