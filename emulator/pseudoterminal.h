// SPDX-FileCopyrightText: 2026 The MIOLKAsoft authors
// SPDX-License-Identifier: GPL-3.0-or-later

#ifndef MIOLKA_EMULATOR_PSEUDOTERMINAL_H
#define MIOLKA_EMULATOR_PSEUDOTERMINAL_H

#include <QString>

/// A pseudo-terminal that passes bytes as they are; owns both ends. Programs that are started do
/// not inherit them, as they would keep it from hanging up.
class cMyPseudoTerminal
{
public:
    cMyPseudoTerminal() = default;
    ~cMyPseudoTerminal();
    Q_DISABLE_COPY_MOVE(cMyPseudoTerminal)

    /// A new one, the old one being closed; false if the system has none to give.
    bool open();

    /// Whoever has the program's end open sees a hang-up.
    void close();

    /// Whether there is a terminal at all; a program may have closed its end.
    [[nodiscard]] bool isOpen() const { return m_master >= 0; }

    /// Our end, which does not block; -1 while closed.
    [[nodiscard]] int descriptor() const { return m_master; }

    /// The program's end; empty while closed.
    [[nodiscard]] QString path() const { return m_path; }

private:
    int m_master = -1;
    int m_slave = -1; ///< kept, or reading would fail whenever no program has it open
    QString m_path;
};

#endif
