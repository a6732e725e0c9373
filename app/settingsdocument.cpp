// SPDX-FileCopyrightText: 2026 The MIOLKAsoft authors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "app/settingsdocument.h"

#include "image/filename.h"
#include "image/memoryarea.h"
#include "image/settingsfile.h"
#include "pages/filechoice.h"

#include <QAction>
#include <QDebug>
#include <QMessageBox>
#include <QMimeData>
#include <QUrl>

cMySettingsDocument::cMySettingsDocument(cMyMemoryArea& image, QAction& saveAction, QWidget& window)
    : QObject(&window), m_image(image), m_saveAction(saveAction), m_window(window)
{
}

bool cMySettingsDocument::openFileDialog(const QString& mode)
{
    askToKeepChanges();
    if (mode == QLatin1String("NewFile")) {
        load(QStringLiteral(":/pliki/clear.mio"), QFileInfo());
        return true;
    }
    const QString path = pages::chooseFileToOpen(m_window, tr("Otworz plik"), directory(),
                                                 tr("Pliki nastaw (*.mio)"));
    if (path.isEmpty()) {
        return false;
    }
    load(path, QFileInfo(path));
    return true;
}

void cMySettingsDocument::openDropped(const QString& path)
{
    askToKeepChanges();
    load(path, QFileInfo(path));
}

bool cMySettingsDocument::openFileCmdLine(const QString& path)
{
    if (path.isEmpty()) {
        return false;
    }
    m_file = QFileInfo(path);
    openFile(path);
    return true;
}

void cMySettingsDocument::saveFileDialog(const QString& mode)
{
    QString path;
    // The path as it was given: making it absolute would already replace what cannot be encoded.
    if (mode == QLatin1String("Save") && !image::isMangled(m_file.filePath())) {
        path = m_file.absoluteFilePath();
    }
    if (path.isEmpty()) {
        path = pages::chooseFileToSave(m_window, tr("Zapisz do pliku"), directory(),
                                       tr("Pliki nastaw (*.mio)"));
        if (path.isEmpty()) {
            return;
        }
    }
    if (saveFile(path)) {
        m_file = QFileInfo(path);
    }
}

void cMySettingsDocument::openFile(const QString& path)
{
    image::readSettingsFile(path, m_image);
}

bool cMySettingsDocument::saveFile(const QString& path)
{
    return image::writeSettingsFile(path, m_image);
}

QString cMySettingsDocument::canonicalPath() const
{
    // Asked anew each time: the file may have come or gone since the path was taken.
    const QString path = m_file.filePath();
    return path.isEmpty() || image::isMangled(path) ? QString()
                                                    : QFileInfo(path).canonicalFilePath();
}

QString cMySettingsDocument::directory() const
{
    // It may have gone since. A dialog would begin anywhere then, or take it for a file's name.
    QString path = m_file.absolutePath();
    while (!path.isEmpty() && !QFileInfo(path).isDir()) {
        const QString above = QFileInfo(path).path();
        path = above == path ? QString() : above;
    }
    return path;
}

QString cMySettingsDocument::droppedFile(const QMimeData& data)
{
    const QList<QUrl> urls = data.urls();
    for (const QUrl& url : urls) {
        const QByteArray encoded = url.path(QUrl::FullyEncoded).toLatin1();
        const QString name = image::decodeFileName(QByteArray::fromPercentEncoding(encoded));
        QString path = url.toLocalFile();
        if (image::isEncodable(name) && QFileInfo(path).isFile()) {
            return path;
        }
    }
    return {};
}

void cMySettingsDocument::askToKeepChanges()
{
    if (!m_image.isModified() || !m_opened) {
        return;
    }
    const QMessageBox::StandardButton answer = QMessageBox::question(
        &m_window, tr("Miolka"), tr("Zachować zmiany?"), QMessageBox::Yes | QMessageBox::No);
    if (answer == QMessageBox::Yes) {
        m_saveAction.trigger();
    }
}

void cMySettingsDocument::load(const QString& path, const QFileInfo& file)
{
    m_file = file;
    qDebug() << path;
    openFile(path);
    m_opened = true;
}
