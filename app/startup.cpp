// SPDX-FileCopyrightText: 2026 The MIOLKAsoft authors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "app/startup.h"

#include "image/utf8names.h"

#include <QApplication>
#include <QIcon>
#include <QMetaEnum>
#include <QTranslator>

namespace {

/// By its name: where it is always set, using it is deprecated.
Qt::ApplicationAttribute attribute(const char* name)
{
    const QMetaEnum attributes = QMetaEnum::fromType<Qt::ApplicationAttribute>();
    return static_cast<Qt::ApplicationAttribute>(attributes.keyToValue(name));
}

} // namespace

namespace app {

void prepare()
{
    QCoreApplication::setAttribute(attribute("AA_EnableHighDpiScaling"));
    QCoreApplication::setAttribute(attribute("AA_UseHighDpiPixmaps"));
    // Factors between whole numbers leave gaps between what stands side by side.
    QGuiApplication::setHighDpiScaleFactorRoundingPolicy(
        Qt::HighDpiScaleFactorRoundingPolicy::Round);
    image::useUtf8Names();
}

void installCatalogue(QTranslator& translator)
{
    // Without a catalogue the texts stay as they are in the sources.
    static_cast<void>(translator.load(QStringLiteral(":/language/english.qm")));
    QCoreApplication::installTranslator(&translator);
}

void introduce()
{
    QGuiApplication::setDesktopFileName(QStringLiteral(MIOLKA_APPLICATION_ID));
    // Desktops know the icon by the name above. This one is for window managers that know no names,
    // and embedded: an icon theme would be searched, and each of its sizes decoded, at every start.
    QApplication::setWindowIcon(QIcon(QStringLiteral(":/icons/ikony/miolka_soft_128.png")));
}

} // namespace app
