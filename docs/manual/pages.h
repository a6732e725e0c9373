// SPDX-FileCopyrightText: 2026 The MIOLKAsoft authors
// SPDX-License-Identifier: GPL-3.0-or-later

#ifndef MIOLKA_DOCS_MANUAL_PAGES_H
#define MIOLKA_DOCS_MANUAL_PAGES_H

#include <QMap>
#include <QString>

class cMyAdvice;

namespace manual {

/// Markdown by the name of the file that chapters include.
using Pages = QMap<QString, QString>;

/// Fields with their captions, ranges, defaults, choices and advice.
[[nodiscard]] Pages fieldPages(const cMyAdvice& advice);

/// The choices of rules and what they mean.
[[nodiscard]] Pages optionPages(const cMyAdvice& advice);

/// How settings are stored: for those who write programs for them.
[[nodiscard]] Pages layoutPages(const cMyAdvice& advice);

/// All of these.
[[nodiscard]] Pages allPages(const cMyAdvice& advice);

} // namespace manual

#endif
