// SPDX-FileCopyrightText: 2026 The MIOLKAsoft authors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "cli/system/systemlook.h"

#include "cli/shellword.h"
#include "device/protocol.h"

#include <QCoreApplication>
#include <QDir>
#include <QFile>
#include <QFileInfo>

#include <algorithm>
#include <array>
#include <cerrno>
#include <csignal>
#include <limits>
#include <utility>

#include <sys/stat.h>

namespace {

/// The files here are a line each; none of them is longer than a page of memory.
QString readLine(const QString& path)
{
    constexpr qint64 longest = 4096;
    QFile file(path);
    return file.open(QIODevice::ReadOnly) ? QString::fromUtf8(file.read(longest)).trimmed()
                                          : QString();
}

quint16 readId(const QString& path)
{
    constexpr int base = 16;
    return readLine(path).toUShort(nullptr, base);
}

/// A serial port lies below one of the device's interfaces.
QString portBelow(const QDir& device)
{
    const QStringList interfaces = device.entryList(QDir::Dirs | QDir::NoDotAndDotDot);
    for (const QString& interface : interfaces) {
        const QDir ttys(device.filePath(interface + QStringLiteral("/tty")));
        const QStringList names = ttys.entryList(QDir::Dirs | QDir::NoDotAndDotDot, QDir::Name);
        if (!names.isEmpty()) {
            return names.first();
        }
    }
    return {};
}

using FileId = std::pair<dev_t, ino_t>;

/// What tells a file from all others, links followed.
std::optional<FileId> idOf(const QString& path)
{
    struct stat status = {};
    if (::stat(QFile::encodeName(path).constData(), &status) != 0) {
        return std::nullopt;
    }
    return FileId(status.st_dev, status.st_ino);
}

/// The open file of a process that is that node; empty if there is none.
QString openFile(const QDir& process, const FileId& node)
{
    const QDir files(process.filePath(QStringLiteral("fd")));
    const QStringList names = files.entryList(QDir::Files | QDir::System);
    const auto found = std::find_if(names.cbegin(), names.cend(), [&](const QString& name) {
        return idOf(files.filePath(name)) == node;
    });
    return found == names.cend() ? QString() : files.filePath(*found);
}

/// A pseudo-terminal has two ends. Who has the far one, too, serves the port, as a virtual device
/// does, and takes nothing from those who use it.
bool hasFarEnd(const QDir& process, const QString& terminalNumber)
{
    const QString mark = QStringLiteral("tty-index:\t") + terminalNumber;
    const QDir infos(process.filePath(QStringLiteral("fdinfo")));
    const QStringList names = infos.entryList(QDir::Files);
    return std::any_of(names.cbegin(), names.cend(), [&](const QString& name) {
        return readLine(infos.filePath(name)).split(QLatin1Char('\n')).contains(mark);
    });
}

/// The process that the first line of a lock file names; 0 if it names none.
qint64 processIn(const QString& lockFile)
{
    return readLine(lockFile).section(QLatin1Char('\n'), 0, 0).trimmed().toLongLong();
}

QString modeOf(QFileDevice::Permissions permissions)
{
    struct Right
    {
        QFileDevice::Permission permission;
        char letter;
    };
    constexpr std::array<Right, 9> rights = {{{QFileDevice::ReadOwner, 'r'},
                                              {QFileDevice::WriteOwner, 'w'},
                                              {QFileDevice::ExeOwner, 'x'},
                                              {QFileDevice::ReadGroup, 'r'},
                                              {QFileDevice::WriteGroup, 'w'},
                                              {QFileDevice::ExeGroup, 'x'},
                                              {QFileDevice::ReadOther, 'r'},
                                              {QFileDevice::WriteOther, 'w'},
                                              {QFileDevice::ExeOther, 'x'}}};
    QString mode;
    for (const Right& right : rights) {
        mode += QLatin1Char(permissions.testFlag(right.permission) ? right.letter : '-');
    }
    return mode;
}

} // namespace

