// SPDX-FileCopyrightText: 2026 The MIOLKAsoft authors
// SPDX-License-Identifier: GPL-3.0-or-later

#ifndef MIOLKA_PAGES_QUESTION_H
#define MIOLKA_PAGES_QUESTION_H

class QString;
class QWidget;

/// Questions that stand over the window.
namespace pages {

/// Asks with Yes and No, neither chosen beforehand; whether the answer was Yes. A question that the
/// end of the program cut short has no answer at all.
[[nodiscard]] bool isConfirmed(QWidget& window, const QString& title, const QString& question);

} // namespace pages

#endif
