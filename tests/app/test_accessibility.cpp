// SPDX-FileCopyrightText: 2026 The MIOLKAsoft authors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "tests/support/windowtest.h"

#include <QAccessible>
#include <QComboBox>
#include <QSet>
#include <QSpinBox>
#include <QTabWidget>
#include <QWheelEvent>
#include <QtTest/qtestspontaneevent.h>

using support::child;

/// For people who use the keyboard, a screen reader, or a wheel.
class TestAccessibility : public QObject
{
    Q_OBJECT

private slots:
    void everyControlHasAName();
    void namesOfRules();
    void tabOrderOfTheParameters();
    void tabOrderOfTheMessages();
    void tabSkipsWhatCannotBeEntered();
    void theWheelNeedsTheFocus();
    void theWheelScrollsThePage();
    void aFocusedRowIsScrolledIntoView();
};

namespace {

/// Controls that the keyboard reaches; what Qt builds into its own widgets is theirs.
QList<QWidget*> controlsOf(const QWidget& parent)
{
    QList<QWidget*> controls;
    for (QWidget* widget : parent.findChildren<QWidget*>()) {
        const bool isInner = widget->objectName().startsWith(QLatin1String("qt_")) ||
                             widget->inherits("QComboBoxListView");
        if (widget->focusPolicy() != Qt::NoFocus && !isInner) {
            controls.append(widget);
        }
    }
    return controls;
}

/// The names of the controls on a page in the order of the tab key.
QStringList tabOrderOf(MainWindow& window, const char* page)
{
    const auto* parent = child<QWidget>(window, page);
    const QList<QWidget*> controls = controlsOf(*parent);
    QStringList names;
    for (QWidget* widget = window.nextInFocusChain(); widget != &window;
         widget = widget->nextInFocusChain()) {
        if (controls.contains(widget)) {
            names.append(widget->objectName());
        }
    }
    return names;
}

void turnWheel(QWidget& widget)
{
    const QPointF middle = widget.rect().center();
    QWheelEvent event(middle, widget.mapToGlobal(middle.toPoint()), QPoint(), QPoint(0, -120),
                      Qt::NoButton, Qt::NoModifier, Qt::NoScrollPhase, false);
    QCoreApplication::sendEvent(&widget, &event);
}

} // namespace

void TestAccessibility::everyControlHasAName()
{
    MainWindow window;
    window.show();
    const QList<QWidget*> controls = controlsOf(window);
    QVERIFY(controls.size() > 13 + 8 + 3 + 8 * 6 + 24 * 7);
    QHash<const QWidget*, QSet<QString>> namesIn; // one list for each window and dialog
    for (QWidget* control : controls) {
        if (control->inherits("QTabBar") || control->inherits("QTabWidget") ||
            control->objectName().startsWith(QLatin1String("lset"))) {
            continue; // named by its tabs; never shown
        }
        QString name = control->accessibleName();
        if (name.isEmpty()) {
            name = QAccessible::queryAccessibleInterface(control)->text(QAccessible::Name);
        } else if (qobject_cast<QComboBox*>(control) != nullptr) {
            // Where a list's name is its choice, readers speak the description after it.
            QCOMPARE(control->accessibleDescription(), name);
        }
        QVERIFY2(!name.isEmpty(), qPrintable(control->objectName()));
        if (window.findChild<QWidget*>(QStringLiteral("tabStart"))->isAncestorOf(control)) {
            continue; // shows what the device holds under the same names
        }
        QSet<QString>& names = namesIn[control->window()];
        QVERIFY2(!names.contains(name), qPrintable(name));
        names.insert(name);
    }
}

void TestAccessibility::namesOfRules()
{
    const MainWindow window;
    const auto nameOf = [&window](const char* name) {
        return child<QWidget>(window, name)->accessibleName();
    };
    QCOMPARE(nameOf("par03Sb1"), QStringLiteral("Message rule 3, threshold"));
    QCOMPARE(nameOf("par24Cb6"), QStringLiteral("Message rule 24, repetition"));
    QCOMPARE(nameOf("par01Cb3"), QStringLiteral("Message rule 1, comparison"));
    QCOMPARE(nameOf("tim1Cb1"), QStringLiteral("Timer rule 1, when"));
    QCOMPARE(nameOf("tim8Sb2"), QStringLiteral("Timer rule 8, time"));
    QCOMPARE(nameOf("leAuthor"), QStringLiteral("Author"));
}

void TestAccessibility::tabOrderOfTheParameters()
{
    MainWindow window;
    QStringList expected{
        QStringLiteral("par13Sb"), QStringLiteral("par1Cb"),  QStringLiteral("par2Cb"),
        QStringLiteral("par3Cb"),  QStringLiteral("par4Sb"),  QStringLiteral("par5Sb"),
        QStringLiteral("par6Sb"),  QStringLiteral("par7Sb"),  QStringLiteral("par8Sb"),
        QStringLiteral("par9Cb"),  QStringLiteral("par10Sb"), QStringLiteral("par11Sb"),
        QStringLiteral("par12Sb")};
    for (const char letter : {'A', 'B', 'C', 'D'}) {
        expected << QStringLiteral("lOkres") + QLatin1Char(letter);
    }
    for (const char letter : {'E', 'F', 'G', 'H'}) {
        expected << QStringLiteral("lDystans") + QLatin1Char(letter);
    }
    expected << QStringLiteral("leAuthor") << QStringLiteral("leTitle")
             << QStringLiteral("pteDescription");
    for (int rule = 1; rule <= 8; ++rule) {
        for (const char* input : {"Cb1", "Cb2", "Cb3", "Sb1", "Cb4", "Sb2"}) {
            expected << QStringLiteral("tim%1").arg(rule) + QLatin1String(input);
        }
    }
    QCOMPARE(tabOrderOf(window, "tabTimery"), expected);
}

