// SPDX-FileCopyrightText: 2026 The MIOLKAsoft authors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "pages/question.h"

#include <QMessageBox>

namespace pages {

bool isConfirmed(QWidget& window, const QString& title, const QString& question)
{
    return QMessageBox::question(&window, title, question, QMessageBox::Yes | QMessageBox::No,
                                 QMessageBox::NoButton) == QMessageBox::Yes;
}

} // namespace pages
