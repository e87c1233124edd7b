#include "repeatedfieldtreewidgetitem.h"
#include "singlesubmessagefieldtreewidgetitem.h"
#include "singlevaluefieldtreewidgetitem.h"
#include "stringfieldtreewidgetitem.h"
#include "testbase.h"
#include "treefixtures.h"

/** Shows the raw value too. */
class RawTree : public MessageTreeWidget
{
public:
    RawTree() { addColumn(RawValueColumn, true); }
};

class TestFieldTreeWidgetItems : public TestBase
{
    Q_OBJECT

private Q_SLOTS:
    void rowsWithoutAFieldSaySo();
    void singleValueShowsItsValue();
    void singleValueTellsOfAMissingOptionalValue();
    void singleValueKeepsItsValueWhenThereAreFewer();
    void singleValueRowsOfComponentsFollow();
    void singleValueIndexChangesOnlyOnce();
    void stringShowsOneText();
    void stringReportsOtherFields();
    void subMessageShowsItsFields();
    void subMessageTellsOfAMissingOptionalOne();
    void subMessageClearsForEveryIndex();
    void subMessageTakesNoReferenceUnlessMain();
    void repeatedCountsItsValues();
    void repeatedKeepsTheFirstRows();
    void repeatedShowsSubMessages();
    void repeatedIgnoresOtherTypes();
    void repeatedStaysLinearAndRightWhenItIsLong();
    void typesThatContainThemselvesEnd();
};

void TestFieldTreeWidgetItems::rowsWithoutAFieldSaySo()
{
    TestInfo info("T");
    OwnedMessage message(&info);
    QList<AbstractFieldTreeWidgetItem*> rows;
    RawTree tree;
    rows << new SingleValueFieldTreeWidgetItem(&tree, nullptr, 2) << new StringFieldTreeWidgetItem(&tree, nullptr)
         << new SingleSubMessageFieldTreeWidgetItem(&tree, nullptr, 0)
         << new RepeatedFieldTreeWidgetItem(&tree, nullptr);
    QStringList texts;
    Q_FOREACH (AbstractFieldTreeWidgetItem* row, rows) {
        tree.addTopLevelItem(row);
        row->configureInTreeWidget();
        row->processMessage(message);
        row->processMessage(nullptr);
        row->clearValues();
        texts << rowText(row);
    }
    QCOMPARE(texts, lines("No field set | N/A |  | \nNo field set | string |  | \nNo field set | N/A |  | \n"
                          "No field set |  |  | "));
}

void TestFieldTreeWidgetItems::singleValueShowsItsValue()
{
    TestInfo info("T");
    TestFieldInfo* speed = info.add("speed");
    speed->setUnit(QLatin1String("m/s"));
    OwnedMessage message(&info);
    message->set(speed, 3.5);
    RawTree tree;
    SingleValueFieldTreeWidgetItem row(&tree, speed, 0);
    QCOMPARE(rowText(&row), QString::fromLatin1("speed | double |  | "));
    row.processMessage(message);
    QCOMPARE(rowText(&row), QString::fromLatin1("speed | double | 3.5 m/s | 3.5"));
    QCOMPARE(row.getFieldValue().toDouble(), 3.5);
    row.processMessage(nullptr);
    QCOMPARE(rowText(&row), QString::fromLatin1("speed | double |  | "));
    row.setFieldInfo(nullptr);
    QCOMPARE(rowText(&row), QString::fromLatin1("No field set | N/A |  | "));
    QCOMPARE(row.getInitialExpansionPolicy(), AbstractMessageTreeWidgetItem::CollapseInitially);
}

void TestFieldTreeWidgetItems::singleValueTellsOfAMissingOptionalValue()
{
    TestInfo info("T");
    TestFieldInfo* speed = info.add("speed", TestFieldInfo::Optional);
    TestInfo other("U");
    OwnedMessage message(&info);
    RawTree tree;
    SingleValueFieldTreeWidgetItem row(&tree, speed, 0);
    row.processMessage(message);
    QCOMPARE(rowText(&row), QString::fromLatin1("speed | double | No value for optional field | "
                                                "No value for optional field"));
    // Clearing leaves the notice; a null message and a value take it away.
    row.clearValues();
    QCOMPARE(row.getValueText(), QString::fromLatin1("No value for optional field"));
    row.processMessage(nullptr);
    QCOMPARE(rowText(&row), QString::fromLatin1("speed | double |  | "));
    row.processMessage(message);
    message->set(speed, 1);
    row.processMessage(message);
    QCOMPARE(rowText(&row), QString::fromLatin1("speed | double | 1 | 1"));
    // A type without the field says nothing about it.
    OwnedMessage foreign(&other);
    row.processMessage(foreign);
    QCOMPARE(rowText(&row), QString::fromLatin1("speed | double | 1 | 1"));
}

