// SPDX-FileCopyrightText: 2026 The MIOLKAsoft authors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "editor/description.h"

#include "editor/fieldcodec.h"
#include "editor/imagegate.h"
#include "editor/textvalidator.h"

#include <QDebug>
#include <QLabel>
#include <QLineEdit>
#include <QPlainTextEdit>
#include <QRegularExpression>
#include <QSignalBlocker>
#include <QTextBlock>

namespace {

QString freeCount(const cMySettingsField& field, int used)
{
    return QStringLiteral("[%1]").arg(editor::textCapacity(field) - used);
}

cMyTextValidator* addValidator(QLineEdit& line)
{
    auto* validator = new cMyTextValidator(&line);
    validator->setLoaded(line.text());
    line.setValidator(validator);
    return validator;
}

} // namespace

cMyDescription::cMyDescription(const Widgets& widgets, cMyImageGate& gate, QObject& parent)
    : QObject(&parent), m_widgets(widgets),
      m_gate(gate), m_author{&editor::settingsField(QStringLiteral("author")), {}, {}},
      m_title{&editor::settingsField(QStringLiteral("title")), {}, {}},
      m_description{&editor::settingsField(QStringLiteral("description")), {}, {}}
{
    m_widgets.author->setMaxLength(editor::textCapacity(*m_author.field));
    m_widgets.title->setMaxLength(editor::textCapacity(*m_title.field));
    connect(m_widgets.description, &QPlainTextEdit::cursorPositionChanged, this,
            &cMyDescription::rememberCursor);
    connect(m_widgets.description, &QPlainTextEdit::selectionChanged, this,
            &cMyDescription::rememberCursor);
    countFree();
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
    if (isOtherAuthor) {
        loadLine(*m_widgets.author, m_author, m_authorValidator);
    }
    if (isOtherTitle) {
        loadLine(*m_widgets.title, m_title, m_titleValidator);
    }
    if (isOtherDescription) {
        loadDescription();
    }
    m_widgets.shownAuthor->setText(m_author.stored);
    m_widgets.shownTitle->setText(m_title.stored);
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
    return isOther;
}

void cMyDescription::loadLine(QLineEdit& line, Text& text, cMyTextValidator* validator)
{
    const QSignalBlocker blocker(line);
    if (validator != nullptr) {
        validator->setLoaded(text.stored);
    }
    line.setText(text.stored);
    text.shown = line.text();
}

void cMyDescription::loadDescription()
{
    const QSignalBlocker blocker(m_widgets.description);
    m_widgets.description->setPlainText(m_description.stored);
    m_description.shown = descriptionText();
    m_loaded = m_description.shown;
    m_accepted = m_loaded;
    m_cursor = {};
}

QString cMyDescription::descriptionText() const
{
    // Unlike the plain text this keeps no-break spaces, which a loaded text may hold.
    QString text = m_widgets.description->document()->toRawText();
    return text.replace(QChar::ParagraphSeparator, QLatin1Char('\n'))
        .replace(QChar::LineSeparator, QLatin1Char('\n'));
}

void cMyDescription::descriptionReached()
{
    const QString text = descriptionText();
    if (!isAcceptable(text)) {
        takeBack(text);
        return;
    }
    m_accepted = text;
    rememberCursor();
    countFree();
    parseDescription();
}

bool cMyDescription::isAcceptable(const QString& text) const
{
    if (text == m_accepted) {
        return true;
    }
    if (text.size() > editor::textCapacity(*m_description.field)) {
        return false;
    }
    static const QRegularExpression allowed(
        QRegularExpression::anchoredPattern(QStringLiteral("(^[\\40-\\176|\\n]{0,511}$)")));
    const auto canBeTyped = [](QChar character) {
        return editor::isTypable(character) || character == QLatin1Char('\n');
    };
    return allowed.match(editor::withoutLoaded(text, m_loaded, canBeTyped)).hasMatch();
}

void cMyDescription::takeBack(const QString& rejected)
{
    qDebug() << "Pozycja:" << m_cursor.position;
    qDebug() << "Dlugosc:" << rejected.size();
    const QSignalBlocker blocker(m_widgets.description);
    const editor::Edit edit = editor::difference(m_accepted, rejected);
    // The opposite edit joins the refused one, so that the undo history goes on without either.
    QTextCursor cursor(m_widgets.description->document());
    cursor.joinPreviousEditBlock();
    cursor.setPosition(edit.position);
    cursor.setPosition(edit.position + edit.inserted.size(), QTextCursor::KeepAnchor);
    cursor.insertText(m_accepted.mid(edit.position, edit.removed));
    cursor.endEditBlock();
    cursor.setPosition(m_cursor.anchor);
    cursor.setPosition(m_cursor.position, QTextCursor::KeepAnchor);
    m_widgets.description->setTextCursor(cursor);
}

void cMyDescription::rememberCursor()
{
    // Called before a refused change is taken back, too; the cursor in that text is of no use.
    if (descriptionText() == m_accepted) {
        const QTextCursor cursor = m_widgets.description->textCursor();
        m_cursor = {cursor.position(), cursor.anchor()};
    }
}

void cMyDescription::countFree()
{
    m_widgets.authorFree->setText(freeCount(*m_author.field, m_widgets.author->text().size()));
    m_widgets.titleFree->setText(freeCount(*m_title.field, m_widgets.title->text().size()));
    m_widgets.descriptionFree->setText(freeCount(*m_description.field, descriptionText().size()));
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
    m_gate.setData(static_cast<quint32>(text.field->address),
                   editor::textBytes(shown, *text.field));
    text.stored = editor::storedText(m_gate.image(), *text.field);
}
