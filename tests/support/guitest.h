// SPDX-FileCopyrightText: 2026 The MIOLKAsoft authors
// SPDX-License-Identifier: GPL-3.0-or-later

#ifndef MIOLKA_TESTS_SUPPORT_GUITEST_H
#define MIOLKA_TESTS_SUPPORT_GUITEST_H

#include "app/startup.h"

#include <QApplication>
#include <QTranslator>
#include <QtTest>

namespace support {

/// The translator that is installed while a test runs.
inline QTranslator*& catalogue()
{
    static QTranslator* translator = nullptr;
    return translator;
}

/// While this lives, texts are shown as they stand in the source.
class WithoutCatalogue
{
public:
    WithoutCatalogue() { QCoreApplication::removeTranslator(catalogue()); }
    ~WithoutCatalogue() { QCoreApplication::installTranslator(catalogue()); }
    Q_DISABLE_COPY_MOVE(WithoutCatalogue)
};

/// Runs a test that shows windows: everything is set up as the program's own main does it.
template <typename TestClass>
int runGuiTest(int argc, char* argv[])
{
    app::prepare();
    QApplication application(argc, argv);
    QTranslator translator;
    app::installCatalogue(translator);
    catalogue() = &translator;
    TestClass test;
    const int result = QTest::qExec(&test, argc, argv);
    catalogue() = nullptr;
    return result;
}

/// The first window of this kind that is shown, if any.
template <typename Window>
Window* shownWindow()
{
    for (QWidget* widget : QApplication::topLevelWidgets()) {
        auto* window = qobject_cast<Window*>(widget);
        if (window != nullptr && window->isVisible()) {
            return window;
        }
    }
    return nullptr;
}

/// Types a text, key by key.
inline void type(QWidget& widget, const char* utf8)
{
    for (const QChar character : QString::fromUtf8(utf8)) {
        QTest::sendKeyEvent(QTest::Click, &widget, Qt::Key_unknown, QString(character),
                            Qt::NoModifier);
    }
}

} // namespace support

/// The main function of a test that shows windows.
#define MIOLKA_GUI_TEST_MAIN(TestClass)                                                            \
    int main(int argc, char* argv[])                                                               \
    {                                                                                              \
        return support::runGuiTest<TestClass>(argc, argv);                                         \
    }

#endif
