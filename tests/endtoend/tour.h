// SPDX-FileCopyrightText: 2026 The MIOLKAsoft authors
// SPDX-License-Identifier: GPL-3.0-or-later

#ifndef MIOLKA_ENDTOEND_TOUR_H
#define MIOLKA_ENDTOEND_TOUR_H

#include "tests/endtoend/divework.h"
#include "tests/endtoend/session.h"

#include <QDir>
#include <QString>
#include <QVector>

#include <array>
#include <optional>

/// The way that somebody takes who shows the program with a device: every step is done and looked
/// at as a person does it, and leaves a picture.
class Tour
{
public:
    explicit Tour(const QDir& pictures);

    /// Prints a line for each step; false at the first that fails.
    bool run();

private:
    struct Outcome
    {
        QString seen;
        QString error;
    };
    struct Step
    {
        const char* caption;
        const char* picture; ///< of the end of the step, nullptr for none
        Outcome (Tour::*take)();
    };

    static const std::array<Step, 20> steps;

    Outcome startWithoutDevice();
    Outcome plug();
    Outcome seeStatus();
    Outcome openDetails();
    Outcome closeDetails();
    Outcome read();
    Outcome changeRule();
    Outcome prepareDive();
    Outcome write();
    Outcome replug();
    Outcome readBack();
    Outcome updateLibrary();
    Outcome openAbout();
    Outcome closeAbout();
    Outcome descend();
    Outcome stop();
    Outcome ascend();
    Outcome endDive();
    Outcome unplug();
    Outcome close();

    /// What the settings for the dive are saved to, in the session's directory.
    [[nodiscard]] static QString diveFile() { return QStringLiteral("dive.mio"); }

    bool photograph(const QString& name);
    [[nodiscard]] QByteArray contents(const QString& name) const;

    /// Holds the page against the device's RAM, and keeps both for the table.
    QString look(const char* moment);
    [[nodiscard]] QString checkMessages();
    [[nodiscard]] QString table() const;

    struct Moment
    {
        const char* name;
        QVector<support::ComparedValue> values;
    };

    QDir m_pictures;
    support::Session m_session;
    int m_number = 0;
    std::optional<support::DiveLog> m_dive;
    QVector<Moment> m_moments;
};

#endif
