#include "corvel.h"
#include "csvfile.h"
#include "desk.h"
#include "eventmodel.h"
#include "eventpanel.h"
#include "fulldisk.h"
#include "mavlinkframes.h"
#include "mcapfixtures.h"
#include "message.h"
#include "testbase.h"
#include "testfolder.h"
#include "textrows.h"
#include "waitfor.h"

#include <QClipboard>
#include <QComboBox>
#include <QFileInfo>
#include <QGuiApplication>
#include <QHeaderView>
#include <QLabel>
#include <QLineEdit>
#include <QMenu>
#include <QScrollBar>
#include <QSettings>
#include <QSignalSpy>
#include <QTemporaryDir>
#include <QTreeView>

#include <numeric>

namespace
{

/** A desk with the list of events. */
struct EventDesk : Desk
{
    explicit EventDesk(const QStringList& sources = {"flight"})
        : panel(this)
    {
        Corvel::setConfidentialInformationDisplayEnabled(false);
        for (const QString& source : sources)
            getEvents()->addSource(source);
        panel.resize(700, 200);
        panel.show();
    }

    /** Something happens of which a severity, a sender, a second and a text are told: "4 1:1 3 lost". */
    void tell(const QString& words, int most = 1000, const QString& kind = QString(), int source = 0)
    {
        const QStringList parts = words.split(' ');
        Event event;
        event.source = source;
        event.type = "Test";
        event.severity = Severity(parts.at(0).toInt());
        event.sender = parts.at(1) == "-" ? QString() : parts.at(1);
        event.text = QStringList(parts.mid(3)).join(' ');
        event.kind = kind;
        event.time = parts.at(2) == "-" ? qint64(Message::NoTime) : parts.at(2).toLongLong() * 1000000;
        event.seen = Message::NoTime;
        event.most = most;
        getEvents()->add(event);
    }

    /** Plays a recording as fast as it can be read, and waits for all that is known of it. */
    bool play(const QString& path)
    {
        SourceOptions options;
        options.address = path;
        StreamSource::Playback playback;
        playback.factor = 0;
        QString error;
        session = getSources()->open(options, playback, &error);
        return session && waitFor([this]() {
                   return session->getState() == SourceSession::Ended && getOverview(session) &&
                          getOverview(session)->isComplete();
               });
    }
    /** The texts of what is shown without what becomes of the source: "Warning 2 lost | Error 1 broken". */
    QString said()
    {
        QStringList texts;
        for (const QString& row : shown().split(" | "))
            if (!row.contains("opened") && !row.contains("ended"))
                texts.append(row.section(", ", 0, 0));
        return texts.join(" | ");
    }

    /** What is shown: "Warning 2 lost, 1:1, 00:00:01-00:00:03 | ...", and how much is not. */
    QString shown()
    {
        panel.tick();
        QStringList rows;
        const QAbstractItemModel* const model = panel.getView()->model();
        for (int row = 0; row < model->rowCount(); ++row) {
            const auto text = [&](int column) { return model->index(row, column).data().toString(); };
            rows.append(text(EventModel::SeverityColumn) + ' ' + text(EventModel::CountColumn) + ' ' +
                        text(EventModel::EventColumn) + ", " + text(EventModel::SourceColumn) + ", " +
                        text(EventModel::FirstColumn).remove(".000") + '-' +
                        text(EventModel::LastColumn).remove(".000"));
        }
        for (const QLabel* label : panel.findChildren<QLabel*>())
            if (label->text().endsWith("hidden") && label->isVisible())
                rows.append(label->text());
        return rows.join(" | ");
    }

