#include "eventlogtablewidget.h"
#include "mainwindow.h"
#include "messageinfo.h"
#include "messagestatisticswidget.h"
#include "messagetreewidget.h"
#include "testbase.h"
#include "waitfor.h"

#include <QSet>

/** A real recording in the real window. */
class tst_monitorsamples : public TestBase
{
    Q_OBJECT

private Q_SLOTS:
    void aFlightPlaysToItsEnd();
};

void tst_monitorsamples::aFlightPlaysToItsEnd()
{
    const QString folder = QString::fromLocal8Bit(qgetenv("CORVEL_SAMPLES_DIR")) + "/mavlink";
    MainWindow window;
    StreamSource::Playback playback;
    playback.factor = 0;
    window.setPlayback(playback);
    QVERIFY(window.loadDialect(folder + "/dialects/ardupilotmega.xml", QString()));
    window.show();
    QVERIFY(window.openAddress(folder + "/dronekit-flight.tlog"));
    QVERIFY(waitFor([&]() { return window.getSource()->getState() == StreamSource::Finished; }, 60000));
    QCoreApplication::processEvents();

    const ReceptionCounters& counters = window.getSource()->getCounters();
    QCOMPARE(counters.getMessageCount(), quint64(75477));
    QCOMPARE(counters.getChecksumFailureCount(), quint64(1314));
    QSet<QString> types;
    for (const ReceptionCounters::Row& row : counters.getRows())
        types.insert(row.info ? row.info->getName() : QString());
    QCOMPARE(int(types.size()), 35);
    QCOMPARE(window.getTree()->topLevelItemCount(), 35);

    window.getStatistics()->updateTree();
    QStringList top;
    for (int i = 0; i < window.getStatistics()->topLevelItemCount(); ++i)
        top.append(window.getStatistics()->topLevelItem(i)->text(0) + ": " +
                   window.getStatistics()->topLevelItem(i)->text(1));
    top.sort();
    QCOMPARE(top, QStringList() << "CRC Errors: 1314"
                                << "ardupilotmega: ");

    QString events;
    for (int i = 0; i < window.getEvents()->rowCount(); ++i)
        events += window.getEvents()->item(i, 1)->text() + '\n';
    QVERIFY2(events.contains("checksum failure, id 142, sender 255:0"), qPrintable(events));
    QVERIFY(window.getEvents()->rowCount() < 100);
}

QTEST_MAIN(tst_monitorsamples)
#include "tst_monitorsamples.moc"