void TestFieldTreeWidgetItems::singleValueKeepsItsValueWhenThereAreFewer()
{
    TestInfo info("T");
    TestFieldInfo* many = info.add("many", TestFieldInfo::Repeated);
    OwnedMessage message(&info);
    message->setNumbers(many, 4, 10);
    RawTree tree;
    SingleValueFieldTreeWidgetItem row(&tree, many, 3);
    row.processMessage(message);
    QCOMPARE(rowText(&row), QString::fromLatin1("many [3] | double | 13 | 13"));
    message->setNumbers(many, 3, 20);
    const int read = many->valuesRead;
    row.processMessage(message);
    QCOMPARE(rowText(&row), QString::fromLatin1("many [3] | double | 13 | 13"));
    QCOMPARE(many->valuesRead, read);
}

void TestFieldTreeWidgetItems::singleValueRowsOfComponentsFollow()
{
    TestInfo info("T");
    TestFieldInfo* flags = new TestFieldInfo(QLatin1String("flags"));
    TestFieldInfo* first = new TestFieldInfo(QLatin1String("first"));
    TestFieldInfo* secret = new TestFieldInfo(QLatin1String("secret"), TestFieldInfo::Confidential);
    TestFieldInfo* last = new TestFieldInfo(QLatin1String("last"), TestFieldInfo::Repeated);
    flags->addSubField(first);
    flags->addSubField(secret);
    flags->addSubField(last);
    info.add(flags);
    OwnedMessage message(&info);
    message->set(flags, 5)->setNumbers(first, 2, 1)->setNumbers(last, 2, 7);
    RawTree tree;
    SingleValueFieldTreeWidgetItem row(&tree, flags, 0);
    QCOMPARE(row.getInitialExpansionPolicy(), AbstractMessageTreeWidgetItem::RestoreExpansion);
    row.processMessage(message);
    QCOMPARE(rowsBelow(&row), lines("first | double | 1 | 1\nlast [0] | double | 7 | 7"));
    row.setIndex(1);
    QCOMPARE(rowsBelow(&row), lines("first | double |  | \nlast [1] | double |  | "));
    // Though there is no second value of the field itself, its components have theirs.
    row.processMessage(message);
    QCOMPARE(rowText(&row), QString::fromLatin1("flags | double |  | "));
    QCOMPARE(rowsBelow(&row), lines("first | double | 2 | 2\nlast [1] | double | 8 | 8"));
    row.processMessage(nullptr);
    QCOMPARE(rowsBelow(&row), lines("first | double |  | \nlast [1] | double |  | "));
}

void TestFieldTreeWidgetItems::singleValueIndexChangesOnlyOnce()
{
    TestInfo info("T");
    TestFieldInfo* many = info.add("many", TestFieldInfo::Repeated);
    OwnedMessage message(&info);
    message->setNumbers(many, 3, 10);
    RawTree tree;
    SingleValueFieldTreeWidgetItem row(&tree, many, 1);
    row.processMessage(message);
    row.setIndex(1);
    QCOMPARE(rowText(&row), QString::fromLatin1("many [1] | double | 11 | 11"));
    row.setIndex(2);
    QCOMPARE(rowText(&row), QString::fromLatin1("many [2] | double |  | "));
}

void TestFieldTreeWidgetItems::stringShowsOneText()
{
    TestInfo info("T");
    TestFieldInfo* text = info.add("text", TestFieldInfo::String);
    TestInfo other("U");
    OwnedMessage message(&info);
    message->setText(text, "hello");
    RawTree tree;
    StringFieldTreeWidgetItem row(&tree, text);
    row.processMessage(message);
    QCOMPARE(rowText(&row), QString::fromLatin1("text | string | hello | hello"));
    OwnedMessage foreign(&other);
    row.processMessage(foreign);
    QCOMPARE(row.getString(), QString::fromLatin1("hello"));
    row.processMessage(nullptr);
    QCOMPARE(rowText(&row), QString::fromLatin1("text | string |  | "));
    row.setString(QLatin1String("set"));
    QCOMPARE(rowText(&row), QString::fromLatin1("text | string | set | set"));
    QCOMPARE(row.extractString(nullptr), QString());
}

