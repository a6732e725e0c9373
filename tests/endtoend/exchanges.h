// SPDX-FileCopyrightText: 2026 The MIOLKAsoft authors
// SPDX-License-Identifier: GPL-3.0-or-later

#ifndef MIOLKA_ENDTOEND_EXCHANGES_H
#define MIOLKA_ENDTOEND_EXCHANGES_H

#include "tests/endtoend/session.h"

#include <QMetaType>
#include <QStringList>

#include <memory>
#include <optional>

/// The exchanges with a device as they show on the wire and in the window. Functions that return a
/// text tell by it why something did not come off; it is empty if it did.
namespace support {

/// What can be asked of a device. Command stands for all of the service commands, Upload for that
/// of a short library.
enum class Operation { Status, Read, Write, Command, Upload };

/// The lines that a complete exchange sends.
[[nodiscard]] int linesOf(Operation operation);

/// Whether a progress is shown that can be cancelled.
[[nodiscard]] bool isTransfer(Operation operation);

/// Rows for every operation need its name.
[[nodiscard]] const char* nameOf(Operation operation);

constexpr Operation everyOperation[] = {Operation::Status, Operation::Read, Operation::Write,
                                        Operation::Command, Operation::Upload};

/// The lines that go to a device from the time on when this is made.
class SentLines
{
public:
    /// The device's number is needed where the trace tells several ports apart.
    explicit SentLines(Session& session, std::optional<int> device = {});

    [[nodiscard]] QStringList lines() const;
    [[nodiscard]] int count() const { return static_cast<int>(lines().size()); }

    /// Waits until at least so many lines were sent.
    [[nodiscard]] bool reach(int count) const;

    /// Waits until so many lines were sent and the last of them was answered.
    [[nodiscard]] QString complete(int count) const;

    /// Waits until a status query is the last that was sent, and was answered as a whole. One
    /// that was cut off may stand before it.
    [[nodiscard]] QString completeStatus() const;

private:
    [[nodiscard]] QString unlike(int wanted) const;

    Session& m_session;
    std::optional<int> m_device;
    int m_before;
};

/// A program with virtual devices that hold docs/example.mio, none of them plugged in; nothing,
/// with a message, if it does not start. It appears on the screen that the environment names, if
/// there is one.
[[nodiscard]] std::unique_ptr<Session>
startSession(const QStringList& emulatorOptions = {},
             const std::optional<QProcessEnvironment>& screen = {});

/// Plugs the first device in, opens the start page and waits until nothing more is on its way.
[[nodiscard]] QString plugInAndSettle(Session& session);

/// Begins an exchange as a person does. A status query needs the start page in front.
[[nodiscard]] QString begin(Session& session, Operation operation);

/// How many of the dialogs are error boxes.
[[nodiscard]] int errorBoxes(const QJsonArray& dialogs);

/// Waits for an error box and closes it.
[[nodiscard]] QString closeErrorBox(Session& session);

/// Waits until the window tells of no device: actions, selector and start page.
[[nodiscard]] QString waitForNoDevice(Session& session);

/// The bytes that the program would save now.
[[nodiscard]] QByteArray saved(Session& session);

/// A status query, a write and a read back, each of which must be complete and without an error.
[[nodiscard]] QString exchangeEverything(Session& session);

/// A service command or an upload from its beginning to its end, of which every line must be sent
/// once, and be answered.
[[nodiscard]] QString exchangeOnce(Session& session, Operation operation);

} // namespace support

Q_DECLARE_METATYPE(support::Operation)

#endif
