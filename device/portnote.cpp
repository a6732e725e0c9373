// SPDX-FileCopyrightText: 2026 The MIOLKAsoft authors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "device/portnote.h"

#include "pages/labeltext.h"

cMyPortNote::cMyPortNote(QWidget* parent) : QLabel(parent)
{
    setObjectName(QStringLiteral("lPortNote"));
    setTextFormat(Qt::PlainText);
    setMinimumWidth(1); // rather cut off than the window widened
}

void cMyPortNote::compare(const QString& linkPort, const QString& chosenPort)
{
    const bool isOther = !chosenPort.isEmpty() && chosenPort != linkPort;
    setText(isOther
                ? pages::labelText(tr("Transmisja używa %1; uruchom program ponownie, aby użyć %2")
                                       .arg(linkPort, chosenPort))
                : QString());
}
