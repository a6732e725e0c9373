// SPDX-FileCopyrightText: 2026 The MIOLKAsoft authors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "editor/description.h"

#include "editor/descriptionedit.h"
#include "editor/fieldcodec.h"
#include "editor/imagegate.h"
#include "editor/textvalidator.h"
#include "pages/labeltext.h"

#include <QDebug>
#include <QLabel>
#include <QLineEdit>
#include <QSignalBlocker>
#include <QTextDocument>

namespace {

QString freeCount(const cMySettingsField& field, const QString& text)
{
    return QStringLiteral("[%1]").arg(editor::textCapacity(field) - text.size());
}

cMyTextValidator* addValidator(QLineEdit& line)
{
    auto* validator = new cMyTextValidator(&line);
    validator->setLoaded(line.text());
    line.setValidator(validator);
    QObject::connect(&line, &QLineEdit::textChanged, validator, &cMyTextValidator::remember);
    return validator;
}

bool beginsWith(const QVector<quint8>& bytes, const QVector<quint8>& beginning)
{
    return bytes.mid(0, beginning.size()) == beginning;
}

} // namespace

cMyDescription::cMyDescription(const Widgets& widgets, cMyImageGate& gate, QObject& parent)
    : QObject(&parent), m_widgets(widgets), m_gate(gate),
      m_author(editor::settingsField(QStringLiteral("author"))),
      m_title(editor::settingsField(QStringLiteral("title"))),
      m_description(editor::settingsField(QStringLiteral("description")))
{
    m_widgets.author->setMaxLength(editor::textCapacity(*m_author.field));
    m_widgets.title->setMaxLength(editor::textCapacity(*m_title.field));
    connect(m_widgets.description, &QPlainTextEdit::cursorPositionChanged, this,
            &cMyDescription::rememberCursor);
    connect(m_widgets.description, &QPlainTextEdit::selectionChanged, this,
            &cMyDescription::rememberCursor);
    connect(m_widgets.description, &cMyDescriptionEdit::refused, this, &cMyDescription::logRefusal);
}

void cMyDescription::installValidators()
{
    m_authorValidator = addValidator(*m_widgets.author);
    m_titleValidator = addValidator(*m_widgets.title);
}

void cMyDescription::update()
{
    // All are read before any is shown, so that no change handling sees a mixture.
    const bool isOtherAuthor = load(m_author);
    const bool isOtherTitle = load(m_title);
    const bool isOtherDescription = load(m_description);
    // An edit must not be undone into another image, so that a text with a history is loaded
    // again, too.
    if (isOtherAuthor || m_widgets.author->isUndoAvailable()) {
        loadLine(*m_widgets.author, m_author, m_authorValidator);
    }
    if (isOtherTitle || m_widgets.title->isUndoAvailable()) {
        loadLine(*m_widgets.title, m_title, m_titleValidator);
    }
    const QTextDocument* document = m_widgets.description->document();
    if (isOtherDescription || document->isUndoAvailable() || document->isRedoAvailable()) {
        loadDescription();
    }
    m_widgets.shownAuthor->setText(pages::labelText(m_author.stored));
    m_widgets.shownTitle->setText(pages::labelText(m_title.stored));
    if (m_widgets.shownDescription->toPlainText() != m_description.stored) {
        m_widgets.shownDescription->setPlainText(m_description.stored);
    }
    countFree();
}

bool cMyDescription::load(Text& text) const
{
    const QString stored = editor::storedText(m_gate.image(), *text.field);
    const bool isOther = stored != text.stored;
    text.stored = stored;
    text.loadedBytes = editor::storedBytes(m_gate.image(), *text.field);
    return isOther;
}

void cMyDescription::loadLine(QLineEdit& line, Text& text, cMyTextValidator* validator)
{
    const QSignalBlocker blocker(line);
    if (validator != nullptr) {
        validator->setLoaded(text.stored.left(line.maxLength()));
    }
    line.setText(text.stored);
    text.shown = line.text();
    text.loadedShown = text.shown;
}

void cMyDescription::loadDescription()
{
    const QSignalBlocker blocker(m_widgets.description);
    m_widgets.description->setPlainText(m_description.stored);
    m_description.shown = m_widgets.description->text();
    m_description.loadedShown = m_description.shown;
    m_accepted = m_description.shown;
    m_undoSteps = m_widgets.description->document()->availableUndoSteps();
    m_cursor = {};
}

