#include "bitsstrip.h"
#include "bytespanel.h"
#include "bytesview.h"
#include "definitions.h"
#include "desk.h"
#include "encoding.h"
#include "fieldinfo.h"
#include "fieldsummary.h"
#include "formatinfo.h"
#include "mavlinkframes.h"
#include "messagelist.h"
#include "messagespanel.h"
#include "messagetreewidget.h"
#include "panelset.h"
#include "testbase.h"
#include "testfolder.h"
#include "textrows.h"
#include "treepanel.h"
#include "treerows.h"
#include "waitfor.h"

#include <QAction>
#include <QClipboard>
#include <QGuiApplication>
#include <QScrollBar>
#include <QSignalSpy>
#include <QTableView>
#include <QToolButton>

/** The list of messages, and what it says of each. */
class tst_monitormessages : public TestBase
{
    Q_OBJECT

private Q_SLOTS:
    void saysMessagesInALine();
    void listsEveryMessageOfWhatIsChosen();
    void standsStillWhileSomebodyReads();
    void keepsTheLastOnes();
    void readsOutOfARecordingWhatCameBefore();
    void hidesWhatIsConfidential();
    void marksTheBytesOfAField();
    void leadsFromBytesToFields();
    void goesThroughBytesByKeys();
};

namespace
{

/** A desk with the list, and messages of attitudes ("A") and heartbeats ("H"). */
struct ListDesk : Desk
{
    ListDesk()
    {
        panel.resize(900, 300);
        panel.show();
        panel.refresh();
    }

    const MessageInfo* infoOf(char word) const { return script.info(word == 'A' ? 30 : 0); }

    void send(char word, int number, qint64 time, const QString& sender = text("1:1"), const QByteArray& data = "")
    {
        const QByteArray frame = data.isEmpty() ? script.bytes(QChar(word) + QString::number(number)) : data;
        Message* const message = new Message(infoOf(word), frame);
        message->setTime(time);
        message->setSequence(number);
        message->setSender(sender);
        getTap()->deliver(MessageReference::adopt(message).get());
    }

    /** "00:00:00.000005 20.000 ms 1:1 ATTITUDE 7" of each row, up to the column of that number. */
    QString shown(int first = 0, int last = MessageList::SequenceColumn)
    {
        panel.refresh();
        const QAbstractItemModel* const model = panel.getView()->model();
        QStringList rows;
        for (int row = 0; row < model->rowCount(); ++row) {
            QStringList texts;
            for (int column = first; column <= last; ++column)
                texts.append(model->index(row, column).data().toString());
            rows.append(texts.join(QLatin1Char(' ')).simplified());
        }
        return rows.join(text(", "));
    }
    void trigger(const char* key) const
    {
        for (QAction* const action : panel.getView()->actions())
            if (action->shortcut() == QKeySequence(text(key)))
                action->trigger();
    }
    QString numbers() { return shown(MessageList::SequenceColumn); }

    MavlinkScript script;
    MessagesPanel panel{this};
};

/** A desk with the tree, the list and the bytes. */
struct BytesDesk : Desk
{
    BytesDesk()
    {
        for (const MessageInfo* const info : {attitude, heartbeat})
            tree().getRows()->set({{info, text("1:1")}}, true);
        bytes().resize(700, 300);
        bytes().show();
        tree().getWidget()->show();
    }

    static QVector<PanelRow> rows()
    {
        QVector<PanelRow> rows;
        for (const PanelRow& row : getPanelTable())
            if (QStringList{text("tree"), text("bytes")}.contains(text(row.id)))
                rows.append(row);
        return rows;
    }
    TreePanel& tree() const { return *panels.find<TreePanel>(); }
    BytesPanel& bytes() const { return *panels.find<BytesPanel>(); }

    MessageReference make(const char* word) const
    {
        Message* const message =
            new Message(*word == 'A' ? attitude : heartbeat, script.bytes(QString::fromLatin1(word)));
        message->setSender(text("1:1"));
        return MessageReference::adopt(message);
    }
    void sendNewest(const char* word) { Q_EMIT getLatest()->newMessage(make(word).get()); }