cMySystemLook::cMySystemLook(QString root) : m_root(std::move(root)) {}

QString cMySystemLook::path(const QString& absolute) const
{
    return QDir::cleanPath(m_root + absolute);
}

bool cMySystemLook::isBlind() const
{
    return false;
}

QVector<cMyUsbDevice> cMySystemLook::usbDevices() const
{
    QVector<cMyUsbDevice> found;
    const QDir bus(path(QStringLiteral("/sys/bus/usb/devices")));
    const QStringList names = bus.entryList(QDir::Dirs | QDir::NoDotAndDotDot, QDir::Name);
    for (const QString& name : names) {
        const QDir usb(bus.filePath(name));
        const quint16 product = readId(usb.filePath(QStringLiteral("idProduct")));
        const bool isOurs =
            readId(usb.filePath(QStringLiteral("idVendor"))) == device::vendorId &&
            (product == device::productId || product == device::bootLoaderProductId);
        if (isOurs) {
            found.append(
                {name, product, readLine(usb.filePath(QStringLiteral("serial"))), portBelow(usb)});
        }
    }
    return found;
}

std::optional<cMyNode> cMySystemLook::node(const QString& portPath) const
{
    const QFileInfo info(path(portPath));
    if (!info.exists()) {
        return std::nullopt;
    }
    return cMyNode{info.owner(), info.group(), modeOf(info.permissions())};
}

QString cMySystemLook::target(const QString& portPath) const
{
    constexpr int mostLinks = 40; // as many as the system itself would follow
    const QString prefix = QDir(m_root).isRoot() ? QString() : QDir::cleanPath(m_root);
    QString reached = portPath;
    for (int i = 0; i < mostLinks; ++i) {
        const QString next = QFile::symLinkTarget(path(reached));
        if (next.isEmpty()) {
            break;
        }
        reached = QDir::cleanPath(next.startsWith(prefix) ? next.mid(prefix.size()) : next);
    }
    return reached;
}

bool cMySystemLook::isSamePort(const QString& one, const QString& other) const
{
    const std::optional<FileId> id = idOf(path(one));
    return id && id == idOf(path(other));
}

QVector<cMyProcess> cMySystemLook::holders(const QString& portPath) const
{
    QVector<cMyProcess> found;
    QVector<qint64> seen = {QCoreApplication::applicationPid()};
    const QVector<qint64> candidates = lockHolders(portPath) + openers(portPath);
    for (const qint64 id : candidates) {
        if (!seen.contains(id)) {
            seen.append(id);
            const QFileInfo process(path(QStringLiteral("/proc/%1").arg(id)));
            found.append({id, nameOf(id), process.owner()});
        }
    }
    return found;
}

bool cMySystemLook::isRunning(const QString& processName) const
{
    const QVector<qint64> ids = processes();
    return std::any_of(ids.cbegin(), ids.cend(),
                       [&](qint64 id) { return nameOf(id) == processName; });
}

bool cMySystemLook::hasSerialDriver() const
{
    return QFileInfo::exists(path(QStringLiteral("/sys/bus/usb/drivers/cdc_acm")));
}

bool cMySystemLook::isHiddenFromModems(const QString& portName) const
{
    if (isMarked(path(QStringLiteral("/sys/class/tty/%1/dev").arg(portName)))) {
        return true;
    }
    const QVector<cMyUsbDevice> devices = usbDevices();
    return std::any_of(devices.cbegin(), devices.cend(), [&](const cMyUsbDevice& usb) {
        return usb.portName == portName &&
               isMarked(path(QStringLiteral("/sys/bus/usb/devices/%1/dev").arg(usb.name)));
    });
}

QString cMySystemLook::usbListing(quint16 vendor) const
{
    constexpr int digits = 4;
    constexpr int base = 16;
    return QStringLiteral("lsusb -d %1:").arg(vendor, digits, base, QLatin1Char('0'));
}

