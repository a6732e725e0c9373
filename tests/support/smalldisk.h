// SPDX-FileCopyrightText: 2026 The MIOLKAsoft authors
// SPDX-License-Identifier: GPL-3.0-or-later

#ifndef MIOLKA_TESTS_SUPPORT_SMALLDISK_H
#define MIOLKA_TESTS_SUPPORT_SMALLDISK_H

#include "tests/support/posix.h"

#include <sched.h>
#include <sys/mount.h>

namespace support {

/// A small file system of its own; unmounted at the end.
class SmallDisk
{
public:
    SmallDisk(QString path, const char* options) : m_path(std::move(path))
    {
        QDir().mkpath(m_path);
        m_mounted = mount("tmpfs", name().constData(), "tmpfs", 0, options) == 0;
    }
    ~SmallDisk() { takeOut(); }
    Q_DISABLE_COPY_MOVE(SmallDisk)

    [[nodiscard]] bool isMounted() const { return m_mounted; }

    /// Nothing can be written from now on. False if the system does not allow that.
    bool protect()
    {
        return mount("tmpfs", name().constData(), "tmpfs", MS_REMOUNT | MS_RDONLY, nullptr) == 0;
    }

    /// Unmounts it early; the empty directory stays.
    void takeOut()
    {
        if (m_mounted) {
            umount2(name().constData(), MNT_DETACH);
            m_mounted = false;
        }
    }

private:
    [[nodiscard]] QByteArray name() const { return m_path.toUtf8(); }

    QString m_path;
    bool m_mounted;
};

/// Who is not root may still mount in a namespace of their own, where the system allows that. Only
/// a process without threads may enter one, so this comes before the test's watchdog.
inline void enterNamespaceUnlessRoot()
{
    const QByteArray user = QByteArray::number(geteuid());
    const QByteArray group = QByteArray::number(getegid());
    if (user == "0") {
        return;
    }
    if (unshare(CLONE_NEWUSER | CLONE_NEWNS) != 0) {
        qInfo("no namespace to mount in");
        return;
    }
    writeFile(QStringLiteral("/proc/self/setgroups"), "deny");
    // Not as its root, who could not become somebody else there.
    writeFile(QStringLiteral("/proc/self/uid_map"), user + ' ' + user + " 1");
    writeFile(QStringLiteral("/proc/self/gid_map"), group + ' ' + group + " 1");
}

} // namespace support

#endif
