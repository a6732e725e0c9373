// SPDX-FileCopyrightText: 2026 The MIOLKAsoft authors
// SPDX-License-Identifier: GPL-3.0-or-later

#ifndef MIOLKA_TESTS_SUPPORT_SERVEDDEVICE_H
#define MIOLKA_TESTS_SUPPORT_SERVEDDEVICE_H

#include "emulator/virtualdevice.h"
#include "emulator/virtualport.h"

#include <QThread>

#include <condition_variable>
#include <functional>
#include <memory>
#include <mutex>

namespace support {

/// Runs what another thread asks it to run, in its own. The two meet at a mutex of the standard
/// library and not inside Qt, so that the thread sanitizer sees that they do.
class Errands : public QObject
{
    Q_OBJECT

public:
    /// Returns when it was run.
    void run(std::function<void()> errand)
    {
        std::unique_lock<std::mutex> lock(m_mutex);
        m_errand = std::move(errand);
        QMetaObject::invokeMethod(this, "runIt", Qt::QueuedConnection);
        m_done.wait(lock, [this] { return m_errand == nullptr; });
    }

private slots:
    void runIt()
    {
        const std::lock_guard<std::mutex> lock(m_mutex);
        m_errand();
        m_errand = nullptr;
        m_done.notify_one();
    }

private:
    std::mutex m_mutex;
    std::condition_variable m_done;
    std::function<void()> m_errand;
};

/// A virtual device in a thread of its own, which answers at once also while the test's thread
/// waits for something.
class ServedDevice
{
public:
    ServedDevice()
        : m_device(std::make_unique<cMyVirtualDevice>()),
          m_port(std::make_unique<cMyVirtualPort>(m_device.get()))
    {
        m_device->moveToThread(&m_thread);
        m_port->moveToThread(&m_thread);
        m_errands.moveToThread(&m_thread);
        m_thread.start();
        inThread([this] { m_port->plug(); });
    }
    ~ServedDevice()
    {
        inThread([this] {
            m_port.reset();
            m_device.reset();
        });
        m_thread.quit();
        m_thread.wait();
    }
    Q_DISABLE_COPY_MOVE(ServedDevice)

    /// Where a program finds the device now.
    [[nodiscard]] QString path()
    {
        QString path;
        inThread([this, &path] { path = m_port->path(); });
        return path;
    }

    /// Runs in the device's thread, and returns when it has.
    void inThread(std::function<void()> call) { m_errands.run(std::move(call)); }

    [[nodiscard]] bool isSimulating()
    {
        bool isSimulating = false;
        inThread([this, &isSimulating] { isSimulating = m_device->isSimulating(); });
        return isSimulating;
    }

    /// These two are to be used in the device's thread.
    cMyVirtualDevice& device() { return *m_device; }
    cMyVirtualPort& port() { return *m_port; }

private:
    QThread m_thread;
    Errands m_errands;
    std::unique_ptr<cMyVirtualDevice> m_device;
    std::unique_ptr<cMyVirtualPort> m_port;
};

} // namespace support

#endif
