// SPDX-FileCopyrightText: 2026 The MIOLKAsoft authors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "docs/manual/scenes.h"

#include "editor/fieldcodec.h"
#include "editor/rulegrid.h"
#include "image/memoryarea.h"
#include "sim/simwidget.h"

#include <QAbstractItemView>
#include <QAction>
#include <QComboBox>
#include <QCoreApplication>
#include <QFile>
#include <QFileInfo>
#include <QGridLayout>
#include <QLabel>
#include <QLineEdit>
#include <QMenu>
#include <QMenuBar>
#include <QMessageBox>
#include <QProgressBar>
#include <QProgressDialog>
#include <QPushButton>
#include <QSemaphore>
#include <QSlider>
#include <QTabBar>
#include <QTabWidget>
#include <QThread>
#include <QToolBar>

#include <algorithm>
#include <chrono>
#include <memory>

#include <fcntl.h>
#include <unistd.h>

namespace {

/// Wide enough for the rules, and no wider: on paper all of it shrinks to the width of a page.
constexpr QSize windowSize(1116, 761);

/// What is left around a part of the window.
constexpr int margin = 12;

/// A question's text gets half of the screen, which is small here. False where it has been given
/// more just now, which takes effect in a moment.
bool isWideEnough(const QWidget& dialog)
{
    constexpr int leastWidth = 310; // of what a text of several lines gets on an ordinary screen
    auto* text = dialog.findChild<QLabel*>(QStringLiteral("qt_msgbox_label"));
    if (text == nullptr || !text->wordWrap() || text->minimumWidth() >= leastWidth) {
        return true;
    }
    text->setMinimumWidth(leastWidth);
    return false;
}

/// Until the first third, so that a progress dialog is seen at work.
constexpr int progressShare = 3;

/// Of a simulated dive: what the virtual device counts for the 17 lines of a cycle.
constexpr std::chrono::milliseconds cycleTime(170);

} // namespace

const std::array<cMyScenes::Scene, 13> cMyScenes::scenes = {
    &cMyScenes::startWithoutDevice, &cMyScenes::plugIn,         &cMyScenes::showDetails,
    &cMyScenes::showMenus,          &cMyScenes::showParameters, &cMyScenes::showMessages,
    &cMyScenes::showChoice,         &cMyScenes::readAndWrite,   &cMyScenes::askBeforeService,
    &cMyScenes::showAbout,          &cMyScenes::sendLibrary,    &cMyScenes::dive,
    &cMyScenes::showExamples,
};

cMyScenes::cMyScenes(const QDir& pictures, Files files)
    : m_files(std::move(files)), m_album(pictures)
{
    m_window.resize(windowSize);
}

bool cMyScenes::run()
{
    m_window.show();
    for (const Scene& scene : scenes) {
        (this->*scene)();
        if (!m_patience.error().isEmpty()) {
            return false;
        }
    }
    m_window.close();
    return true;
}

QString cMyScenes::error() const
{
    return m_patience.error();
}

void cMyScenes::startWithoutDevice()
{
    m_window.openFileCmdLine(m_files.settings);
    m_patience.waitFor([this] { return find<QAction>("actionSave").isEnabled(); },
                       QStringLiteral("the settings file"));
    showPage(StartPage);
    photograph("start-no-device");
}

void cMyScenes::plugIn()
{
    command("plug");
    m_patience.waitFor(
        [this] {
            return find<QLabel>("lMiolkaStatus").text().startsWith(QStringLiteral("Self-test: "));
        },
        QStringLiteral("the status of the virtual device"));
    photograph("start");
}

void cMyScenes::showDetails()
{
    askAndCancel("details", [this] { find<QPushButton>("pbDetails").click(); });
}

void cMyScenes::showMenus()
{
    m_patience.settle();
    auto& tools = find<QToolBar>("mainToolBar");
    const QRect lastTool = tools.actionGeometry(&find<QAction>("actionExit"));
    const int width = tools.mapTo(&m_window, lastTool.bottomRight()).x() + margin;
    const auto corner = [this, width](int height) {
        return manual::pictureOf(m_window, QRect(0, 0, width, height));
    };
    add(QStringLiteral("toolbar"), corner(tools.geometry().bottom() + 1));
    auto& menu = find<QMenu>("menuKomunikacja");
    auto& bar = find<QMenuBar>("menuBar");
    const QPoint place = bar.actionGeometry(menu.menuAction()).bottomLeft() + QPoint(0, 1);
    menu.popup(m_window.mapToGlobal(place));
    m_patience.waitFor([&menu] { return menu.isVisible(); }, QStringLiteral("the menu"));
    const QPixmap open = menu.grab();
    menu.close();
    const auto* tabs = find<QTabWidget>("tabWidget").tabBar();
    const int height = tabs->mapTo(&m_window, tabs->rect().bottomLeft()).y() + 2 * margin;
    add(QStringLiteral("device-menu"), manual::overlaid(corner(height), open, place));
}

