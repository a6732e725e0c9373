// SPDX-FileCopyrightText: 2026 The MIOLKAsoft authors
// SPDX-License-Identifier: GPL-3.0-or-later

#ifndef MIOLKA_TESTS_SUPPORT_MOCKEDPORTS_H
#define MIOLKA_TESTS_SUPPORT_MOCKEDPORTS_H

#include "device/protocol.h"
#include "emulator/mockedusb.h"
#include "tests/support/guitest.h"
#include "tests/support/peer.h"

#include <QFile>

#include <map>
#include <memory>

namespace support {

/// USB serial ports that come and go as a test says, each with a Peer behind it. Only programs that
/// began with becomeMocked() see them.
class MockedPorts
{
public:
    MockedPorts()
    {
        if (!m_usb.isAvailable()) {
            qFatal("umockdev is missing");
        }
        // The testbed is for other processes; this one looks into it, too.
        qputenv("UMOCKDEV_DIR", m_usb.rootDirectory().toLocal8Bit());
    }

    Peer& plug(const QString& name, quint16 product = device::productId,
               quint16 vendor = device::vendorId)
    {
        auto& peer = m_peers[name];
        peer = std::make_unique<Peer>();
        if (!m_usb.add({name, vendor, product, peer->path()})) {
            qFatal("no port could be made");
        }
        return *peer;
    }

    void unplug(const QString& name)
    {
        m_usb.remove(name);
        QFile::remove(node(name)); // of a port that was forgotten
        m_peers.erase(name);
    }

    /// Takes a port from the system's list only. Who knows its name can still open it, as with a
    /// system that forgets a port before it has taken it down.
    void forget(const QString& name)
    {
        m_usb.remove(name);
        if (!QFile::link(m_peers.at(name)->path(), node(name))) {
            qFatal("the port cannot stay");
        }
    }

    void unplugAll()
    {
        while (!m_peers.empty()) {
            unplug(m_peers.begin()->first);
        }
    }

    Peer& peer(const QString& name) { return *m_peers.at(name); }

    /// Starts this process anew so that its calls to the system see the mocked ports. To be called
    /// first in main().
    static void becomeMocked(char* argv[]);

private:
    [[nodiscard]] QString node(const QString& name) const
    {
        return m_usb.rootDirectory() + QStringLiteral("/dev/") + name;
    }

    cMyMockedUsb m_usb;
    std::map<QString, std::unique_ptr<Peer>> m_peers;
};

} // namespace support

/// The main function of a test that shows windows and has mocked ports.
#define MIOLKA_MOCKED_TEST_MAIN(TestClass)                                                         \
    int main(int argc, char* argv[])                                                               \
    {                                                                                              \
        support::MockedPorts::becomeMocked(argv);                                                  \
        return support::runGuiTest<TestClass>(argc, argv);                                         \
    }

#endif