    EventPanel panel;
    SourceSession* session = nullptr;
};

/** A recording of status texts, a second apart, each with severity, sender, number and piece, and what it says. */
QByteArray statusTexts(const QStringList& lines)
{
    const MavlinkScript script;
    QByteArray bytes;
    for (int i = 0; i < lines.size(); ++i) {
        const QStringList words = lines.at(i).split(' ');
        MavlinkEncoder message(script.info(253));
        message.set("severity", words.at(0).toInt());
        message.set("id", words.at(2).toInt());
        message.set("chunk_seq", words.at(3).toInt());
        message.setText("text", QStringList(words.mid(4)).join(' ').toUtf8());
        MavlinkEncoder::FrameHeader header = frameHeader(2, i);
        header.system = quint8(words.at(1).toInt());
        bytes += timed(MavlinkScript::Noon + quint64(i) * 1000000, message.toFrame(header));
    }
    return bytes;
}

/** A stream whose causes are counted, and that brings only what it is given. */
struct WatchedStream : StreamDecoder
{
    WatchedStream()
    {
        monitor.begin(this);
        monitor.setListener(&watch);
    }
    void feed(const char*, int, qint64, StreamSink*) override {}
    void finish(StreamSink*) override {}
    void restart(quint64) override {}
    bool hasTimes() const override { return true; }
    QString getSenderName(quint32 sender) const override { return QString::number(sender); }

    /** A problem comes, with its kind and the number that it is about: "8 1". */
    void report(const QString& words)
    {
        StreamProblem problem;
        problem.kind = StreamProblem::Kind(words.section(' ', 0, 0).toInt());
        problem.id = words.section(' ', 1).toUInt();
        monitor.processProblem(problem);
    }
    const EventCauses::Cause& cause() const { return causes.getRows().constFirst(); }

    EventCauses causes;
    EventWatch watch{&causes, 0, false};
    MessageStatisticsCoordinator coordinator;
    ReceptionMonitor monitor{&coordinator};
};

/** What can be done with what is chosen; that of this name is done. */
QString menuText(EventPanel* panel, const QString& triggered = QString())
{
    QStringList texts;
    const std::unique_ptr<QMenu> menu(panel->createMenu());
    for (QAction* action : menu->actions()) {
        texts.append(action->text().remove('&'));
        if (texts.last() == triggered)
            action->trigger();
    }
    return texts.join(", ");
}

} // namespace

/** What happened, by cause. */
class tst_monitorevents : public TestBase
{
    Q_OBJECT

private Q_SLOTS:
    void eachCauseIsARowThatCounts();
    void whatFindsNoRowIsCountedTogether();
    void whatIsTakenOverIsCountedOnce();
    void faultsOfStreamsHaveSeverities();
    void theListIsFilteredSortedCopiedAndCleared();
    void theNewestEventStaysInSight();
    void eventsLeadToTheirTimes();
    void textsOfVehiclesAreEvents();
    void hiddenTextsAreHidden();
    void logsOfRobotsAreEvents();

private:
    TestFolder m_folder;
};

void tst_monitorevents::eachCauseIsARowThatCounts()
{
    const TextRow rows[] = {
        {"4 1:1 3 lost;4 1:1 1 lost;4 2:1 2 lost",
         "Warning 2 lost, 1:1, 00:00:01-00:00:03 | Warning 1 lost, 2:1, 00:00:02-00:00:02"},
        {"4 1:1 1 lost;3 1:1 1 lost", "Warning 1 lost, 1:1, 00:00:01-00:00:01 | Error 1 lost, 1:1, 00:00:01-00:00:01"},
        {"0 - - a;1 - - b;2 - - c;5 - - d;6 - - e;7 - - two\nlines",
         "Emergency 1 a, flight, - | Alert 1 b, flight, - | Critical 1 c, flight, - | Notice 1 d, flight, - | "
         "Information 1 e, flight, - | Debug 1 two lines, flight, -"},
        {"6 - 1 a;6 - 90000 b", "Information 1 a, flight, 1970-01-01 00:00:01-1970-01-01 00:00:01 | "
                                "Information 1 b, flight, 1970-01-02 01:00:00-1970-01-02 01:00:00"},
    };
    checkRows(rows, [](const QString& given) {
        EventDesk desk;
        for (const QString& words : given.split(';'))
            desk.tell(words);
        return desk.shown();
    });

    // Of one kind, each with another figure; and of several sources.
    EventDesk desk({"north", "south"});
    desk.tell("4 - 1 3 bytes skipped", 1000, "bytes skipped");
    QCOMPARE(desk.shown(), QString("Warning 1 3 bytes skipped, north, 00:00:01-00:00:01"));
    desk.tell("4 - 2 7 bytes skipped", 1000, "bytes skipped");
    desk.tell("4 1:1 2 7 bytes skipped", 1000, "bytes skipped", 1);
    QCOMPARE(desk.shown(), QString("Warning 2 bytes skipped, north, 00:00:01-00:00:02 | "
                                   "Warning 1 7 bytes skipped, 1:1 @ south, 00:00:02-00:00:02"));
}