void TestFieldTreeWidgetItems::stringReportsOtherFields()
{
    // The report goes to the error stream; the field is taken.
    TestInfo info("T");
    TestFieldInfo* number = info.add("number");
    RawTree tree;
    StringFieldTreeWidgetItem row(&tree, number);
    QCOMPARE(rowText(&row), QString::fromLatin1("number | string |  | "));
}

void TestFieldTreeWidgetItems::subMessageShowsItsFields()
{
    TestInfo inner("INNER", false);
    inner.setShortDescriptiveText(QLatin1String("About it"));
    TestFieldInfo* value = inner.add("value");
    inner.add("secret", TestFieldInfo::Confidential);
    TestInfo info("T");
    TestFieldInfo* sub = info.add("sub", TestFieldInfo::Plain, &inner);
    OwnedMessage message(&info);
    message->setSubMessages(sub, QList<Message*>() << inner.createMessage()->set(value, 9));
    RawTree tree;
    SingleSubMessageFieldTreeWidgetItem row(&tree, sub, 0);
    QCOMPARE(row.text(0), QString::fromLatin1("sub"));
    QCOMPARE(row.toolTip(0), QString::fromLatin1("About it"));
    QCOMPARE(row.getInitialExpansionPolicy(), AbstractMessageTreeWidgetItem::RestoreExpansion);
    row.processMessage(message);
    QCOMPARE(rowText(&row), QString::fromLatin1("sub | INNER |  | "));
    QCOMPARE(row.childCount(), 2);
    QCOMPARE(row.child(0)->text(0), QString::fromLatin1("Hidden data"));
    QCOMPARE(rowText(row.child(1)), QString::fromLatin1("value | double | 9 | 9"));
    row.processMessage(nullptr);
    QVERIFY(!row.isMessageDisplayed());
    QCOMPARE(rowText(row.child(1)), QString::fromLatin1("value | double |  | "));
}

void TestFieldTreeWidgetItems::subMessageTellsOfAMissingOptionalOne()
{
    TestInfo inner("INNER", false);
    TestFieldInfo* value = inner.add("value");
    TestInfo info("T");
    TestFieldInfo* sub = info.add("sub", TestFieldInfo::Optional, &inner);
    OwnedMessage full(&info);
    full->setSubMessages(sub, QList<Message*>() << inner.createMessage()->set(value, 9));
    OwnedMessage empty(&info);
    RawTree tree;
    SingleSubMessageFieldTreeWidgetItem row(&tree, sub, 0);
    row.processMessage(full);
    row.processMessage(empty);
    QCOMPARE(rowText(&row),
             QString::fromLatin1("sub | INNER | Optional submessage not present | Optional submessage not present"));
    QCOMPARE(rowsBelow(&row), lines("value | double |  | "));
    row.processMessage(full);
    QCOMPARE(rowText(&row), QString::fromLatin1("sub | INNER |  | "));
    QCOMPARE(rowsBelow(&row), lines("value | double | 9 | 9"));
}

void TestFieldTreeWidgetItems::subMessageClearsForEveryIndex()
{
    TestInfo inner("INNER", false);
    TestFieldInfo* value = inner.add("value");
    TestInfo info("T");
    TestFieldInfo* subs = info.add("subs", TestFieldInfo::Repeated, &inner);
    OwnedMessage message(&info);
    message->setSubMessages(subs, QList<Message*>()
                                      << inner.createMessage()->set(value, 1) << inner.createMessage()->set(value, 2));
    RawTree tree;
    SingleSubMessageFieldTreeWidgetItem row(&tree, subs, 1);
    row.processMessage(message);
    QCOMPARE(row.text(0), QString::fromLatin1("subs [1]"));
    QCOMPARE(rowsBelow(&row), lines("value | double | 2 | 2"));
    row.setIndex(1);
    QCOMPARE(rowsBelow(&row), lines("value | double |  | "));
    row.processMessage(message);
    row.setIndex(5);
    row.processMessage(message);
    QCOMPARE(row.text(0), QString::fromLatin1("subs [5]"));
    QCOMPARE(rowsBelow(&row), lines("value | double |  | "));
}

