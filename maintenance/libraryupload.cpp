// SPDX-FileCopyrightText: 2026 The MIOLKAsoft authors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "maintenance/libraryupload.h"

#include "maintenance/libraryfile.h"

#include <QFileDialog>
#include <QMessageBox>

std::optional<QStringList> cMyLibraryUpload::choose(const QString& directory) const
{
    const QString path = chooseFile(directory);
    if (path.isEmpty() || !isConfirmed()) {
        return {};
    }
    cMyLibrary library = maintenance::readLibraryFile(path);
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
    return QFileDialog::getOpenFileName(
        &m_window, tr("Otworz plik"), directory,
        tr("Biblioteka jezyka (*.mia);;Komunikaty użytkownika (*.mic)"));
}

bool cMyLibraryUpload::isConfirmed() const
{
    // A question that the end of the program cut short has no answer at all.
    return QMessageBox::question(&m_window, tr("Aktualizacja biblioteki dźwięków..."),
                                 tr("Nastąpi aktualizacja biblioteki dźwięków.\n"
                                    "Czy chcesz kontynuować?"),
                                 QMessageBox::Yes | QMessageBox::No,
                                 QMessageBox::NoButton) == QMessageBox::Yes;
}

void cMyLibraryUpload::tellTooLarge() const
{
    QMessageBox::critical(&m_window, tr("Błąd"),
                          tr("Ten plik jest za duży na bibliotekę dźwięków."));
}
