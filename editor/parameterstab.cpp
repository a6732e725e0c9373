// SPDX-FileCopyrightText: 2026 The MIOLKAsoft authors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "editor/parameterstab.h"

#include "editor/comboboxw2.h"
#include "editor/doublespinboxint.h"
#include "editor/fieldcodec.h"
#include "editor/imagegate.h"
#include "editor/inputs.h"
#include "editor/tablemodel.h"

#include <QFormLayout>
#include <QFrame>
#include <QLabel>

#include <cmath>

namespace {

QString paragraphs(const QStringList& texts)
{
    QString html;
    for (const QString& text : texts) {
        html += QStringLiteral("<p align=\"justify\"><span style=\"font-size:10pt;\">%1</span></p>")
                    .arg(text);
    }
    return QStringLiteral("<html><head/><body>%1</body></html>").arg(html);
}

void addLine(QFormLayout& form)
{
    auto* line = new QFrame(form.parentWidget());
    line->setFrameShape(QFrame::HLine);
    line->setFrameShadow(QFrame::Sunken);
    form.addRow(line);
}

/// Adds an input with its caption.
void addRow(QFormLayout& form, QWidget& input, const char* name, const cMySettingsField& field)
{
    auto* label = new QLabel(editor::caption(field), form.parentWidget());
    label->setTextFormat(Qt::PlainText);
    label->setBuddy(&input);
    input.setObjectName(QString::fromLatin1(name));
    editor::prepareInput(input, label->text());
    form.addRow(label, &input);
}

/// Lets captions and inputs be of one width in forms that stand side by side.
void alignForms(const std::initializer_list<QFormLayout*>& forms)
{
    for (const auto role : {QFormLayout::LabelRole, QFormLayout::FieldRole}) {
        QList<QWidget*> column;
        int widest = 0;
        for (const QFormLayout* form : forms) {
            for (int row = 0; row < form->rowCount(); ++row) {
                column.append(form->itemAt(row, role)->widget());
                widest = qMax(widest, column.last()->sizeHint().width());
            }
        }
        for (QWidget* widget : qAsConst(column)) {
            widget->setMinimumWidth(widest);
        }
    }
}

quint32 gravityAddress()
{
    return static_cast<quint32>(editor::settingsField(QStringLiteral("gravity")).address);
}

void store(cMyImageGate& gate, const char* fieldName, int number)
{
    const cMySettingsField& field = editor::settingsField(QString::fromLatin1(fieldName));
    gate.setData(static_cast<quint32>(field.address), editor::numberBytes(number, field));
}

} // namespace

cMyParametersTab::cMyParametersTab(const Forms& forms, cMyImageGate& gate, QObject& parent)
    : QObject(&parent), m_gate(gate)
{
    const cMyImageGate::Shut shut(m_gate);
    buildParameters(*forms.parameters);
    addField(*forms.periods, "lOkresA", "periodA");
    addField(*forms.periods, "lOkresB", "periodB");
    addField(*forms.periods, "lOkresC", "periodC");
    addField(*forms.periods, "lOkresD", "periodD");
    addField(*forms.distances, "lDystansE", "distanceE");
    addField(*forms.distances, "lDystansF", "distanceF");
    addField(*forms.distances, "lDystansG", "distanceG");
    m_lastInput = addField(*forms.distances, "lDystansH", "distanceH");
    alignForms({forms.periods, forms.distances});
}

