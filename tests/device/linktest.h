// SPDX-FileCopyrightText: 2026 The MIOLKAsoft authors
// SPDX-License-Identifier: GPL-3.0-or-later

#ifndef MIOLKA_TESTS_DEVICE_LINKTEST_H
#define MIOLKA_TESTS_DEVICE_LINKTEST_H

#include "device/miolka.h"
#include "image/memoryarea.h"
#include "tests/support/guitest.h"
#include "tests/support/peer.h"
#include "tests/support/posix.h"
#include "tests/support/template.h"

#include <QMessageBox>
#include <QWidget>

namespace support {

/// A link whose port is a Peer, with everything that it tells.
class LinkTest : public QObject
{
    Q_OBJECT

private slots:
    void init() { plugIn(); }
    void cleanup()
    {
        m_owner.reset();
        QVERIFY(errorBox() == nullptr);
    }

protected:
    void plugIn()
    {
        m_peer = std::make_unique<Peer>();
        m_owner = std::make_unique<QWidget>();
        m_link = new cMyMiolka(&m_image, m_owner.get());
        m_link->setPort(m_peer->path());
        const QSignalSpy shown(m_link, &cMyMiolka::statusChanged);
        QVERIFY(support::waitFor([&shown] { return shown.count() == 1; }));
        m_peer->forgetLines();
        m_progress = std::make_unique<QSignalSpy>(m_link, &cMyMiolka::writeProgress);
        m_records = std::make_unique<QSignalSpy>(m_link, &cMyMiolka::newDataRead);
        m_statuses = std::make_unique<QSignalSpy>(m_link, &cMyMiolka::statusChanged);
        m_losses = std::make_unique<QSignalSpy>(m_link, &cMyMiolka::transferLost);
        m_holds = std::make_unique<QSignalSpy>(m_link, &cMyMiolka::portHeld);
    }

    void write(QStringList records, MemoryType area = EEPROM)
    {
        m_link->writeSettings(area, records);
    }

    void read(QStringList records, MemoryType area = EEPROM)
    {
        m_link->readSettings(area, records);
    }

    /// The 65 records of the default settings.
    static QStringList settingsRecords()
    {
        return QString::fromLatin1(settingsText(templateImage())).split(QLatin1Char('\n'));
    }

    /// A complete exchange after whatever was before: all of its answers, none of another.
    void exchangeCleanly()
    {
        m_peer->setAnswer([](const QByteArray& line) { return line + "\r\n"; });
        m_peer->forgetLines();
        m_records->clear();
        read(settingsRecords());
        QVERIFY(support::waitFor([this] { return m_records->count() == 64; }));
        QCOMPARE(m_peer->lines().mid(4), settingsRecords());
        for (int i = 0; i < m_records->count(); ++i) {
            QCOMPARE(m_records->at(i).at(1).toUInt(), static_cast<unsigned>(i * 16));
        }
    }

    /// The error box that stands, if any.
    static QMessageBox* errorBox() { return shownWindow<QMessageBox>(); }

    /// Whether nobody but the peer has the port open.
    [[nodiscard]] bool isPortFree() const { return openDescriptors(m_peer->terminal()) == 1; }

    cMyMemoryArea m_image;
    std::unique_ptr<Peer> m_peer;
    std::unique_ptr<QWidget> m_owner;
    cMyMiolka* m_link = nullptr;
    std::unique_ptr<QSignalSpy> m_progress;
    std::unique_ptr<QSignalSpy> m_records;
    std::unique_ptr<QSignalSpy> m_statuses;
    std::unique_ptr<QSignalSpy> m_losses;
    std::unique_ptr<QSignalSpy> m_holds;
};

} // namespace support

#endif
