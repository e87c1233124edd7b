#include "testbase.h"
#include "theme.h"
#include "toldtree.h"
#include "treeactions.h"
#include "valuetext.h"

#include <QAction>
#include <QSettings>
#include <QTemporaryDir>

namespace
{

struct Stream : LiveStream
{
    QString getSenderName(int row) const override { return QString("row %1").arg(row); }
    bool isStandingStill() const override { return false; }
};

} // namespace

/** What somebody does with rows of the message tree. */
class tst_monitortree : public TestBase
{
    Q_OBJECT

private Q_SLOTS:
    void rowsKnowWhatTheyStandFor();
    void valuesAreReadAtAGlance();
    void whatIsNotThereTakesNoRoom();
    void theTreeShowsWhatIsLookedFor();
    void changesAreShadedAndSilentTypesGreyed();
    void whoIsGoneIsToldOnce();
    void muchThatCameLetsTheWindowAnswer();
    void whatWasBeforeAPlaceHidesNothingNewer();
    void pinnedTypesStayOnTop();
    void coloursGoWithThePalette();
};

void tst_monitortree::rowsKnowWhatTheyStandFor()
{
    static const TextRow rows[] = {
        {"nav 3.5; what NAV_STATE", "desk/NAV_STATE "},
        {"nav 3.5; what NAV_STATE/ground_speed", "desk/NAV_STATE/ground_speed # 3.5 m/s"},
        {"nav 3.5; what NAV_STATE/text", "desk/NAV_STATE/text hello \"you\""},
        {"cells 3; what BATTERY/cells", "desk/BATTERY/cells 100, 101, 102"},
        {"cells 3; what BATTERY/cells/cells [2]", "desk/BATTERY/cells[2] # 102"},
        {"nav 3.5; what NAV_STATE/place/place [1]", "desk/NAV_STATE/place[1] "},
        {"nav 3.5; what NAV_STATE/place/place [1]/x", "desk/NAV_STATE/place[1]/x # 2.5 m"},
        {"what NOTHING", " "},

        {"nav 3.5; Ctrl+C NAV_STATE/mode", "FLYING (2)"},
        {"nav 3.5; Ctrl+Shift+C NAV_STATE/mode", "2"},
        {"cells 2; Ctrl+C BATTERY/cells", "100, 101"},
        {"nav 3.14159265; expand NAV_STATE; copy NAV_STATE/mode + NAV_STATE/ground_speed",
         "ground_speed: 3.14159265 m/s / mode: FLYING (2)"},
        {"cells 2; Ctrl+Alt+C BATTERY/cells/cells [1]", "desk/BATTERY/cells[1]"},
        {"cells 2; Ctrl+J BATTERY/cells", "[100,101]"},
        {"nav 3.5; Ctrl+J NAV_STATE/place/place [1]", "{\"x\":2.5}"},
        {"nav 3.5; Ctrl+J NAV_STATE",
         "{\"time\":\"1970-01-01T01:00:10.000000Z\",\"format\":\"desk\",\"sender\":null,\"type\":\"NAV_STATE\","
         "\"sequence\":null,\"fields\":{\"ground_speed\":3.5,\"mode\":2,\"text\":\"hello \\\"you\\\"\","
         "\"place\":[{\"x\":1.5},{\"x\":2.5}]}}"},

        {"nav 3.5; expand NAV_STATE; tip NAV_STATE/ground_speed",
         "*ground_speed* double / Speed over <ground> / Unit:  / m/s / Range:  / 0 to 80 / Raw value:  / 3.5 / Path:  "
         "/ "
         "desk/NAV_STATE/ground_speed / "},
        {"nav 3.5; expand NAV_STATE; tip NAV_STATE/mode",
         "*mode* uint8 / Raw value:  / 2 / Path:  / desk/NAV_STATE/mode /  /   / 1  / IDLE / waits / \xE2\x96\xB8 / 2  "
         "/ *FLYING* /  / "},
        {"nav 3.5; tip NAV_STATE",
         "*NAV_STATE* message type / Where it is / Path:  / desk/NAV_STATE / Time:  / 1970-01-01 01:00:10.000 UTC / "},
    };
    checkTold(rows);
    // The expression finds the way back.
    ToldTree desk;
    desk.tell("nav 3.5");
    const FieldPath path = TreeRow(desk.find("NAV_STATE/place/place [1]/x")).getPath();
    QVERIFY(FieldPath::fromExpression(path.getExpression()) == path);
}

