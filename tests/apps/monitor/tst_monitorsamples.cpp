#include "shellrun.h"
#include "statisticscsv.h"
#include "testbase.h"
#include "testfolder.h"
#include "testwindow.h"
#include "treerows.h"

#include <QJsonArray>

/** A real recording in the real window, against what corvel-dump says of the same file. */
class tst_monitorsamples : public TestBase
{
    Q_OBJECT

private Q_SLOTS:
    void aFlightIsShownAsItIs();
    void whatIsRecordedIsTheSameAgain();

private:
    ShellRun dump(const char* options) const
    {
        return ShellRun(
            QString("corvel-dump --dialect dialects/ardupilotmega.xml %1 dronekit-flight.tlog").arg(options),
            m_samples + "/mavlink");
    }
    bool openFlight(TestWindow* window) const
    {
        window->find<TreePanel>()->getRows()->setArrangement(TreeRows::ByType);
        return window->loadDialect(m_samples + "/mavlink/dialects/ardupilotmega.xml", QString()) &&
               window->play(m_samples + "/mavlink/dronekit-flight.tlog") &&
               waitFor([&]() { return window->getTree()->topLevelItemCount() == 35; });
    }

    const QString m_samples = qEnvironmentVariable("CORVEL_SAMPLES_DIR");
    const TestFolder m_folder;
};

static QString sorted(QStringList lines)
{
    lines.sort();
    return lines.join('\n');
}

/** How often each type came from each sender, and what else was counted. */
static QString countsOf(const StreamSource* source)
{
    QStringList rows(QString("%1 failed, %2 cut off, %3 to %4")
                         .arg(source->getCounters().getChecksumFailureCount())
                         .arg(source->getCounters().getTruncatedBytes())
                         .arg(source->getStartTime())
                         .arg(source->getEndTime()));
    for (int i = 0; i < source->getIdentities().getRows().size(); ++i) {
        const StreamIdentities::Row& row = source->getIdentities().getRows().at(i);
        const QString sender = source->getIdentities().getSenderName(row.sender);
        rows.append(QString("%1 %2 %3").arg(row.id).arg(sender).arg(source->getCounters().getCount(i)));
    }
    return sorted(rows);
}

void tst_monitorsamples::aFlightIsShownAsItIs()
{
    TestWindow window;
    QVERIFY(openFlight(&window));
    QStringList expected;
    for (const QJsonValue value : dump("--stats").object()["statistics"].toArray())
        expected.append(QString("%1 (%2): %3, %4 gaps of %5")
                            .arg(value["type"].toString(), value["sender"].toString())
                            .arg(value["messages"].toInt())
                            .arg(value["gapCount"].toInt())
                            .arg(value["missingEpochs"].toInt()));
    QStringList counted;
    const QByteArray csv = StatisticsCsv::toCsv(*window.getDesk()->getCoordinator());
    for (const QString& line : QString::fromUtf8(csv).split("\r\n").mid(1, expected.size())) {
        const QStringList cells = line.split(',');
        counted.append(QString("%1: %2, %3 gaps of %4").arg(cells.at(1), cells.at(2), cells.at(4), cells.at(5)));
    }
    QCOMPARE(sorted(counted), sorted(expected));
    RecordingOverview* const overview = Desk::getOverview(window.getDesk()->getChosenSource());
    EVENTUALLY(overview->isComplete());
    QCOMPARE(sorted(QString::fromUtf8(StatisticsCsv::toCsv(*overview->getCoordinator())).split("\r\n")),
             sorted(QString::fromUtf8(csv).split("\r\n")));
    QVERIFY(window.countedTypes().startsWith("AHRS (1:1) "));
    const QTreeWidgetItem* const bad = window.getStatistics()->topLevelItem(0);
    QCOMPARE(bad->text(0) + ' ' + bad->text(1), QString("CRC Errors 1314"));

    // Played, it is what there is in the whole of it, and what became of the source.
    int damaged = 0;
    const QString whole = window.events();
    for (const QString& line : whole.split('\n'))
        damaged += line.contains("checksum failure, ") ? line.section(' ', 0, 0).remove(',').toInt() : 0;
    QCOMPARE(damaged, 1314);
    window.find<EventPanel>()->setWhole(false);
    EVENTUALLY_IS(window.events(), "1 opened\n" + whole + "\n1 ended");

    QHash<QString, QJsonObject> newest; // fields, by type
    for (const QByteArray& line : dump("--interpreted").output.split('\n')) {
        const QJsonObject message = QJsonDocument::fromJson(line).object();
        newest.insert(message["type"].toString(), message["fields"].toObject());
    }
    const int column = window.getTree()->getColumnIndex(MessageTreeWidget::ValueColumn);
    EVENTUALLY(!window.getTree()->topLevelItem(0)->child(0)->text(column).isEmpty());
    int compared = 0;
    for (auto fields = newest.begin(); fields != newest.end(); ++fields) {
        for (const QString& name : fields->keys()) {
            const QJsonValue value = fields->value(name);
            const QTreeWidgetItem* const row = window.findRow(fields.key(), name);
            const QJsonArray values = value.toArray({value});
            for (int i = 0; row && i < values.size(); ++i) {
                const QTreeWidgetItem* const shown = value.isArray() ? row->child(i) : row;
                if (values.at(i).toString().isEmpty())
                    continue;
                QVERIFY2(shown, qPrintable(name));
                EVENTUALLY_IS(name + '=' + shown->text(column), name + '=' + values.at(i).toString());
                ++compared;
            }
        }
    }
    QVERIFY2(compared > 200, qPrintable(QString::number(compared)));

    // Whom a message is for is not what it says.
    QVERIFY(window.findRow("REQUEST_DATA_STREAM", "target_system"));
    window.findAction("Primary Fields Only")->trigger();
    QVERIFY(!window.findRow("REQUEST_DATA_STREAM", "target_system"));
    QVERIFY(window.findRow("REQUEST_DATA_STREAM", "req_stream_id"));
}

