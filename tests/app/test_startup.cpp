// SPDX-FileCopyrightText: 2026 The MIOLKAsoft authors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "app/mainwindow.h"
#include "app/startup.h"

#include <QApplication>
#include <QDialog>
#include <QStandardPaths>
#include <QTest>

/// How the program introduces itself to the desktop.
class TestStartup : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase();
    void theLauncherIsNamedWithoutItsSuffix();
    void aWindowWithoutAnIconGetsTheProgramsOne();
    void theMainWindowShowsTheIcon();
    void noNameOrPathDependsOnIt();

private:
    QString m_name;
    QString m_path;
};

namespace {

const QString iconFile = QStringLiteral(":/icons/ikony/miolka_soft_128.png");
constexpr QSize iconSize(128, 128);

QImage shownBy(const QIcon& icon)
{
    return icon.pixmap(iconSize).toImage();
}

QString pathOfData()
{
    return QStandardPaths::writableLocation(QStandardPaths::AppDataLocation);
}

} // namespace

void TestStartup::initTestCase()
{
    m_name = QCoreApplication::applicationName();
    m_path = pathOfData();
    QVERIFY(QApplication::windowIcon().isNull());
    app::introduce();
}

void TestStartup::theLauncherIsNamedWithoutItsSuffix()
{
    QCOMPARE(QGuiApplication::desktopFileName(), QStringLiteral("org.miolkasoft.MIOLKAsoft"));
}

void TestStartup::aWindowWithoutAnIconGetsTheProgramsOne()
{
    const QDialog dialog;
    QVERIFY(!QImage(iconFile).isNull());
    QCOMPARE(shownBy(dialog.windowIcon()), shownBy(QIcon(iconFile)));
}

void TestStartup::theMainWindowShowsTheIcon()
{
    MainWindow window;
    QCOMPARE(shownBy(window.windowIcon()), shownBy(QIcon(iconFile)));
    const QDialog child(&window);
    QCOMPARE(shownBy(child.windowIcon()), shownBy(QIcon(iconFile)));
}

void TestStartup::noNameOrPathDependsOnIt()
{
    QCOMPARE(QCoreApplication::applicationName(), m_name);
    QCOMPARE(pathOfData(), m_path);
    QVERIFY(QCoreApplication::organizationName().isEmpty());
    QVERIFY(QCoreApplication::organizationDomain().isEmpty());
}

QTEST_MAIN(TestStartup)
#include "test_startup.moc"