void tst_monitortree::valuesAreReadAtAGlance()
{
    // The number in five digits, where its point stands, and what stands behind it.
    static const TextRow numbers[] = {
        {"3.14159265 m/s", "3.1416 1 m/s"},
        {"-123456.789 m", "-123457 7 m"}, // digits before the point stay
        {"0.000123456789", "0.00012346 1 "},
        {"1.23456789e-09 s", "1.2346e-09 1 s"},
        {"1e+20", "1e+20 1 "},
        {"12345678", "12345678 8 "}, // nobody measured it more exactly
        {"0.5", "0.5 1 "},
        {"0", "0 1 "},
        {"9.99999", "10.0000 2 "},
        {"21.5\xC2\xB0", "21.5 2 \xC2\xB0"},
        {"nan", " 0 nan"},
        {"2015-07-05T14:05:30Z", " 0 2015-07-05T14:05:30Z"},
        {"12abc", " 0 12abc"},
        {"", " 0 "},
    };
    checkRows(numbers, [](const QString& text) {
        ValueText value = ValueText::split(text);
        value.number = ValueText::rounded(value.number, 5);
        return QString("%1 %2 %3").arg(value.number).arg(value.getIntegerSize()).arg(value.unit);
    });
    static const TextRow rows[] = {
        {"nav 3.14159265; expand NAV_STATE; reads NAV_STATE/ground_speed; reads NAV_STATE/mode; reads NAV_STATE/text; "
         "nav -1; reads NAV_STATE/ground_speed",
         "3.1416 m/s; FLYING (2); hello \"you\"; not available"},
        // A small vector is read in one line while it is folded.
        {"expand NAV_STATE; nav 1; expand NAV_STATE/place; reads NAV_STATE/place/place [1]; "
         "expand NAV_STATE/place/place [1]; reads NAV_STATE/place/place [1]; reads NAV_STATE/place/place [1]/x",
         "x 2.5 m; ; 2.5 m"},
    };
    checkTold(rows);
}

void tst_monitortree::whatIsNotThereTakesNoRoom()
{
    static const TextRow rows[] = {
        {"expand NAV_STATE; nav -1; shown; unset; shown; nav 2; shown; nav -1; find speed; shown; escape; shown; "
         "unset; "
         "shown",
         "BATTERY, .cells, NAV_STATE, .ground_speed, .mode, .text, .place; BATTERY, .cells, NAV_STATE, .mode, .text, "
         ".place; "
         "BATTERY, .cells, NAV_STATE, .ground_speed, .mode, .text, .place; NAV_STATE, .ground_speed; "
         "BATTERY, .cells, NAV_STATE, .mode, .text, .place; BATTERY, .cells, NAV_STATE, .ground_speed, .mode, .text, "
         ".place"},
        // Of a type without a message nothing is told, whatever its last one lacked.
        {"cells 0; expand BATTERY; reads BATTERY/cells; forgetcells; reads BATTERY/cells", "0 repeated values; "},
    };
    checkTold(rows);
    // What is seldom there is seen when it is, and what is absent is folded.
    ToldTree desk;
    MessageInfo* const info = new MessageInfo("RARE");
    TestFieldInfo* const problems = new TestFieldInfo("[problems]", TestFieldInfo::Optional);
    TestFieldInfo* const part = new TestFieldInfo("part", TestFieldInfo::Optional, FieldType(desk.nav));
    info->addField(problems);
    info->addField(part);
    desk.format.addMessageInfo(info);
    desk.add({info});
    desk.send((new TestMessage(info))->set(part, QList<Message*>{desk.createNav(1)}));
    const QString with = "RARE, .part, ..ground_speed, ..mode, ..text, ..place";
    desk.tell("expand RARE; expand RARE/part");
    QCOMPARE(desk.shown(), "BATTERY, .cells, NAV_STATE, .ground_speed, .mode, .text, .place, " + with);
    desk.send((new TestMessage(info))->set(problems, 1));
    QVERIFY(desk.shown().endsWith("RARE, .[problems], .part"));
    desk.send((new TestMessage(info))->set(part, QList<Message*>{desk.createNav(1)}));
    QVERIFY(desk.shown().endsWith(with));
    // Nor when everything is unfolded and no message comes any more.
    desk.send((new TestMessage(info))->set(problems, 1));
    for (QAction* const action : desk.panel.getWidget()->findChildren<QAction*>())
        if (action->text() == "&Expand All")
            action->trigger();
    QVERIFY(desk.shown().endsWith("RARE, .[problems], .part"));
}