    /** Makes a row current in the tree, of a type or of a field in it. */
    void choose(const MessageInfo* info, const char* field = "", const char* part = "")
    {
        FieldPath path(info);
        for (const char* const step : {field, part})
            if (*step)
                path.append(text(step));
        tree().getRows()->revealField(path, text("1:1"));
    }
    /** What is current in the tree. */
    QString current() const { return getCurrentField().getFieldName(); }

    MavlinkScript script;
    const MessageInfo* attitude = script.info(30);
    const MessageInfo* heartbeat = script.info(0);
    PanelSet panels{this, rows()};
};

} // namespace

void tst_monitormessages::saysMessagesInALine()
{
    static const TextRow rows[] = {
        {R"({"a": 1.23456789, "b": true, "text": "one\ntwo"})", "a 1.2346   b true   text one\u21b5two"},
        {R"({"header": {"frame": "map"}, "pose": {"x": 1, "far": {"y": 2}}, "list": [1, 2, 3, 4, 5]})",
         "pose.x 1   pose.far.y 2   list [1, 2, 3, 4, \u2026]   header.frame map"},
        {R"({"objects": [{"x": 1}, {"x": 2}], "none": null, "latitude": 48.123456789})",
         "objects \u00d7 2   latitude 48.1234568"},
        {R"({"a":1,"b":2,"c":3,"d":4,"e":5,"f":6,"g":7,"h":8})", "a 1   b 2   c 3   d 4   e 5   f 6   g 7   h 8"},
        {R"({"a":1,"b":2,"c":3,"d":4,"e":5,"f":6,"g":7,"h":8,"i":9})",
         "a 1   b 2   c 3   d 4   e 5   f 6   g 7   h 8   \u2026"},
        {"{}", ""},
    };
    Definitions definitions;
    checkRows(rows, [&definitions](const QString& given) {
        TypeSchema schema{text("T"), "json", "", ""};
        schema.sample = given.toUtf8();
        QString error;
        const MessageInfo* const info = definitions.find(text("json"))->makeType(schema, &error);
        return FieldSummary::lineOf(MessageReference::adopt(info->newMessage(schema.sample)).get(), 5);
    });
}

void tst_monitormessages::listsEveryMessageOfWhatIsChosen()
{
    ListDesk desk;
    desk.send('A', 1, 1000);
    QCOMPARE(desk.shown(), QString());
    desk.chooseTypes({{desk.infoOf('A'), text("1:1")}});
    desk.send('A', 2, 1000005);
    desk.send('H', 3, 1000006);
    desk.send('A', 4, 1000007, text("2:1"));
    desk.send('A', 5, 1020005);
    desk.send('A', 6, Message::NoTime);
    desk.send('A', 7, 3000000);
    desk.send('A', 8, 2000000);
    QCOMPARE(desk.shown(), text("00:00:01.000005 1:1 ATTITUDE 2, 00:00:01.020005 20.000 ms 1:1 ATTITUDE 5, "
                                "1:1 ATTITUDE 6, 00:00:03.000000 1:1 ATTITUDE 7, "
                                "00:00:02.000000 -1.000 s 1:1 ATTITUDE 8"));
    QCOMPARE(desk.shown(MessageList::SizeColumn, MessageList::SizeColumn), text("40, 40, 40, 40, 40"));

    // Of another sender as well, whose messages have intervals of their own; then of that one only.
    desk.chooseTypes({{desk.infoOf('A'), QString()}});
    desk.send('A', 9, 2000000, text("2:1"));
    desk.send('A', 10, 2010000, text("2:1"));
    QCOMPARE(desk.shown(MessageList::IntervalColumn).section(text(", "), 5),
             text("2:1 ATTITUDE 9, 10.000 ms 2:1 ATTITUDE 10"));
    desk.chooseTypes({{desk.infoOf('A'), text("2:1")}});
    QCOMPARE(desk.numbers(), text("9, 10"));

    // What nobody sees is not noted, and the list says so.
    desk.panel.hide();
    desk.panel.refresh();
    desk.send('A', 11, 2020000, text("2:1"));
    desk.panel.show();
    desk.panel.refresh();
    desk.send('A', 12, 2030000, text("2:1"));
    QCOMPARE(desk.shown(MessageList::SequenceColumn, MessageList::SequenceColumn), text("9, 10, , 12"));
    QVERIFY(desk.panel.getView()
                ->model()
                ->index(2, MessageList::SummaryColumn)
                .data()
                .toString()
                .startsWith(text("Not noted")));
    desk.chooseTypes({});
    QCOMPARE(desk.shown(), QString());
}

