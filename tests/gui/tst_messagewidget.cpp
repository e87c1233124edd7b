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
    void showsTypesAndMessages();
    void rebuildsEvenForTheSameType();
    void rebuildRemovesEveryDescendantOnce();
    void emptyFormLeavesForeignWidgetsAlone();
    void listenersFindAWholeForm();
};

struct Fixture : Types
{
    Fixture()
        : Types("STATE: speed[m/s] channels.r name.so hidden.vc2; OTHER: x; EMPTY:")
    {
    }

    // "type TYPE", "show MESSAGE" also of another type, "clear", or any message.
    void perform(MessageWidget* form, const QString& command) const
    {
        const QString object = command.section(' ', 1);
        if (command.startsWith("type"))
            form->setMessageInfo(type(object));
        else if (command.startsWith("show"))
            form->displayMessage(message(object).get());
        else if (command == "clear")
            form->clearValues();
        else
            form->processMessage(message(command).get());
    }
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

static const char s_filled[] = "STATE: speed=3.5 m/s, channels=7 [...], name=abc, hidden=N/A";
static const char s_cleared[] = "STATE: speed=N/A, channels=N/A, name=N/A, hidden=N/A";
static const char s_none[] = "No message type set";

void tst_MessageWidget::showsTypesAndMessages()
{
    const Fixture f;
    const MessageNeedManager* const manager = MessageNeedManager::getInstance();
    QWidget* const parent = new QWidget;
    MessageWidget* form = new MessageWidget(parent, f.type("STATE"));
    const TextRow rows[] = {
        {"type STATE", s_cleared},
        {"STATE speed=3.5 channels=7:9 name='abc'", s_filled},
        {"OTHER x=1", s_filled},
        {"show STATE speed=3.5 channels=7:9", "STATE: speed=3.5 m/s, channels=7 [...], name=N/A, hidden=N/A"},
        {"clear", s_cleared},
        {"type", s_none},
        {"clear", s_none},
        {"STATE speed=1", s_none},
        {"show OTHER x=1", "OTHER: x=1"},
        {"type EMPTY", "EMPTY: "},
        {"show null", s_none},
        {"show STATE speed=3.5 channels=7:9 name='abc'", s_filled},
    };
    const auto play = [&](const QString& command) {
        f.perform(form, command);
        return shown(*form);
    };
    checkRows(rows, play);
    QVERIFY(manager->isNeeded(f.type("STATE")));
    QCOMPARE(alive(), text("1 forms, 4 labels"));
    delete parent;
    QVERIFY(manager->getNeededMessageInfos().isEmpty());
}

void tst_MessageWidget::rebuildsEvenForTheSameType()
{
    const Fixture f;
    MessageWidget form(nullptr, f.type("OTHER"));
    f.perform(&form, "OTHER x=1");
    const QPointer<FieldValueLabel> label = form.findChild<FieldValueLabel*>();
    f.perform(&form, "show OTHER x=1"); // of the type shown: no rebuild
    QVERIFY(label);
    f.perform(&form, "type OTHER");
    QVERIFY(!label);
    QCOMPARE(shown(form), text("OTHER: x=N/A"));
    QCOMPARE(int(form.findChildren<QWidget*>().size()), 2);
}

void tst_MessageWidget::rebuildRemovesEveryDescendantOnce()
{
    const Fixture f;
    MessageWidget form(nullptr, f.type("OTHER"));
    // Two levels of an application's own widgets, with a value label of its own and another form deep inside.
    QPointer<QWidget> frame = new QWidget(&form);
    QPointer<QWidget> edit = new QLineEdit(frame);
    (new FieldValueLabel(f.field("speed"), nullptr, true, -1))->setParent(frame);
    QPointer<QWidget> inner = new MessageWidget(frame, f.type("STATE"));
    QPointer<QObject> kept = new QObject(&form);
    QCOMPARE(alive(), text("2 forms, 6 labels"));
    form.setMessageInfo(f.type("EMPTY"));
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
    form.setMessageInfo(f.type("OTHER"));
    QVERIFY(foreign);
    form.setMessageInfo(nullptr);
    QVERIFY(!foreign);
}

void tst_MessageWidget::listenersFindAWholeForm()
{
    const Fixture f;
    // What a form shows when others answer the going and coming of its needs with this.
    const auto answered = [&](const QString& reaction) {
        MessageWidget form(nullptr, f.type("STATE"));
        const Answer answer([&] { f.perform(&form, reaction); });
        f.perform(&form, "type OTHER");
        const QString going = shown(form);
        f.perform(&form, "type EMPTY");
        f.perform(&form, "type STATE");
        return going + "; " + shown(form);
    };
    const QByteArray filled(s_filled);
    const QByteArray whenCleared = QByteArray("OTHER: x=N/A; ") + s_cleared;
    const QByteArray whenFilled = "OTHER: x=N/A; " + filled;
    const QByteArray whenShown = filled + "; " + filled;
    const TextRow rows[] = {
        {"clear", whenCleared},
        {"STATE speed=3.5 channels=7:9 name='abc'", whenFilled},
        {"show STATE speed=3.5 channels=7:9 name='abc'", whenShown},
        {"show OTHER x=1", "OTHER: x=1; OTHER: x=1"},
        {"type", "No message type set; No message type set"},
    };
    checkRows(rows, answered);
    // The rows come one by one into a form that is there.
    MessageWidget form(nullptr, nullptr);
    QStringList seen;
    const Answer answer([&] { seen << shown(form); });
    form.setMessageInfo(f.type("STATE"));
    QCOMPARE(seen, QStringList(text("No message type set: ")));
}

QTEST_MAIN(tst_MessageWidget)

#include "tst_messagewidget.moc"
