// SPDX-FileCopyrightText: 2026 The MIOLKAsoft authors
// SPDX-License-Identifier: GPL-3.0-or-later

#ifndef MIOLKA_PAGES_PANEL_H
#define MIOLKA_PAGES_PANEL_H

#include <QGroupBox>

/// A group on a panel with round corners in the palette's window colour, so that its captions and
/// fields can be read whatever the page beneath looks like.
class cMyPanel : public QGroupBox
{
    Q_OBJECT

public:
    explicit cMyPanel(QWidget* parent = nullptr);

protected:
    void paintEvent(QPaintEvent* event) override;
};

#endif