void tst_monitormessages::standsStillWhileSomebodyReads()
{
    ListDesk desk;
    desk.chooseTypes({{desk.infoOf('A'), QString()}});
    for (int i = 0; i < 40; ++i)
        desk.send('A', i, 1000 * i);
    QVERIFY(desk.numbers().endsWith(text(", 39")));
    QTableView* const view = desk.panel.getView();
    QScrollBar* const bar = view->verticalScrollBar();
    QCOMPARE(bar->value(), bar->maximum());

    desk.setPaused(true);
    desk.panel.setViewsPaused(true);
    desk.send('A', 40, 40000);
    QVERIFY(desk.numbers().endsWith(text(", 39")));
    QCOMPARE(desk.panel.getNote(), text("Newer: 1"));
    desk.setPaused(false);
    desk.panel.setViewsPaused(false);
    QVERIFY(desk.numbers().endsWith(text(", 40")));

    bar->triggerAction(QAbstractSlider::SliderToMinimum);
    desk.send('A', 41, 41000);
    QVERIFY(desk.numbers().endsWith(text(", 40")));
    QCOMPARE(bar->value(), 0);
    bar->triggerAction(QAbstractSlider::SliderToMaximum);
    QVERIFY(desk.numbers().endsWith(text(", 41")));

    // A message that is chosen stays chosen, also when the list goes on.
    view->selectRow(41);
    QCOMPARE(int(desk.getChosenMessage()->getSequence()), 41);
    desk.send('A', 42, 42000);
    QVERIFY(desk.numbers().endsWith(text(", 41")));
    bar->triggerAction(QAbstractSlider::SliderToMaximum);
    for (int i = 0; i < MessageList::MostMessages; ++i)
        desk.send('A', 100, 100000 + i);
    desk.panel.refresh();
    QVERIFY(view->selectionModel()->selectedRows().isEmpty());
    QCOMPARE(int(desk.getChosenMessage()->getSequence()), 41);
    view->selectRow(5);
    QTest::keyClick(view, Qt::Key_Escape);
    QVERIFY(desk.getChosenMessage().isNull());

    // What is chosen goes with its type.
    view->selectRow(5);
    desk.chooseTypes({{desk.infoOf('H'), QString()}});
    QVERIFY(desk.getChosenMessage().isNull());
    desk.send('H', 1, 1);
    QCOMPARE(desk.numbers(), text("1"));
}

void tst_monitormessages::keepsTheLastOnes()
{
    ListDesk desk;
    desk.chooseTypes({{desk.infoOf('A'), QString()}});
    const auto send = [&desk](int from, int to) {
        for (int i = from; i < to; ++i)
            desk.send('A', i, i);
    };
    send(0, 9000);
    desk.panel.refresh();
    send(9000, 12000);
    QVERIFY(desk.numbers().startsWith(text("2000, 2001")));
    QCOMPARE(desk.panel.getView()->model()->rowCount(), int(MessageList::MostMessages));
    QCOMPARE(desk.panel.getNote(), text("The last 10,000"));
    send(12000, 30000); // of more than there is room for, what is in between is lost with what was before
    QVERIFY(desk.numbers().startsWith(text("20000, 20001")));

    const QByteArray much(int(MessageList::MostBytes / 10), 'x');
    for (int i = 0; i < 12; ++i) {
        desk.send('A', i, i, text("1:1"), much);
        desk.panel.refresh();
    }
    QCOMPARE(desk.numbers(), text("2, 3, 4, 5, 6, 7, 8, 9, 10, 11"));
    QCOMPARE(desk.panel.getNote(), text("No more than the last 64 MB are kept"));
    for (int i = 12; i < 20; ++i)
        desk.send('A', i, i, text("1:1"), much);
    QCOMPARE(desk.numbers(), text("18, 19")); // and what was between these and the others is gone
}

