// SPDX-FileCopyrightText: 2026 The MIOLKAsoft authors
// SPDX-License-Identifier: GPL-3.0-or-later

#ifndef MIOLKA_CLI_SYSTEM_SYSTEMLOOK_H
#define MIOLKA_CLI_SYSTEM_SYSTEMLOOK_H

#include <QStringList>
#include <QVector>

#include <optional>

/// One of our devices as USB shows it, with a serial port or without.
struct cMyUsbDevice
{
    QString name; ///< its place on the bus, such as "1-4"
    quint16 product = 0;
    QString serialNumber; ///< empty if it tells none
    QString portName;     ///< of its serial port, such as "ttyACM0"; empty if it has none
};

/// Who may open a port.
struct cMyNode
{
    QString owner;
    QString group;
    QString mode; ///< as in "rw-rw----"
};

/// A program that has a port open.
struct cMyProcess
{
    qint64 id = 0;
    QString name;
    QString owner; ///< the user who runs it
};

/// What the system tells in its files (/sys, /proc, /dev, /run) of devices, ports and who uses
/// them. Each call looks anew. Where a system has no such files (all but Linux), nothing is found,
/// and isBlind() tells.
class cMySystemLook
{
public:
    /// The directory that the files are below; another one than the root is for tests.
    explicit cMySystemLook(QString root = QStringLiteral("/"));

    /// Whether there is nothing to look at, so that nothing found means nothing.
    [[nodiscard]] bool isBlind() const;

    /// Devices and boot loaders of ours, in the order of their names.
    [[nodiscard]] QVector<cMyUsbDevice> usbDevices() const;

    /// Of the port at that path, such as "/dev/ttyACM0"; nothing if there is none.
    [[nodiscard]] std::optional<cMyNode> node(const QString& portPath) const;

    /// The path that a link leads to, through all links; the path itself if it is none.
    [[nodiscard]] QString target(const QString& portPath) const;

    /// Whether both paths lead to the same port that is there.
    [[nodiscard]] bool isSamePort(const QString& one, const QString& other) const;

    /// Other processes that have the port, by their lock files or by having it open. Who another
    /// user runs may be seen by the lock file only. Who serves a pseudo-terminal is no holder of
    /// it.
    [[nodiscard]] QVector<cMyProcess> holders(const QString& portPath) const;

    /// Lock files of the port that processes left behind which are gone.
    [[nodiscard]] QStringList staleLocks(const QString& portPath) const;

    /// Whether a process of that name runs.
    [[nodiscard]] bool isRunning(const QString& processName) const;

    /// Whether the driver is there that makes serial ports of USB devices such as ours.
    [[nodiscard]] bool hasSerialDriver() const;

    /// Whether programs that look for modems were told to leave the port, or its USB device, alone.
    [[nodiscard]] bool isHiddenFromModems(const QString& portName) const;

    /// What a user types to see the USB devices of that vendor; empty if not known.
    [[nodiscard]] QString usbListing(quint16 vendor) const;

    /// What a user types to see who has the port; empty if not known.
    [[nodiscard]] QString holderListing(const QString& portPath) const;

private:
    [[nodiscard]] QString path(const QString& absolute) const;
    [[nodiscard]] QString nameOf(qint64 process) const;
    [[nodiscard]] QVector<qint64> processes() const;
    [[nodiscard]] QStringList lockFiles(const QString& portPath) const;
    [[nodiscard]] QVector<qint64> lockHolders(const QString& portPath) const;
    [[nodiscard]] bool isGone(qint64 process) const;
    [[nodiscard]] QVector<qint64> openers(const QString& portPath) const;
    [[nodiscard]] bool isMarked(const QString& deviceFile) const;

    QString m_root;
};

#endif
