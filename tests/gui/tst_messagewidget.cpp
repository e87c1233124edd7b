#include "fieldvaluelabel.h"
#include "messagefixtures.h"
#include "messageneedmanager.h"
#include "messagewidget.h"
#include "shown.h"
#include "testbase.h"

#include <QGridLayout>
#include <QLineEdit>
#include <QPointer>

class tst_MessageWidget : public TestBase
{
    Q_OBJECT

private Q_SLOTS:
    void valuesOfAMessage();
    void typeFollowsOnlyDisplayedMessages();
    void rebuildsEvenForTheSameType();
    void rebuildRemovesEveryDescendantOnce();
    void emptyFormLeavesForeignWidgetsAlone();
    void listenersFindAWholeForm_data();
    void listenersFindAWholeForm();
};

struct Fixture
{
    Fixture()
    {
        speed->setUnit(text("m/s"));
        info.add("hidden", TestFieldInfo::Virtual | TestFieldInfo::Confidential | TestFieldInfo::Secondary);
        message->set(speed, 3.5)->fill(channels, 3, 7)->setText(name, "abc");
        otherMessage->set(x, 1);
    }

    TestInfo info{"STATE"};
    TestFieldInfo* speed = info.add("speed");
    TestFieldInfo* channels = info.add("channels", TestFieldInfo::Repeated);
    TestFieldInfo* name = info.add("name", TestFieldInfo::String | TestFieldInfo::Optional);
    TestInfo other{"OTHER"};
    TestFieldInfo* x = other.add("x");
    TestInfo empty{"EMPTY"};
    OwnedMessage message{&info};
    OwnedMessage otherMessage{&other};
};

// The form as one reads it: "title: name=value, name=value".
static QString shown(const MessageWidget& form)
{
    QStringList rows;
    const QGridLayout* const grid = qobject_cast<QGridLayout*>(form.layout());
    for (int row = 0; grid && grid->itemAtPosition(row, 0); ++row) {
        const QLabel* name = qobject_cast<QLabel*>(grid->itemAtPosition(row, 0)->widget());
        const FieldValueLabel* value = qobject_cast<FieldValueLabel*>(grid->itemAtPosition(row, 1)->widget());
        rows.append(name->text() + QLatin1Char('=') + value->text());
    }
    return form.windowTitle() + (grid ? text(": ") : QString()) + rows.join(text(", "));
}

static QString alive()
{
    const MemLeakTracer* tracer = MemLeakTracer::getInstance();
    return text("%1 forms, %2 labels")
        .arg(tracer->getLiveCount(text("MessageWidget")))
        .arg(tracer->getLiveCount(text("FieldValueLabel")));
}

void tst_MessageWidget::valuesOfAMessage()
{
    const Fixture f;
    const MessageNeedManager* const manager = MessageNeedManager::getInstance();
    {
        QWidget parent;
        MessageWidget* form = new MessageWidget(&parent, &f.info);
        QCOMPARE(shown(*form), text("STATE: speed=N/A, channels=N/A, name=N/A, hidden=N/A"));
        form->processMessage(f.message);
        QCOMPARE(shown(*form), text("STATE: speed=3.5 m/s, channels=7 [...], name=abc, hidden=N/A"));
        form->processMessage(f.otherMessage);
        f.message->set(f.name, QVector<FieldValue>());
        form->displayMessage(f.message);
        QCOMPARE(shown(*form), text("STATE: speed=3.5 m/s, channels=7 [...], name=N/A, hidden=N/A"));
        form->clearValues();
        QCOMPARE(shown(*form), text("STATE: speed=N/A, channels=N/A, name=N/A, hidden=N/A"));
        QCOMPARE(f.message->getReferenceCount(), 1);
        QVERIFY(manager->isNeeded(&f.info));
    }
    QVERIFY(manager->getNeededMessageInfos().isEmpty());
}

void tst_MessageWidget::typeFollowsOnlyDisplayedMessages()
{
    const Fixture f;
    MessageWidget form(nullptr, nullptr);
    form.clearValues();
    form.processMessage(f.message);
    QCOMPARE(shown(form), text("No message type set"));
    form.displayMessage(f.otherMessage);
    QCOMPARE(shown(form), text("OTHER: x=1"));
    form.displayMessage(f.message);
    QCOMPARE(shown(form), text("STATE: speed=3.5 m/s, channels=7 [...], name=abc, hidden=N/A"));
    QCOMPARE(alive(), text("1 forms, 4 labels"));
    form.setMessageInfo(&f.empty);
    QCOMPARE(shown(form), text("EMPTY: "));
    form.displayMessage(nullptr);
    QCOMPARE(shown(form), text("No message type set"));
    QVERIFY(!form.getMessageInfo());
    form.clearValues();
    QCOMPARE(alive(), text("1 forms, 0 labels"));
}

