// SPDX-FileCopyrightText: 2026 The MIOLKAsoft authors
// SPDX-License-Identifier: GPL-3.0-or-later

#ifndef MIOLKA_DEVICE_PORTNOTE_H
#define MIOLKA_DEVICE_PORTNOTE_H

#include <QLabel>

/// Says in plain words when transfers use another port than the one that is chosen: the link stays
/// on the port that it first met.
class cMyPortNote : public QLabel
{
    Q_OBJECT

public:
    explicit cMyPortNote(QWidget* parent);

    /// Says nothing where no port is chosen.
    void compare(const QString& linkPort, const QString& chosenPort);
};

#endif
