// SPDX-FileCopyrightText: 2026 The MIOLKAsoft authors
// SPDX-License-Identifier: GPL-3.0-or-later

#ifndef MIOLKA_APP_STARTPAGE_H
#define MIOLKA_APP_STARTPAGE_H

#include <QWidget>

/// The page with the underwater picture. Qt polishes every page of a window when the window is
/// shown, and polishing this one decodes the picture that its style sheet names; it puts that off
/// until it is itself shown, so that the program starts without it. A layout of this page must
/// state its margins and spacing, or asking the style for them decodes the picture early.
class cMyStartPage : public QWidget
{
    Q_OBJECT

public:
    explicit cMyStartPage(QWidget* parent = nullptr);

protected:
    bool event(QEvent* event) override;

private:
    bool m_wasShown = false;
};

#endif
