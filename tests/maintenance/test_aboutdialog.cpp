// SPDX-FileCopyrightText: 2026 The MIOLKAsoft authors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "maintenance/aboutdialog.h"
#include "tests/support/windowtest.h"

#include <QGridLayout>
#include <QLabel>
#include <QPushButton>
#include <QTimer>

using support::child;

/// What the program says about itself.
class TestAboutDialog : public QObject
{
    Q_OBJECT

private slots:
    void cells_data();
    void cells();
    void texts_data();
    void texts();
    void theIcon();
    void fontsAndSides();
    void thereIsNoVersionUntilItIsSet();
    void aVersionIsNoMarkup();
    void theButtonCloses();
    void theWindowShowsOneDialogAgainAndAgain();
    void escapeClosesItToo();
};

namespace {

QLabel* label(const QWidget& dialog, const char* name)
{
    auto* found = dialog.findChild<QLabel*>(QLatin1String(name));
    if (found == nullptr) {
        qFatal("the dialog has no %s", name);
    }
    return found;
}

/// The dialog that the help menu shows before anything else can be used; it is closed as given.
cMyAboutDialog* showAbout(MainWindow& window, const std::function<void(cMyAboutDialog&)>& close)
{
    cMyAboutDialog* shown = nullptr;
    QTimer::singleShot(0, &window, [&] {
        shown = qobject_cast<cMyAboutDialog*>(QApplication::activeModalWidget());
        if (shown != nullptr) {
            close(*shown);
        }
    });
    child<QAction>(window, "actionAbout")->trigger();
    return shown;
}

void clickClose(cMyAboutDialog& dialog)
{
    QTest::mouseClick(dialog.findChild<QPushButton*>(QStringLiteral("pushButton")), Qt::LeftButton);
}

} // namespace

void TestAboutDialog::cells_data()
{
    QTest::addColumn<QRect>("cell"); // column, row, columns, rows
    QTest::newRow("label_7") << QRect(0, 0, 1, 3);
    QTest::newRow("label_2") << QRect(1, 0, 1, 1);
    QTest::newRow("lVersion") << QRect(1, 1, 1, 1);
    QTest::newRow("label_5") << QRect(1, 2, 1, 1);
    QTest::newRow("label_3") << QRect(0, 3, 2, 1);
    QTest::newRow("horizontalLayout") << QRect(1, 4, 1, 1);
}

void TestAboutDialog::cells()
{
    QFETCH(QRect, cell);
    const cMyAboutDialog dialog(nullptr);
    auto* grid = qobject_cast<QGridLayout*>(dialog.layout());
    QVERIFY(grid != nullptr);
    const QString name = QString::fromLatin1(QTest::currentDataTag());
    for (int i = 0; i < grid->count(); ++i) {
        QLayoutItem* item = grid->itemAt(i);
        const QObject* object = item->widget();
        if (object == nullptr) {
            object = item->layout();
        }
        if (object->objectName() == name) {
            int row = 0;
            int column = 0;
            int rows = 0;
            int columns = 0;
            grid->getItemPosition(i, &row, &column, &rows, &columns);
            QCOMPARE(QRect(column, row, columns, rows), cell);
            return;
        }
    }
    QFAIL("not in the grid");
}

void TestAboutDialog::texts_data()
{
    QTest::addColumn<QString>("source");
    QTest::addColumn<QString>("english");
    QTest::newRow("label_2") << "MIOLKAsoft"
                             << "MIOLKAsoft";
    QTest::newRow("lVersion") << "Wersja: 1.0.4.0"
                              << "Version: 1.0.4.0";
    QTest::newRow("label_5") << "Autorzy MIOLKAsoft"
                             << "By the MIOLKAsoft authors";
    QTest::newRow("label_3")
        << "Copyright © 2026 autorzy MIOLKAsoft.\nWolne oprogramowanie na licencji GPL w wersji 3 "
           "lub nowszej, bez żadnej gwarancji."
        << "Copyright © 2026 the MIOLKAsoft authors.\nFree software under the GNU GPL, version 3 "
           "or later, without any warranty.";
}