QString cMySystemLook::holderListing(const QString& portPath) const
{
    return QStringLiteral("sudo fuser -v %1").arg(cli::shellWord(portPath));
}

QString cMySystemLook::nameOf(qint64 process) const
{
    return readLine(path(QStringLiteral("/proc/%1/comm").arg(process)));
}

QVector<qint64> cMySystemLook::processes() const
{
    QVector<qint64> ids;
    const QStringList names = QDir(path(QStringLiteral("/proc"))).entryList(QDir::Dirs);
    for (const QString& name : names) {
        bool isNumber = false;
        const qint64 id = name.toLongLong(&isNumber);
        if (isNumber) {
            ids.append(id);
        }
    }
    return ids;
}

/// Those that are there, each by one path only where a directory is a link to another.
QStringList cMySystemLook::lockFiles(const QString& portPath) const
{
    const QString devices = QStringLiteral("/dev/");
    QString name = portPath.startsWith(devices) ? portPath.mid(devices.size()) : portPath;
    name.replace(QLatin1Char('/'), QLatin1Char('_'));
    const std::array<QString, 3> directories = {QStringLiteral("/run/lock"),
                                                QStringLiteral("/var/lock"),
                                                QStringLiteral("/run/lock/lockdev")};
    QStringList files;
    QVector<FileId> seen;
    for (const QString& directory : directories) {
        const QString file = QStringLiteral("%1/LCK..%2").arg(directory, name);
        const std::optional<FileId> id = idOf(path(file));
        if (id && !seen.contains(*id)) {
            seen.append(*id);
            files.append(file);
        }
    }
    return files;
}

QStringList cMySystemLook::staleLocks(const QString& portPath) const
{
    QStringList stale;
    const QStringList files = lockFiles(portPath);
    for (const QString& file : files) {
        const qint64 id = processIn(path(file));
        if (id > 0 && isGone(id)) {
            stale.append(file);
        }
    }
    return stale;
}

/// Some systems hide the processes of other users in their files, but not from signals.
bool cMySystemLook::isGone(qint64 process) const
{
    if (QFileInfo::exists(path(QStringLiteral("/proc/%1").arg(process)))) {
        return false;
    }
    constexpr qint64 greatest = std::numeric_limits<pid_t>::max();
    return process > greatest || (::kill(static_cast<pid_t>(process), 0) != 0 && errno == ESRCH);
}

QVector<qint64> cMySystemLook::lockHolders(const QString& portPath) const
{
    QVector<qint64> ids;
    const QStringList files = lockFiles(portPath);
    for (const QString& file : files) {
        const qint64 id = processIn(path(file));
        if (id > 0 && !nameOf(id).isEmpty()) {
            ids.append(id);
        }
    }
    return ids;
}

QVector<qint64> cMySystemLook::openers(const QString& portPath) const
{
    QVector<qint64> ids;
    const std::optional<FileId> node = idOf(path(portPath));
    if (!node) {
        return ids;
    }
    const QVector<qint64> all = processes();
    for (const qint64 id : all) {
        const QDir process(path(QStringLiteral("/proc/%1").arg(id)));
        const QString file = openFile(process, *node);
        const QString terminal = QFileInfo(QFile::symLinkTarget(file)).fileName();
        if (!file.isEmpty() && !hasFarEnd(process, terminal)) {
            ids.append(id);
        }
    }
    return ids;
}

/// The file holds a device's number, by which the properties are kept that rules gave it.
bool cMySystemLook::isMarked(const QString& deviceFile) const
{
    const QString number = readLine(deviceFile);
    QFile properties(path(QStringLiteral("/run/udev/data/c") + number));
    return !number.isEmpty() && properties.open(QIODevice::ReadOnly) &&
           properties.readAll().split('\n').contains("E:ID_MM_DEVICE_IGNORE=1");
}