static quint64 sum(const EventCauses& causes)
{
    quint64 all = 0;
    for (const EventCauses::Cause& cause : causes.getRows())
        all += cause.count;
    return all;
}

void tst_monitorevents::whatFindsNoRowIsCountedTogether()
{
    EventDesk desk;
    for (int i = 1; i <= 5; ++i)
        desk.tell(QString("%1 1:1 %2 text %2").arg(7 - i).arg(i), 2);
    desk.tell("6 1:1 9 text 1", 2);
    QCOMPARE(desk.shown(), QString("Information 2 text 1, 1:1, 00:00:01-00:00:09 | "
                                   "Notice 1 text 2, 1:1, 00:00:02-00:00:02 | "
                                   "Critical 3 more than 2 different ones, all others; last: text 5, flight, "
                                   "00:00:03-00:00:05"));
    for (int source = 1; source <= 20000; ++source)
        desk.tell("6 1:1 1 text", 1, QString(), source);
    QCOMPARE(desk.getEvents()->getRows().size(), int(EventCauses::MostRows));
    QCOMPARE(sum(*desk.getEvents()), quint64(20006));
    QVERIFY(desk.shown().endsWith("Information 10,004 The list is full with 10,000 rows: all others are counted here; "
                                  "last: text, , 00:00:01-00:00:01"));
}

void tst_monitorevents::whatIsTakenOverIsCountedOnce()
{
    EventDesk one;
    EventDesk other;
    for (int i = 0; i < 4; ++i)
        for (EventDesk* desk : {&one, &other})
            desk->tell(QString("4 1:1 %1 text %1").arg(i + 1), 3);
    const QString rows = one.shown();
    one.getEvents()->add(*other.getEvents());
    QCOMPARE(sum(*one.getEvents()), quint64(8));
    EventDesk both;
    both.getEvents()->add(*other.getEvents());
    QCOMPARE(both.shown(), rows);
}

void tst_monitorevents::faultsOfStreamsHaveSeverities()
{
    // Of each kind of problem, with its number.
    const TextRow rows[] = {{"0", "Warning"},   {"1", "Warning"}, {"3", "Warning"}, {"4", "Warning"},
                            {"5", "Error"},     {"6", "Error"},   {"7", "Warning"}, {"8 0", "Information"},
                            {"8 1", "Warning"}, {"8 9", "Error"}, {"9", "Warning"}, {"10", "Error"},
                            {"11", "Warning"}};
    checkRows(rows, [](const QString& given) {
        WatchedStream stream;
        stream.report(given);
        return nameOf(stream.cause().newest.severity);
    });

    // A definition that cannot be used is one cause with the messages that need it.
    WatchedStream stream;
    stream.report("6 90");
    QCOMPARE(stream.cause().getCount(), quint64(1));
    ReceivedMessage message;
    message.id = 90;
    for (int i = 0; i < 3; ++i)
        stream.monitor.processReceived(message);
    QCOMPARE(stream.causes.getRows().size(), 1);
    QCOMPARE(stream.cause().getCount(), quint64(3));
}

