#include "repeatedfieldtreewidgetitem.h"
#include "singlesubmessagefieldtreewidgetitem.h"
#include "singlevaluefieldtreewidgetitem.h"
#include "stringfieldtreewidgetitem.h"
#include "testbase.h"
#include "treefixtures.h"

class TestFieldTreeWidgetItems : public TestBase
{
    Q_OBJECT

private Q_SLOTS:
    void rowsWithoutAFieldSaySo();
    void singleValues();
    void singleValueOfSeveral();
    void singleValueRowsOfComponentsFollow();
    void stringShowsOneText();
    void subMessageShowsItsFields();
    void subMessageClearsForEveryIndex();
    void subMessageTakesNoReferenceUnlessMain();
    void repeatedCountsItsValues();
    void repeatedIgnoresOtherTypes();
    void repeatedKeepsItsFirstRowsAndStaysLinear();
    void typesThatContainThemselvesEnd();
};

/** A type with a field of every kind, and a tree that shows the raw values too. */
struct Fixture
{
    Fixture()
    {
        inner.setShortDescriptiveText(text("About it"));
        speed->setUnit(text("m/s"));
        tree.addColumn(Tree::RawValueColumn, true);
    }

    /** Sets sub-messages whose values count up from @p first. */
    void setSubMessages(const FieldInfo* field, int count, int first)
    {
        QList<Message*> messages;
        for (int i = 0; i < count; ++i)
            messages << inner.createMessage()->set(value, first + i);
        message->setSubMessages(field, messages);
    }

    TestInfo inner{"INNER", false};
    TestFieldInfo* value = inner.add("value");
    TestInfo info{"T"};
    TestFieldInfo* speed = info.add("speed");
    TestFieldInfo* maybe = info.add("maybe", TestFieldInfo::Optional);
    TestFieldInfo* many = info.add("many", TestFieldInfo::Repeated);
    TestFieldInfo* any = info.add("any", TestFieldInfo::Repeated | TestFieldInfo::Optional);
    TestFieldInfo* sub = info.add("sub", TestFieldInfo::Optional, &inner);
    TestFieldInfo* subs = info.add("subs", TestFieldInfo::Repeated, &inner);
    TestInfo other{"U"};
    OwnedMessage message{&info};
    OwnedMessage foreign{&other};
    Tree tree;
};

/** What a row and the rows below it show after a message. */
template <typename Row>
static QStringList fed(Row* row, const Message* message)
{
    row->processMessage(message);
    return QStringList(rowText(row)) + rowTexts(row, text("  "));
}

/** The fields, with their indexes, that a row and all below it say that they stand for. */
static QString fieldsText(QTreeWidgetItem* item)
{
    const AbstractMessageTreeWidgetItem* row = dynamic_cast<const AbstractMessageTreeWidgetItem*>(item);
    QString fields = !row ? text("note") : row->getFieldInfo() ? row->getFieldInfo()->getName() : text("none");
    fields += row ? text(" %1").arg(row->getIndex()) : QString();
    for (int i = 0; i < item->childCount(); ++i)
        fields += text(", ") + fieldsText(item->child(i));
    return fields;
}

void TestFieldTreeWidgetItems::rowsWithoutAFieldSaySo()
{
    Fixture f;
    f.tree.addTopLevelItem(new SingleValueFieldTreeWidgetItem(&f.tree, nullptr, 2));
    f.tree.addTopLevelItem(new StringFieldTreeWidgetItem(&f.tree, nullptr));
    f.tree.addTopLevelItem(new SingleSubMessageFieldTreeWidgetItem(&f.tree, nullptr, 0));
    f.tree.addTopLevelItem(new RepeatedFieldTreeWidgetItem(&f.tree, nullptr));
    f.tree.reconfigureTopLevelAbstractMessageTreeWidgetItems();
    f.tree.processMessage(f.message);
    f.tree.processMessage(nullptr);
    QCOMPARE(rowTexts(f.tree), lines("No field set | N/A\nNo field set | string\nNo field set | N/A\nNo field set"));
}