void tst_MessageWidget::rebuildsEvenForTheSameType()
{
    const Fixture f;
    MessageWidget form(nullptr, &f.other);
    form.processMessage(f.otherMessage);
    const QPointer<FieldValueLabel> label = form.findChild<FieldValueLabel*>();
    form.displayMessage(f.otherMessage); // of the type shown: no rebuild
    QVERIFY(label);
    form.setMessageInfo(&f.other);
    QVERIFY(!label);
    QCOMPARE(shown(form), text("OTHER: x=N/A"));
    QCOMPARE(int(form.findChildren<QWidget*>().size()), 2);
    form.processMessage(f.otherMessage);
    QCOMPARE(shown(form), text("OTHER: x=1"));
}

void tst_MessageWidget::rebuildRemovesEveryDescendantOnce()
{
    const Fixture f;
    MessageWidget form(nullptr, &f.other);
    // Two levels of an application's own widgets, with a value label of its own and another form deep inside.
    QPointer<QWidget> frame = new QWidget(&form);
    QPointer<QWidget> edit = new QLineEdit(frame);
    (new FieldValueLabel(f.speed, nullptr, true, -1))->setParent(frame);
    QPointer<QWidget> inner = new MessageWidget(frame, &f.info);
    QPointer<QObject> kept = new QObject(&form);
    QCOMPARE(alive(), text("2 forms, 6 labels"));
    form.setMessageInfo(&f.empty);
    QVERIFY(!frame && !edit && !inner && kept);
    QCOMPARE(int(form.findChildren<QWidget*>().size()), 0);
    QCOMPARE(alive(), text("1 forms, 0 labels"));
}

void tst_MessageWidget::emptyFormLeavesForeignWidgetsAlone()
{
    const Fixture f;
    MessageWidget form(nullptr, nullptr);
    const QPointer<QWidget> foreign = new QWidget(&form);
    form.setMessageInfo(nullptr);
    form.setMessageInfo(&f.other);
    QVERIFY(foreign);
    form.setMessageInfo(nullptr);
    QVERIFY(!foreign);
}

typedef std::function<void(MessageWidget*, const Fixture&)> Reaction;
Q_DECLARE_METATYPE(Reaction)

void tst_MessageWidget::listenersFindAWholeForm_data()
{
    QTest::addColumn<Reaction>("reaction");
    QTest::addColumn<QString>("afterGoing");
    QTest::addColumn<QString>("afterComing");
    const QString none = text("No message type set");
    const QString cleared = text("STATE: speed=N/A, channels=N/A, name=N/A, hidden=N/A");
    const QString filled = text("STATE: speed=3.5 m/s, channels=7 [...], name=abc, hidden=N/A");
    const auto addRow = [](const char* name, const Reaction& reaction, const QString& going, const QString& coming) {
        QTest::newRow(name) << reaction << going << coming;
    };
    addRow(
        "clear", [](MessageWidget* form, const Fixture&) { form->clearValues(); }, text("OTHER: x=N/A"), cleared);
    addRow(
        "deliver", [](MessageWidget* form, const Fixture& f) { form->processMessage(f.message); }, text("OTHER: x=N/A"),
        filled);
    addRow(
        "display", [](MessageWidget* form, const Fixture& f) { form->displayMessage(f.message); }, filled, filled);
    addRow(
        "other type", [](MessageWidget* form, const Fixture& f) { form->displayMessage(f.otherMessage); },
        text("OTHER: x=1"), text("OTHER: x=1"));
    addRow(
        "no type", [](MessageWidget* form, const Fixture&) { form->setMessageInfo(nullptr); }, none, none);
}

void tst_MessageWidget::listenersFindAWholeForm()
{
    QFETCH(Reaction, reaction);
    const Fixture f;
    MessageWidget form(nullptr, &f.info);
    const Answer answer([&] { reaction(&form, f); });
    form.setMessageInfo(&f.other);
    QTEST(shown(form), "afterGoing");
    form.setMessageInfo(&f.empty);
    form.setMessageInfo(&f.info);
    QTEST(shown(form), "afterComing");
}

QTEST_MAIN(tst_MessageWidget)

#include "tst_messagewidget.moc"
