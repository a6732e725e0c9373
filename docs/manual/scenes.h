// SPDX-FileCopyrightText: 2026 The MIOLKAsoft authors
// SPDX-License-Identifier: GPL-3.0-or-later

#ifndef MIOLKA_DOCS_MANUAL_SCENES_H
#define MIOLKA_DOCS_MANUAL_SCENES_H

#include "app/mainwindow.h"
#include "docs/manual/album.h"
#include "docs/manual/patience.h"

#include <QTemporaryDir>

#include <array>
#include <functional>

struct cMyRuleKind;

/// Goes through the program as a person would who shows it to another, and takes the manual's
/// pictures on the way. The program stands behind the mocked port of miolka-emulator, with nothing
/// plugged in at first.
class cMyScenes
{
public:
    struct Files
    {
        QString control;      ///< the pipe that miolka-emulator is told commands through
        QString settings;     ///< settings file that the pictures show
        QStringList examples; ///< settings files whose rules are shown
    };

    cMyScenes(const QDir& pictures, Files files);

    /// Goes through all scenes; false at the first that fails.
    bool run();

    /// What failed; empty if nothing did.
    [[nodiscard]] QString error() const;

private:
    enum Page { StartPage, ParametersPage, MessagesPage, SimulationPage };

    using Scene = void (cMyScenes::*)();
    static const std::array<Scene, 13> scenes;

    void startWithoutDevice();
    void plugIn();
    void showDetails();
    void showMenus();
    void showParameters();
    void showMessages();
    void showChoice();
    void readAndWrite();
    void askBeforeService();
    void showAbout();
    void sendLibrary();
    void dive();
    void showExamples();

    /// Between two cycles, for which they wait: which of them is steered and shown then does not
    /// depend on the machine. The first is for the simulation's thread.
    void steerInTime();
    void steer();

    void showPage(Page page);
    void trigger(const char* action);

    /// To miolka-emulator.
    void command(const char* text);

    /// All of the window.
    void photograph(const char* name);
    void add(const QString& name, const QPixmap& picture);
    void addDialog(const char* name, QWidget& dialog);
    void addRules(const QString& name, const cMyRuleKind& kind, const char* sheet,
                  const char* heading);
    void askAndCancel(const char* name, const std::function<void()>& opener);
    void transfer(const char* name, const std::function<void()>& opener);
    bool photographProgress(const char* name, QWidget& dialog);

    /// Makes a file that is a library as far as the program looks.
    [[nodiscard]] QString libraryFile();
    [[nodiscard]] double shownDepth() const;

    template <typename Widget>
    Widget& find(const char* name) const
    {
        auto* found = m_window.findChild<Widget*>(QString::fromLatin1(name));
        if (found == nullptr) {
            qFatal("the window has no %s", name);
        }
        return *found;
    }

    Files m_files;
    cMyAlbum m_album;
    QTemporaryDir m_directory;
    MainWindow m_window;
    cMyPatience m_patience;
    bool m_hasDived = false;
};

#endif