void TestFieldTreeWidgetItems::singleValues()
{
    Fixture f;
    SingleValueFieldTreeWidgetItem row(&f.tree, f.speed, 0);
    QCOMPARE(rowText(&row), text("speed | double"));
    f.message->set(f.speed, 3.5);
    QCOMPARE(fed(&row, f.message), lines("speed | double | 3.5 m/s | 3.5"));
    QCOMPARE(fed(&row, nullptr), lines("speed | double"));
    QCOMPARE(row.getInitialExpansionPolicy(), AbstractMessageTreeWidgetItem::CollapseInitially);

    const QString missing = text("No value for optional field");
    row.setFieldInfo(f.maybe);
    f.message->set(f.maybe, 1);
    fed(&row, f.message);
    f.message->set(f.maybe, QVector<FieldValue>());
    QCOMPARE(fed(&row, f.message), QStringList(text("maybe | double | %1 | %1").arg(missing)));
    // Clearing leaves the notice; a null message and a value take it away.
    row.clearValues();
    QCOMPARE(row.getValueText(), missing);
    QCOMPARE(fed(&row, nullptr), lines("maybe | double"));
    fed(&row, f.message);
    f.message->set(f.maybe, 1);
    QCOMPARE(fed(&row, f.message), lines("maybe | double | 1 | 1"));
    // A type without the field says nothing about it.
    QCOMPARE(fed(&row, f.foreign), lines("maybe | double | 1 | 1"));
    row.setFieldInfo(nullptr);
    QCOMPARE(rowText(&row), text("No field set | N/A"));
}

void TestFieldTreeWidgetItems::singleValueOfSeveral()
{
    Fixture f;
    SingleValueFieldTreeWidgetItem row(&f.tree, f.many, 3);
    f.message->fill(f.many, 4, 10);
    QCOMPARE(fed(&row, f.message), lines("many [3] | double | 13 | 13"));
    f.message->fill(f.many, 3, 20);
    const int read = f.many->valuesRead;
    QCOMPARE(fed(&row, f.message), lines("many [3] | double | 13 | 13"));
    QCOMPARE(f.many->valuesRead, read);
    row.setIndex(3);
    QCOMPARE(rowText(&row), text("many [3] | double | 13 | 13"));
    row.setIndex(2);
    QCOMPARE(rowText(&row), text("many [2] | double"));
}

void TestFieldTreeWidgetItems::singleValueRowsOfComponentsFollow()
{
    Fixture f;
    TestFieldInfo* flags = new TestFieldInfo(text("flags"));
    TestFieldInfo* first = addComponent(flags, "first");
    addComponent(flags, "secret", TestFieldInfo::Confidential);
    TestFieldInfo* last = addComponent(flags, "last", TestFieldInfo::Repeated);
    f.info.add(flags);
    f.message->set(flags, 5)->fill(first, 2, 1)->fill(last, 2, 7);
    SingleValueFieldTreeWidgetItem row(&f.tree, flags, 0);
    QCOMPARE(row.getInitialExpansionPolicy(), AbstractMessageTreeWidgetItem::RestoreExpansion);
    QCOMPARE(fed(&row, f.message),
             lines("flags | double | 5 | 5\n  first | double | 1 | 1\n  last [0] | double | 7 | 7"));
    row.setIndex(1);
    QCOMPARE(rowTexts(&row), lines("first | double\nlast [1] | double"));
    // Though there is no second value of the field itself, its components have theirs.
    QCOMPARE(fed(&row, f.message), lines("flags | double\n  first | double | 2 | 2\n  last [1] | double | 8 | 8"));
    QCOMPARE(fed(&row, nullptr), lines("flags | double\n  first | double\n  last [1] | double"));
}

void TestFieldTreeWidgetItems::stringShowsOneText()
{
    Fixture f;
    TestFieldInfo* name = f.info.add("name", TestFieldInfo::String);
    f.message->setText(name, "hello");
    StringFieldTreeWidgetItem row(&f.tree, name);
    QCOMPARE(fed(&row, f.message), lines("name | string | hello | hello"));
    QCOMPARE(fed(&row, f.foreign), lines("name | string | hello | hello"));
    QCOMPARE(fed(&row, nullptr), lines("name | string"));
    QCOMPARE(row.extractString(nullptr), QString());
    row.setFieldInfo(f.speed); // reported on the error stream, and taken
    QCOMPARE(rowText(&row), text("speed | string"));
}

