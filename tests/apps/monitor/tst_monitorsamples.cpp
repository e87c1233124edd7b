#include "eventlogtablewidget.h"
#include "findbar.h"
#include "messageinfo.h"
#include "messagestatisticswidget.h"
#include "messagetreewidget.h"
#include "testbase.h"
#include "testwindow.h"
#include "waitfor.h"

#include <QAction>
#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>
#include <QMap>
#include <QProcess>
#include <QRegularExpression>
#include <QTemporaryDir>

/** A real recording in the real window, against what corvel-dump says of the same file. */
class tst_monitorsamples : public TestBase
{
    Q_OBJECT

private Q_SLOTS:
    void initTestCase();
    void aFlightIsShownAsItIs();
    void filtersShowWhatTheyAreAskedFor();
    void whatIsRecordedIsTheSameAgain();
    void recordingsOfTwoFormatsPlaySideBySide();

private:
    QByteArray dump(const QStringList& arguments) const;
    std::unique_ptr<TestWindow> openFlight() const;
    static bool isOver(const StreamSource* source) { return source->getState() == StreamSource::Finished; }
    QHash<QString, QJsonObject> newestFields() const;
    static QStringList statisticsOf(const TestWindow& window);
    static QStringList countsOf(const StreamSource* source);

    QString m_samples;
    QString m_dialect;
    QString m_flight;
    QJsonObject m_stats; // of the flight
};

QByteArray tst_monitorsamples::dump(const QStringList& arguments) const
{
    QProcess process;
    process.setStandardErrorFile(QProcess::nullDevice());
    process.start(QStringLiteral(CORVEL_DUMP_PROGRAM), QStringList{"--dialect", m_dialect} + arguments);
    process.waitForFinished(60000);
    return process.readAllStandardOutput();
}

void tst_monitorsamples::initTestCase()
{
    m_samples = QString::fromLocal8Bit(qgetenv("CORVEL_SAMPLES_DIR"));
    m_dialect = m_samples + "/mavlink/dialects/ardupilotmega.xml";
    m_flight = m_samples + "/mavlink/dronekit-flight.tlog";
    m_stats = QJsonDocument::fromJson(dump({"--stats", m_flight})).object();
    QCOMPARE(m_stats["messages"].toInt(), 75477);
}

std::unique_ptr<TestWindow> tst_monitorsamples::openFlight() const
{
    std::unique_ptr<TestWindow> window(new TestWindow);
    StreamSource::Playback playback;
    playback.factor = 0;
    window->setPlayback(playback);
    if (!window->loadDialect(m_dialect, QString()))
        return nullptr;
    window->show();
    if (!window->openAddress(m_flight) ||
        !waitFor([&]() { return isOver(window->getSource()) && window->getTree()->topLevelItemCount() == 35; }, 60000))
        return nullptr;
    return window;
}

/** The fields of the newest message of each type, as the dump has them. */
QHash<QString, QJsonObject> tst_monitorsamples::newestFields() const
{
    QHash<QString, QJsonObject> newest;
    for (const QByteArray& line : dump({"--interpreted", m_flight}).split('\n')) {
        const QJsonObject message = QJsonDocument::fromJson(line).object();
        newest.insert(message["type"].toString(), message["fields"].toObject());
    }
    return newest;
}

static QString describeIntervals(const QMap<qint64, qint64>& counts)
{
    QStringList intervals;
    for (auto count = counts.begin(); count != counts.end(); ++count)
        intervals.append(QString("%1 ms x %2").arg(count.key()).arg(count.value()));
    return intervals.join(' ');
}

/** Each row of a message type: its name and count, its gaps and what is missing in them, and its intervals. */
QStringList tst_monitorsamples::statisticsOf(const TestWindow& window)
{
    window.getStatistics()->updateTree();
    QStringList rows;
    for (int i = 0; i < window.getStatistics()->topLevelItemCount(); ++i) {
        const QTreeWidgetItem* format = window.getStatistics()->topLevelItem(i);
        for (int j = 0; j < format->childCount(); ++j) {
            MessageStatisticsTreeWidgetItem* row = dynamic_cast<MessageStatisticsTreeWidgetItem*>(format->child(j));
            const MessageStatistics* const statistics = row->getMessageStatistics();
            QMap<qint64, qint64> intervals;
            const QHash<long long, unsigned int> counts = statistics->getIntervalCountHash();
            for (auto count = counts.begin(); count != counts.end(); ++count)
                intervals.insert(count.key(), count.value());
            rows.append(QString("%1: %2, %3 gaps of %4, %5")
                            .arg(row->text(0), row->text(1))
                            .arg(statistics->getNumberOfGaps())
                            .arg(statistics->getNumberOfMissingEpochs())
                            .arg(describeIntervals(intervals)));
        }
    }
    rows.sort();
    return rows;
}

QStringList tst_monitorsamples::countsOf(const StreamSource* source)
{
    QStringList rows;
    for (int i = 0; i < source->getIdentities().getRows().size(); ++i) {
        const StreamIdentities::Row& row = source->getIdentities().getRows().at(i);
        const QString sender = source->getIdentities().getSenderName(row.sender);
        rows.append(QString("%1 %2 %3").arg(row.id).arg(sender).arg(source->getCounters().getCount(i)));
    }
    rows.sort();
    rows.append(QString("%1 checksum failures").arg(source->getCounters().getChecksumFailureCount()));
    return rows;
}

