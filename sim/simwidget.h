// SPDX-FileCopyrightText: 2026 The MIOLKAsoft authors
// SPDX-License-Identifier: GPL-3.0-or-later

#ifndef MIOLKA_SIM_SIMWIDGET_H
#define MIOLKA_SIM_SIMWIDGET_H

#include <QPointer>
#include <QThread>
#include <QVector>
#include <QWidget>

#include <functional>
#include <memory>

class QAbstractButton;
class cMySimWorker;

namespace Ui {
class cMySimWidget;
}

/// The page on which a simulated dive is started, steered and watched. Each simulation has a worker
/// in a thread of its own; both delete themselves once they have ended.
class cMySimWidget : public QWidget
{
    Q_OBJECT

public:
    explicit cMySimWidget(QWidget* parent = nullptr);

    /// Waits for whatever still runs; see end().
    ~cMySimWidget() override;
    Q_DISABLE_COPY_MOVE(cMySimWidget)

    /// Ends a running simulation, with the device in its root mode if it still answers, and returns
    /// when nothing of it runs any more, within half a second.
    void end();

    /// For the simulations that are started from now on; as cMySimWorker::setClock().
    void setClock(std::function<qint64()> clock) { m_clock = std::move(clock); }

public slots:
    /// The port that the next simulation uses.
    void setPortName(QString const& portName);

    /// Shows what the device makes of the dive: its lines for the eight records of measured values.
    void updateSimValues(QVector<QString> const& values);

    /// The worker is done.
    void simFinished(bool status);

    void on_pbStartSim_clicked();
    void on_pbStopSim_clicked();
    void on_simSlider_valueChanged(int value);
    void on_pbSub1_clicked();
    void on_pbSub01_clicked();
    void on_pbSub001_clicked();
    void on_pbSet0_clicked();
    void on_pbAdd001_clicked();
    void on_pbAdd01_clicked();
    void on_pbAdd1_clicked();

signals:
    /// A simulation is about to start: who has the port must let go of it before the call returns.
    void portNeeded();

    /// To the worker. The speed is in m/s.
    void startSimulation(QString const& portName, double speed);
    void stopSimulation();

    /// Never emitted.
    void simValuesChanged(QVector<QString> const&);

    /// The chosen vertical speed in cm/s, positive downwards.
    void simSpeedChanged(int newSpeed);

    /// True when a simulation was started, false when it has ended; in turns.
    void simulationInProgress(bool state);

protected:
    void paintEvent(QPaintEvent* event) override;

private:
    void connectWorker();
    void setRunning(bool isRunning);
    void changeSpeed(int centimetresPerSecond);
    void join();
    static void emphasise(QAbstractButton& button);
    void enlargeValues();

    std::unique_ptr<Ui::cMySimWidget> ui;
    QPointer<QThread> m_thread;
    QPointer<cMySimWorker> m_worker;
    QString m_portName;
    std::function<qint64()> m_clock; ///< empty for the worker's own
    bool m_isRunning = false;
    QVector<QPointer<QThread>> m_threads; ///< all that may not have ended yet
};

#endif
