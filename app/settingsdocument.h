// SPDX-FileCopyrightText: 2026 The MIOLKAsoft authors
// SPDX-License-Identifier: GPL-3.0-or-later

#ifndef MIOLKA_APP_SETTINGSDOCUMENT_H
#define MIOLKA_APP_SETTINGSDOCUMENT_H

#include <QFileInfo>
#include <QObject>

class QAction;
class QMimeData;
class QWidget;
class cMyMemoryArea;

/// The settings file behind the window: which one it is, and New, Open, Save and Save As with
/// their questions. File faults are silent: what cannot be read or written changes nothing.
class cMySettingsDocument : public QObject
{
    Q_OBJECT

public:
    /// Works on image, asks over window and lets saveAction save what the user wants to keep; all
    /// three are not owned and outlive the document.
    cMySettingsDocument(cMyMemoryArea& image, QAction& saveAction, QWidget& window);

    /// New ("NewFile") or Open ("OpenFile"). False if the user chose no file, so that nothing was
    /// loaded; true also if the chosen file could not be read.
    bool openFileDialog(const QString& mode);

    /// Opens a file that was dropped on the window, after the same question as Open.
    void openDropped(const QString& path);

    /// Opens the file named on the command line, without a question. False if path is empty.
    bool openFileCmdLine(const QString& path);

    /// Save ("Save") or Save As ("SaveAs"). Save asks for a name where there is none to save to.
    void saveFileDialog(const QString& mode);

    /// Applies a settings file to the image; the current file stays what it is.
    void openFile(const QString& path);

    /// Writes the image; true if all of it is in the file.
    bool saveFile(const QString& path);

    /// Canonical path of the current file; empty if there is none or it does not exist.
    [[nodiscard]] QString canonicalPath() const;

    /// Where dialogs about files begin: the directory of the current file, or what is left of the
    /// way there; empty if there is none.
    [[nodiscard]] QString directory() const;

    /// The regular file on this machine that the data stands for, the first if there are several;
    /// empty if there is none.
    [[nodiscard]] static QString droppedFile(const QMimeData& data);

private:
    void askToKeepChanges();
    void load(const QString& path, const QFileInfo& file);

    cMyMemoryArea& m_image;
    QAction& m_saveAction;
    QWidget& m_window;
    QFileInfo m_file;      ///< empty while the image does not come from a file
    bool m_opened = false; ///< whether a New or Open has been carried out
};

#endif
