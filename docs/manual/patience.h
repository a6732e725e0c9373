// SPDX-FileCopyrightText: 2026 The MIOLKAsoft authors
// SPDX-License-Identifier: GPL-3.0-or-later

#ifndef MIOLKA_DOCS_MANUAL_PATIENCE_H
#define MIOLKA_DOCS_MANUAL_PATIENCE_H

#include <QDeadlineTimer>
#include <QObject>
#include <QPointer>
#include <QString>
#include <QTimer>
#include <QWidget>

#include <functional>

/// Waits for what the program does, and deals with the dialogs that it opens meanwhile. The first
/// thing that goes wrong is kept; from then on nothing is waited for.
class cMyPatience : public QObject
{
    Q_OBJECT

public:
    /// Does with a dialog what a person would; false to be asked again in a moment.
    using Answer = std::function<bool(QWidget& dialog)>;

    explicit cMyPatience(QObject* parent = nullptr);

    /// Lets the program run until the condition holds; false if that takes too long, which is then
    /// told as the absence of what was awaited.
    bool waitFor(const std::function<bool()>& condition, const QString& awaited);

    /// Lets the program finish what it has put off, such as the size of a list that got another
    /// text and the layout around it, so that it is always seen at the same state.
    void settle();

    /// Does something that opens a dialog, and answers it; returns when no dialog is open any more.
    bool answer(const std::function<void()>& opener, const QString& awaited, const Answer& answer);

    /// Something went wrong.
    void fail(const QString& error);

    /// What went wrong first; empty if nothing did.
    [[nodiscard]] QString error() const { return m_error; }

private:
    void look();

    QTimer m_timer;
    Answer m_answer;
    QPointer<QWidget> m_answered; ///< the dialog that needs no more, but may take time to close
    QDeadlineTimer m_deadline;
    QString m_error;
};

#endif