void tst_monitorevents::theListIsFilteredSortedCopiedAndCleared()
{
    EventDesk desk;
    for (const char* words : {"6 1:1 1 took off", "4 2:1 2 lost a bit", "3 1:1 3 no compass", "4 2:1 4 lost a bit"})
        desk.tell(words);
    const QString all = desk.shown();
    desk.panel.getFilter()->setText("2:1 LOST");
    QCOMPARE(desk.shown(), QString("Warning 2 lost a bit, 2:1, 00:00:02-00:00:04 | 2 hidden"));
    desk.panel.getFilter()->clear();
    desk.panel.getSeverities()->setCurrentIndex(2);
    QCOMPARE(desk.shown(), QString("Error 1 no compass, 1:1, 00:00:03-00:00:03 | 2 hidden"));
    desk.panel.getSeverities()->setCurrentIndex(0);
    QCOMPARE(desk.shown(), all);

    QTreeView* const view = desk.panel.getView();
    view->sortByColumn(EventModel::CountColumn, Qt::DescendingOrder);
    QVERIFY(desk.shown().startsWith("Warning 2"));
    view->sortByColumn(EventModel::SeverityColumn, Qt::AscendingOrder);
    view->selectAll();
    menuText(&desk.panel, "Copy");
    QCOMPARE(QGuiApplication::clipboard()->text(), QString("Error\t1\tno compass\t1:1\t00:00:03.000\t00:00:03.000\t\n"
                                                           "Warning\t2\tlost a bit\t2:1\t00:00:02.000\t00:00:04.000\t\n"
                                                           "Information\t1\ttook off\t1:1\t00:00:01.000\t"
                                                           "00:00:01.000\t"));
    EventModel model;
    model.setCauses(desk.getEvents());
    QCOMPARE(QString(model.toCsv()).section("\r\n", 2, 2),
             QString("Warning,Test,2,lost a bit,lost a bit,2:1,1970-01-01T00:00:02.000Z,1970-01-01T00:00:04.000Z,,"));
    const TestFolder folder;
    const QSignalSpy said(&desk, &Desk::said);
    const QSignalSpy failed(&desk, &Desk::failed);
    CsvFile::write(&desk, folder.filePath("events.csv"), model.toCsv());
    QVERIFY(said.size() == 1 && failed.isEmpty());
    CsvFile::write(&desk, folder.filePath("none/events.csv"), model.toCsv());
    QVERIFY(said.size() == 1 && failed.size() == 1);
    {
        const FullDisk disk(50); // of which a part is taken
        CsvFile::write(&desk, folder.filePath("events.csv"), QByteArray(100, 'x'));
    }
    QVERIFY(said.size() == 1 && failed.size() == 2);
    QCOMPARE(QFileInfo(folder.filePath("events.csv")).size(), qint64(model.toCsv().size()));

    // The views stand still, but for what the user does.
    desk.setPaused(true);
    desk.panel.setViewsPaused(true);
    const QString before = desk.shown();
    desk.tell("4 1:1 5 something else");
    QCOMPARE(desk.shown(), before);
    desk.setPaused(false);
    desk.panel.setViewsPaused(false);
    QVERIFY(desk.shown().contains("something else"));
    menuText(&desk.panel, "Clear Events");
    desk.tell("4 1:1 5 after all");
    QCOMPARE(desk.shown(), QString("Warning 1 after all, 1:1, 00:00:05-00:00:05"));

    int widths = 0;
    for (int column = 0; column < view->header()->count(); ++column)
        widths += view->header()->sectionSize(column);
    QCOMPARE(view->header()->length(), widths); // what is hidden takes no room
    // Which columns there are, and how wide, comes back.
    QSettings settings(folder.filePath("a.ini"), QSettings::IniFormat);
    view->header()->actions().at(EventModel::TypeColumn - EventModel::SourceColumn)->trigger();
    view->header()->resizeSection(EventModel::CountColumn, 123);
    desk.panel.saveSettings(settings);
    EventDesk later;
    later.panel.restoreSettings(settings);
    QVERIFY(!later.panel.getView()->isColumnHidden(EventModel::TypeColumn));
    QCOMPARE(later.panel.getView()->columnWidth(EventModel::CountColumn), 123);
}