void tst_monitorsamples::aFlightIsShownAsItIs()
{
    const std::unique_ptr<TestWindow> window = openFlight();
    QVERIFY(window);

    QStringList expected;
    for (const QJsonValue& value : m_stats["statistics"].toArray()) {
        QMap<qint64, qint64> intervals;
        const QJsonObject counts = value["intervals"].toObject();
        for (auto count = counts.begin(); count != counts.end(); ++count)
            intervals.insert(count.key().toLongLong(), qint64(count.value().toDouble()));
        expected.append(QString("%1 (%2): %3, %4 gaps of %5, %6")
                            .arg(value["type"].toString(), value["sender"].toString())
                            .arg(value["messages"].toInt())
                            .arg(value["gapCount"].toInt())
                            .arg(value["missingEpochs"].toInt())
                            .arg(describeIntervals(intervals)));
    }
    expected.sort();
    QCOMPARE(statisticsOf(*window), expected);
    QStringList top;
    for (int i = 0; i < window->getStatistics()->topLevelItemCount(); ++i)
        top.append(window->getStatistics()->topLevelItem(i)->text(0) + ": " +
                   window->getStatistics()->topLevelItem(i)->text(1));
    top.sort();
    QCOMPARE(top, QStringList() << QString("CRC Errors: %1").arg(m_stats["events"].toObject()["CRC error"].toInt())
                                << "ardupilotmega: ");

    QString events;
    QVERIFY(waitFor([&]() {
        events.clear();
        for (int i = 0; i < window->getEvents()->rowCount(); ++i)
            events += window->getEvents()->item(i, 1)->text() + '\n';
        return events.contains("ended");
    }));
    QVERIFY2(events.contains("(1,314 in all)") && events.contains("checksum failure, id 142, sender 255:0"),
             qPrintable(events));
    QVERIFY(window->getEvents()->rowCount() < 100);

    const QHash<QString, QJsonObject> newest = newestFields();
    MessageTreeWidget* const tree = window->getTree();
    const int column = tree->getColumnIndex(MessageTreeWidget::ValueColumn);
    QVERIFY(waitFor([&]() { return !tree->topLevelItem(0)->child(0)->text(column).isEmpty(); }));
    int compared = 0;
    for (int i = 0; i < tree->topLevelItemCount(); ++i) {
        const QTreeWidgetItem* row = tree->topLevelItem(i);
        const QJsonObject fields = newest.value(row->text(0));
        for (int j = 0; j < row->childCount(); ++j) {
            const QTreeWidgetItem* const field = row->child(j);
            const QJsonArray values = fields[field->text(0)].toArray({fields[field->text(0)]});
            for (int k = 0; k < values.size(); ++k) {
                const QTreeWidgetItem* const shown = fields[field->text(0)].isArray() ? field->child(k) : field;
                if (!values.at(k).isString() || values.at(k).toString().isEmpty())
                    continue;
                QVERIFY2(shown, qPrintable(field->text(0)));
                const QString place = row->text(0) + '/' + shown->text(0) + '=';
                QCOMPARE(place + shown->text(column), place + values.at(k).toString());
                ++compared;
            }
        }
    }
    QVERIFY2(compared > 200, qPrintable(QString::number(compared)));
}

/** The types that are in sight, and below them, after a colon, their fields. */
static QStringList shownRows(const QTreeWidget* tree)
{
    QStringList rows;
    for (int i = 0; i < tree->topLevelItemCount(); ++i) {
        const QTreeWidgetItem* const row = tree->topLevelItem(i);
        QStringList fields;
        for (int j = 0; j < row->childCount(); ++j)
            if (!row->child(j)->isHidden())
                fields.append(row->child(j)->text(0));
        if (!row->isHidden())
            rows.append(row->text(0) + ':' + fields.join(','));
    }
    return rows;
}