void tst_monitorsamples::whatIsRecordedIsTheSameAgain()
{
    // Of two formats side by side.
    TestWindow window;
    QVERIFY(openFlight(&window));
    QVERIFY(window.play(m_samples + "/protobuf/disappearingVehicle.mcap"));
    const char* const names[] = {"again.tlog", "again.mcap"};
    QStringList counts;
    window.find<EventPanel>()->setWhole(false);
    QString shownEvents;
    for (const int i : {0, 1}) {
        SourceSession* const session = window.getSources()->getSession(i);
        counts.append(countsOf(session->getSource()));
        QString error;
        QVERIFY2(session->startRecording(m_folder.filePath(names[i]), &error), qPrintable(error));
        // The views stand still meanwhile, and nothing is lost over it.
        window.setViewsPaused(true);
        shownEvents = window.events();
        QSignalSpy jumps(session->getSource(), &StreamSource::sought);
        window.getDesk()->chooseSource(session);
        session->getSource()->seek(session->getSource()->getStartTime());
        EVENTUALLY(jumps.size() == 1);
        QVERIFY(window.isPlayed(i));
        session->stopRecording();
        QCOMPARE(countsOf(session->getSource()), counts.last());
    }
    QCOMPARE(window.events(), shownEvents);
    window.setViewsPaused(false);
    QVERIFY(window.events() != shownEvents);
    QCOMPARE(counts.last().section('\n', 1), QString("1 /PMSF.SensorView 364"));

    for (const int i : {0, 1}) {
        QVERIFY(window.play(m_folder.filePath(names[i])));
        SourceSession* const session = window.getSources()->getSession(i);
        SourceSession* const again = window.getSources()->getSession(i + 2);
        QCOMPARE(countsOf(again->getSource()), counts.at(i));
        // The same schema gives the same type, so that a tree shows it once.
        QCOMPARE(again->getIdentities().getRows().first().info, session->getIdentities().getRows().first().info);
    }
    QCOMPARE(window.getTree()->topLevelItemCount(), 36);

    // What belongs to a source goes with it.
    for (int i = 0; i < 3; ++i)
        window.getSources()->close(window.getSources()->getSession(0));
    EVENTUALLY(window.getTree()->topLevelItemCount() == 1);
    QCOMPARE(window.countedTypes(), QString("osi3.SensorView 364"));
}

QTEST_MAIN(tst_monitorsamples)
#include "tst_monitorsamples.moc"
