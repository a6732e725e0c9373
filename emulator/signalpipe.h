// SPDX-FileCopyrightText: 2026 The MIOLKAsoft authors
// SPDX-License-Identifier: GPL-3.0-or-later

#ifndef MIOLKA_EMULATOR_SIGNALPIPE_H
#define MIOLKA_EMULATOR_SIGNALPIPE_H

#include <QObject>
#include <QVector>

#include <initializer_list>

/// Unix signals as Qt signals. A handler may do next to nothing, so it only writes the number into
/// a pipe that the event loop reads. There can be one at a time.
class cMySignalPipe : public QObject
{
    Q_OBJECT

public:
    /// Takes these signals over until the end of its life.
    explicit cMySignalPipe(std::initializer_list<int> numbers, QObject* parent = nullptr);
    ~cMySignalPipe() override;
    Q_DISABLE_COPY_MOVE(cMySignalPipe)

signals:
    /// By the event loop, after the signal with this number came.
    void received(int number);

private:
    void receive();

    QVector<int> m_numbers;
};

#endif