void TestFieldTreeWidgetItems::subMessageShowsItsFields()
{
    Fixture f;
    f.inner.add("secret", TestFieldInfo::Confidential);
    SingleSubMessageFieldTreeWidgetItem row(&f.tree, f.sub, 0);
    QCOMPARE(row.toolTip(0), text("About it"));
    QCOMPARE(row.getInitialExpansionPolicy(), AbstractMessageTreeWidgetItem::RestoreExpansion);
    f.setSubMessages(f.sub, 1, 9);
    const QStringList shown = lines("sub | INNER\n  Hidden data\n  value | double | 9 | 9");
    QCOMPARE(fed(&row, f.message), shown);
    QCOMPARE(fed(&row, nullptr), lines("sub | INNER\n  Hidden data\n  value | double"));
    QVERIFY(!row.isMessageDisplayed());
    fed(&row, f.message);
    const OwnedMessage empty(&f.info);
    QCOMPARE(fed(&row, empty), QStringList(text("sub | INNER | %1 | %1").arg(text("Optional submessage not present")))
                                   << text("  Hidden data") << text("  value | double"));
    QCOMPARE(fed(&row, f.message), shown);
    fed(&row, empty);
    QCOMPARE(fed(&row, nullptr).first(), text("sub | INNER"));
}

void TestFieldTreeWidgetItems::subMessageClearsForEveryIndex()
{
    Fixture f;
    f.setSubMessages(f.subs, 2, 1);
    SingleSubMessageFieldTreeWidgetItem row(&f.tree, f.subs, 1);
    QCOMPARE(fed(&row, f.message), lines("subs [1] | INNER\n  value | double | 2 | 2"));
    row.setIndex(1);
    QCOMPARE(rowTexts(&row), lines("value | double"));
    row.setIndex(2);
    QCOMPARE(fed(&row, f.message), lines("subs [2] | INNER\n  value | double"));
}

void TestFieldTreeWidgetItems::subMessageTakesNoReferenceUnlessMain()
{
    Fixture f;
    TestInfo mainInner("MAININNER");
    TestFieldInfo* mainSub = f.info.add("mainSub", TestFieldInfo::Plain, &mainInner);
    TestMessage* innerMessage = f.inner.createMessage();
    TestMessage* mainMessage = mainInner.createMessage();
    f.message->setSubMessages(f.sub, QList<Message*>() << innerMessage);
    f.message->setSubMessages(mainSub, QList<Message*>() << mainMessage);
    {
        SingleSubMessageFieldTreeWidgetItem row(&f.tree, f.sub, 0);
        SingleSubMessageFieldTreeWidgetItem mainRow(&f.tree, mainSub, 0);
        row.processMessage(f.message);
        mainRow.processMessage(f.message);
        QCOMPARE(innerMessage->getReferenceCount(), 1);
        QCOMPARE(mainMessage->getReferenceCount(), 2);
    }
    QCOMPARE(mainMessage->getReferenceCount(), 1);
}

