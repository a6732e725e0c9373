// SPDX-FileCopyrightText: 2026 The MIOLKAsoft authors
// SPDX-License-Identifier: GPL-3.0-or-later

#include <QApplication>
#include <QMainWindow>

/// The least that a Qt program with a main window can be.
int main(int argc, char* argv[])
{
    QApplication application(argc, argv);
    QMainWindow window;
    window.resize(1116, 761);
    window.show();
    return QApplication::exec();
}
