// SPDX-FileCopyrightText: 2026 The MIOLKAsoft authors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "tests/support/dialogscript.h"

#include <QApplication>
#include <QFileDialog>
#include <QLineEdit>
#include <QPushButton>
#include <QTimer>
#include <QtTest>

namespace support {

DialogScript::DialogScript(QObject* parent) : QObject(parent)
{
    QTimer::singleShot(0, this, &DialogScript::look);
}

void DialogScript::press(QMessageBox::StandardButton button, const QString& title)
{
    m_steps.push({title, [button](QWidget& dialog) {
                      auto* box = qobject_cast<QMessageBox*>(&dialog);
                      QVERIFY2(box != nullptr && box->button(button) != nullptr, "no such button");
                      QTest::mouseClick(box->button(button), Qt::LeftButton);
                  }});
}

void DialogScript::chooseFile(const QString& path)
{
    m_steps.push({{}, [path](QWidget& dialog) {
                      auto* name = dialog.findChild<QLineEdit*>(QStringLiteral("fileNameEdit"));
                      QVERIFY2(name != nullptr, "no file dialog");
                      name->setText(path);
                      QTest::keyClick(name, Qt::Key_Return);
                  }});
}

void DialogScript::dismiss()
{
    m_steps.push({{}, [](QWidget& dialog) {
                      QTest::keyClick(&dialog, Qt::Key_Escape);
                  }});
}

void DialogScript::act(std::function<void()> action)
{
    m_steps.push({{}, [action = std::move(action)](QWidget& /*dialog*/) {
                      action();
                  }});
}

void DialogScript::look()
{
    // First of all the next look: answering may open another dialog and wait inside it.
    constexpr int pause = 10;
    QTimer::singleShot(pause, this, &DialogScript::look);
    QWidget* dialog = QApplication::activeModalWidget();
    if (dialog == nullptr || !dialog->isVisible()) {
        return;
    }
    if (!m_steps.empty() && !m_steps.front().title.isEmpty() &&
        m_steps.front().title != dialog->windowTitle()) {
        return;
    }
    note(*dialog);
    if (m_steps.empty()) {
        m_unexpected.append(dialog->windowTitle());
        QTest::keyClick(dialog, Qt::Key_Escape);
        return;
    }
    const Step step = m_steps.front();
    m_steps.pop();
    step.take(*dialog);
}

void DialogScript::note(QWidget& dialog)
{
    SeenDialog seen;
    seen.title = dialog.windowTitle();
    seen.parent = dialog.parentWidget();
    if (const auto* box = qobject_cast<QMessageBox*>(&dialog)) {
        seen.text = box->text();
        seen.buttons = box->standardButtons();
        seen.icon = box->icon();
        seen.hasDefaultButton = box->defaultButton() != nullptr;
    }
    if (const auto* file = qobject_cast<QFileDialog*>(&dialog)) {
        seen.directory = file->directory().absolutePath();
        seen.filters = file->nameFilters();
    }
    m_seen.append(seen);
}

} // namespace support
