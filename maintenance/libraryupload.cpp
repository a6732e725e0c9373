// SPDX-FileCopyrightText: 2026 The MIOLKAsoft authors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "maintenance/libraryupload.h"

#include "pages/filechoice.h"
#include "pages/question.h"

#include <QApplication>
#include <QMessageBox>
#include <QScopeGuard>

std::optional<QStringList> cMyLibraryUpload::choose(const QString& directory) const
{
    const QString path = chooseFile(directory);
    if (path.isEmpty() || !isConfirmed()) {
        return {};
    }
    cMyLibrary library = read(path);
    if (library.fault == LibraryFault::TooLarge) {
        tellTooLarge();
    }
    if (library.fault != LibraryFault::None) {
        return {};
    }
    return std::move(library.lines);
}

QString cMyLibraryUpload::chooseFile(const QString& directory) const
{
    return pages::chooseFileToOpen(m_window, tr("Otworz plik"), directory,
                                   tr("Biblioteka jezyka (*.mia);;Komunikaty użytkownika (*.mic)"));
}

bool cMyLibraryUpload::isConfirmed() const
{
    return pages::isConfirmed(m_window, tr("Aktualizacja biblioteki dźwięków..."),
                              tr("Nastąpi aktualizacja biblioteki dźwięków.\n"
                                 "Czy chcesz kontynuować?"));
}

cMyLibrary cMyLibraryUpload::read(const QString& path)
{
    // From a slow stick it takes a moment.
    QApplication::setOverrideCursor(Qt::WaitCursor);
    const auto restore = qScopeGuard(&QApplication::restoreOverrideCursor);
    return maintenance::readLibraryFile(path);
}

void cMyLibraryUpload::tellTooLarge() const
{
    QMessageBox::critical(&m_window, tr("Błąd"),
                          tr("Ten plik jest za duży na bibliotekę dźwięków."));
}
