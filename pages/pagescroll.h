// SPDX-FileCopyrightText: 2026 The MIOLKAsoft authors
// SPDX-License-Identifier: GPL-3.0-or-later

#ifndef MIOLKA_PAGES_PAGESCROLL_H
#define MIOLKA_PAGES_PAGESCROLL_H

#include <QScrollArea>

/// Scrolls the contents of a page of the window, whose background shows through. It does not ask
/// its contents how large they would like to be: a page takes what the window gives it, and laying
/// out a hidden page for a mere hint would delay the program's start.
class cMyPageScroll : public QScrollArea
{
    Q_OBJECT

public:
    explicit cMyPageScroll(QWidget* parent = nullptr);

    [[nodiscard]] QSize sizeHint() const override { return minimumSizeHint(); }
    [[nodiscard]] QSize minimumSizeHint() const override { return {0, 0}; }

protected:
    bool event(QEvent* event) override;
};

#endif
