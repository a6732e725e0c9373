// SPDX-FileCopyrightText: 2026 The MIOLKAsoft authors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "docs/manual/patience.h"

#include <QApplication>
#include <QCoreApplication>
#include <QDialog>
#include <QMessageBox>

#include <chrono>

namespace {

constexpr std::chrono::milliseconds pause(10);

/// Longer than anything is put off. Timers of one thread end in their order on a busy machine, too.
constexpr std::chrono::milliseconds settling(100);

/// Far more than anything takes on a busy machine.
constexpr std::chrono::seconds patience(90);

QString saying(const QWidget& dialog)
{
    const auto* box = qobject_cast<const QMessageBox*>(&dialog);
    return box == nullptr ? QStringLiteral("\"%1\"").arg(dialog.windowTitle())
                          : QStringLiteral("\"%1\": %2").arg(dialog.windowTitle(), box->text());
}

} // namespace

cMyPatience::cMyPatience(QObject* parent) : QObject(parent)
{
    connect(&m_timer, &QTimer::timeout, this, &cMyPatience::look);
    m_timer.start(pause);
}

bool cMyPatience::waitFor(const std::function<bool()>& condition, const QString& awaited)
{
    m_deadline.setRemainingTime(patience);
    while (m_error.isEmpty() && !condition()) {
        if (m_deadline.hasExpired()) {
            fail(awaited + QStringLiteral(" did not come"));
        }
        QCoreApplication::processEvents(QEventLoop::WaitForMoreEvents);
    }
    return m_error.isEmpty();
}

void cMyPatience::settle()
{
    QTimer timer;
    timer.setSingleShot(true);
    timer.start(settling);
    waitFor([&timer] { return !timer.isActive(); }, QStringLiteral("the end of a moment"));
    QCoreApplication::sendPostedEvents(nullptr, QEvent::LayoutRequest);
}

bool cMyPatience::answer(const std::function<void()>& opener, const QString& awaited,
                         const Answer& answer)
{
    if (!m_error.isEmpty()) {
        return false;
    }
    m_deadline.setRemainingTime(patience);
    m_answered = nullptr;
    m_answer = answer;
    opener();
    return waitFor([this] { return !m_answer && QApplication::activeModalWidget() == nullptr; },
                   awaited);
}

void cMyPatience::fail(const QString& error)
{
    if (m_error.isEmpty()) {
        m_error = error;
    }
    m_answer = nullptr;
}

void cMyPatience::look()
{
    // What is done with a dialog may open another one, and wait inside it: the timer goes on.
    QWidget* dialog = QApplication::activeModalWidget();
    // One that is not in front yet looks otherwise in a moment.
    if (dialog == nullptr || !dialog->isActiveWindow() || dialog == m_answered) {
        return;
    }
    if (m_answer) {
        const Answer answer = m_answer;
        if (answer(*dialog)) {
            m_answered = dialog;
            m_answer = nullptr;
        } else if (m_deadline.hasExpired()) {
            fail(saying(*dialog) + QStringLiteral(" does not go on"));
        }
    } else {
        fail(QStringLiteral("this came up: ") + saying(*dialog));
    }
    auto* box = qobject_cast<QDialog*>(dialog);
    if (!m_error.isEmpty() && box != nullptr) {
        box->reject();
    }
}
