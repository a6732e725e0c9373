// SPDX-FileCopyrightText: 2026 The MIOLKAsoft authors
// SPDX-License-Identifier: GPL-3.0-or-later

#ifndef MIOLKA_EDITOR_RULEROWS_H
#define MIOLKA_EDITOR_RULEROWS_H

#include <QWidget>

/// The sheet that rule rows lie on: a panel with every other row of its grid layout tinted.
class cMyRuleRows : public QWidget
{
    Q_OBJECT

public:
    explicit cMyRuleRows(QWidget* parent = nullptr);

signals:
    /// The columns of the grid may be in other places now.
    void columnsMoved();

    /// The font or the colours are others now.
    void lookChanged();

protected:
    bool event(QEvent* event) override;
    void changeEvent(QEvent* event) override;
    void paintEvent(QPaintEvent* event) override;
};

#endif
