// SPDX-FileCopyrightText: 2026 The MIOLKAsoft authors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "editor/inputs.h"

#include "editor/comboboxw2.h"
#include "editor/doublespinboxint.h"
#include "editor/imagegate.h"
#include "editor/tablemodel.h"

#include <QEvent>

namespace {

/// Passes wheel events of inputs without focus on to the page beneath.
class cMyWheelGuard : public QObject
{
public:
    using QObject::QObject;

    bool eventFilter(QObject* watched, QEvent* event) override
    {
        if (event->type() == QEvent::Wheel && !qobject_cast<QWidget*>(watched)->hasFocus()) {
            event->ignore();
            return true;
        }
        return false;
    }
};

template <typename Input>
void bindTo(Input& input, const cMySettingsField& field, cMyImageGate& gate)
{
    QObject::connect(&input, QOverload<quint32, QVector<quint8>>::of(&Input::valueChanged), &gate,
                     &cMyImageGate::setData);
    input.binding().setFilePosition(&gate.image(), static_cast<unsigned int>(field.address),
                                    field.width == 1 ? Length8 : Length16,
                                    field.encoding == FieldEncoding::Signed ? TypeSigned
                                                                            : TypeUnsigned);
}

} // namespace

namespace editor {

void prepareInput(QWidget& input, const QString& name)
{
    input.setAccessibleName(name);
    if (qobject_cast<QComboBox*>(&input) != nullptr) {
        input.setAccessibleDescription(name); // on some systems a list's name is its choice
    }
    static cMyWheelGuard guard;
    input.setFocusPolicy(Qt::StrongFocus); // not by the wheel
    input.installEventFilter(&guard);
}

void bindInput(cMyComboBoxW2& input, const cMySettingsField& field, cMyImageGate& gate)
{
    bindTo(input, field, gate);
}

void bindInput(cMyDoubleSpinBoxInt& input, const cMySettingsField& field, cMyImageGate& gate)
{
    bindTo(input, field, gate);
}

cMyTableModel* loadOptions(const cMySettingsField& field, QObject& parent)
{
    return new cMyTableModel(editor::optionTableFile(field), &parent);
}

QString suffix(const cMySettingsField& field)
{
    return QStringLiteral(" [%1]").arg(field.unit);
}

} // namespace editor
