// SPDX-FileCopyrightText: 2026 The MIOLKAsoft authors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "sim/simwidget.h"

#include "image/hexrecord.h"
#include "sim/simworker.h"
#include "ui_simwidget.h"

#include <QCoreApplication>
#include <QFontInfo>
#include <QPainter>
#include <QStyleOption>

#include <limits>

namespace {

/// A value label: which of the device's records its number comes from, and where in it.
struct ShownValue
{
    QLabel* Ui_cMySimWidget::*label;
    int record;
    unsigned char offset;
    int decimals;
    const char* unit;
};

constexpr ShownValue shownValues[] = {
    {&Ui_cMySimWidget::simAbsP, 0, 0, 0, " mbar"},
    {&Ui_cMySimWidget::simSurfaceP, 1, 0, 0, " mbar"},
    {&Ui_cMySimWidget::simDepth, 4, 0, 2, " m"},
    {&Ui_cMySimWidget::simDepthMax, 4, 4, 2, " m"},
    {&Ui_cMySimWidget::simDepthAvr, 4, 6, 2, " m"},
    {&Ui_cMySimWidget::simDiveTime, 5, 0, 0, " s"},
    {&Ui_cMySimWidget::simSurfaceTime, 5, 2, 0, " s"},
    {&Ui_cMySimWidget::simDescentTime, 5, 4, 0, " s"},
    {&Ui_cMySimWidget::simBottomTime, 5, 6, 0, " s"},
    {&Ui_cMySimWidget::simAscentTime, 5, 8, 0, " s"},
    {&Ui_cMySimWidget::simSpeed, 6, 0, 2, " m/s"},
    {&Ui_cMySimWidget::simSpeedMin, 6, 2, 2, " m/s"},
    {&Ui_cMySimWidget::simSpeedMax, 6, 4, 2, " m/s"},
    {&Ui_cMySimWidget::simSpeedUpAvr, 6, 6, 2, " m/s"},
    {&Ui_cMySimWidget::simSpeedDownAvr, 6, 8, 2, " m/s"},
    {&Ui_cMySimWidget::simStoper0, 7, 0, 0, " s"},
    {&Ui_cMySimWidget::simTimer1, 7, 2, 0, " s"},
    {&Ui_cMySimWidget::simTimer2, 7, 4, 0, " s"},
    {&Ui_cMySimWidget::simTimer3, 7, 6, 0, " s"},
};

QString valueText(int number, const ShownValue& shown)
{
    constexpr double hundredths = 100;
    const QString text = shown.decimals == 0
                             ? QString::number(number)
                             : QString::number(number / hundredths, 'f', shown.decimals);
    return text + QLatin1String(shown.unit);
}

// Steps of the vertical speed, in cm/s.
constexpr int bigStep = 100;
constexpr int middleStep = 10;
constexpr int smallStep = 1;

} // namespace

cMySimWidget::cMySimWidget(QWidget* parent)
    : QWidget(parent), ui(std::make_unique<Ui::cMySimWidget>())
{
    ui->setupUi(this);
    enlargeValues();
    emphasise(*ui->pbStopSim);
    emphasise(*ui->pbSet0);
    // Its zero is in the middle: the part from one end to the handle says nothing.
    QPalette plain = ui->simSlider->palette();
    plain.setColor(QPalette::Highlight, plain.color(QPalette::Mid));
    ui->simSlider->setPalette(plain);
    ui->simSlider->setValue(0);
    setRunning(false);
}

cMySimWidget::~cMySimWidget()
{
    join();
}

void cMySimWidget::join()
{
    m_threads.removeAll({});
    for (const QPointer<QThread>& thread : qAsConst(m_threads)) {
        thread->requestInterruption();
        // What the worker's end is connected to would need our event loop.
        thread->quit();
    }
    for (const QPointer<QThread>& each : qAsConst(m_threads)) {
        const std::unique_ptr<QThread> thread(each.data());
        thread->wait();
    }
    m_threads.clear();
}

void cMySimWidget::end()
{
    join();
    // The worker may have told of its end already; it is told below.
    QCoreApplication::removePostedEvents(this, QEvent::MetaCall);
    if (m_isRunning) {
        simFinished(false);
    }
}

void cMySimWidget::setPortName(QString const& portName)
{
    m_portName = portName;
}

void cMySimWidget::on_pbStartSim_clicked()
{
    if (m_isRunning) {
        return;
    }
    emit portNeeded();
    m_thread = new QThread;
    m_worker = new cMySimWorker;
    if (m_clock) {
        m_worker->setClock(m_clock);
    }
    m_worker->moveToThread(m_thread);
    m_threads.removeAll({});
    m_threads.append(m_thread);
    connectWorker();
    m_thread->start();
    setRunning(true);
    emit startSimulation(m_portName, 0.0);
    emit simulationInProgress(true);
}