void cMyDescription::descriptionReached()
{
    const QTextDocument& document = *m_widgets.description->document();
    const QString text = m_widgets.description->text();
    const bool isHistory =
        document.isRedoAvailable() || document.availableUndoSteps() < m_undoSteps;
    if (isHistory && !wasAccepted(text)) {
        passOver();
    }
    if (!(isHistory ? wasAccepted(m_widgets.description->text()) : isAcceptable(text))) {
        takeBack(m_widgets.description->text());
        m_undoSteps = document.availableUndoSteps();
        return;
    }
    m_accepted = m_widgets.description->text();
    m_undoSteps = document.availableUndoSteps();
    rememberCursor();
    countFree();
    parseDescription();
}

bool cMyDescription::isAcceptable(const QString& text) const
{
    const QString inserted = editor::difference(m_accepted, text).inserted;
    return text == m_accepted || (text.size() <= editor::textCapacity(*m_description.field) &&
                                  cMyDescriptionEdit::canBeTyped(inserted));
}

bool cMyDescription::wasAccepted(const QString& text) const
{
    const auto canBeTyped = [](QChar character) {
        return editor::isTypable(character) || character == QLatin1Char('\n');
    };
    return text == m_description.loadedShown ||
           cMyDescriptionEdit::canBeTyped(
               editor::withoutLoaded(text, m_description.loadedShown, canBeTyped));
}

void cMyDescription::takeBack(const QString& rejected)
{
    logRefusal(static_cast<int>(rejected.size()));
    const QSignalBlocker blocker(m_widgets.description);
    const editor::Edit edit = editor::difference(m_accepted, rejected);
    QTextCursor cursor(m_widgets.description->document());
    cursor.setPosition(edit.position);
    cursor.setPosition(edit.position + static_cast<int>(edit.inserted.size()),
                       QTextCursor::KeepAnchor);
    cursor.insertText(m_accepted.mid(edit.position, edit.removed));
    cursor.setPosition(m_cursor.anchor);
    cursor.setPosition(m_cursor.position, QTextCursor::KeepAnchor);
    m_widgets.description->setTextCursor(cursor);
}

void cMyDescription::passOver()
{
    // The history holds a text that was refused. Go on past it, the way that the user went, and
    // if there is nothing beyond, back again.
    const QSignalBlocker blocker(m_widgets.description);
    cMyDescriptionEdit& edit = *m_widgets.description;
    const QTextDocument& document = *edit.document();
    const bool isUndo = document.availableUndoSteps() < m_undoSteps;
    for (const bool back : {isUndo, !isUndo}) {
        while (!wasAccepted(edit.text()) &&
               (back ? document.isUndoAvailable() : document.isRedoAvailable())) {
            back ? edit.undo() : edit.redo();
        }
    }
}

void cMyDescription::logRefusal(int length) const
{
    qDebug() << "Pozycja:" << m_cursor.position;
    qDebug() << "Dlugosc:" << length;
}

void cMyDescription::rememberCursor()
{
    // Called before a refused change is taken back, too; the cursor in that text is of no use.
    if (m_widgets.description->text() == m_accepted) {
        const QTextCursor cursor = m_widgets.description->textCursor();
        m_cursor = {cursor.position(), cursor.anchor()};
    }
}

void cMyDescription::countFree()
{
    m_widgets.authorFree->setText(freeCount(*m_author.field, m_widgets.author->text()));
    m_widgets.titleFree->setText(freeCount(*m_title.field, m_widgets.title->text()));
    m_widgets.descriptionFree->setText(
        freeCount(*m_description.field, m_widgets.description->text()));
}

void cMyDescription::parseDescription()
{
    writeChanged(m_author, m_widgets.author->text());
    writeChanged(m_title, m_widgets.title->text());
    writeChanged(m_description, m_accepted);
}

void cMyDescription::writeChanged(Text& text, const QString& shown)
{
    if (shown == text.shown) {
        return;
    }
    text.shown = shown;
    QVector<quint8> bytes = editor::textBytes(shown, *text.field);
    if (shown == text.loadedShown && !beginsWith(text.loadedBytes, bytes)) {
        bytes = text.loadedBytes; // undone: what cannot be written so is as it was
    }
    m_gate.setData(static_cast<quint32>(text.field->address), bytes);
    text.stored = editor::storedText(m_gate.image(), *text.field);
}