void tst_monitortree::theTreeShowsWhatIsLookedFor()
{
    static const TextRow rows[] = {
        {"nav 3.5; find gsp; shown", "NAV_STATE, .ground_speed"},
        {"nav 3.5; find nav flying; shown", "NAV_STATE, .mode"},
        {"cells 2; find battery; shown", "BATTERY, .cells"},
        {"nav 3.5; find NAV_STATE/pl; shown", "NAV_STATE, .place"},
        {"nav 3.5; find desk/NAV_STATE/place[1]/x; shown", "NAV_STATE, .place, ..place [1], ...x"},
        {"nav 3.5; find desk/NAV_STATE/place[0]/x; shown", "NAV_STATE, .place, ..place [0], ...x"},
        {"nav 3.5; find NAV*/x; shown; error",
         "; character 4: the wildcard stands alone; a star in a name is written \\*"},
        // From match to match, round the end, and back to how it was. Both x, and "text" contains one.
        {"nav 3.5; find x; matches; next; next; next; next; previous",
         "3; NAV_STATE.text; place [0].x; place [1].x; NAV_STATE.text; place [1].x"},
        {"nav 3.5; find x; close; collapse; find flying; shown; escape; shown", "NAV_STATE, .mode; BATTERY, NAV_STATE"},
        // Matches follow values. Rows that are hidden do so all the same, and rows that are made anew are looked at.
        {"nav 3.5 1; find flying; shown; nav 4.5 2; until NAV_STATE, .mode; says NAV_STATE/ground_speed; secondary; "
         "until NAV_STATE, .mode; nav 3.5 1; until ",
         "; 4.5 m/s"},
    };
    checkTold(rows);

    static const TextRow words[] = {
        {"GPS_RAW_INT raw", "found"},    {"GPS_RAW_INT gri", "found"}, {"GPS_RAW_INT gpra", "found"},
        {"groundSpeed2 gs2", "found"},   {"GPS_RAW_INT gw", ""}, // a letter in the midst of a word
        {"GLOBAL_POSITION_INT lat", ""},
    };
    checkRows(words, [](const QString& row) {
        return QString(RowMatcher::isAbbreviated(row.section(' ', 0, 0), row.section(' ', 1)) ? "found" : "");
    });
}

void tst_monitortree::changesAreShadedAndSilentTypesGreyed()
{
    static const TextRow rows[] = {
        {"expand NAV_STATE; nav 1; shade NAV_STATE/ground_speed; nav 2; shade NAV_STATE/ground_speed; "
         "shade NAV_STATE/mode; wait 500; shade NAV_STATE/ground_speed; nav 3 1; shade NAV_STATE/ground_speed; "
         "shade NAV_STATE/mode; wait 1100; shade NAV_STATE/mode",
         "0; 114; 0; 68; 35; 114; 0"},
        // Off: what is shaded goes at once, and rows that are taken away meanwhile are not touched.
        {"expand NAV_STATE; nav 1 1; shade NAV_STATE/mode; nav 1 2; shade NAV_STATE/mode; plain; shade NAV_STATE/mode; "
         "highlight; expand BATTERY; cells 3; expand BATTERY/cells; shade BATTERY; cells 1; shade BATTERY",
         "0; 114; 0; 0; 0"},

        // Once is too little to tell.
        {"cells 1; wait 60000; grey BATTERY", "black"},
        {"nav 0; wait 1000; nav 1; wait 1000; nav 2; wait 1000; nav 3; wait 4000; grey NAV_STATE; wait 2000; "
         "grey NAV_STATE; grey NAV_STATE/mode; grey NAV_STATE/place/place [0]/x; says NAV_STATE; tip NAV_STATE; "
         "grey BATTERY; nav 9; grey NAV_STATE/mode; says NAV_STATE",
         "black; grey; grey; grey; no message for 6 s, since 01:00:13 UTC; *NAV_STATE* message type / Where it is / "
         "Path:  / desk/NAV_STATE / Time:  / 1970-01-01 01:00:13.000 UTC / Silent:  / "
         "no message for 6 s, since 01:00:13 UTC / ; black; black; "},
        // Who says that it is gone is silent at once.
        {"nav 0; gone; grey NAV_STATE; says NAV_STATE; wait 130000; grey NAV_STATE; says NAV_STATE; nav 1; grey "
         "NAV_STATE",
         "grey; gone; the last message came 0 s ago; grey; gone; the last message came 2 min ago; black"},
        // While the views are paused nothing can be told.
        {"nav 0; wait 1000; nav 1; wait 1000; nav 2; wait 1000; nav 3; pause; wait 60000; grey NAV_STATE; resume; "
         "grey NAV_STATE; wait 6000; grey NAV_STATE",
         "black; black; grey"},
        // After a jump in a recording, what was before says nothing: the time since when may be still to come.
        {"nav 0; wait 1000; nav 1; wait 1000; nav 2; wait 1000; nav 3; wait 9000; grey NAV_STATE; forget; "
         "grey NAV_STATE; says NAV_STATE; wait 60000; grey NAV_STATE",
         "grey; black; ; black"},
    };
    checkTold(rows);
}

