// SPDX-FileCopyrightText: 2026 The MIOLKAsoft authors
// SPDX-License-Identifier: GPL-3.0-or-later

#ifndef MIOLKA_EDITOR_PARAMETERSTAB_H
#define MIOLKA_EDITOR_PARAMETERSTAB_H

#include "editor/settingslayout.h"

#include <QObject>

#include <functional>

class QDoubleSpinBox;
class QFormLayout;
class QSpinBox;
class QWidget;
class cMyImageGate;

/// The device's thirteen parameters, and the periods and distances that message rules refer to.
class cMyParametersTab : public QObject
{
    Q_OBJECT

public:
    /// The empty forms that the inputs are built into.
    struct Forms
    {
        QFormLayout* parameters;
        QFormLayout* periods;
        QFormLayout* distances;
    };

    /// Builds the inputs; they live in the forms, everything else in parent. The image stays as it
    /// is.
    cMyParametersTab(const Forms& forms, cMyImageGate& gate, QObject& parent);

    /// Shows the image. A stored number out of its input's range is set to the nearest one in it,
    /// and gravity to that of the place that is shown; nothing else in the image changes.
    void update();

    /// These three are stored by the window's slots below.
    [[nodiscard]] QSpinBox& volume() const { return *m_volume; }
    [[nodiscard]] QDoubleSpinBox& altitude() const { return *m_altitude; }
    [[nodiscard]] QDoubleSpinBox& latitude() const { return *m_latitude; }

    /// The last input in the order of the tab key.
    [[nodiscard]] QWidget& lastInput() const { return *m_lastInput; }

    /// Stores an altitude, truncated to whole metres, and the gravity at the place that is shown.
    void storeAltitude(double altitude);

    /// Stores a latitude, truncated to whole degrees, and the gravity at the place that is shown.
    void storeLatitude(double latitude);

    /// Stores the volume in dB.
    void storeVolume(int volume);

private:
    void buildParameters(QFormLayout& form);
    QWidget* addField(QFormLayout& form, const char* name, const char* fieldName);
    QWidget* addChoice(const cMySettingsField& field, QWidget* parent);
    QWidget* addNumber(const cMySettingsField& field, QWidget* parent);
    template <typename SpinBox>
    SpinBox* addPlainNumber(QFormLayout& form, const char* name, const char* fieldName);
    [[nodiscard]] QVector<quint8> gravityBytes() const;

    cMyImageGate& m_gate;
    QSpinBox* m_volume = nullptr;
    QDoubleSpinBox* m_altitude = nullptr;
    QDoubleSpinBox* m_latitude = nullptr;
    QWidget* m_lastInput = nullptr;
    QVector<std::function<void()>> m_updates; ///< one for each input
};

#endif
