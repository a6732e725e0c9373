// SPDX-FileCopyrightText: 2026 The MIOLKAsoft authors
// SPDX-License-Identifier: GPL-3.0-or-later

#ifndef MIOLKA_TESTS_SUPPORT_POSIX_H
#define MIOLKA_TESTS_SUPPORT_POSIX_H

#include <QDir>
#include <QFile>
#include <QString>

#include <array>
#include <csignal>

#include <fcntl.h>
#include <linux/capability.h>
#include <sys/resource.h>
#include <sys/stat.h>
#include <sys/syscall.h>
#include <unistd.h>

/// What the tests of files ask of the system underneath.
namespace support {

/// Root may read and write everything, and so may any user in a namespace of their own; while this
/// lives, the test is nobody in particular.
class WithoutPrivileges
{
public:
    WithoutPrivileges() : m_user(geteuid())
    {
        // The real user too: it is the one whose permissions access() tells.
        constexpr uid_t nobody = 65534;
        if (m_user == 0 && setresuid(nobody, nobody, m_user) != 0) {
            qFatal("cannot give up root for a while");
        }
        if (m_user != 0) {
            renounce();
        }
    }
    ~WithoutPrivileges()
    {
        const bool isBack = m_user == 0
                                ? setresuid(m_user, m_user, m_user) == 0
                                : syscall(SYS_capset, &m_header, m_capabilities.data()) == 0;
        if (!isBack) {
            qFatal("cannot take privileges back");
        }
    }
    Q_DISABLE_COPY_MOVE(WithoutPrivileges)

private:
    void renounce()
    {
        bool isDone = syscall(SYS_capget, &m_header, m_capabilities.data()) == 0;
        auto none = m_capabilities;
        for (__user_cap_data_struct& part : none) {
            part.effective = 0;
        }
        isDone = isDone && syscall(SYS_capset, &m_header, none.data()) == 0;
        if (!isDone) {
            qFatal("cannot give up privileges for a while");
        }
    }

    uid_t m_user;
    __user_cap_header_struct m_header{_LINUX_CAPABILITY_VERSION_3, 0};
    std::array<__user_cap_data_struct, _LINUX_CAPABILITY_U32S_3> m_capabilities{};
};

/// Lets a file grow to this many bytes and no further, as a disk does that fills up.
class FileSizeLimit
{
public:
    explicit FileSizeLimit(rlim_t bytes)
    {
        getrlimit(RLIMIT_FSIZE, &m_before);
        const rlimit limit{bytes, m_before.rlim_max};
        m_handler = std::signal(SIGXFSZ, SIG_IGN);
        setrlimit(RLIMIT_FSIZE, &limit);
    }
    ~FileSizeLimit()
    {
        setrlimit(RLIMIT_FSIZE, &m_before);
        std::signal(SIGXFSZ, m_handler);
    }
    Q_DISABLE_COPY_MOVE(FileSizeLimit)

private:
    rlimit m_before{};
    void (*m_handler)(int);
};

/// A temporary directory is its owner's alone; after this, others reach the files in it. False
/// where a directory above keeps them out.
[[nodiscard]] inline bool letOthersIn(const QString& directory)
{
    constexpr mode_t everybodyReads = 0755;
    if (chmod(QFile::encodeName(directory).constData(), everybodyReads) != 0) {
        return false;
    }
    QFileInfo above(QFileInfo(directory).canonicalPath());
    while (!above.isRoot() && above.permission(QFileDevice::ExeOther)) {
        above.setFile(above.canonicalPath());
    }
    return above.isRoot();
}

/// How many of this process's files are the one with this path.
inline int openDescriptors(const QString& path)
{
    int count = 0;
    const QDir descriptors(QStringLiteral("/proc/self/fd"));
    for (const QFileInfo& each : descriptors.entryInfoList(QDir::Files | QDir::System)) {
        count += each.symLinkTarget() == path ? 1 : 0;
    }
    return count;
}

/// The most memory that this process has ever held, in KiB.
inline long peakMemory()
{
    rusage usage{};
    getrusage(RUSAGE_SELF, &usage);
    return usage.ru_maxrss;
}

inline void writeFile(const QString& path, const QByteArray& contents)
{
    QFile file(path);
    if (!file.open(QIODevice::WriteOnly) || file.write(contents) != contents.size()) {
        qFatal("cannot write %s", qPrintable(path));
    }
}

/// For a name that is not valid UTF-8.
inline void writeRawFile(const QByteArray& path, const QByteArray& contents)
{
    const int file = open(path.constData(), O_WRONLY | O_CREAT | O_TRUNC, 0666);
    const auto size = static_cast<size_t>(contents.size());
    if (file < 0 || write(file, contents.constData(), size) != contents.size()) {
        qFatal("cannot write %s", path.constData());
    }
    close(file);
}

inline QByteArray readFile(const QString& path)
{
    QFile file(path);
    if (!file.open(QIODevice::ReadOnly)) {
        qFatal("cannot read %s", qPrintable(path));
    }
    return file.readAll();
}

} // namespace support

#endif