/** "TYPE SENDER" for a message, "-TYPE SENDER" for the end of a type and "-SENDER" for that of all: who is gone. */
void tst_monitortree::whoIsGoneIsToldOnce()
{
    static const TextRow rows[] = {
        {"1 1, 2 1, 1 2; -1 1", "A row 11"}, {"1 1, 2 1, 1 2; -1", "A row 11, B row 21"},    {"1 1; -1 1, 1 1", ""},
        {"1 1; -1 1; -3; 2 1", "A row 11"},  {"1 1; -1 1; 1 1; -1 1", "A row 11, A row 11"},
    };
    checkRows(rows, [](const QString& given) {
        const MessageInfo a("A");
        const MessageInfo b("B");
        Stream stream;
        LatestMessages messages;
        LatestMessageSource latest;
        latest.addSession(&stream, &messages);
        QStringList told;
        QObject::connect(
            &latest, &LatestMessageSource::senderGone, &latest,
            [&](const MessageInfo* info, const QString& sender) { told.append(info->getName() + ' ' + sender); });
        for (const QString& tick : given.split("; ")) {
            for (const QString& word : tick.split(", ")) {
                const bool isEnd = word.startsWith('-');
                const QStringList numbers = word.mid(isEnd ? 1 : 0).split(' ');
                ReceivedMessage message;
                StreamProblem problem;
                problem.kind = StreamProblem::SenderGone;
                problem.id = numbers.size() > 1 ? numbers.at(0).toUInt() : 0;
                problem.sender = message.sender = numbers.last().toUInt();
                message.id = problem.id;
                message.info = message.id == 1 ? &a : &b;
                message.row = int(10 * message.id + message.sender);
                message.data = "";
                if (isEnd)
                    messages.processProblem(problem);
                else
                    messages.processReceived(message);
            }
            latest.showAgain();
            waitFor([&]() { return !messages.isPending(); });
        }
        return told.join(", ");
    });
}

void tst_monitortree::muchThatCameLetsTheWindowAnswer()
{
    const MessageInfo info("A");
    const Stream stream;
    LatestMessages messages;
    LatestMessageSource latest;
    latest.addSession(&stream, &messages);
    const auto receive = [&](int row) {
        ReceivedMessage message;
        message.info = &info;
        message.row = row;
        message.data = "";
        messages.processReceived(message);
    };
    const int count = 300;
    int answers = 0;
    QTimer others;
    QStringList told;
    QObject::connect(&others, &QTimer::timeout, &latest, [&]() { answers += told.size() % count == 0 ? 0 : 1; });
    others.start(0);
    std::function<void()> during = [&]() { receive(0); };
    QObject::connect(&latest, &MessageSource::newMessage, &latest, [&](const Message* message) {
        told.append(message->getSender());
        if (told.size() == count / 2)
            during();
        QElapsedTimer slow;
        slow.start();
        while (slow.nsecsElapsed() < 200000) {
        }
    });
    for (int row = 0; row < count; ++row)
        receive(row);
    latest.noteArrival();
    // What came of the first row meanwhile is told last.
    QVERIFY(waitFor([&]() { return told.size() > count; }));
    QCOMPARE(told.last(), QString("row 0"));
    QCOMPARE(QSet<QString>(told.begin(), told.end()).size(), count);
    QVERIFY(answers > 1);
    QCOMPARE(latest.getOvertakenCount(), quint64(0));
    // A source that is closed, or a pause, ends it; what was not told is told then.
    during = [&]() { latest.setSuspended(true); };
    told.clear();
    latest.showAgain();
    QVERIFY(waitFor([&]() { return latest.isSuspended(); }));
    QCOMPARE(told.size(), count / 2);
    during = []() {};
    latest.setSuspended(false);
    QCOMPARE(told.size(), count);
    during = [&]() { latest.removeSession(&stream); };
    told.clear();
    latest.showAgain();
    QVERIFY(waitFor([&]() { return told.size() >= count / 2; }));
    QCOMPARE(told.size(), count / 2);
}