void tst_monitorevents::theNewestEventStaysInSight()
{
    EventDesk desk;
    // Where the view stands after more events.
    int told = 0;
    const auto add = [&]() {
        for (int i = 0; i < 100; ++i)
            desk.tell(QString("6 - - %1").arg(++told));
        desk.panel.tick();
        QCoreApplication::processEvents();
        const QScrollBar* const bar = desk.panel.getView()->verticalScrollBar();
        return QString(bar->value() == 0 ? "top" : bar->value() == bar->maximum() ? "end" : "between");
    };
    QCOMPARE(add(), QString("end"));
    desk.panel.getView()->scrollToTop();
    QCOMPARE(add(), QString("top"));
    desk.panel.getView()->scrollToBottom();
    QCOMPARE(add(), QString("end"));
    desk.panel.getView()->sortByColumn(EventModel::EventColumn, Qt::DescendingOrder);
    desk.panel.getView()->scrollToBottom();
    QCOMPARE(add(), QString("between"));
}

void tst_monitorevents::eventsLeadToTheirTimes()
{
    EventDesk desk;
    QSignalSpy said(&desk, &Desk::said);
    desk.tell("6 - - it began");
    desk.tell("4 1:1 1 lost");
    desk.tell("4 1:1 2 lost");
    desk.panel.tick();
    QTreeView* const view = desk.panel.getView();
    view->setCurrentIndex(view->model()->index(0, 0));
    Q_EMIT view->doubleClicked(view->currentIndex());
    QCOMPARE(said.value(0).value(0).toString(), QString("No recording that is open has this time."));
    QCOMPARE(menuText(&desk.panel), QString("Copy, Clear Events, Columns"));
    view->setCurrentIndex(view->model()->index(1, 0));
    QCOMPARE(menuText(&desk.panel), QString("Go to the First, Go to the Last, , Copy, Clear Events, Columns"));
}

void tst_monitorevents::textsOfVehiclesAreEvents()
{
    const QString fifty(50, 'x');
    const struct
    {
        QStringList given;
        QString expected;
    } rows[] = {
        {{"4 1 0 0 low battery", "6 2 0 0 took off", "4 1 0 0 low battery", "2 1 0 0 low battery", "9 1 0 0 what"},
         "Warning 2 low battery | Information 1 took off | Critical 1 low battery | Debug 1 what"},
        {{"4 1 7 0 " + fifty, "4 2 7 0 " + fifty, "4 1 7 1 " + fifty, "4 1 7 2 end", "4 2 7 1 "},
         "Warning 1 " + fifty + fifty + "end | Warning 1 " + fifty},
        {{"4 1 7 0 " + fifty, "4 1 7 2 end", "4 1 8 1 late", "4 1 9 0 " + fifty},
         "Warning 2 " + fifty + text(" | Warning 1 …end | Warning 1 …late")},
    };
    for (const auto& row : rows) {
        EventDesk desk(QStringList{});
        QVERIFY(desk.play(m_folder.write(statusTexts(row.given))));
        QCOMPARE(desk.said(), row.expected);
        QVERIFY(desk.shown().contains("1:1"));
        desk.panel.setWhole(false);
        QCOMPARE(desk.said(), row.expected);
    }
    // Any number of texts: a thousand have rows, and none is lost. Marks are no more than a screen can show.
    QStringList many;
    for (int i = 0; i < 3000; ++i)
        many.append(QString("6 %1 0 0 text %2").arg(1 + i % 250).arg(i));
    EventDesk desk(QStringList{});
    QVERIFY(desk.play(m_folder.write(statusTexts(many))));
    QCOMPARE(desk.getOverview(desk.session)->getEvents()->getRows().size(), 1001);
    QCOMPARE(sum(*desk.getOverview(desk.session)->getEvents()), quint64(3000));
    QVERIFY(desk.getOverview(desk.session)->getEventMarks().size() > 2000);
    // Of more than can be kept, there is one of each severity in each part, up to the end.
    EventMarks marks;
    marks.setSpan(0, 2048000);
    Event event = {};
    for (qint64 time = 0; time < 2048000; time += 10) {
        event.time = time;
        event.severity = Severity(time / 10 % 5);
        marks.add(event, int(time / 10 % 25));
    }
    QVERIFY(marks.get().size() < 40000);
    QVERIFY(marks.get().constLast().time > 2046000);
}