void cMyParametersTab::buildParameters(QFormLayout& form)
{
    m_volume = addPlainNumber<QSpinBox>(form, "par13Sb", "volume");
    addLine(form);
    addField(form, "par1Cb", "depthSamplingRate");
    addField(form, "par2Cb", "suspendDelay");
    addField(form, "par3Cb", "suspendSampling");
    addLine(form);
    const QString advice = paragraphs(
        {tr("Próg zanurzenia powinien być co najmniej 10cm większy od progu wynurzenia."),
         tr("Małe wartości (poniżej 50cm) mogą powodować problemy związane z transportem Miolki "
            "(nieoczekiwane wejście i pozostanie w trybie nurkowania)."),
         tr("Powrót po podłączeniu USB lub manewrze &quot;sztucznego wynurzenia&quot; (szczegóły "
            "w instrukcji).")});
    addField(form, "par4Sb", "diveThreshold")->setToolTip(advice);
    addField(form, "par5Sb", "surfacingThreshold")->setToolTip(advice);
    addField(form, "par6Sb", "ascentThreshold");
    addField(form, "par7Sb", "bottomThreshold");
    addLine(form);
    addField(form, "par8Sb", "salinity");
    addField(form, "par9Cb", "temperatureSource");
    addField(form, "par10Sb", "fixedTemperature")->setToolTip(tr("-10.0 - 100.0"));
    m_altitude = addPlainNumber<QDoubleSpinBox>(form, "par11Sb", "altitude");
    m_latitude = addPlainNumber<QDoubleSpinBox>(form, "par12Sb", "latitude");
    for (QDoubleSpinBox* place : {m_altitude, m_latitude}) {
        // The place is stored in whole metres and degrees. Show that, once it is typed.
        connect(place, &QDoubleSpinBox::editingFinished, place,
                [place] { place->setValue(std::trunc(place->value())); });
    }
}

QWidget* cMyParametersTab::addField(QFormLayout& form, const char* name, const char* fieldName)
{
    const cMySettingsField& field = editor::settingsField(QString::fromLatin1(fieldName));
    QWidget* input = field.optionTable.isEmpty() ? addNumber(field, form.parentWidget())
                                                 : addChoice(field, form.parentWidget());
    addRow(form, *input, name, field);
    return input;
}

QWidget* cMyParametersTab::addChoice(const cMySettingsField& field, QWidget* parent)
{
    auto* input = new cMyComboBoxW2(parent);
    editor::bindInput(*input, field, m_gate);
    input->setModel(editor::loadOptions(field, *this->parent()));
    m_updates.append(
        [this, input, &field] { input->showValue(editor::storedNumber(m_gate.image(), field)); });
    return input;
}

QWidget* cMyParametersTab::addNumber(const cMySettingsField& field, QWidget* parent)
{
    auto* input = new cMyDoubleSpinBoxInt(parent);
    editor::bindInput(*input, field, m_gate);
    input->setRange(field.minimum, field.maximum);
    input->setSuffix(editor::suffix(field));
    input->mySetFaktor(field.factor);
    m_updates.append([this, input, &field] {
        input->showValue(editor::storedNumber(m_gate.image(), field) / input->faktor());
        m_gate.correct(input->binding().filePosition(), input->storedAs());
    });
    return input;
}

template <typename SpinBox>
SpinBox* cMyParametersTab::addPlainNumber(QFormLayout& form, const char* name,
                                          const char* fieldName)
{
    const cMySettingsField& field = editor::settingsField(QString::fromLatin1(fieldName));
    auto* input = new SpinBox(form.parentWidget());
    using Number = decltype(input->value());
    input->setRange(static_cast<Number>(field.minimum), static_cast<Number>(field.maximum));
    input->setSuffix(editor::suffix(field));
    addRow(form, *input, name, field);
    m_updates.append([this, input, &field] {
        input->setValue(editor::storedNumber(m_gate.image(), field));
        m_gate.correct(static_cast<quint32>(field.address),
                       editor::numberBytes(static_cast<int>(input->value()), field));
    });
    return input;
}

void cMyParametersTab::update()
{
    const cMyImageGate::Shut shut(m_gate);
    for (const std::function<void()>& update : qAsConst(m_updates)) {
        update();
    }
    m_gate.correct(gravityAddress(), gravityBytes());
}

QVector<quint8> cMyParametersTab::gravityBytes() const
{
    return editor::numberBytes(editor::storedGravity(m_altitude->value(), m_latitude->value()),
                               editor::settingsField(QStringLiteral("gravity")));
}

void cMyParametersTab::storeAltitude(double altitude)
{
    m_gate.setData(gravityAddress(), gravityBytes());
    store(m_gate, "altitude", static_cast<int>(altitude));
}

void cMyParametersTab::storeLatitude(double latitude)
{
    m_gate.setData(gravityAddress(), gravityBytes());
    store(m_gate, "latitude", static_cast<int>(latitude));
}

void cMyParametersTab::storeVolume(int volume)
{
    store(m_gate, "volume", volume);
}