void tst_monitortree::whatWasBeforeAPlaceHidesNothingNewer()
{
    const MessageInfo infos[] = {MessageInfo("A"), MessageInfo("B")};
    const Stream stream;
    LatestMessages messages;
    LatestMessageSource latest;
    latest.addSession(&stream, &messages);
    QStringList told;
    connect(&latest, &MessageSource::newMessage, &latest, [&](const Message* message) {
        told.append(message->getInfo()->getName() + ' ' + message->getSender() +
                    (latest.isRepeating() ? " again" : ""));
    });
    connect(&latest, &LatestMessageSource::earlierShown, &latest, [&]() { told.last() += " before"; });
    messages.clear(); // as a jump does
    ReceivedMessage message;
    message.data = "";
    for (int row = 0; row < 2; ++row) {
        message.info = &infos[row];
        message.row = row;
        messages.processReceived(message);
    }
    latest.setSuspended(false);
    // Of row 0, the newer message is there; of type B, nothing is from before.
    QVector<LatestMessages::Entry> entries(3);
    for (int i = 0; i < 3; ++i) {
        entries[i].info = &infos[0];
        entries[i].row = i == 0 ? 0 : 10 + i;
    }
    messages.addEarlier(entries);
    latest.setSuspended(false);
    QCOMPARE(told.join(", "), QString("A row 0, B row 1, A row 11 before, A row 12 before, A row 0 again"));
    QCOMPARE(latest.getLatest(&infos[0])->getSender(), QString("row 0"));
    QCOMPARE(latest.getOvertakenCount(), quint64(0));
}

void tst_monitortree::pinnedTypesStayOnTop()
{
    QTemporaryDir folder;
    QSettings settings(folder.filePath("pins.ini"), QSettings::IniFormat);
    {
        ToldTree desk;
        desk.tell("nav 1; expand NAV_STATE; expand NAV_STATE/place");
        QCOMPARE(desk.tree.topLevelItem(0)->text(0), QString("BATTERY"));
        desk.tree.setCurrentItem(desk.find("NAV_STATE/mode"));
        desk.panel.getActions()->getShowActions().last()->trigger();
        QCOMPARE(desk.tree.topLevelItem(0)->text(0), QString("NAV_STATE"));
        QVERIFY(!desk.tree.topLevelItem(0)->icon(0).isNull());
        QVERIFY(desk.find("NAV_STATE/place")->isExpanded());
        desk.panel.getRows()->saveSettings(settings);
    }
    ToldTree desk;
    desk.panel.getRows()->set({{desk.battery, QString()}, {desk.nav, QString()}}, false);
    desk.panel.getRows()->restoreSettings(settings);
    desk.add({desk.battery, desk.nav});
    QCOMPARE(desk.tell("collapse; shown; unpin; shown"), QString("NAV_STATE, BATTERY; BATTERY, NAV_STATE"));
    QVERIFY(desk.find("NAV_STATE")->icon(0).isNull());
}

// Also while nothing is shown; and what is faint stays readable.
void tst_monitortree::coloursGoWithThePalette()
{
    ToldTree desk;
    desk.tell("nav 0; wait 1000; nav 1; wait 1000; nav 2; wait 1000; nav 3; wait 9000; pin; grey NAV_STATE; pause");
    const qint64 pin = desk.find("NAV_STATE")->icon(0).cacheKey();
    QPalette dark;
    dark.setColor(QPalette::Base, Qt::black);
    dark.setColor(QPalette::Text, Qt::white);
    desk.tree.setPalette(dark);
    desk.tell("resume");
    QCOMPARE(desk.find("NAV_STATE/mode")->foreground(0).color(), Theme::faintText(dark));
    QVERIFY(Theme::faintText(dark).lightness() > 130 && Theme::faintText(QPalette(Qt::white)).lightness() < 130);
    QVERIFY(desk.find("NAV_STATE")->icon(0).cacheKey() != pin);
}

QTEST_MAIN(tst_monitortree)
#include "tst_monitortree.moc"
