// SPDX-FileCopyrightText: 2026 The MIOLKAsoft authors
// SPDX-License-Identifier: GPL-3.0-or-later

#ifndef MIOLKA_TESTS_SIM_PANELTEST_H
#define MIOLKA_TESTS_SIM_PANELTEST_H

#include "sim/simwidget.h"
#include "tests/sim/simulation.h"
#include "tests/support/guitest.h"

#include <QFrame>
#include <QLabel>
#include <QPushButton>
#include <QSlider>

namespace support {

inline constexpr const char* speedButtons[] = {"pbSub1",   "pbSub01", "pbSub001", "pbSet0",
                                               "pbAdd001", "pbAdd01", "pbAdd1"};

/// The page of the simulation, whose port is a peer.
class PanelTest : public QObject
{
    Q_OBJECT

private slots:
    void init()
    {
        m_peer = std::make_unique<Peer>();
        m_peer->setAnswer(simulation::answering(1013));
        m_panel = std::make_unique<cMySimWidget>();
        m_panel->setPortName(m_peer->path());
        m_panel->show();
    }
    void cleanup()
    {
        m_panel.reset();
        m_peer.reset();
    }

protected:
    template <typename Child>
    [[nodiscard]] Child* child(const char* name) const
    {
        auto* found = m_panel->findChild<Child*>(QString::fromLatin1(name));
        if (found == nullptr) {
            qFatal("the panel has no %s", name);
        }
        return found;
    }
    [[nodiscard]] QPushButton* button(const char* name) const { return child<QPushButton>(name); }
    [[nodiscard]] QString text(const char* label) const { return child<QLabel>(label)->text(); }
    /// The panel anew, as it is without the English catalogue.
    void showInPolish()
    {
        const WithoutCatalogue without;
        m_panel = std::make_unique<cMySimWidget>();
        m_panel->show();
    }
    [[nodiscard]] QSlider* slider() const { return child<QSlider>("simSlider"); }

    [[nodiscard]] bool isIdle() const { return hasState(false); }
    [[nodiscard]] bool isRunning() const { return hasState(true); }
    [[nodiscard]] bool hasState(bool isRunning) const
    {
        bool is = slider()->isEnabled() == isRunning &&
                  button("pbStartSim")->isEnabled() == !isRunning &&
                  button("pbStopSim")->isEnabled() == isRunning;
        for (const char* name : speedButtons) {
            is = is && button(name)->isEnabled() == isRunning;
        }
        return is && (isRunning || slider()->value() == 0);
    }

    std::unique_ptr<Peer> m_peer;
    std::unique_ptr<cMySimWidget> m_panel;
};

} // namespace support

#endif