void TestFieldTreeWidgetItems::subMessageTakesNoReferenceUnlessMain()
{
    TestInfo inner("INNER", false);
    TestInfo mainInner("MAININNER", true);
    TestInfo info("T");
    TestFieldInfo* sub = info.add("sub", TestFieldInfo::Plain, &inner);
    TestFieldInfo* mainSub = info.add("mainSub", TestFieldInfo::Plain, &mainInner);
    TestMessage* innerMessage = inner.createMessage();
    TestMessage* mainMessage = mainInner.createMessage();
    OwnedMessage message(&info);
    message->setSubMessages(sub, QList<Message*>() << innerMessage);
    message->setSubMessages(mainSub, QList<Message*>() << mainMessage);
    {
        RawTree tree;
        SingleSubMessageFieldTreeWidgetItem row(&tree, sub, 0);
        SingleSubMessageFieldTreeWidgetItem mainRow(&tree, mainSub, 0);
        row.processMessage(message);
        mainRow.processMessage(message);
        QCOMPARE(innerMessage->getReferenceCount(), 1);
        QCOMPARE(mainMessage->getReferenceCount(), 2);
    }
    QCOMPARE(mainMessage->getReferenceCount(), 1);
}

void TestFieldTreeWidgetItems::repeatedCountsItsValues()
{
    TestInfo inner("INNER", false);
    TestInfo info("T");
    TestFieldInfo* values = info.add("values", TestFieldInfo::Repeated);
    TestFieldInfo* optional = info.add("optional", TestFieldInfo::Repeated | TestFieldInfo::Optional);
    TestFieldInfo* subs = info.add("subs", TestFieldInfo::Repeated, &inner);
    RawTree tree;
    MessageTreeWidgetItem* row = addRow(&tree, &info);
    QCOMPARE(rowsBelow(row), lines("values |  | 0 repeated values | 0 repeated values\n"
                                   "optional |  | No values for optional field | No values for optional field\n"
                                   "subs |  | 0 submessages | 0 submessages"));
    OwnedMessage message(&info);
    message->setNumbers(values, 1)->setNumbers(optional, 2);
    message->setSubMessages(subs, QList<Message*>() << inner.createMessage());
    tree.processMessage(message);
    QCOMPARE(rowsBelow(row), lines("values |  | 1 repeated value | 1 repeated value\n"
                                   ". values [0] | double | 0 | 0\n"
                                   "optional |  | 2 repeated values | 2 repeated values\n"
                                   ". optional [0] | double | 0 | 0\n"
                                   ". optional [1] | double | 1 | 1\n"
                                   "subs |  | 1 submessage | 1 submessage\n"
                                   ". subs [0] | INNER |  | "));
    tree.processMessage(nullptr);
    QCOMPARE(rowsBelow(row).size(), 3);
}

void TestFieldTreeWidgetItems::repeatedKeepsTheFirstRows()
{
    TestInfo info("T");
    TestFieldInfo* values = info.add("values", TestFieldInfo::Repeated);
    RawTree tree;
    MessageTreeWidgetItem* top = addRow(&tree, &info);
    showTree(&tree);
    QTreeWidgetItem* row = top->child(0);
    OwnedMessage message(&info);
    message->setNumbers(values, 3, 10);
    tree.processMessage(message);
    const QTreeWidgetItem* first = row->child(0);
    message->setNumbers(values, 1, 20);
    tree.processMessage(message);
    QCOMPARE(rowsBelow(row), lines("values [0] | double | 20 | 20"));
    QCOMPARE(static_cast<const QTreeWidgetItem*>(row->child(0)), first);
    QCOMPARE(row->text(2), QString::fromLatin1("1 repeated value"));
    message->setNumbers(values, 2, 30);
    tree.processMessage(message);
    QCOMPARE(static_cast<const QTreeWidgetItem*>(row->child(0)), first);
    QCOMPARE(rowsBelow(row), lines("values [0] | double | 30 | 30\nvalues [1] | double | 31 | 31"));
    message->setNumbers(values, 0);
    tree.processMessage(message);
    QCOMPARE(row->childCount(), 0);
    QCOMPARE(row->text(2), QString::fromLatin1("0 repeated values"));
}

