// SPDX-FileCopyrightText: 2026 The MIOLKAsoft authors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "emulator/pseudoterminal.h"

#include <QFile>

#include <array>

#include <fcntl.h>
#include <stdlib.h> // NOLINT(modernize-deprecated-headers): the pseudo-terminals of POSIX
#include <termios.h>
#include <unistd.h>

namespace {

/// A cooked terminal would send what nobody reads back to us as if the program had sent it, for
/// ever.
bool makeRaw(int terminal)
{
    termios settings{};
    if (tcgetattr(terminal, &settings) != 0) {
        return false;
    }
    cfmakeraw(&settings);
    return tcsetattr(terminal, TCSANOW, &settings) == 0;
}

void closeEnd(int& end)
{
    if (end >= 0) {
        ::close(end);
    }
    end = -1;
}

} // namespace

cMyPseudoTerminal::~cMyPseudoTerminal()
{
    close();
}

bool cMyPseudoTerminal::open()
{
    close();
    constexpr std::size_t longestName = 128;
    std::array<char, longestName> name{};
    m_master = posix_openpt(O_RDWR | O_NOCTTY | O_NONBLOCK | O_CLOEXEC);
    if (m_master < 0 || grantpt(m_master) != 0 || unlockpt(m_master) != 0 ||
        ptsname_r(m_master, name.data(), name.size()) != 0) {
        close();
        return false;
    }
    m_slave = ::open(name.data(), O_RDWR | O_NOCTTY | O_CLOEXEC);
    if (m_slave < 0 || !makeRaw(m_slave)) {
        close();
        return false;
    }
    m_path = QFile::decodeName(name.data());
    return true;
}

void cMyPseudoTerminal::close()
{
    closeEnd(m_slave);
    closeEnd(m_master);
    m_path.clear();
}
