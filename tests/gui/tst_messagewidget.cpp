#include "fieldvaluelabel.h"
#include "formatinfo.h"
#include "messageinfo.h"
#include "messageneedmanager.h"
#include "messagewidget.h"
#include "testbase.h"
#include "testformat.h"

#include <QGridLayout>
#include <QLineEdit>
#include <QPointer>

class tst_MessageWidget : public TestBase
{
    Q_OBJECT

private Q_SLOTS:
    void initTestCase();
    void emptyForm();
    void oneRowForEveryFieldInOrder();
    void aTypeWithoutFieldsIsAnEmptyGrid();
    void valuesOfAMessage();
    void processMessageKeepsTheType();
    void displayMessageFollowsTheType();
    void rebuildsEvenForTheSameType();
    void rebuildRemovesEveryDescendantOnce();
    void emptyFormLeavesForeignWidgetsAlone();
    void needsExistOnlyWithTheForm();

private:
    FormatInfo m_format{QLatin1String("test")};
    MessageInfo* m_info;
    MessageInfo* m_otherInfo;
    MessageInfo* m_emptyInfo;
};

static QString text(const char* latin1)
{
    return QString::fromLatin1(latin1);
}

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

static qint64 alive(const char* className)
{
    return MemLeakTracer::getInstance()->getLiveCount(text(className));
}

static MessageReference newMessage(const MessageInfo* info, double value)
{
    TestMessage* message = new TestMessage(info);
    Q_FOREACH (const FieldInfo* field, info->getFieldInfos())
        message->set(field, value);
    return MessageReference::adopt(message);
}

void tst_MessageWidget::initTestCase()
{
    m_info = new MessageInfo(text("STATE"));
    m_info->addField(new TestFieldInfo(text("speed")));
    m_info->addField(new TestFieldInfo(text("channels"), TestFieldInfo::Repeated));
    m_info->addField(new TestFieldInfo(text("name"), TestFieldInfo::String | TestFieldInfo::Optional));
    m_info->addField(new TestFieldInfo(text("hidden"), TestFieldInfo::Virtual | TestFieldInfo::Confidential |
                                                           TestFieldInfo::Secondary));
    m_otherInfo = new MessageInfo(text("OTHER"));
    m_otherInfo->addField(new TestFieldInfo(text("x")));
    m_emptyInfo = new MessageInfo(text("EMPTY"));
    m_format.addMessageInfo(m_info);
    m_format.addMessageInfo(m_otherInfo);
    m_format.addMessageInfo(m_emptyInfo);
}

void tst_MessageWidget::emptyForm()
{
    MessageWidget form(nullptr, nullptr);
    QCOMPARE(shown(form), text("No message type set"));
    QVERIFY(!form.getMessageInfo());
    form.clearValues();
    const MessageReference message = newMessage(m_info, 1);
    form.processMessage(message.get());
    QCOMPARE(shown(form), text("No message type set"));
    QCOMPARE(alive("MessageWidget"), qint64(1));
}

void tst_MessageWidget::oneRowForEveryFieldInOrder()
{
    QWidget parent;
    MessageWidget* form = new MessageWidget(&parent, m_info);
    QCOMPARE(form->parentWidget(), &parent);
    QCOMPARE(form->getMessageInfo(), static_cast<const MessageInfo*>(m_info));
    QCOMPARE(shown(*form), text("STATE: speed=N/A, channels=N/A, name=N/A, hidden=N/A"));
    QCOMPARE(alive("FieldValueLabel"), qint64(4));
}

void tst_MessageWidget::aTypeWithoutFieldsIsAnEmptyGrid()
{
    MessageWidget form(nullptr, m_emptyInfo);
    QCOMPARE(shown(form), text("EMPTY: "));
    form.setMessageInfo(nullptr);
    QCOMPARE(shown(form), text("No message type set"));
}

void tst_MessageWidget::valuesOfAMessage()
{
    MessageWidget form(nullptr, m_info);
    TestMessage* message = new TestMessage(m_info);
    const MessageReference keep = MessageReference::adopt(message);
    message->set(m_info->getFieldInfos().at(0), 3.5);
    message->setNumbers(m_info->getFieldInfos().at(1), 3, 7);
    message->setText(m_info->getFieldInfos().at(2), "abc");
    message->set(m_info->getFieldInfos().at(3), 1);
    form.processMessage(message);
    QCOMPARE(shown(form), text("STATE: speed=3.5, channels=7 [...], name=abc, hidden=1"));
    message->set(m_info->getFieldInfos().at(2), QVector<FieldValue>());
    form.displayMessage(message);
    QCOMPARE(shown(form), text("STATE: speed=3.5, channels=7 [...], name=N/A, hidden=1"));
    form.clearValues();
    QCOMPARE(shown(form), text("STATE: speed=N/A, channels=N/A, name=N/A, hidden=N/A"));
    QCOMPARE(message->getReferenceCount(), 1);
}

