// SPDX-FileCopyrightText: 2026 The MIOLKAsoft authors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "maintenance/manual.h"

#include <QCoreApplication>
#include <QDesktopServices>

namespace maintenance {

QUrl manualUrl()
{
    return QUrl::fromLocalFile(QCoreApplication::applicationDirPath() +
                               QStringLiteral("/MIOLKAsoftHELP.pdf"));
}

void openManual()
{
    QDesktopServices::openUrl(manualUrl());
}

} // namespace maintenance
