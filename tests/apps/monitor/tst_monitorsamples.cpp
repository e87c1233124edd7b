#include "findbar.h"
#include "shellrun.h"
#include "statisticscsv.h"
#include "testbase.h"
#include "testfolder.h"
#include "testwindow.h"

#include <QJsonArray>

/** A real recording in the real window, against what corvel-dump says of the same file. */
class tst_monitorsamples : public TestBase
{
    Q_OBJECT

private Q_SLOTS:
    void aFlightIsShownAsItIs();
    void filtersShowWhatTheyAreAskedFor();
    void whatIsRecordedIsTheSameAgain();
    void recordingsOfTwoFormatsPlaySideBySide();

private:
    ShellRun dump(const char* options) const
    {
        return ShellRun(
            QString("corvel-dump --dialect dialects/ardupilotmega.xml %1 dronekit-flight.tlog").arg(options),
            m_samples + "/mavlink");
    }
    bool openFlight(TestWindow* window) const
    {
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
    QStringList rows(QString("%1 failed, %2 cut off, until %3")
                         .arg(source->getCounters().getChecksumFailureCount())
                         .arg(source->getCounters().getTruncatedBytes())
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
    QVERIFY(window.countedTypes().startsWith("AHRS (1:1) "));
    const QTreeWidgetItem* const bad = window.getStatistics()->topLevelItem(0);
    QCOMPARE(bad->text(0) + ' ' + bad->text(1), QString("CRC Errors 1314"));

    const auto events = [&window]() {
        QString events;
        for (int i = 0; i < window.getEvents()->rowCount(); ++i)
            events += window.getEvents()->item(i, 1)->text() + '\n';
        return events;
    };
    EVENTUALLY(events().contains("ended"));
    QVERIFY2(events().contains("(1,314 in all)") && events().contains("checksum failure, id 142, sender 255:0") &&
                 events().count('\n') < 100,
             qPrintable(events()));

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
                QCOMPARE(name + '=' + shown->text(column), name + '=' + values.at(i).toString());
                ++compared;
            }
        }
    }
    QVERIFY2(compared > 200, qPrintable(QString::number(compared)));
}

void tst_monitorsamples::filtersShowWhatTheyAreAskedFor()
{
    TestWindow window;
    QVERIFY(openFlight(&window));
    // The types that are in sight, and in brackets how many of their fields are.
    const auto shown = [&window]() {
        QStringList rows;
        for (int i = 0; i < window.getTree()->topLevelItemCount(); ++i) {
            const QTreeWidgetItem* const row = window.getTree()->topLevelItem(i);
            int fields = 0;
            for (int j = 0; j < row->childCount(); ++j)
                fields += !row->child(j)->isHidden();
            if (!row->isHidden())
                rows.append(QString("%1 (%2)").arg(row->text(0)).arg(fields));
        }
        return rows.join(", ");
    };
    const QString all = shown();
    // What is typed may be the beginning of a name; and a path is something else than words.
    FindBar* const bar = window.find<TreePanel>()->getFindBar();
    bar->find("*/*/alt");
    QCOMPARE(shown(),
             QString("AHRS2 (1), GLOBAL_POSITION_INT (1), GPS_RAW_INT (2), NAV_CONTROLLER_OUTPUT (1), VFR_HUD (1)"));
    bar->find("vfr alt");
    QCOMPARE(shown(), QString("VFR_HUD (1)"));
    bar->close();
    QCOMPARE(shown(), all);

    // A type that is not ticked leaves the tree, and nothing else does.
    QAbstractItemModel* const types = window.getTypes();
    QVERIFY(types->setData(types->index(0, 0), Qt::Unchecked, Qt::CheckStateRole));
    QCOMPARE(shown(), all.section(", ", 1));
    QVERIFY(types->setData(types->index(0, 0), Qt::Checked, Qt::CheckStateRole));
    QCOMPARE(shown(), all);

    // Whom a message is for is not what it says.
    QAction* const primary = window.findAction("Primary Fields Only");
    QVERIFY(!window.findRow("REQUEST_DATA_STREAM", "target_system")->isHidden());
    primary->trigger();
    QVERIFY(!window.findRow("REQUEST_DATA_STREAM", "target_system"));
    QVERIFY(window.findRow("REQUEST_DATA_STREAM", "req_stream_id"));
    QCOMPARE(shown().count(','), all.count(','));
    primary->trigger();
    QCOMPARE(shown(), all);
}

void tst_monitorsamples::whatIsRecordedIsTheSameAgain()
{
    TestWindow window;
    QVERIFY(openFlight(&window));
    SourceSession* const session = window.getSources()->getSession(0);
    const QString counts = countsOf(session->getSource());
    QString error;
    QVERIFY2(session->startRecording(m_folder.filePath("again.tlog"), &error), qPrintable(error));

    // The views stand still meanwhile, and nothing is lost over it.
    window.setViewsPaused(true);
    const int shownEvents = window.getEvents()->rowCount();
    QSignalSpy jumps(session->getSource(), &StreamSource::sought);
    window.getDesk()->jumpTo(session->getSource()->getStartTime());
    EVENTUALLY(jumps.size() == 1);
    QVERIFY(window.isPlayed(0));
    QCOMPARE(window.getEvents()->rowCount(), shownEvents);
    session->stopRecording();
    window.setViewsPaused(false);
    QVERIFY(window.getEvents()->rowCount() > shownEvents);
    QCOMPARE(countsOf(session->getSource()), counts);

    QVERIFY(window.play(m_folder.filePath("again.tlog")));
    QCOMPARE(countsOf(window.getSources()->getSession(1)->getSource()), counts);

    // Only one of them, and what belongs to the other goes.
    window.getSources()->close(session);
    EVENTUALLY(window.getTree()->topLevelItemCount() == 35);
    QCOMPARE(window.countedTypes().count(','), counts.count('\n') - 1);
}

void tst_monitorsamples::recordingsOfTwoFormatsPlaySideBySide()
{
    TestWindow window;
    QVERIFY(window.play(m_samples + "/mavlink/data.mavlink"));
    QVERIFY(window.play(m_samples + "/protobuf/disappearingVehicle.mcap"));
    SourceSession* const session = window.getSources()->getSession(1);
    QVERIFY(session->getSource()->isSeekable());
    const QString counts = countsOf(session->getSource());
    QCOMPARE(counts.section('\n', 1), QString("1 /PMSF.SensorView 364"));

    QString error;
    QVERIFY(session->startRecording(m_folder.filePath("again.mcap"), &error));
    QSignalSpy jumps(session->getSource(), &StreamSource::sought);
    session->getSource()->seek(session->getSource()->getStartTime());
    EVENTUALLY(jumps.size() == 1);
    QVERIFY(window.isPlayed(1));
    session->stopRecording();
    QCOMPARE(countsOf(session->getSource()), counts);
    QVERIFY(window.play(m_folder.filePath("again.mcap")));
    SourceSession* const again = window.getSources()->getSession(2);
    QCOMPARE(countsOf(again->getSource()), counts);
    QCOMPARE(again->getSource()->getStartTime(), session->getSource()->getStartTime());
    // The same schema gives the same type, so that a tree shows it once.
    QCOMPARE(again->getIdentities().getRows().first().info, session->getIdentities().getRows().first().info);
}

QTEST_MAIN(tst_monitorsamples)
#include "tst_monitorsamples.moc"