void tst_monitormessages::readsOutOfARecordingWhatCameBefore()
{
    ListDesk desk;
    QByteArray bytes;
    for (int i = 0; i < 12000; ++i)
        bytes += desk.script.bytes(text(i % 10 ? "%1:A%2" : "%1:A%2 %1:H%2").arg(i * 1000).arg(1 + i % 200));
    const TestFolder folder;
    SourceOptions options;
    options.address = folder.write("flight.tlog", bytes);
    StreamSource::Playback fast;
    fast.factor = 0;
    QString error;
    SourceSession* const session = desk.getSources()->open(options, fast, &error);
    QVERIFY(session);
    StreamSource* const source = session->getSource();
    const auto timeOf = [](int number) { return qint64(MavlinkScript::Noon) + number * 1000; };
    const auto choose = [&](const char* name) {
        for (const MessageInfo* const info : session->getFormats().constFirst()->getMessageInfos())
            if (info->getName() == text(name))
                desk.chooseTypes({{info, QString()}});
    };
    // Which are listed: "2000-11999", of those that are so far from one another.
    const auto listed = [&](int step) {
        desk.panel.refresh();
        const auto* const list = static_cast<MessageList*>(desk.panel.getView()->model());
        QString told;
        int last = -1000000;
        for (int row = 0; row <= list->rowCount(); ++row) {
            const qint64 time = row == list->rowCount() ? Message::NoTime : list->getTime(row);
            const int number = time == Message::NoTime ? -1 : int((time - timeOf(0)) / 1000);
            if (row > 0 && number != last + step)
                told += text("-%1 ").arg(last);
            if (row < list->rowCount() && number != last + step)
                told += QString::number(number);
            last = number;
        }
        return told.trimmed();
    };
    const auto isEnded = [&]() { return source->getState() == StreamSource::Finished; };
    const auto seek = [&](int number) {
        QSignalSpy sought(source, &StreamSource::sought);
        source->setPaused(true);
        source->seek(timeOf(number));
        return waitFor([&]() { return sought.size() == 1 && source->getCurrentTime() == timeOf(number); });
    };

    // In the midst of it: what is read and what comes make one list.
    QVERIFY(waitFor([&]() { return source->getCurrentTime() > timeOf(3000); }));
    choose("ATTITUDE");
    QVERIFY(waitFor(isEnded));
    QTRY_COMPARE_WITH_TIMEOUT(listed(1), text("2000-11999"), 30000);
    QVERIFY(desk.shown(MessageList::IntervalColumn, MessageList::IntervalColumn).count(text(" ms")) >= 9999);
    QCOMPARE(desk.panel.getNote(), text("The last 10,000"));

    // What is chosen while another is read is read in its place.
    choose("HEARTBEAT");
    choose("ATTITUDE");
    choose("HEARTBEAT");
    QTRY_COMPARE_WITH_TIMEOUT(listed(10), text("0-11990"), 30000);

    // A jump within the list leaves it as it is; what is chosen then ends there, and goes on from there.
    QVERIFY(seek(5000));
    QVERIFY2(listed(10).startsWith(text("0-11990")), qPrintable(listed(10)));
    choose("ATTITUDE");
    QTRY_COMPARE_WITH_TIMEOUT(listed(1), text("0-5000"), 30000);
    source->step();
    source->step();
    QTRY_COMPARE_WITH_TIMEOUT(listed(1), text("0-5001"), 30000);
    QVERIFY(seek(5001));
    choose("HEARTBEAT");
    QTRY_COMPARE_WITH_TIMEOUT(listed(10), text("0-5000"), 30000);
    source->setPaused(false);
    QVERIFY(waitFor(isEnded));
    QTRY_COMPARE_WITH_TIMEOUT(listed(10), text("0-11990"), 30000);

    // One to a time that is not listed is followed, unless somebody reads there; so is what nobody could see.
    choose("ATTITUDE");
    QTRY_COMPARE_WITH_TIMEOUT(listed(1), text("2000-11999"), 30000);
    desk.panel.getView()->selectRow(7);
    QVERIFY(seek(1000));
    QCOMPARE(listed(1), text("2000-11999"));
    QTest::keyClick(desk.panel.getView(), Qt::Key_Escape);
    QTRY_COMPARE_WITH_TIMEOUT(listed(1), text("0-1000"), 30000);
    desk.panel.hide();
    desk.panel.refresh();
    source->setPaused(false);
    QVERIFY(waitFor(isEnded));
    desk.panel.show();
    QTRY_COMPARE_WITH_TIMEOUT(listed(1), text("2000-11999"), 30000);
    desk.getSources()->close(session);
}