void cMyScenes::showParameters()
{
    showPage(ParametersPage);
    photograph("parameters");
    add(QStringLiteral("intervals"), manual::pictureOf(find<QWidget>("gbPeriods")));
    add(QStringLiteral("texts"), manual::pictureOf(find<QWidget>("gbDescription")));
    add(QStringLiteral("timers"), manual::pictureOf(find<QWidget>("gbTimers")));
}

void cMyScenes::showMessages()
{
    showPage(MessagesPage);
    photograph("messages");
}

void cMyScenes::showChoice()
{
    auto& box = find<QComboBox>("par01Cb6");
    box.setFocus();
    box.showPopup();
    QWidget* list = box.view()->window();
    m_patience.waitFor([list] { return list->isVisible(); }, QStringLiteral("the list of choices"));
    const QPixmap open = list->grab();
    const QPoint below = box.mapTo(&m_window, box.rect().bottomLeft());
    const QPoint place(std::min(below.x(), m_window.width() - margin - list->width()), below.y());
    const int height = place.y() + list->height() + margin;
    const QPixmap behind = manual::pictureOf(m_window, QRect(0, 0, m_window.width(), height));
    box.hidePopup();
    add(QStringLiteral("rule-choice"), manual::overlaid(behind, open, place));
}

void cMyScenes::readAndWrite()
{
    // Slow enough to be seen.
    command("latency 25");
    transfer("read-progress", [this] { trigger("actionReadSettings"); });
    transfer("write-progress", [this] { trigger("actionWriteSettings"); });
    command("latency 0");
}

void cMyScenes::askBeforeService()
{
    askAndCancel("question", [this] { trigger("actionClearStats"); });
}

void cMyScenes::showAbout()
{
    askAndCancel("about", [this] { trigger("actionAbout"); });
}

void cMyScenes::sendLibrary()
{
    const QString path = libraryFile();
    command("latency 25");
    m_patience.answer([this] { trigger("actionLibraryUpdate"); },
                      QStringLiteral("the progress of the library"),
                      [this, &path](QWidget& dialog) {
                          auto* name = dialog.findChild<QLineEdit*>(QStringLiteral("fileNameEdit"));
                          if (name != nullptr) {
                              name->setText(path);
                              QMetaObject::invokeMethod(&dialog, "accept");
                              return false;
                          }
                          const auto* question = qobject_cast<QMessageBox*>(&dialog);
                          QAbstractButton* yes =
                              question != nullptr ? question->button(QMessageBox::Yes) : nullptr;
                          if (yes != nullptr) {
                              if (!isWideEnough(dialog)) {
                                  return false;
                              }
                              addDialog("library-question", dialog);
                              yes->click();
                              return false;
                          }
                          return photographProgress("library-progress", dialog);
                      });
    command("latency 0");
}

void cMyScenes::dive()
{
    showPage(SimulationPage);
    find<cMySimWidget>("simWidget").setClock([this, time = qint64(0)]() mutable {
        time += std::chrono::nanoseconds(cycleTime).count();
        steerInTime();
        return time;
    });
    find<QPushButton>("pbStartSim").click();
    m_patience.waitFor([this] { return find<QMenuBar>("menuBar").isEnabled(); },
                       QStringLiteral("the end of the simulation"));
    if (!m_hasDived) {
        m_patience.fail(QStringLiteral("the dive ended before it was deep"));
    }
}

void cMyScenes::steerInTime()
{
    constexpr int moment = 20; // in ms
    const auto isDone = std::make_shared<QSemaphore>();
    QMetaObject::invokeMethod(
        &m_window,
        [this, isDone] {
            steer();
            isDone->release();
        },
        Qt::QueuedConnection);
    while (!isDone->tryAcquire(1, moment) && !QThread::currentThread()->isInterruptionRequested()) {
    }
}

void cMyScenes::steer()
{
    constexpr double deep = 12; // m
    auto& speed = find<QSlider>("simSlider");
    if (speed.value() == 0) {
        find<QPushButton>("pbAdd1").click();
    }
    if (shownDepth() > deep && !m_hasDived) {
        m_hasDived = true;
        photograph("simulation");
        find<QPushButton>("pbStopSim").click();
    }
}

void cMyScenes::showExamples()
{
    for (const QString& file : qAsConst(m_files.examples)) {
        m_window.openFileCmdLine(file);
        const QString name = QStringLiteral("example-") + QFileInfo(file).completeBaseName();
        showPage(ParametersPage);
        addRules(name + QStringLiteral("-timers"), cMyRuleGrid::timerRules(), "timRows",
                 "timHeading");
        showPage(MessagesPage);
        addRules(name, cMyRuleGrid::messageRules(), "msgRows", "msgHeading");
    }
}

