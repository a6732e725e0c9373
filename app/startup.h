// SPDX-FileCopyrightText: 2026 The MIOLKAsoft authors
// SPDX-License-Identifier: GPL-3.0-or-later

#ifndef MIOLKA_APP_STARTUP_H
#define MIOLKA_APP_STARTUP_H

class QTranslator;

/// What every program that shows the main window does around its QApplication.
namespace app {

/// Sets what Qt must know before the application object: high-DPI drawing, and file names in
/// UTF-8 whatever the locale says. Call first in main().
void prepare();

/// Installs the English catalogue, whatever the locale. The source texts are Polish; they show
/// only where the catalogue has no entry. The translator must outlive the application's windows.
void installCatalogue(QTranslator& translator);

/// Tells the desktop by which launcher the program's windows go, and gives an icon to every window
/// that has none of its own. Neither the application's name nor any path depends on it. Needs the
/// application object; call before the first window is shown.
void introduce();

} // namespace app

#endif