void TestFieldTreeWidgetItems::repeatedCountsItsValues()
{
    Fixture f;
    MessageTreeWidgetItem* row = addRow(&f.tree, &f.info);
    const QStringList counts = lines("many |  | 0 repeated values | 0 repeated values\n"
                                     "any |  | No values for optional field | No values for optional field\n"
                                     "sub | INNER\n  value | double\n"
                                     "subs |  | 0 submessages | 0 submessages");
    QCOMPARE(rowTexts(row).mid(2), counts);
    f.message->fill(f.many, 1)->fill(f.any, 2);
    f.setSubMessages(f.subs, 1, 4);
    f.tree.processMessage(f.message);
    QCOMPARE(rowTexts(row).mid(2), lines("many |  | 1 repeated value | 1 repeated value\n"
                                         "  many [0] | double | 0 | 0\n"
                                         "any |  | 2 repeated values | 2 repeated values\n"
                                         "  any [0] | double | 0 | 0\n"
                                         "  any [1] | double | 1 | 1\n"
                                         "sub | INNER | Optional submessage not present"
                                         " | Optional submessage not present\n  value | double\n"
                                         "subs |  | 1 submessage | 1 submessage\n"
                                         "  subs [0] | INNER\n    value | double | 4 | 4"));
    QVERIFY(row->child(5)->child(0)->isExpanded());
    QCOMPARE(fieldsText(row), text("none -1, speed 0, maybe 0, many -1, many 0, any -1, any 0, any 1, sub 0, value 0, "
                                   "subs -1, subs 0, value 0"));
    const OwnedMessage empty(&f.info);
    for (int i = 0; i < 2; ++i) {
        f.tree.processMessage(f.message);
        f.tree.processMessage(i == 0 ? static_cast<const Message*>(empty) : nullptr);
        QCOMPARE(rowTexts(row).mid(2, 2), counts.mid(0, 2));
        QCOMPARE(rowTexts(row).last(), counts.last());
    }
}

void TestFieldTreeWidgetItems::repeatedIgnoresOtherTypes()
{
    Fixture f;
    f.message->fill(f.many, 2);
    RepeatedFieldTreeWidgetItem row(&f.tree, f.many);
    row.processMessage(f.message);
    row.processMessage(f.foreign);
    QCOMPARE(row.childCount(), 2);
    // Setting the field always empties, also when it is the same.
    row.setFieldInfo(f.many);
    QCOMPARE(row.childCount(), 0);
    QCOMPARE(row.getInitialExpansionPolicy(), AbstractMessageTreeWidgetItem::RestoreExpansion);
}

void TestFieldTreeWidgetItems::repeatedKeepsItsFirstRowsAndStaysLinear()
{
    Fixture f;
    QTreeWidgetItem* row = addRow(&f.tree, &f.info)->child(2);
    showTree(&f.tree);
    row->setExpanded(true);
    const QTreeWidgetItem* first = nullptr;
    const int counts[] = {3, 1, 2, 0, 1000, 3, 500, 0, 1000, 999, 0};
    for (unsigned int i = 0; i < sizeof(counts) / sizeof(counts[0]); ++i) {
        f.message->fill(f.many, counts[i], int(i));
        f.tree.processMessage(f.message);
        QCoreApplication::processEvents();
        const int count = row->childCount();
        QCOMPARE(count, counts[i]);
        for (int value = 0; value < count; value += qMax(1, count - 1))
            QCOMPARE(rowText(row->child(value)), text("many [%1] | double | %2 | %2").arg(value).arg(value + int(i)));
        QVERIFY(!first || count == 0 || row->child(0) == first);
        first = row->child(0);
    }

    // Rows that somebody added below are not the field's to count or delete.
    f.message->fill(f.many, 3);
    f.tree.processMessage(f.message);
    row->addChild(new QTreeWidgetItem(lines("note")));
    f.message->fill(f.many, 1);
    f.tree.processMessage(f.message);
    QCOMPARE(rowTexts(row), lines("many [0] | double | 0 | 0\nnote"));
}

void TestFieldTreeWidgetItems::typesThatContainThemselvesEnd()
{
    TestInfo info("NODE", false);
    TestFieldInfo* value = info.add("value");
    TestFieldInfo* next = info.add("next", TestFieldInfo::Plain, &info);
    Tree tree;
    MessageTreeWidgetItem* row = addRow(&tree, &info);
    TestMessage* third = info.createMessage()->set(value, 3);
    TestMessage* second = info.createMessage()->set(value, 2);
    second->setSubMessages(next, QList<Message*>() << third);
    OwnedMessage message(&info);
    message->set(value, 1)->setSubMessages(next, QList<Message*>() << second);
    tree.processMessage(message);
    QCOMPARE(rowTexts(row), lines("value | double | 1\nnext | NODE\n  value | double | 2\n  next | NODE\n"
                                  "    value | double | 3\n    next | NODE"));
}

QTEST_MAIN(TestFieldTreeWidgetItems)
#include "tst_fieldtreewidgetitems.moc"