void tst_monitorevents::hiddenTextsAreHidden()
{
    EventDesk desk(QStringList{});
    QStringList problems;
    QVERIFY(desk.getFactory()->annotate(
        m_folder.write("hide.json",
                       "{\"messages\": {\"STATUSTEXT\": {\"fields\": {\"text\": {\"confidential\": true}}}}}"),
        &problems));
    QVERIFY(desk.play(m_folder.write(statusTexts({"4 1 0 0 secret"}))));
    desk.panel.setWhole(false);
    QCOMPARE(desk.said(), QString("Warning 1 Hidden data"));
    desk.setConfidentialShown(true);
    QCOMPARE(desk.said(), QString("Warning 1 secret"));
    desk.setConfidentialShown(false);
    QCOMPARE(desk.said(), QString("Warning 1 Hidden data"));
}

void tst_monitorevents::logsOfRobotsAreEvents()
{
    // Of each type a level with the severity that it means.
    const char* const rows[][3] = {
        {"rcl_interfaces/msg/Log", "10", "Debug"},    {"rcl_interfaces/msg/Log", "30", "Warning"},
        {"rcl_interfaces/msg/Log", "50", "Critical"}, {"rosgraph_msgs/Log", "8", "Error"},
        {"rosgraph_msgs/Log", "2", "Information"},    {"foxglove.Log", "4", "Error"},
        {"foxglove.Log", "0", "Information"},         {"foxglove_msgs/msg/Log", "3", "Warning"},
    };
    McapFixtures::Recording recording(McapFixtures::settings(McapWriter::NoCompression, 1000));
    QStringList expected;
    for (const auto& row : rows) {
        const bool isRos = row[0][0] == 'r';
        const QByteArray text = isRos ? "msg" : "message";
        const QByteArray schema = "{\"type\": \"object\", \"properties\": {\"level\": {\"type\": \"integer\"}, "
                                  "\"name\": {\"type\": \"string\"}, \"" +
                                  text + "\": {\"type\": \"string\"}}}";
        const quint16 channel =
            recording.writer.addChannel("/log", "json", recording.writer.addSchema(row[0], "jsonschema", schema));
        recording.writer.writeMessage(channel, 0, quint64(expected.size() + 1) * 1000000000,
                                      QByteArray("{\"level\": ") + row[1] + ", \"name\": \"node\", \"" + text +
                                          "\": \"it broke " + row[1] + "\"}");
        expected.append(QString("%1 1 node: it broke %2").arg(row[2], row[1]));
    }
    EventDesk desk(QStringList{});
    QVERIFY(desk.play(m_folder.write(recording.finished())));
    QCOMPARE(desk.said(), expected.join(" | "));
    desk.panel.setWhole(false);
    QCOMPARE(desk.said(), expected.join(" | "));
}

QTEST_MAIN(tst_monitorevents)
#include "tst_monitorevents.moc"
