// SPDX-FileCopyrightText: 2026 The MIOLKAsoft authors
// SPDX-License-Identifier: GPL-3.0-or-later

#ifndef MIOLKA_CLI_SYSTEM_EMULATEDDEVICE_H
#define MIOLKA_CLI_SYSTEM_EMULATEDDEVICE_H

#include <QString>
#include <QThread>

#include <future>

/// A virtual device inside this program, as it is delivered, on a pseudo-terminal of its own. It
/// lives in a thread of its own, from start() to the end of this object.
class cMyEmulatedDevice : private QThread
{
public:
    cMyEmulatedDevice() = default;
    ~cMyEmulatedDevice() override;
    Q_DISABLE_COPY_MOVE(cMyEmulatedDevice)

    /// To be called once. What is to be opened; empty if the system has no pseudo-terminal to give.
    [[nodiscard]] QString start();

private:
    void run() override;

    std::promise<QString> m_path;
};

#endif