void cMySimWidget::connectWorker()
{
    connect(m_worker, &cMySimWorker::finished, this, &cMySimWidget::simFinished);
    connect(m_worker, &cMySimWorker::finished, m_thread, &QThread::quit);
    connect(m_thread, &QThread::finished, m_worker, &QObject::deleteLater);
    connect(m_thread, &QThread::finished, m_thread, &QObject::deleteLater);
    // Its thread is busy until the end and would deliver nothing.
    connect(this, &cMySimWidget::simSpeedChanged, m_worker, &cMySimWorker::setSpeed,
            Qt::DirectConnection);
    connect(this, &cMySimWidget::stopSimulation, m_worker, &cMySimWorker::stopWork,
            Qt::DirectConnection);
    connect(this, &cMySimWidget::startSimulation, m_worker, &cMySimWorker::doWork);
    connect(m_worker, &cMySimWorker::valuesChanged, this, &cMySimWidget::updateSimValues);
}

void cMySimWidget::setRunning(bool isRunning)
{
    m_isRunning = isRunning;
    ui->simSlider->setEnabled(isRunning);
    ui->pbStartSim->setEnabled(!isRunning);
    for (QPushButton* button : {ui->pbStopSim, ui->pbSub1, ui->pbSub01, ui->pbSub001, ui->pbSet0,
                                ui->pbAdd001, ui->pbAdd01, ui->pbAdd1}) {
        button->setEnabled(isRunning);
    }
}

void cMySimWidget::on_pbStopSim_clicked()
{
    emit stopSimulation();
}

void cMySimWidget::simFinished(bool /*status*/)
{
    ui->simSlider->setValue(0);
    setRunning(false);
    if (m_worker != nullptr) {
        // A simulation that is started from here must not start this worker, too.
        disconnect(this, nullptr, m_worker, nullptr);
    }
    emit simulationInProgress(false);
}

void cMySimWidget::updateSimValues(QVector<QString> const& values)
{
    cMyHexRecord record;
    int read = -1;
    for (const ShownValue& shown : shownValues) {
        if (shown.record != read) {
            read = shown.record;
            record.fromString(values.value(read));
        }
        ((*ui).*(shown.label))->setText(valueText(record.getQint16(shown.offset), shown));
    }
}

void cMySimWidget::on_simSlider_valueChanged(int value)
{
    emit simSpeedChanged(value);
}

void cMySimWidget::changeSpeed(int centimetresPerSecond)
{
    ui->simSlider->setValue(ui->simSlider->value() + centimetresPerSecond);
}

void cMySimWidget::on_pbSub1_clicked()
{
    changeSpeed(-bigStep);
}

void cMySimWidget::on_pbSub01_clicked()
{
    changeSpeed(-middleStep);
}

void cMySimWidget::on_pbSub001_clicked()
{
    changeSpeed(-smallStep);
}

void cMySimWidget::on_pbSet0_clicked()
{
    ui->simSlider->setValue(0);
}

void cMySimWidget::on_pbAdd001_clicked()
{
    changeSpeed(smallStep);
}

void cMySimWidget::on_pbAdd01_clicked()
{
    changeSpeed(middleStep);
}

void cMySimWidget::on_pbAdd1_clicked()
{
    changeSpeed(bigStep);
}

void cMySimWidget::paintEvent(QPaintEvent* /*event*/)
{
    QStyleOption option;
    option.initFrom(this);
    QPainter painter(this);
    style()->drawPrimitive(QStyle::PE_Widget, &option, &painter, this);
}

void cMySimWidget::enlargeValues()
{
    constexpr double scale = 1.6;
    constexpr int widestNumber = std::numeric_limits<qint16>::min();
    for (const ShownValue& shown : shownValues) {
        QLabel* label = (*ui).*(shown.label);
        QFont font = label->font();
        font.setPointSizeF(QFontInfo(font).pointSizeF() * scale); // it may be one of pixels
        label->setFont(font);
        // Numbers that come and go must not have the page laid out anew in each cycle.
        const QString widest = valueText(widestNumber, shown);
        label->setFixedSize(label->fontMetrics().horizontalAdvance(widest),
                            label->sizeHint().height());
    }
}

void cMySimWidget::emphasise(QAbstractButton& button)
{
    // Our accent, but darker: styles light a button up, and white must be read on it.
    const QColor accent = QColor(0x0B, 0x7A, 0x8F).darker(170);
    QPalette palette = button.palette();
    for (const auto group : {QPalette::Active, QPalette::Inactive}) {
        palette.setColor(group, QPalette::Button, accent);
        palette.setColor(group, QPalette::ButtonText, Qt::white);
    }
    button.setPalette(palette);
    QFont font = button.font();
    font.setBold(true);
    button.setFont(font);
}