void tst_monitormessages::hidesWhatIsConfidential()
{
    ListDesk desk;
    const_cast<FieldInfo*>(desk.infoOf('A')->getFieldInfo(text("roll")))->setConfidential(true);
    desk.chooseTypes({{desk.infoOf('A'), QString()}});
    desk.send('A', 1, 1);
    const QString hidden = desk.shown(MessageList::SummaryColumn, MessageList::SummaryColumn);
    QVERIFY2(hidden.contains(text("roll Hidden data pitch ")), qPrintable(hidden));
    QVERIFY(FieldSummary::hasHidden(desk.infoOf('A')) && !FieldSummary::hasHidden(desk.infoOf('H')));
    desk.panel.getView()->selectRow(0);
    QGuiApplication::clipboard()->setText(text("before"));
    desk.trigger("Ctrl+Shift+C");
    QCOMPARE(QGuiApplication::clipboard()->text(), text("before"));
    desk.trigger("Ctrl+J");
    const QString json = QGuiApplication::clipboard()->text();
    QVERIFY2(json.contains(text("\"roll\":null")), qPrintable(json));

    desk.setConfidentialShown(true);
    desk.panel.renew();
    QVERIFY(!desk.shown(MessageList::SummaryColumn, MessageList::SummaryColumn).contains(text("Hidden")));
    desk.trigger("Ctrl+Shift+C");
    QCOMPARE(QGuiApplication::clipboard()->text(), QString::fromLatin1(desk.script.bytes(text("A1")).toHex(' ')));
    desk.setConfidentialShown(false);
}

void tst_monitormessages::marksTheBytesOfAField()
{
    BytesDesk desk;
    BytesPanel& panel = desk.bytes();
    QVERIFY(panel.getView()->getBytes().isEmpty());
    QVERIFY(!desk.getFieldUses().first().action->isEnabled());
    desk.choose(desk.attitude);
    QVERIFY(desk.getFieldUses().first().action->isEnabled());
    desk.sendNewest("H1");
    QVERIFY(panel.getView()->getBytes().isEmpty());
    desk.sendNewest("A1");
    QCOMPARE(panel.getView()->getBytes(), desk.make("A1")->getData());
    QCOMPARE(panel.getTitle(), text("ATTITUDE 1:1 \u00b7 40 bytes \u00b7 the newest"));
    desk.choose(desk.attitude, "roll");
    QVERIFY2(panel.getText().startsWith(text("bytes 14 to 17 \u00b7 roll \u00b7 ")), qPrintable(panel.getText()));
    QCOMPARE(int(panel.getView()->getMarksOf(13)), 0);
    QCOMPARE(int(panel.getView()->getMarksOf(14)), 0xff);
    desk.sendNewest("A2"); // marks stay where they are
    QCOMPARE(panel.getView()->getBytes(), desk.make("A2")->getData());
    QCOMPARE(int(panel.getView()->getMarksOf(17)), 0xff);

    // A flag is a bit, in the byte that is shown as bits.
    desk.sendNewest("H1");
    desk.choose(desk.heartbeat, "base_mode", "MAV_MODE_FLAG_SAFETY_ARMED");
    desk.sendNewest("H1");
    QVERIFY2(panel.getText().contains(text("bit 7 of byte 16")), qPrintable(panel.getText()));
    QCOMPARE(int(panel.getView()->getMarksOf(16)), 0x80);
    QCOMPARE(panel.getView()->getCurrent(), qint64(16));

    // A message that was chosen stays, until a row of another type is.
    desk.chooseMessage(desk.make("A3"));
    QCOMPARE(panel.getTitle(), text("ATTITUDE 1:1 \u00b7 40 bytes \u00b7 chosen under Messages"));
    desk.sendNewest("A4");
    desk.choose(desk.attitude, "yaw");
    QCOMPARE(panel.getView()->getBytes(), desk.make("A3")->getData());
    QCOMPARE(int(panel.getView()->getMarksOf(22)), 0xff);
    desk.choose(desk.heartbeat, "type");
    desk.sendNewest("H5");
    QCOMPARE(panel.getView()->getBytes(), desk.make("H5")->getData());

    const_cast<FieldInfo*>(desk.heartbeat->getFieldInfo(text("type")))->setConfidential(true);
    panel.renew();
    QVERIFY(panel.getView()->getBytes().isEmpty());
    QCOMPARE(panel.getText(), QString());
    desk.setConfidentialShown(true);
    QVERIFY(!panel.getView()->getBytes().isEmpty());
    desk.setConfidentialShown(false);
    QVERIFY(panel.getView()->getBytes().isEmpty());
    panel.forget(desk.heartbeat);
    QCOMPARE(panel.getTitle(), QString());
}