void TestAboutDialog::texts()
{
    QFETCH(QString, source);
    QFETCH(QString, english);
    const auto compare = [](const QString& title, const QString& button, const QString& text) {
        const MainWindow window;
        const auto* dialog = window.findChild<cMyAboutDialog*>();
        const QLabel* shown = label(*dialog, QTest::currentDataTag());
        QCOMPARE(dialog->windowTitle(), title);
        QCOMPARE(dialog->findChild<QPushButton*>(QStringLiteral("pushButton"))->text(), button);
        QCOMPARE(shown->text(), text);
        QCOMPARE(shown->textFormat(), Qt::PlainText);
    };
    compare(QStringLiteral("About"), QStringLiteral("Close"), english);
    const support::WithoutCatalogue polish;
    compare(QStringLiteral("O Programie"), QStringLiteral("Zamknij"), source);
}

void TestAboutDialog::theIcon()
{
    const cMyAboutDialog dialog(nullptr);
    const QLabel* icon = label(dialog, "label_7");
    QCOMPARE(icon->pixmap(Qt::ReturnByValue).toImage(),
             QPixmap(QStringLiteral(":/icons/ikony/miolka_soft_128.png")).toImage());
    QCOMPARE(icon->minimumSize(), QSize(128, 128));
    QCOMPARE(icon->maximumSize(), QSize(128, 128));
    QCOMPARE(icon->text(), QString());
}

void TestAboutDialog::fontsAndSides()
{
    const cMyAboutDialog dialog(nullptr);
    QCOMPARE(label(dialog, "label_2")->font().pointSize(), 14);
    QVERIFY(label(dialog, "label_2")->font().bold());
    QCOMPARE(label(dialog, "label_5")->font().pointSize(), 10);
    QCOMPARE(label(dialog, "label_3")->font().pointSize(), 10);
    for (const char* name : {"label_2", "label_5", "label_3"}) {
        QVERIFY2(label(dialog, name)->alignment().testFlag(Qt::AlignRight), name);
    }
    const QLayout* grid = dialog.layout();
    const QLayoutItem* version = grid->itemAt(grid->indexOf(label(dialog, "lVersion")));
    QCOMPARE(version->alignment(), Qt::Alignment(Qt::AlignRight));
}

void TestAboutDialog::thereIsNoVersionUntilItIsSet()
{
    cMyAboutDialog dialog(nullptr);
    QCOMPARE(label(dialog, "lVersion")->text(), QStringLiteral("Version:"));
    dialog.setVersion(QStringLiteral("2.0"));
    QCOMPARE(label(dialog, "lVersion")->text(), QStringLiteral("Version: 2.0"));
    dialog.setVersion(QString());
    QCOMPARE(label(dialog, "lVersion")->text(), QStringLiteral("Version: "));
}

void TestAboutDialog::aVersionIsNoMarkup()
{
    cMyAboutDialog dialog(nullptr);
    dialog.setVersion(QStringLiteral("<b>1</b> & 2"));
    QCOMPARE(label(dialog, "lVersion")->text(), QStringLiteral("Version: <b>1</b> & 2"));
    QCOMPARE(label(dialog, "lVersion")->textFormat(), Qt::PlainText);
}

void TestAboutDialog::theButtonCloses()
{
    cMyAboutDialog dialog(nullptr);
    dialog.show();
    clickClose(dialog);
    QVERIFY(!dialog.isVisible());
    QCOMPARE(dialog.result(), static_cast<int>(QDialog::Accepted));
}

void TestAboutDialog::theWindowShowsOneDialogAgainAndAgain()
{
    MainWindow window;
    window.show();
    QVERIFY(child<QAction>(window, "actionAbout")->isEnabled());
    const cMyAboutDialog* once = showAbout(window, clickClose);
    QVERIFY(once != nullptr && !once->isVisible());
    QCOMPARE(label(*once, "lVersion")->text(), QStringLiteral("Version: 1.0.4.0"));
    QCOMPARE(showAbout(window, clickClose), once);
    QCOMPARE(window.findChildren<cMyAboutDialog*>().size(), 1);
    QCOMPARE(once->parentWidget(), &window);
}

void TestAboutDialog::escapeClosesItToo()
{
    MainWindow window;
    window.show();
    const cMyAboutDialog* shown =
        showAbout(window, [](cMyAboutDialog& dialog) { QTest::keyClick(&dialog, Qt::Key_Escape); });
    QVERIFY(shown != nullptr && !shown->isVisible());
}

MIOLKA_GUI_TEST_MAIN(TestAboutDialog)
#include "test_aboutdialog.moc"