void TestFieldTreeWidgetItems::repeatedShowsSubMessages()
{
    TestInfo inner("INNER", false);
    TestFieldInfo* value = inner.add("value");
    TestInfo info("T");
    TestFieldInfo* subs = info.add("subs", TestFieldInfo::Repeated, &inner);
    RawTree tree;
    MessageTreeWidgetItem* top = addRow(&tree, &info);
    QTreeWidgetItem* row = top->child(0);
    OwnedMessage message(&info);
    message->setSubMessages(subs, QList<Message*>()
                                      << inner.createMessage()->set(value, 1) << inner.createMessage()->set(value, 2));
    tree.processMessage(message);
    QCOMPARE(rowsBelow(row), lines("subs [0] | INNER |  | \n. value | double | 1 | 1\nsubs [1] | INNER |  | \n"
                                   ". value | double | 2 | 2"));
    QVERIFY(row->child(1)->isExpanded());
    OwnedMessage shorter(&info);
    shorter->setSubMessages(subs, QList<Message*>() << inner.createMessage()->set(value, 5));
    tree.processMessage(shorter);
    QCOMPARE(rowsBelow(row), lines("subs [0] | INNER |  | \n. value | double | 5 | 5"));
}

void TestFieldTreeWidgetItems::repeatedIgnoresOtherTypes()
{
    TestInfo info("T");
    TestFieldInfo* values = info.add("values", TestFieldInfo::Repeated);
    TestInfo other("U");
    OwnedMessage message(&info);
    message->setNumbers(values, 2);
    RawTree tree;
    RepeatedFieldTreeWidgetItem row(&tree, values);
    row.processMessage(message);
    OwnedMessage foreign(&other);
    row.processMessage(foreign);
    QCOMPARE(row.childCount(), 2);
    // Setting the field always empties, also when it is the same.
    row.setFieldInfo(values);
    QCOMPARE(row.childCount(), 0);
    QCOMPARE(row.getInitialExpansionPolicy(), AbstractMessageTreeWidgetItem::RestoreExpansion);
}

void TestFieldTreeWidgetItems::repeatedStaysLinearAndRightWhenItIsLong()
{
    TestInfo info("T");
    TestFieldInfo* values = info.add("values", TestFieldInfo::Repeated);
    RawTree tree;
    MessageTreeWidgetItem* top = addRow(&tree, &info);
    showTree(&tree);
    QTreeWidgetItem* row = top->child(0);
    row->setExpanded(true);
    OwnedMessage message(&info);
    const int counts[] = {1000, 3, 500, 0, 1000, 999, 0};
    for (unsigned int i = 0; i < sizeof(counts) / sizeof(counts[0]); ++i) {
        message->setNumbers(values, counts[i], 5);
        tree.processMessage(message);
        QCoreApplication::processEvents();
        QCOMPARE(row->childCount(), counts[i]);
        if (counts[i] > 0) {
            const int last = counts[i] - 1;
            QCOMPARE(rowText(row->child(last)),
                     QString::fromLatin1("values [%1] | double | %2 | %2").arg(last).arg(last + 5));
        }
    }

    // Rows that somebody added below are not the field's to count or delete.
    message->setNumbers(values, 3);
    tree.processMessage(message);
    row->addChild(new QTreeWidgetItem(QStringList() << QLatin1String("note")));
    message->setNumbers(values, 1);
    tree.processMessage(message);
    QCOMPARE(rowsBelow(row), lines("values [0] | double | 0 | 0\nnote |  |  | "));
}

void TestFieldTreeWidgetItems::typesThatContainThemselvesEnd()
{
    TestInfo info("NODE", false);
    TestFieldInfo* value = info.add("value");
    TestFieldInfo* next = info.add("next", TestFieldInfo::Optional, &info);
    RawTree tree;
    MessageTreeWidgetItem* row = addRow(&tree, &info);
    TestMessage* third = info.createMessage()->set(value, 3);
    TestMessage* second = info.createMessage()->set(value, 2);
    second->setSubMessages(next, QList<Message*>() << third);
    OwnedMessage message(&info);
    message->set(value, 1)->setSubMessages(next, QList<Message*>() << second);
    tree.processMessage(message);
    QCOMPARE(rowsBelow(row), lines("value | double | 1 | 1\nnext | NODE |  | \n"
                                   ". value | double | 2 | 2\n. next | NODE |  | \n"
                                   ". . value | double | 3 | 3\n"
                                   ". . next | NODE | Optional submessage not present | "
                                   "Optional submessage not present"));
}

QTEST_MAIN(TestFieldTreeWidgetItems)
#include "tst_fieldtreewidgetitems.moc"
