// SPDX-FileCopyrightText: 2026 The MIOLKAsoft authors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "tests/endtoend/remotehand.h"

#include "tests/endtoend/remotelook.h"

#include <QAbstractButton>
#include <QAbstractItemView>
#include <QAbstractSpinBox>
#include <QAction>
#include <QComboBox>
#include <QDialogButtonBox>
#include <QLineEdit>
#include <QMainWindow>
#include <QMenu>
#include <QMenuBar>
#include <QMetaEnum>
#include <QPointer>
#include <QProgressDialog>
#include <QPushButton>
#include <QTabBar>
#include <QTabWidget>
#include <QWindow>
#include <QtTest>

#include <algorithm>

namespace remote {

namespace {

/// Why a person cannot use the widget at present; empty if nothing is in the way.
QString obstacle(const QWidget& widget)
{
    const QWidget* front = dialogInFront();
    if (front != nullptr && widget.window() != front) {
        return QStringLiteral("a dialog is in front of it: ") + front->windowTitle();
    }
    if (!widget.isEnabled()) {
        return QStringLiteral("it is disabled");
    }
    if (widget.visibleRegion().isEmpty()) {
        return QStringLiteral("it is out of sight");
    }
    return {};
}

/// The widget of that kind that the request names, or the reason for there being none.
template <typename Kind>
struct Target
{
    explicit Target(const QJsonObject& request)
        : widget(find<Kind>(request.value(QLatin1String("name")).toString())),
          error(widget == nullptr ? QStringLiteral("there is no such object of the right kind")
                                  : obstacle(*widget))
    {
    }

