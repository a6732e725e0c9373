// SPDX-FileCopyrightText: 2026 The MIOLKAsoft authors
// SPDX-License-Identifier: GPL-3.0-or-later

#ifndef MIOLKA_TESTS_SUPPORT_GUITEST_H
#define MIOLKA_TESTS_SUPPORT_GUITEST_H

#include "app/startup.h"

#include <QApplication>
#include <QTranslator>
#include <QtTest>

/// The main function of a test that shows windows: everything as the program's own does it.
#define MIOLKA_GUI_TEST_MAIN(TestClass)                                                            \
    int main(int argc, char* argv[])                                                               \
    {                                                                                              \
        app::prepare();                                                                            \
        QApplication application(argc, argv);                                                      \
        QTranslator translator;                                                                    \
        app::installCatalogue(translator);                                                         \
        TestClass test;                                                                            \
        return QTest::qExec(&test, argc, argv);                                                    \
    }

#endif
