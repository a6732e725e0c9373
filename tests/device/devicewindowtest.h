// SPDX-FileCopyrightText: 2026 The MIOLKAsoft authors
// SPDX-License-Identifier: GPL-3.0-or-later

#ifndef MIOLKA_TESTS_DEVICE_DEVICEWINDOWTEST_H
#define MIOLKA_TESTS_DEVICE_DEVICEWINDOWTEST_H

#include "device/miolka.h"
#include "tests/support/mockedports.h"
#include "tests/support/windowtest.h"

#include <QLabel>
#include <QMessageBox>
#include <QProgressDialog>

namespace support {

/// The real window, and USB ports that come and go.
class DeviceWindowTest : public QObject
{
    Q_OBJECT

private slots:
    void init()
    {
        m_ports = std::make_unique<MockedPorts>();
        m_window = std::make_unique<MainWindow>();
        m_window->show();
    }

    void cleanup()
    {
        m_window.reset();
        m_ports.reset();
    }

protected:
    [[nodiscard]] QLabel* label(const char* name) const { return child<QLabel>(*m_window, name); }

    [[nodiscard]] QString text(const char* name) const { return label(name)->text(); }

    Peer& plugIn()
    {
        Peer& peer = m_ports->plug(QStringLiteral("ttyACM0"));
        const QSignalSpy shown(m_window->findChild<cMyMiolka*>(), &cMyMiolka::statusChanged);
        if (!waitFor([&shown] { return shown.count() == 1; })) {
            qFatal("no status was shown");
        }
        peer.forgetLines();
        return peer;
    }

    void trigger(const char* action) const { child<QAction>(*m_window, action)->trigger(); }

    [[nodiscard]] static QProgressDialog* progress() { return shownWindow<QProgressDialog>(); }

    [[nodiscard]] static QMessageBox* box()
    {
        return qobject_cast<QMessageBox*>(QApplication::activeModalWidget());
    }

    std::unique_ptr<MockedPorts> m_ports;
    std::unique_ptr<MainWindow> m_window;
};

} // namespace support

#endif
