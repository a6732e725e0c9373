// SPDX-FileCopyrightText: 2026 The MIOLKAsoft authors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "device/portselect.h"

#include "device/protocol.h"

#include <QSignalBlocker>
#include <QTimer>

#include <algorithm>
#include <chrono>

namespace {

constexpr std::chrono::milliseconds refreshInterval(100);

bool isProduct(const QSerialPortInfo& port, quint16 product)
{
    return port.vendorIdentifier() == device::vendorId && port.productIdentifier() == product;
}

} // namespace

cMyPortSelect::cMyPortSelect(QWidget* parent) : QComboBox(parent)
{
    setObjectName(QStringLiteral("portSelect"));
    setAccessibleName(tr("Port Miolki"));
    // Where a list's name is its choice, readers speak the description after it.
    setAccessibleDescription(accessibleName());
    auto* timer = new QTimer(this);
    timer->start(refreshInterval);
    connect(timer, &QTimer::timeout, this, &cMyPortSelect::updatePorts);
    setSizeAdjustPolicy(QComboBox::AdjustToContents);
    setEnabled(false);
    addItem(tr("Brak urządzeń"));
}

void cMyPortSelect::hold(const QString& portName)
{
    m_heldPort = portName;
}

void cMyPortSelect::updatePorts()
{
    if (m_ttys.isWorthLooking()) {
        m_ports = QSerialPortInfo::availablePorts();
    }
    if (std::any_of(m_ports.cbegin(), m_ports.cend(), [](const QSerialPortInfo& port) {
            return isProduct(port, device::bootLoaderProductId);
        })) {
        emit bootMode();
    }
    QStringList names;
    for (const QSerialPortInfo& port : qAsConst(m_ports)) {
        if (isProduct(port, device::productId)) {
            names.append(port.portName());
        }
    }
    const bool isHeld = !m_heldPort.isEmpty() && names.contains(m_heldPort);
    m_wasHeld = m_wasHeld || isHeld;
    // Meanwhile one may have come and another gone.
    const bool hasChanged = names.size() != m_portCount || (m_wasHeld && names != m_names);
    if (hasChanged && !isHeld) {
        rebuild(names);
    }
    m_wasHeld = isHeld;
}

void cMyPortSelect::rebuild(const QStringList& names)
{
    // The user may have chosen another port since the last time.
    const QString chosen = m_portCount > 0 ? currentText() : m_currentPort;
    m_portCount = static_cast<qint32>(names.size());
    m_names = names;
    emit portsListed(names);
    clear();
    if (names.isEmpty()) {
        // Clearing has told of the empty text already.
        const QSignalBlocker once(this);
        addItem(QString());
    }
    for (const QString& name : names) {
        addItem(name);
        if (name == chosen) {
            setCurrentIndex(count() - 1);
        }
    }
    setEnabled(!names.isEmpty());
    m_currentPort = currentText();
}