void TestAccessibility::tabOrderOfTheMessages()
{
    MainWindow window;
    QStringList expected;
    for (int rule = 1; rule <= 24; ++rule) {
        for (const char* input : {"Cb1", "Cb2", "Cb3", "Sb1", "Cb4", "Cb5", "Cb6"}) {
            expected << QStringLiteral("par%1").arg(rule, 2, 10, QLatin1Char('0')) +
                            QLatin1String(input);
        }
    }
    QCOMPARE(tabOrderOf(window, "tabKomunikaty"), expected);
}

void TestAccessibility::tabSkipsWhatCannotBeEntered()
{
    MainWindow window;
    window.show();
    window.activateWindow();
    QVERIFY(QTest::qWaitForWindowActive(&window));
    child<QWidget>(window, "par01Cb1")->setFocus();
    QStringList visited;
    for (int press = 0; press < 6; ++press) {
        QTest::keyClick(QApplication::focusWidget(), Qt::Key_Tab);
        visited << QApplication::focusWidget()->objectName();
    }
    QCOMPARE(visited.join(QLatin1Char(' ')),
             QStringLiteral("par01Cb2 par01Cb3 par01Cb4 par01Cb5 par01Cb6 par02Cb1"));
    QTest::keyClick(QApplication::focusWidget(), Qt::Key_Backtab, Qt::ShiftModifier);
    QCOMPARE(QApplication::focusWidget()->objectName(), QStringLiteral("par01Cb6"));
}

void TestAccessibility::theWheelNeedsTheFocus()
{
    MainWindow window;
    window.show();
    window.activateWindow();
    QVERIFY(QTest::qWaitForWindowActive(&window));
    const QByteArray before = support::imageOf(window);
    for (int page = 1; page <= 2; ++page) {
        auto* pages = child<QTabWidget>(window, "tabWidget");
        pages->setCurrentIndex(page);
        pages->setFocus();
        int inputs = 0;
        for (QWidget* control : controlsOf(*pages->currentWidget())) {
            if (qobject_cast<QComboBox*>(control) != nullptr ||
                qobject_cast<QAbstractSpinBox*>(control) != nullptr) {
                QCOMPARE(control->focusPolicy(), Qt::StrongFocus);
                turnWheel(*control);
                QVERIFY(!control->hasFocus());
                ++inputs;
            }
        }
        QVERIFY(inputs >= 69);
    }
    QCOMPARE(support::differences(before, support::imageOf(window)), QString());
    auto* condition = child<QComboBox>(window, "par01Cb1");
    condition->setCurrentIndex(0);
    condition->setFocus();
    turnWheel(*condition);
    QCOMPARE(condition->currentIndex(), 1);
}

void TestAccessibility::theWheelScrollsThePage()
{
    MainWindow window;
    window.resize(1116, 400);
    window.show();
    QVERIFY(QTest::qWaitForWindowExposed(&window));
    QCoreApplication::processEvents();
    auto* rule = child<QWidget>(window, "par02Cb2");
    const QPoint before = rule->mapTo(&window, QPoint(0, 0));
    const QByteArray image = support::imageOf(window);
    // As the system tells of it: what no widget takes goes on to its parent.
    const QPoint middle = before + rule->rect().center();
    QWindow* native = window.windowHandle();
    QWheelEvent event(middle, native->mapToGlobal(middle), QPoint(), QPoint(0, -120), Qt::NoButton,
                      Qt::NoModifier, Qt::NoScrollPhase, false);
    QSpontaneKeyEvent::setSpontaneous(&event);
    qApp->notify(native, &event);
    QVERIFY(rule->mapTo(&window, QPoint(0, 0)).y() < before.y());
    QCOMPARE(support::imageOf(window), image);
}

void TestAccessibility::aFocusedRowIsScrolledIntoView()
{
    MainWindow window;
    window.resize(1116, 400);
    window.show();
    window.activateWindow();
    QVERIFY(QTest::qWaitForWindowActive(&window));
    auto* last = child<QWidget>(window, "par24Cb6");
    QVERIFY(last->visibleRegion().isEmpty());
    child<QWidget>(window, "par24Cb5")->setFocus();
    QTest::keyClick(QApplication::focusWidget(), Qt::Key_Tab);
    QVERIFY(last->hasFocus());
    QCOMPARE(last->visibleRegion().boundingRect(), last->rect());
}

MIOLKA_GUI_TEST_MAIN(TestAccessibility)
#include "test_accessibility.moc"
