#include "fieldvaluelabel.h"
#include "messagefixtures.h"
#include "messageneedmanager.h"
#include "messagesource.h"
#include "pathfieldinfo.h"
#include "pathfixtures.h"
#include "shown.h"
#include "testbase.h"
#include "waitfor.h"

#include <QTimer>
#include <QVBoxLayout>

class tst_FieldValueLabel : public TestBase
{
    Q_OBJECT

private Q_SLOTS:
    void textOfAField();
    void matchingMessagesOnly();
    void pathLeadsToAFieldOfOneOfSeveralSubMessages();
    void settingsTakeEffectWithTheNextMessage();
    void needFollowsTheField();
    void valuesGoAfterTheTimeOut();
    void everyMatchingValueRestartsTheTimeOut();
};

struct Fixture : Types
{
    Fixture()
        : Types("STATE: speed[m/s] channels.r[us] single.r name.s unnamed.s optional.o; OTHER: other")
        , message(Types::message("STATE speed=3.5 channels=10:12 single=7 name='Armed' unnamed=''"))
        , foreign(Types::message("OTHER other=99"))
        , speed(field("speed"))
    {
    }

    const MessageReference message;
    const MessageReference foreign;
    const FieldInfo* speed;
};

void tst_FieldValueLabel::textOfAField()
{
    const Fixture f;
    // "FIELD [INDEX] [plain]"
    const TextRow rows[] = {
        {"speed", "3.5 m/s"},
        {"speed plain", "3.5"},
        {"channels", "10 us [...]"},
        {"channels plain", "10 [...]"},
        {"channels 0", "10 us"},
        {"channels 2", "12 us"},
        {"channels 3", "N/A"},
        {"channels 4294967295", "N/A"},
        {"single", "7"},
        {"name", "Armed"},
        {"name 1", "r"},
        {"name 5", "N/A"},
        {"unnamed", "N/A"},
        {"optional", "N/A"},
    };
    const auto shown = [&](const QString& given) {
        const QStringList words = given.split(' ');
        FieldValueLabel label(f.field(words.at(0)), nullptr, words.last() != "plain", -1);
        label.setText("former");
        bool isNumber = false;
        const unsigned int index = words.last().toUInt(&isNumber);
        if (isNumber)
            label.setIndex(index);
        label.processMessage(f.message.get());
        return label.text();
    };
    checkRows(rows, shown);
}

void tst_FieldValueLabel::matchingMessagesOnly()
{
    const Fixture f;
    MessageSource source;
    {
        FieldValueLabel label(f.speed, &source, true, -1);
        FieldValueLabel without(f.speed, nullptr, true, -1);
        QCOMPARE(label.text(), text("N/A"));
        QCOMPARE(int(label.textFormat()), int(Qt::PlainText));
        QVERIFY(source.deliver(f.message.get()));
        label.processMessage(f.foreign.get());
        QCOMPARE(label.text(), text("3.5 m/s"));
        QCOMPARE(without.text(), text("N/A"));
        label.clearValue();
        QCOMPARE(label.text(), text("N/A"));
    }
    QVERIFY(!source.deliver(f.message.get()));
}

void tst_FieldValueLabel::pathLeadsToAFieldOfOneOfSeveralSubMessages()
{
    FieldValueLabel label(nullptr, nullptr, true, -1);
    label.setFieldInfo(new PathFieldInfo(text("plant/PUMP/goal/lat"), &label));
    FormatInfo plant(text("plant"));
    MessageInfo* const place = addTestType(&plant, "PLACE", "lat", false);
    MessageInfo* const pump = addTestType(&plant, "PUMP", "");
    TestMessage* const message = new TestMessage(pump);
    const MessageReference reference = MessageReference::adopt(message);
    double number = 1;
    Q_FOREACH (const QString& name, lines("position\ngoal")) {
        TestFieldInfo* const field = new TestFieldInfo(name, 0, FieldType(place));
        pump->addField(field);
        TestMessage* const part = new TestMessage(place);
        message->set(field, QList<Message*>() << part->set(place->getFieldInfo(text("lat")), number++));
    }
    label.processMessage(message);
    QCOMPARE(label.text(), text("N/A"));
    FormatRegistry::getInstance()->addFormat(&plant); // known only now
    QVERIFY(MessageNeedManager::getInstance()->isNeeded(pump));
    label.processMessage(message);
    QCOMPARE(label.text(), text("2"));
}

