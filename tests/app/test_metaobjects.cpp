// SPDX-FileCopyrightText: 2026 The MIOLKAsoft authors
// SPDX-License-Identifier: GPL-3.0-or-later

#include "app/mainwindow.h"
#include "device/miolka.h"
#include "device/miolkastatus.h"
#include "device/portselect.h"
#include "sim/simwidget.h"
#include "sim/simworker.h"

#include <QMetaMethod>
#include <QtTest>

/// The slots and signals that objects offer to one another, and to connections made by name.
class TestMetaObjects : public QObject
{
    Q_OBJECT

private slots:
    void methods_data();
    void methods();
};

namespace {

struct Offer
{
    const QMetaObject& object;
    QMetaMethod::MethodType type;
    QVector<const char*> signatures;
};

QVector<const char*> windowSlots()
{
    return {"openFileDialog(QString)",
            "saveFileDialog(QString)",
            "openFile(QString)",
            "saveFile(QString)",
            "setupAppName()",
            "tabWidgetChanged(int)",
            "newDataRead(MemoryType,quint32,QVector<quint8>)",
            "simulationInProgress(bool)",
            "writeSettingsToMiolka()",
            "readSettingsFromMiolka()",
            "miolkaWriteProgress(int,int,int)",
            "newStatusRead(QStringList)",
            "showMiolkaStatus()",
            "portChanged(QString)",
            "miolkaInBootMode()",
            "param11Changed(double)",
            "param12Changed(double)",
            "param13Changed(int)",
            "descriptionReached()",
            "on_actionReset_triggered()",
            "on_actionClearStats_triggered()",
            "on_actionPowerOff_triggered()",
            "on_actionFirmwareUpdate_triggered()",
            "on_actionLibraryUpdate_triggered()",
            "on_actionPomoc_triggered()",
            "on_actionAbout_triggered()",
            "on_lsetDiveTime_textChanged(QString)",
            "on_lsetMaxDepth_textChanged(QString)"};
}

QVector<Offer> deviceOffers()
{
    return {{cMyMiolka::staticMetaObject,
             QMetaMethod::Slot,
             {"setPort(QString)", "readStatus()", "writeSettings(MemoryType,QStringList&)",
              "readSettings(MemoryType,QStringList&)", "readSerialPort()", "reset(bool)", "boot()",
              "clearStats()", "powerOff()", "breakCommunication()", "cancelDownload()"}},
            {cMyMiolka::staticMetaObject,
             QMetaMethod::Signal,
             {"writeProgress(int,int,int)", "newDataRead(MemoryType,uint,QVector<quint8>)",
              "statusChanged(QStringList)"}},
            {cMyPortSelect::staticMetaObject, QMetaMethod::Slot, {"updatePorts()"}},
            {cMyPortSelect::staticMetaObject,
             QMetaMethod::Signal,
             {"portChanged(QString)", "bootMode()"}},
            {cMyMiolkaStatus::staticMetaObject,
             QMetaMethod::Slot,
             {"setStatus(uchar)", "updateStatus()"}}};
}

QVector<Offer> simulationOffers()
{
    return {
        {cMySimWidget::staticMetaObject,
         QMetaMethod::Slot,
         {"setPortName(QString)", "updateSimValues(QVector<QString>)", "simFinished(bool)",
          "on_pbStartSim_clicked()", "on_pbStopSim_clicked()", "on_simSlider_valueChanged(int)",
          "on_pbSub1_clicked()", "on_pbSub01_clicked()", "on_pbSub001_clicked()",
          "on_pbSet0_clicked()", "on_pbAdd001_clicked()", "on_pbAdd01_clicked()",
          "on_pbAdd1_clicked()"}},
        {cMySimWidget::staticMetaObject,
         QMetaMethod::Signal,
         {"startSimulation(QString,double)", "stopSimulation()",
          "simValuesChanged(QVector<QString>)", "simSpeedChanged(int)",
          "simulationInProgress(bool)"}},
        {cMySimWorker::staticMetaObject,
         QMetaMethod::Slot,
         {"doWork(QString,double)", "setSpeed(int)", "stopWork()"}},
        {cMySimWorker::staticMetaObject,
         QMetaMethod::Signal,
         {"serialPortError(QString)", "finished(bool)", "detpthValues(QString)",
          "valuesChanged(QVector<QString>)"}},
    };
}

void addRows(const QVector<Offer>& offers)
{
    for (const Offer& offer : offers) {
        for (const char* signature : offer.signatures) {
            QTest::addRow("%s::%s", offer.object.className(), signature)
                << &offer.object << static_cast<int>(offer.type) << QByteArray(signature);
        }
    }
}

} // namespace

Q_DECLARE_METATYPE(const QMetaObject*)

void TestMetaObjects::methods_data()
{
    QTest::addColumn<const QMetaObject*>("object");
    QTest::addColumn<int>("type");
    QTest::addColumn<QByteArray>("signature");
    const QMetaObject& window = MainWindow::staticMetaObject;
    addRows(
        {{window, QMetaMethod::Slot, windowSlots()},
         {window,
          QMetaMethod::Signal,
          {"writeToMiolka(MemoryType,QStringList&)", "readFromMiolka(MemoryType,QStringList&)"}}});
    addRows(deviceOffers());
    addRows(simulationOffers());
}

void TestMetaObjects::methods()
{
    QFETCH(const QMetaObject*, object);
    QFETCH(int, type);
    QFETCH(QByteArray, signature);
    const int index = object->indexOfMethod(signature.constData());
    QVERIFY(index >= object->methodOffset()); // not a base class's
    QCOMPARE(static_cast<int>(object->method(index).methodType()), type);
}

QTEST_GUILESS_MAIN(TestMetaObjects)
#include "test_metaobjects.moc"