void tst_monitormessages::leadsFromBytesToFields()
{
    BytesDesk desk;
    desk.choose(desk.heartbeat);
    desk.sendNewest("H1");
    BytesPanel& panel = desk.bytes();
    // A byte, or with a point the bit of one, and what is current in the tree and said then.
    static const TextRow rows[] = {
        {"10", "custom_mode, bytes 10 to 13 \u00b7 custom_mode"},
        {"16", "base_mode, byte 16 \u00b7 base_mode"},
        {"16.7", "base_mode.MAV_MODE_FLAG_SAFETY_ARMED, bit 7 of byte 16 \u00b7 base_mode.MAV_MODE_FLAG_SAFETY_ARMED"},
        {"4", "base_mode.MAV_MODE_FLAG_SAFETY_ARMED, byte 4 \u00b7 sequence number"},
        {"19", "base_mode.MAV_MODE_FLAG_SAFETY_ARMED, byte 19 \u00b7 checksum"},
        {"14", "type, byte 14 \u00b7 type"},
    };
    checkRows(rows, [&](const QString& given) {
        panel.getView()->setCurrent(given.section(QLatin1Char('.'), 0, 0).toInt());
        if (given.contains(QLatin1Char('.')))
            Q_EMIT panel.getBits()->bitChosen(given.section(QLatin1Char('.'), 1).toInt());
        else
            Q_EMIT panel.getView()->byteChosen(panel.getView()->getCurrent());
        return desk.current() + text(", ") + panel.getText().section(text(" \u00b7 "), 0, 1);
    });
}

void tst_monitormessages::goesThroughBytesByKeys()
{
    BytesView view;
    view.resize(view.fontMetrics().horizontalAdvance(QLatin1Char('0')) * 100, 10 * view.fontMetrics().height());
    QByteArray bytes;
    for (int i = 0; i < 5000; ++i)
        bytes.append(char(i % 251));
    view.setBytes(bytes);
    view.show();
    QCOMPARE(view.getBytesInLine(), 16);
    QList<qint64> told;
    connect(&view, &BytesView::byteChosen, &view, [&told](qint64 byte) { told.append(byte); });
    for (const int key : {Qt::Key_Right, Qt::Key_Down, Qt::Key_Home, Qt::Key_End, Qt::Key_Up, Qt::Key_Left, Qt::Key_Up})
        QTest::keyClick(&view, Qt::Key(key));
    QCOMPARE(told, (QList<qint64>{1, 17, 16, 31, 15, 14, 14}));
    QTest::keyClick(&view, Qt::Key_End, Qt::ControlModifier);
    QCOMPARE(view.getCurrent(), qint64(4999));
    QCOMPARE(view.verticalScrollBar()->value(), view.verticalScrollBar()->maximum());
    QTest::keyClick(&view, Qt::Key_PageUp);
    QVERIFY(view.getCurrent() < 4999 - 16);
    view.setCurrent(300);
    QTest::keyClick(&view, Qt::Key_Right, Qt::ShiftModifier);
    QTest::keyClick(&view, Qt::Key_Right, Qt::ShiftModifier);
    QCOMPARE(view.getSelectedText(), text("31 32 33"));
    view.setBytes(QByteArray("ab"));
    QCOMPARE(view.getSelectedText(), text("62"));
    view.setBytes(QByteArray());
    QTest::keyClick(&view, Qt::Key_Right);
    QCOMPARE(view.getCurrent(), qint64(0));
}

QTEST_MAIN(tst_monitormessages)
#include "tst_monitormessages.moc"