void tst_FieldValueLabel::settingsTakeEffectWithTheNextMessage()
{
    const Fixture f;
    FieldValueLabel label(f.field("channels"), nullptr, true, -1);
    label.processMessage(f.message.get());
    label.setShowInterpretedString(false);
    label.setIndex(1);
    QCOMPARE(label.text(), text("10 us [...]"));
    label.processMessage(f.message.get());
    QCOMPARE(label.text(), text("11"));
    label.clearIndex();
    label.processMessage(f.message.get());
    QCOMPARE(label.text(), text("10 [...]"));
    label.setFieldInfo(nullptr);
    label.processMessage(f.message.get());
    QCOMPARE(label.text(), text("10 [...]"));
}

void tst_FieldValueLabel::needFollowsTheField()
{
    const Fixture f;
    const MessageNeedManager* const manager = MessageNeedManager::getInstance();
    QWidget* window = new QWidget;
    FieldValueLabel* const label = new FieldValueLabel(f.speed, nullptr, true, -1);
    QVERIFY(manager->isNeeded(f.type("STATE")) && !manager->isNeeded(f.type("OTHER")));
    label->setFieldInfo(f.field("other"));
    QVERIFY(!manager->isNeeded(f.type("STATE")) && manager->isNeeded(f.type("OTHER")));
    label->setFieldInfo(nullptr);
    QVERIFY(manager->getNeededMessageInfos().isEmpty());
    label->setFieldInfo(f.speed);
    QVERIFY(manager->isNeeded(f.type("STATE")));
    (new QVBoxLayout(window))->addWidget(label);
    delete window; // with the label, which the layout gave it
    QVERIFY(manager->getNeededMessageInfos().isEmpty());
}

void tst_FieldValueLabel::valuesGoAfterTheTimeOut()
{
    const Fixture f;
    FieldValueLabel never(f.speed, nullptr, true, 0); // only a positive one counts here
    FieldValueLabel label(f.speed, nullptr, true, 1);
    never.processMessage(f.message.get());
    label.processMessage(f.message.get());
    QVERIFY(waitFor([&] { return label.text() == text("N/A"); }));
    label.processMessage(f.message.get());
    label.setTimeOut(0); // runs from now on, for the value that is already there
    QCOMPARE(label.text(), text("3.5 m/s"));
    QVERIFY(waitFor([&] { return label.text() == text("N/A"); }));
    label.processMessage(f.message.get()); // single-shot: only this starts it again
    QVERIFY(waitFor([&] { return label.text() == text("N/A"); }));

    label.setTimeOut(-1);
    label.setTimeOut(-1);
    label.processMessage(f.message.get());
    // A label whose time-out starts later has lost its value: the others' would be gone as well.
    FieldValueLabel later(f.speed, nullptr, true, -1);
    later.processMessage(f.message.get());
    later.setTimeOut(0);
    QVERIFY(waitFor([&] { return later.text() == text("N/A"); }));
    QCOMPARE(label.text() + never.text(), text("3.5 m/s3.5 m/s"));
    later.setTimeOut(-1);
}

// Timers of one thread fire in the order of their times, however late: so the order below holds on a busy machine, too.
void tst_FieldValueLabel::everyMatchingValueRestartsTheTimeOut()
{
    const Fixture f;
    const int timeOut = 120;
    FieldValueLabel untouched(f.speed, nullptr, true, -1);
    FieldValueLabel refreshed(f.speed, nullptr, true, -1);
    untouched.processMessage(f.message.get());
    refreshed.processMessage(f.message.get());
    untouched.setTimeOut(timeOut);
    refreshed.setTimeOut(timeOut);
    QTimer feeder;
    QTimer prober;
    const auto feed = [&] {
        untouched.processMessage(f.foreign.get());
        refreshed.processMessage(f.message.get());
    };
    QString textsWhenProbed;
    const Answer feeding(&feeder, SIGNAL(timeout()), feed, 1);
    const Answer probing(
        &prober, SIGNAL(timeout()), [&] { textsWhenProbed = untouched.text() + ", " + refreshed.text(); }, 1);
    feeder.start(timeOut / 2);
    prober.start(timeOut + timeOut / 4);
    QVERIFY(waitFor([&] { return !textsWhenProbed.isEmpty(); }));
    QCOMPARE(textsWhenProbed, text("N/A, 3.5 m/s"));
    QVERIFY(waitFor([&] { return refreshed.text() == "N/A"; }));
    untouched.setTimeOut(-1);
    refreshed.setTimeOut(-1);
}

QTEST_MAIN(tst_FieldValueLabel)

#include "tst_fieldvaluelabel.moc"