void cMyScenes::showPage(Page page)
{
    find<QTabWidget>("tabWidget").setCurrentIndex(page);
    QCoreApplication::processEvents();
}

void cMyScenes::trigger(const char* action)
{
    find<QAction>(action).trigger();
}

void cMyScenes::command(const char* text)
{
    // Not to be waited for where nobody listens.
    const int pipe =
        ::open(QFile::encodeName(m_files.control).constData(), O_WRONLY | O_NONBLOCK | O_CLOEXEC);
    const QByteArray line = QByteArray(text) + '\n';
    const bool isSent = pipe >= 0 && ::write(pipe, line.constData(),
                                             static_cast<std::size_t>(line.size())) == line.size();
    if (pipe >= 0) {
        ::close(pipe);
    }
    if (!isSent) {
        m_patience.fail(QStringLiteral("no miolka-emulator listens at ") + m_files.control);
    }
}

void cMyScenes::photograph(const char* name)
{
    m_patience.settle();
    add(QString::fromLatin1(name), manual::pictureOf(m_window));
}

void cMyScenes::add(const QString& name, const QPixmap& picture)
{
    if (m_patience.error().isEmpty() && !m_album.add(name, picture)) {
        m_patience.fail(name + QStringLiteral(".png cannot be written"));
    }
}

void cMyScenes::addDialog(const char* name, QWidget& dialog)
{
    if (!m_album.addDialog(QString::fromLatin1(name), dialog)) {
        m_patience.fail(QString::fromLatin1(name) + QStringLiteral(".png cannot be written"));
    }
}

void cMyScenes::addRules(const QString& name, const cMyRuleKind& kind, const char* sheet,
                         const char* heading)
{
    auto& rows = find<QWidget>(sheet);
    const auto* layout = qobject_cast<QGridLayout*>(rows.layout());
    QVector<QPixmap> strips = {manual::pictureOf(find<QWidget>(heading))};
    for (int rule = 1; rule <= kind.count; ++rule) {
        const cMySettingsField& condition = editor::settingsField(editor::ruleMember(
            QString::fromLatin1(kind.fieldKind), rule, QStringLiteral("condition")));
        const auto& image = find<cMyMemoryArea>("settingsImage");
        if (editor::storedNumber(image, condition) != editor::conditionNever) {
            const QRect cell = layout->cellRect(rule - 1, 0);
            const int spacing = layout->verticalSpacing();
            strips.append(manual::pictureOf(
                rows, QRect(0, cell.y() - spacing / 2, rows.width(), cell.height() + spacing)));
        }
    }
    if (strips.size() > 1) {
        add(name, manual::stacked(strips));
    }
}

void cMyScenes::askAndCancel(const char* name, const std::function<void()>& opener)
{
    const QString awaited = QStringLiteral("the dialog ") + QString::fromLatin1(name);
    m_patience.answer(opener, awaited, [this, name](QWidget& dialog) {
        if (!isWideEnough(dialog)) {
            return false;
        }
        addDialog(name, dialog);
        if (auto* box = qobject_cast<QDialog*>(&dialog)) {
            box->reject();
        }
        return true;
    });
}

void cMyScenes::transfer(const char* name, const std::function<void()>& opener)
{
    m_patience.answer(opener, QStringLiteral("the end of the transfer"),
                      [this, name](QWidget& dialog) { return photographProgress(name, dialog); });
}

bool cMyScenes::photographProgress(const char* name, QWidget& dialog)
{
    const auto* progress = qobject_cast<QProgressDialog*>(&dialog);
    if (progress == nullptr) {
        m_patience.fail(
            QStringLiteral("\"%1\" came instead of a progress dialog").arg(dialog.windowTitle()));
        return true;
    }
    if (progress->value() < progress->maximum() / progressShare) {
        return false;
    }
    // How far it has come since depends on the machine.
    dialog.findChild<QProgressBar*>()->setValue(progress->maximum() / progressShare);
    addDialog(name, dialog);
    return true;
}

QString cMyScenes::libraryFile()
{
    constexpr int bytes = 1024;
    constexpr unsigned short recordLength = 16;
    cMyMemoryArea sounds;
    sounds.setData(bytes - 1, 0);
    QString path = m_directory.filePath(QStringLiteral("sounds.mia"));
    QFile file(path);
    const QByteArray text = sounds.toHex(0, bytes, recordLength).join(QLatin1Char('\n')).toLatin1();
    if (!file.open(QIODevice::WriteOnly) || file.write(text) != text.size()) {
        m_patience.fail(path + QStringLiteral(": ") + file.errorString());
    }
    return path;
}

double cMyScenes::shownDepth() const
{
    return find<QLabel>("simDepth").text().section(QLatin1Char(' '), 0, 0).toDouble();
}
