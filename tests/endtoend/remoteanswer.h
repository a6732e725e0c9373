// SPDX-FileCopyrightText: 2026 The MIOLKAsoft authors
// SPDX-License-Identifier: GPL-3.0-or-later

#ifndef MIOLKA_ENDTOEND_REMOTEANSWER_H
#define MIOLKA_ENDTOEND_REMOTEANSWER_H

#include <QJsonObject>
#include <QString>

#include <functional>

/// The remote control of a running program: what its requests are answered with.
namespace remote {

struct Answer
{
    QJsonValue value;
    QString error;                    ///< why the request was refused; empty if it was not
    std::function<void()> afterwards; ///< done once the answer is on its way; may wait in a dialog
};

/// Obeys one request. Called in the GUI thread.
using Command = std::function<Answer(const QJsonObject&)>;

inline Answer refused(const QString& why)
{
    return {{}, why, {}};
}

inline Answer answered(const QJsonValue& value)
{
    return {value, {}, {}};
}

inline Answer willDo(std::function<void()> afterwards)
{
    return {{}, {}, std::move(afterwards)};
}

} // namespace remote

#endif
