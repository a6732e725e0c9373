// SPDX-FileCopyrightText: 2026 The MIOLKAsoft authors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "tests/endtoend/remotelook.h"

#include <QAction>
#include <QComboBox>
#include <QJsonArray>
#include <QLabel>
#include <QMainWindow>
#include <QMessageBox>
#include <QPainter>
#include <QProgressBar>
#include <QProgressDialog>
#include <QPushButton>
#include <QStatusBar>

namespace remote {

namespace {

QString nameIn(const QJsonObject& request)
{
    return request.value(QLatin1String("name")).toString();
}

Answer nothingNamed(const QJsonObject& request)
{
    return refused(QStringLiteral("there is no such object: ") + nameIn(request));
}

QObject* findAny(const QString& name)
{
    if (auto* widget = find<QWidget>(name)) {
        return widget;
    }
    return find<QAction>(name);
}

/// A request about a property that widgets and actions have by the same name.
Command propertyOfAny(const char* property)
{
    return [property](const QJsonObject& request) {
        const QObject* object = findAny(nameIn(request));
        if (object == nullptr) {
            return nothingNamed(request);
        }
        return answered(QJsonValue::fromVariant(object->property(property)));
    };
}

Answer text(const QJsonObject& request)
{
    const QObject* object = findAny(nameIn(request));
    if (object == nullptr) {
        return nothingNamed(request);
    }
    for (const char* property : {"text", "plainText", "currentText", "title"}) {
        if (object->metaObject()->indexOfProperty(property) >= 0) {
            return answered(object->property(property).toString());
        }
    }
    return refused(QStringLiteral("it has no text"));
}

/// A request about a box of choices.
Command ofChoices(QJsonValue (*look)(const QComboBox&))
{
    return [look](const QJsonObject& request) {
        const auto* box = find<QComboBox>(nameIn(request));
        return box == nullptr ? nothingNamed(request) : answered(look(*box));
    };
}

QJsonValue items(const QComboBox& box)
{
    QJsonArray texts;
    for (int row = 0; row < box.count(); ++row) {
        texts.append(box.itemText(row));
    }
    return texts;
}

Answer dialog(const QJsonObject& /*request*/)
{
    const QWidget* front = dialogInFront();
    return answered(front == nullptr ? QJsonValue() : describe(*front));
}

Answer title(const QJsonObject& /*request*/)
{
    const QMainWindow* window = mainWindow();
    return window == nullptr ? refused(QStringLiteral("there is no window"))
                             : answered(window->windowTitle());
}

Answer statusMessage(const QJsonObject& /*request*/)
{
    const QMainWindow* window = mainWindow();
    const auto* bar = window == nullptr ? nullptr : window->findChild<QStatusBar*>();
    return bar == nullptr ? refused(QStringLiteral("there is no status bar"))
                          : answered(bar->currentMessage());
}

/// No window manager draws frames where the pictures are taken, so this draws one.
void paintDialog(QPainter& painter, QWidget& dialog, const QRect& place)
{
    const int bar = 2 * dialog.fontMetrics().height();
    const QRect frame = place.adjusted(-1, -bar, 1, 1);
    painter.fillRect(frame, dialog.palette().color(QPalette::Highlight));
    painter.setPen(dialog.palette().color(QPalette::HighlightedText));
    painter.setFont(dialog.font());
    painter.drawText(QRect(frame.topLeft(), QSize(frame.width(), bar)),
                     static_cast<int>(Qt::AlignCenter), dialog.windowTitle());
    painter.drawPixmap(place, dialog.grab());
}

/// The main window with the dialog in front of it.
QImage picture(QMainWindow& window)
{
    QImage image = window.grab().toImage();
    if (QWidget* front = dialogInFront()) {
        const QPoint corner = front->geometry().topLeft() - window.geometry().topLeft();
        QPainter painter(&image);
        paintDialog(painter, *front, QRect(corner, front->size()));
    }
    return image;
}

Answer grab(const QJsonObject& request)
{
    QMainWindow* window = mainWindow();
    if (window == nullptr) {
        return refused(QStringLiteral("there is no window"));
    }
    const QString file = request.value(QLatin1String("file")).toString();
    if (file.isEmpty() || !picture(*window).save(file, "PNG")) {
        return refused(QStringLiteral("cannot write the picture ") + file);
    }
    return answered(true);
}

} // namespace

QWidget* dialogInFront()
{
    QWidget* dialog = QApplication::activeModalWidget();
    return dialog != nullptr && dialog->isVisible() ? dialog : nullptr;
}

QMainWindow* mainWindow()
{
    const QWidgetList all = QApplication::topLevelWidgets();
    for (QWidget* each : all) {
        if (auto* window = qobject_cast<QMainWindow*>(each)) {
            return window;
        }
    }
    return nullptr;
}

QWidgetList windows()
{
    QWidgetList ordered = QApplication::topLevelWidgets();
    for (QWidget* first : {static_cast<QWidget*>(mainWindow()), dialogInFront()}) {
        if (first != nullptr) {
            ordered.removeAll(first);
            ordered.prepend(first);
        }
    }
    return ordered;
}

QJsonObject describe(const QWidget& dialog)
{
    QJsonObject seen{{QStringLiteral("class"), QLatin1String(dialog.metaObject()->className())},
                     {QStringLiteral("title"), dialog.windowTitle()}};
    if (const auto* box = qobject_cast<const QMessageBox*>(&dialog)) {
        seen.insert(QStringLiteral("text"), box->text() + box->informativeText());
    }
    if (const auto* progress = qobject_cast<const QProgressDialog*>(&dialog)) {
        seen.insert(QStringLiteral("label"), progress->labelText());
        seen.insert(QStringLiteral("value"), progress->value());
        seen.insert(QStringLiteral("maximum"), progress->maximum());
    }
    QJsonArray texts;
    const auto labels = dialog.findChildren<QLabel*>();
    for (const QLabel* label : labels) {
        texts.append(label->text());
    }
    seen.insert(QStringLiteral("texts"), texts);
    QJsonArray buttonTexts;
    const auto buttons = dialog.findChildren<QPushButton*>();
    for (const QPushButton* button : buttons) {
        buttonTexts.append(button->text());
    }
    seen.insert(QStringLiteral("buttons"), buttonTexts);
    return seen;
}

QHash<QString, Command> lookingCommands()
{
    return {
        {QStringLiteral("text"), text},
        {QStringLiteral("enabled"), propertyOfAny("enabled")},
        {QStringLiteral("visible"), propertyOfAny("visible")},
        {QStringLiteral("statusTip"), propertyOfAny("statusTip")},
        {QStringLiteral("items"), ofChoices(items)},
        {QStringLiteral("count"),
         ofChoices([](const QComboBox& box) { return QJsonValue(box.count()); })},
        {QStringLiteral("index"),
         ofChoices([](const QComboBox& box) { return QJsonValue(box.currentIndex()); })},
        {QStringLiteral("dialog"), dialog},
        {QStringLiteral("title"), title},
        {QStringLiteral("statusMessage"), statusMessage},
        {QStringLiteral("grab"), grab},
        {QStringLiteral("ping"),
         [](const QJsonObject& /*request*/) {
             return answered(true);
         }},
    };
}

} // namespace remote
