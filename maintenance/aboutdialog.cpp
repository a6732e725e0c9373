// SPDX-FileCopyrightText: 2026 The MIOLKAsoft authors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "maintenance/aboutdialog.h"

#include "ui_aboutdialog.h"

cMyAboutDialog::cMyAboutDialog(QWidget* parent)
    : QDialog(parent), ui(std::make_unique<Ui::cMyAboutDialog>())
{
    ui->setupUi(this);
    connect(ui->pushButton, &QPushButton::clicked, this, &QDialog::accept);
}

cMyAboutDialog::~cMyAboutDialog() = default;

void cMyAboutDialog::setVersion(QString version)
{
    ui->lVersion->setText(version.prepend(tr("Wersja: ")));
}