    QPointer<Kind> widget;
    QString error;
};

/// Clicks through the window, so that whatever lies there is hit.
void clickAt(const QWidget& widget, const QPoint& point)
{
    if (QWindow* window = widget.window()->windowHandle()) {
        QTest::mouseClick(window, Qt::LeftButton, {}, widget.mapTo(widget.window(), point));
    }
}

void clickMiddle(const QWidget& widget)
{
    clickAt(widget, widget.visibleRegion().boundingRect().center());
}

void typeText(QWidget& widget, const QString& text)
{
    for (const QChar character : text) {
        if (character == QLatin1Char('\n')) {
            QTest::keyClick(&widget, Qt::Key_Return);
        } else {
            QTest::sendKeyEvent(QTest::Click, &widget, Qt::Key_unknown, QString(character),
                                Qt::NoModifier);
        }
    }
}

/// Replaces what the widget holds.
void retype(QWidget& widget, const QString& text)
{
    widget.setFocus(Qt::MouseFocusReason);
    QTest::keyClick(&widget, Qt::Key_A, Qt::ControlModifier);
    typeText(widget, text);
}

/// Whether a menu or bar that can be used offers it.
bool isOffered(const QAction& action)
{
    const QWidgetList places = action.associatedWidgets();
    return std::any_of(places.cbegin(), places.cend(), [](QWidget* place) {
        // A menu is a window of its own, and stays enabled when its bar is not.
        auto* menu = qobject_cast<QMenu*>(place);
        return menu != nullptr ? mainWindow()->menuBar()->isEnabled() : place->isEnabled();
    });
}

Answer trigger(const QJsonObject& request)
{
    const QPointer<QAction> action = find<QAction>(request.value(QLatin1String("name")).toString());
    if (action == nullptr) {
        return refused(QStringLiteral("there is no such action"));
    }
    if (!action->isEnabled() || !isOffered(*action)) {
        return refused(QStringLiteral("it is disabled"));
    }
    if (dialogInFront() != nullptr) {
        return refused(QStringLiteral("a dialog is in front of it"));
    }
    return willDo([action] { action->trigger(); });
}

Answer click(const QJsonObject& request)
{
    const Target<QAbstractButton> button(request);
    if (!button.error.isEmpty()) {
        return refused(button.error);
    }
    return willDo([button] { clickMiddle(*button.widget); });
}

Answer type(const QJsonObject& request)
{
    const Target<QWidget> target(request);
    if (!target.error.isEmpty()) {
        return refused(target.error);
    }
    const QString text = request.value(QLatin1String("text")).toString();
    return willDo([target, text] { retype(*target.widget, text); });
}

Answer setValue(const QJsonObject& request)
{
    const Target<QAbstractSpinBox> box(request);
    if (!box.error.isEmpty()) {
        return refused(box.error);
    }
    const QJsonValue value = request.value(QLatin1String("value"));
    if (!value.isDouble()) {
        return refused(QStringLiteral("a number is needed"));
    }
    const QString text = box.widget->locale().toString(value.toDouble(), 'g', 10);
    return willDo([box, text] {
        retype(*box.widget, text);
        QTest::keyClick(box.widget, Qt::Key_Tab);
    });
}

Answer key(const QJsonObject& request)
{
    const QKeySequence sequence(request.value(QLatin1String("key")).toString());
    if (sequence.count() != 1 || sequence == QKeySequence(Qt::Key_unknown)) {
        return refused(QStringLiteral("one key is needed"));
    }
    QPointer<QWidget> widget = QApplication::focusWidget();
    if (request.contains(QLatin1String("name"))) {
        const Target<QWidget> target(request);
        if (!target.error.isEmpty()) {
            return refused(target.error);
        }
        widget = target.widget;
    }
    if (widget == nullptr) {
        return refused(QStringLiteral("nothing has the keyboard"));
    }
    const auto pressed = static_cast<unsigned>(sequence[0]);
    return willDo([widget, pressed] {
        QTest::keyClick(widget, static_cast<Qt::Key>(pressed & ~Qt::KeyboardModifierMask),
                        Qt::KeyboardModifiers(QFlag(pressed & Qt::KeyboardModifierMask)));
    });
}

Answer choose(const QJsonObject& request)
{
    const Target<QComboBox> box(request);
    if (!box.error.isEmpty()) {
        return refused(box.error);
    }
    const int row = request.value(QLatin1String("index")).toInt(-1);
    if (row < 0 || row >= box.widget->count()) {
        return refused(QStringLiteral("there is no such item"));
    }
    clickMiddle(*box.widget);
    QAbstractItemView* list = box.widget->view();
    if (!list->isVisible()) {
        return refused(QStringLiteral("its list does not open"));
    }
    list->setCurrentIndex(box.widget->model()->index(row, box.widget->modelColumn()));
    return willDo([list] { QTest::keyClick(list, Qt::Key_Return); });
}

Answer page(const QJsonObject& request)
{
    auto* pages = find<QTabWidget>(QStringLiteral("tabWidget"));
    if (pages == nullptr) {
        return refused(QStringLiteral("there are no pages"));
    }
    const QTabBar& bar = *pages->tabBar();
    const QString error = obstacle(bar);
    if (!error.isEmpty()) {
        return refused(error);
    }
    const int index = request.value(QLatin1String("index")).toInt(-1);
    if (index < 0 || index >= bar.count()) {
        return refused(QStringLiteral("there is no such page"));
    }
    return willDo([&bar, index] { clickAt(bar, bar.tabRect(index).center()); });
}

/// The button that dialogs know by the name that Qt gives it: "Yes", "Ok" and so on.
QPushButton* standardButton(const QWidget& dialog, const QString& name)
{
    bool known = false;
    const auto names = QMetaEnum::fromType<QDialogButtonBox::StandardButtons>();
    const int value = names.keyToValue(name.toLatin1().constData(), &known);
    const auto* box = dialog.findChild<QDialogButtonBox*>();
    return known && box != nullptr
               ? box->button(static_cast<QDialogButtonBox::StandardButton>(value))
               : nullptr;
}

Answer answer(const QJsonObject& request)
{
    const QPointer<QWidget> dialog = dialogInFront();
    if (dialog == nullptr) {
        return refused(QStringLiteral("there is no dialog"));
    }
    const QString name = request.value(QLatin1String("button")).toString();
    if (name == QLatin1String("escape")) {
        return willDo([dialog] { QTest::keyClick(dialog, Qt::Key_Escape); });
    }
    const QPointer<QPushButton> button = standardButton(*dialog, name);
    if (button == nullptr) {
        return refused(QStringLiteral("it has no such button"));
    }
    const QString error = obstacle(*button);
    return error.isEmpty() ? willDo([button] { clickMiddle(*button); }) : refused(error);
}

Answer cancel(const QJsonObject& /*request*/)
{
    const auto* progress = qobject_cast<QProgressDialog*>(dialogInFront());
    const QPointer<QPushButton> button =
        progress == nullptr ? nullptr : progress->findChild<QPushButton*>();
    if (button == nullptr) {
        return refused(QStringLiteral("there is no progress to cancel"));
    }
    const QString error = obstacle(*button);
    return error.isEmpty() ? willDo([button] { clickMiddle(*button); }) : refused(error);
}

Answer chooseFile(const QJsonObject& request)
{
    const QWidget* dialog = dialogInFront();
    const QPointer<QLineEdit> name =
        dialog == nullptr ? nullptr : dialog->findChild<QLineEdit*>(QStringLiteral("fileNameEdit"));
    const QString path = request.value(QLatin1String("path")).toString();
    if (name == nullptr || path.isEmpty()) {
        return refused(QStringLiteral("a file dialog and a path are needed"));
    }
    return willDo([name, path] {
        name->setText(path); // typed, it would be completed to other files' names
        QTest::keyClick(name, Qt::Key_Return);
    });
}

Answer close(const QJsonObject& /*request*/)
{
    const QPointer<QMainWindow> window = mainWindow();
    if (window == nullptr) {
        return refused(QStringLiteral("there is no window"));
    }
    return willDo([window] { window->close(); });
}

} // namespace

QHash<QString, Command> actingCommands()
{
    return {
        {QStringLiteral("trigger"), trigger}, {QStringLiteral("click"), click},
        {QStringLiteral("type"), type},       {QStringLiteral("setValue"), setValue},
        {QStringLiteral("key"), key},         {QStringLiteral("choose"), choose},
        {QStringLiteral("page"), page},       {QStringLiteral("answer"), answer},
        {QStringLiteral("cancel"), cancel},   {QStringLiteral("chooseFile"), chooseFile},
        {QStringLiteral("close"), close},
    };
}

} // namespace remote
