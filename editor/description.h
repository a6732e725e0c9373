// SPDX-FileCopyrightText: 2026 The MIOLKAsoft authors
// SPDX-License-Identifier: GPL-3.0-or-later

#ifndef MIOLKA_EDITOR_DESCRIPTION_H
#define MIOLKA_EDITOR_DESCRIPTION_H

#include "editor/settingslayout.h"

#include <QObject>

class QLabel;
class QLineEdit;
class QPlainTextEdit;
class cMyDescriptionEdit;
class cMyImageGate;
class cMyTextValidator;

/// The three texts that tell people what the settings are: author, title and description.
///
/// A text is written only when it was changed, so that an edit of one leaves the others' bytes
/// alone, whatever they are. Characters that typing does not allow stay where they were loaded.
class cMyDescription : public QObject
{
    Q_OBJECT

public:
    /// The widgets that it works on; none is owned.
    struct Widgets
    {
        QLineEdit* author;
        QLineEdit* title;
        cMyDescriptionEdit* description;
        QLabel* authorFree;               ///< shows how many characters are free, "[15]"
        QLabel* titleFree;                ///< likewise
        QLabel* descriptionFree;          ///< likewise
        QLabel* shownAuthor;              ///< on the start page
        QLabel* shownTitle;               ///< on the start page
        QPlainTextEdit* shownDescription; ///< on the start page
    };

    /// The gate is not owned and outlives it; the parent owns it. Nothing is shown before update().
    cMyDescription(const Widgets& widgets, cMyImageGate& gate, QObject& parent);

    /// Lets the line edits refuse characters that the device's texts do not take.
    void installValidators();

    /// Shows the image, here and on the start page. Nothing is written.
    void update();

    /// Something was changed: takes back what the description must not take, else stores it.
    void descriptionReached();

    /// Stores the texts that were changed.
    void parseDescription();

private:
    /// One of the texts, with what it holds as its widget shows it and as the image has it.
    struct Text
    {
        explicit Text(const cMySettingsField& described) : field(&described) {}

        const cMySettingsField* field;
        QString shown;
        QString stored;
        QString loadedShown;         ///< as it was after loading
        QVector<quint8> loadedBytes; ///< the whole field, as it was loaded
    };

    /// Where the text cursor is, and where its selection begins.
    struct Cursor
    {
        int position = 0;
        int anchor = 0;
    };

    [[nodiscard]] bool load(Text& text) const;
    void loadLine(QLineEdit& line, Text& text, cMyTextValidator* validator);
    void loadDescription();
    void writeChanged(Text& text, const QString& shown);
    [[nodiscard]] bool isAcceptable(const QString& text) const;
    [[nodiscard]] bool wasAccepted(const QString& text) const;
    void takeBack(const QString& rejected);
    void passOver();
    void logRefusal(int length) const;
    void rememberCursor();
    void countFree();

    Widgets m_widgets;
    cMyImageGate& m_gate;
    cMyTextValidator* m_authorValidator = nullptr;
    cMyTextValidator* m_titleValidator = nullptr;
    Text m_author;
    Text m_title;
    Text m_description;
    QString m_accepted;  ///< last accepted description
    int m_undoSteps = 0; ///< that there were then
    Cursor m_cursor;     ///< in the last accepted description
};

#endif
