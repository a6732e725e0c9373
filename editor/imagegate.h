// SPDX-FileCopyrightText: 2026 The MIOLKAsoft authors
// SPDX-License-Identifier: GPL-3.0-or-later

#ifndef MIOLKA_EDITOR_IMAGEGATE_H
#define MIOLKA_EDITOR_IMAGEGATE_H

#include <QObject>
#include <QVector>

class cMyMemoryArea;

/// The way from the inputs to the settings image. Inputs also tell of changes when they are merely
/// filled; the gate is shut then, so that showing an image never changes it.
class cMyImageGate : public QObject
{
    Q_OBJECT

public:
    /// The image is not owned and outlives the gate.
    explicit cMyImageGate(cMyMemoryArea& image, QObject* parent = nullptr);

    /// While one of these lives, the gate is shut.
    class Shut
    {
    public:
        /// Several may shut the same gate; it opens with the end of the last one.
        explicit Shut(cMyImageGate& gate) : m_gate(gate) { ++m_gate.m_shut; }
        ~Shut() { --m_gate.m_shut; }
        Q_DISABLE_COPY_MOVE(Shut)

    private:
        cMyImageGate& m_gate;
    };

    /// The image behind the gate.
    [[nodiscard]] cMyMemoryArea& image() const { return m_image; }

    /// Stores bytes that follow from the image itself, also through a shut gate, unless they are
    /// there already.
    void correct(quint32 address, const QVector<quint8>& bytes);

public slots:
    /// Stores what an input holds now.
    void setData(quint32 address, const QVector<quint8>& bytes);

private:
    cMyMemoryArea& m_image;
    int m_shut = 0;
};

#endif
