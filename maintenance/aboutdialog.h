// SPDX-FileCopyrightText: 2026 The MIOLKAsoft authors
// SPDX-License-Identifier: GPL-3.0-or-later

#ifndef MIOLKA_MAINTENANCE_ABOUTDIALOG_H
#define MIOLKA_MAINTENANCE_ABOUTDIALOG_H

#include <QDialog>

#include <memory>

namespace Ui {
class cMyAboutDialog;
}

/// Says what the program is called, its version, whose it is and under which licence.
class cMyAboutDialog : public QDialog
{
    Q_OBJECT

public:
    explicit cMyAboutDialog(QWidget* parent);
    ~cMyAboutDialog() override;

    /// Shows the program's version, a dotted text.
    void setVersion(QString version);

private:
    std::unique_ptr<Ui::cMyAboutDialog> ui;
};

#endif