void tst_MessageWidget::processMessageKeepsTheType()
{
    MessageWidget form(nullptr, m_otherInfo);
    const MessageReference first = newMessage(m_otherInfo, 1);
    const MessageReference foreign = newMessage(m_info, 2);
    form.processMessage(first.get());
    form.processMessage(foreign.get());
    QCOMPARE(shown(form), text("OTHER: x=1"));
}

void tst_MessageWidget::displayMessageFollowsTheType()
{
    MessageWidget form;
    const MessageReference first = newMessage(m_otherInfo, 1);
    const MessageReference second = newMessage(m_info, 66);
    form.displayMessage(first.get());
    QCOMPARE(shown(form), text("OTHER: x=1"));
    form.displayMessage(second.get());
    QCOMPARE(shown(form), text("STATE: speed=66, channels=66, name=B, hidden=66"));
    form.displayMessage(nullptr);
    QCOMPARE(shown(form), text("No message type set"));
    QVERIFY(!form.getMessageInfo());
    QCOMPARE(alive("FieldValueLabel"), qint64(0));
}

void tst_MessageWidget::rebuildsEvenForTheSameType()
{
    MessageWidget form(nullptr, m_otherInfo);
    const MessageReference message = newMessage(m_otherInfo, 1);
    form.processMessage(message.get());
    const QPointer<FieldValueLabel> label = form.findChild<FieldValueLabel*>();
    form.displayMessage(message.get()); // of the type shown: no rebuild
    QVERIFY(label);
    form.setMessageInfo(m_otherInfo);
    QVERIFY(!label);
    QCOMPARE(shown(form), text("OTHER: x=N/A"));
    QCOMPARE(int(form.findChildren<QWidget*>().size()), 2);
    QCOMPARE(alive("FieldValueLabel"), qint64(1));
    form.processMessage(message.get());
    QCOMPARE(shown(form), text("OTHER: x=1"));
}

void tst_MessageWidget::rebuildRemovesEveryDescendantOnce()
{
    MessageWidget form(nullptr, m_otherInfo);
    // Two levels of an application's own widgets, with a value label of its own and another form deep inside.
    QPointer<QWidget> frame = new QWidget(&form);
    QPointer<QWidget> edit = new QLineEdit(frame);
    FieldValueLabel* nested = new FieldValueLabel(m_info->getFieldInfos().at(0), nullptr, true, -1);
    nested->setParent(frame);
    QPointer<QWidget> inner = new MessageWidget(frame, m_info);
    QPointer<QObject> kept = new QObject(&form);
    QCOMPARE(alive("FieldValueLabel"), qint64(6));
    form.setMessageInfo(m_emptyInfo);
    QVERIFY(!frame && !edit && !inner);
    QVERIFY(kept);
    QCOMPARE(int(form.findChildren<QWidget*>().size()), 0);
    QCOMPARE(alive("FieldValueLabel"), qint64(0));
    QCOMPARE(alive("MessageWidget"), qint64(1));
}

void tst_MessageWidget::emptyFormLeavesForeignWidgetsAlone()
{
    MessageWidget form(nullptr, nullptr);
    const QPointer<QWidget> foreign = new QWidget(&form);
    form.setMessageInfo(nullptr);
    QVERIFY(foreign);
    form.setMessageInfo(m_otherInfo);
    QVERIFY(foreign);
    form.setMessageInfo(nullptr);
    QVERIFY(!foreign);
}

void tst_MessageWidget::needsExistOnlyWithTheForm()
{
    const MessageNeedManager* const manager = MessageNeedManager::getInstance();
    {
        MessageWidget form(nullptr, m_info);
        QVERIFY(manager->isNeeded(m_info));
        form.setMessageInfo(m_otherInfo);
        QVERIFY(!manager->isNeeded(m_info) && manager->isNeeded(m_otherInfo));
    }
    QVERIFY(manager->getNeededMessageInfos().isEmpty());
}

QTEST_MAIN(tst_MessageWidget)

#include "tst_messagewidget.moc"