void tst_monitorsamples::filtersShowWhatTheyAreAskedFor()
{
    const std::unique_ptr<TestWindow> window = openFlight();
    QVERIFY(window);
    const QHash<QString, QJsonObject> newest = newestFields();
    QStringList withAltitude;
    QStringList withTarget;
    for (auto fields = newest.begin(); fields != newest.end(); ++fields) {
        // What is typed may be the beginning of a name.
        if (!fields->keys().filter(QRegularExpression("^alt")).isEmpty())
            withAltitude.append(fields.key());
        if (fields->contains("target_system"))
            withTarget.append(fields.key());
    }
    withAltitude.sort();
    QVERIFY(withAltitude.size() > 2 && !withTarget.isEmpty());

    // Find: a path, and a word that is part of it as well as of others.
    MessageTreeWidget* const tree = window->getTree();
    const QStringList all = shownRows(tree);
    FindBar* const bar = window->find<TreePanel>()->getFindBar();
    bar->find("*/*/alt");
    QCOMPARE(shownRows(tree).replaceInStrings(QRegularExpression(":alt.*"), QString()), withAltitude);
    bar->find("vfr alt");
    QCOMPARE(shownRows(tree), QStringList("VFR_HUD:alt"));
    bar->close();
    QCOMPARE(shownRows(tree), all);

    // A type that is not ticked leaves the tree, and nothing else does.
    QAbstractItemModel* const types = window->getTypes();
    const QString first = types->index(0, 0).data().toString();
    QVERIFY(types->setData(types->index(0, 0), Qt::Unchecked, Qt::CheckStateRole));
    QStringList left = all;
    left.removeOne(left.filter(first + ':').value(0));
    QCOMPARE(shownRows(tree), left);
    QVERIFY(types->setData(types->index(0, 0), Qt::Checked, Qt::CheckStateRole));
    QCOMPARE(shownRows(tree), all);

    // Whom a message is for is not what it says.
    QAction* const primary = window->findAction("Primary Fields Only");
    QVERIFY(primary);
    QVERIFY(all.filter("target_system").size() >= withTarget.size());
    primary->trigger();
    QCOMPARE(shownRows(tree).filter("target_system"), QStringList());
    QCOMPARE(shownRows(tree).size(), all.size());
    primary->trigger();
    QCOMPARE(shownRows(tree), all);
}

void tst_monitorsamples::whatIsRecordedIsTheSameAgain()
{
    const std::unique_ptr<TestWindow> window = openFlight();
    QVERIFY(window);
    SourceSession* const session = window->getSources()->getSession(0);
    const QStringList counts = countsOf(session->getSource());
    QTemporaryDir folder;
    const QString path = folder.filePath("again.tlog");
    QString error;
    QVERIFY2(session->startRecording(path, &error), qPrintable(error));

    // The views stand still meanwhile, and nothing is lost over it.
    window->setViewsPaused(true);
    const int shownEvents = window->getEvents()->rowCount();
    QSignalSpy jumps(session->getSource(), &StreamSource::sought);
    window->getDesk()->jumpTo(session->getSource()->getStartTime());
    QVERIFY(waitFor([&]() { return jumps.size() == 1 && isOver(session->getSource()); }, 60000));
    QCOMPARE(window->getEvents()->rowCount(), shownEvents);
    session->stopRecording();
    window->setViewsPaused(false);
    QVERIFY(window->getEvents()->rowCount() > shownEvents);
    QCOMPARE(countsOf(session->getSource()), counts);

    QVERIFY(window->openAddress(path));
    SourceSession* const again = window->getSources()->getSession(1);
    QVERIFY(waitFor([&]() { return isOver(again->getSource()); }, 60000));
    QCOMPARE(countsOf(again->getSource()), counts);
    QCOMPARE(again->getSource()->getEndTime(), session->getSource()->getEndTime());
    // The end of the flight, a frame that was cut off, is there too.
    QCOMPARE(again->getCounters().getTruncatedBytes(), session->getCounters().getTruncatedBytes());

    // Only one of them, and what belongs to the other goes.
    window->getSources()->close(session);
    QVERIFY(waitFor([&]() { return window->getTree()->topLevelItemCount() == 35; }));
    QCOMPARE(statisticsOf(*window).size(), counts.size() - 1);
}

void tst_monitorsamples::recordingsOfTwoFormatsPlaySideBySide()
{
    TestWindow window;
    StreamSource::Playback playback;
    playback.factor = 0;
    window.setPlayback(playback);
    window.show();
    const QString path = m_samples + "/protobuf/disappearingVehicle.mcap";
    QVERIFY(window.openAddress(m_samples + "/mavlink/data.mavlink"));
    QVERIFY(window.openAddress(path));
    SourceSession* const session = window.getSources()->getSession(1);
    QVERIFY(waitFor([&]() { return isOver(session->getSource()); }, 60000));
    QVERIFY(session->getSource()->isSeekable());
    const quint64 count = session->getCounters().getMessageCount();
    QVERIFY(count > 0);

    QTemporaryDir folder;
    QString error;
    QVERIFY(session->startRecording(folder.filePath("again.mcap"), &error));
    QSignalSpy jumps(session->getSource(), &StreamSource::sought);
    session->getSource()->seek(session->getSource()->getStartTime());
    QVERIFY(waitFor([&]() { return jumps.size() == 1 && isOver(session->getSource()); }, 60000));
    session->stopRecording();
    QCOMPARE(session->getCounters().getMessageCount(), count);
    QVERIFY(window.openAddress(folder.filePath("again.mcap")));
    SourceSession* const again = window.getSources()->getSession(2);
    QVERIFY(waitFor([&]() { return isOver(again->getSource()); }, 60000));
    QCOMPARE(again->getCounters().getMessageCount(), count);
    QCOMPARE(again->getSource()->getStartTime(), session->getSource()->getStartTime());
    // The same schema gives the same type, so that a tree shows it once.
    QCOMPARE(again->getIdentities().getRows().first().info, session->getIdentities().getRows().first().info);
}

QTEST_MAIN(tst_monitorsamples)
#include "tst_monitorsamples.moc"
