// SPDX-FileCopyrightText: 2026 The MIOLKAsoft authors
// SPDX-License-Identifier: GPL-3.0-or-later

#ifndef MIOLKA_EMULATOR_CONTROL_H
#define MIOLKA_EMULATOR_CONTROL_H

#include "device/lineassembler.h"

#include <QObject>
#include <QString>

/// Commands that arrive through a named pipe, line by line. Writers may come and go.
class cMyControlPipe : public QObject
{
    Q_OBJECT

public:
    explicit cMyControlPipe(QObject* parent = nullptr);

    /// Takes the pipe away if open() made it.
    ~cMyControlPipe() override;
    Q_DISABLE_COPY_MOVE(cMyControlPipe)

    /// Makes the pipe if there is nothing of that name; false if there is something else, or if
    /// it cannot be opened.
    bool open(const QString& path);

signals:
    /// A line without its end and without blanks around it; never empty.
    void command(const QString& line);

private:
    void receive();

    cMyLineAssembler m_lines;
    QByteArray m_made; ///< path of the pipe if it is ours
    int m_descriptor = -1;
};

#endif
