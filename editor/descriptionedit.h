// SPDX-FileCopyrightText: 2026 The MIOLKAsoft authors
// SPDX-License-Identifier: GPL-3.0-or-later

#ifndef MIOLKA_EDITOR_DESCRIPTIONEDIT_H
#define MIOLKA_EDITOR_DESCRIPTIONEDIT_H

#include <QPlainTextEdit>

/// The text box of the description. It refuses what the device's text does not take before it is
/// put in, so that neither the text nor the undo history ever sees it.
class cMyDescriptionEdit : public QPlainTextEdit
{
    Q_OBJECT

public:
    explicit cMyDescriptionEdit(QWidget* parent = nullptr);

    /// The text, line breaks as line feeds. Unlike the plain text it keeps no-break spaces, which
    /// a loaded text may hold.
    [[nodiscard]] QString text() const;

    /// Whether these characters may be put in: all of them can be typed.
    [[nodiscard]] static bool canBeTyped(const QString& characters);

signals:
    /// An insertion was refused that would have made the text this long.
    void refused(int length);

protected:
    void keyPressEvent(QKeyEvent* event) override;
    void inputMethodEvent(QInputMethodEvent* event) override;
    [[nodiscard]] bool canInsertFromMimeData(const QMimeData* source) const override;
    void insertFromMimeData(const QMimeData* source) override;

private:
    [[nodiscard]] bool takes(QString characters);
};

#endif
