// SPDX-FileCopyrightText: 2026 The MIOLKAsoft authors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "editor/descriptionedit.h"

#include "editor/fieldcodec.h"
#include "editor/textvalidator.h"

#include <QKeyEvent>
#include <QMimeData>
#include <QRegularExpression>
#include <QTextDocument>

cMyDescriptionEdit::cMyDescriptionEdit(QWidget* parent) : QPlainTextEdit(parent) {}

QString cMyDescriptionEdit::text() const
{
    return document()
        ->toRawText()
        .replace(QChar::ParagraphSeparator, QLatin1Char('\n'))
        .replace(QChar::LineSeparator, QLatin1Char('\n'));
}

bool cMyDescriptionEdit::canBeTyped(const QString& characters)
{
    static const QRegularExpression allowed(
        QRegularExpression::anchoredPattern(QStringLiteral("(^[\\40-\\176|\\n]{0,511}$)")));
    return allowed.match(characters).hasMatch();
}

bool cMyDescriptionEdit::takes(QString characters)
{
    characters.replace(QLatin1String("\r\n"), QLatin1String("\n"))
        .replace(QLatin1Char('\r'), QLatin1Char('\n'));
    static const int capacity =
        editor::textCapacity(editor::settingsField(QStringLiteral("description")));
    const auto length = text().size() - textCursor().selectedText().size() + characters.size();
    if (canBeTyped(characters) && length <= capacity) {
        return true;
    }
    emit refused(static_cast<int>(length));
    return false;
}

void cMyDescriptionEdit::keyPressEvent(QKeyEvent* event)
{
    QString characters = event->text();
    if (event->key() == Qt::Key_Return || event->key() == Qt::Key_Enter) {
        characters = QStringLiteral("\n");
    } else if (characters.isEmpty() || characters.at(0) < QLatin1Char(' ') ||
               characters.at(0) == QChar(0x7F) ||
               event->modifiers().testFlag(Qt::ControlModifier)) {
        QPlainTextEdit::keyPressEvent(event); // moves, deletes, or is a shortcut
        return;
    }
    if (takes(characters)) {
        QPlainTextEdit::keyPressEvent(event);
    }
}

void cMyDescriptionEdit::inputMethodEvent(QInputMethodEvent* event)
{
    if (event->commitString().isEmpty() || takes(event->commitString())) {
        QPlainTextEdit::inputMethodEvent(event);
    } else {
        QInputMethodEvent nothing; // ends the composition
        QPlainTextEdit::inputMethodEvent(&nothing);
    }
}

bool cMyDescriptionEdit::canInsertFromMimeData(const QMimeData* source) const
{
    // A file is for the window to open.
    return !source->hasUrls() && QPlainTextEdit::canInsertFromMimeData(source);
}

void cMyDescriptionEdit::insertFromMimeData(const QMimeData* source)
{
    if (source->hasText() && takes(source->text())) {
        QPlainTextEdit::insertFromMimeData(source);
    }
}
