#include "corvel.h"
#include "messageneedmanager.h"
#include "testbase.h"
#include "treefixtures.h"

class TestMessageTreeWidgetItem : public TestBase
{
    Q_OBJECT

private Q_SLOTS:
    void showsThatNothingIsSet();
    void showsItsTypeAndMessage();
    void writesIntoTheColumnsThereAre();
    void worksWithoutATree();
    void keepsMainMessagesByReference();
    void letsGoByItsOwnTypeAndHoldsByTheMessages();
    void needsItsType();
    void ignoresOtherTypes();
    void displaysMessagesOfAnyType();
    void settingTheSameTypeChangesNothing();
    void tellsOfHiddenConfidentialFields();
    void asksForConfidentialityBeforeTheParent();
    void writesVirtualNamesInItalics();
    void createsRowsInFieldOrder();
    void rebuildsAndRefillsWhenConfigured();
    void followsTheExpansionPolicy();
};

void TestMessageTreeWidgetItem::showsThatNothingIsSet()
{
    MessageTreeWidget tree;
    MessageTreeWidgetItem* row = addRow(&tree, nullptr);
    QCOMPARE(rowText(row), QString::fromLatin1("No message type set | Message | No message"));
    QVERIFY(row->toolTip(0).isEmpty());
    QCOMPARE(row->childCount(), 0);
}

void TestMessageTreeWidgetItem::showsItsTypeAndMessage()
{
    TestInfo info("POSE");
    info.setShortDescriptiveText(QLatin1String("Where it is"));
    TestFieldInfo* x = info.add("x");
    x->setUnit(QLatin1String("m"));
    OwnedMessage message(&info);
    message->set(x, 2.5);
    MessageTreeWidget tree;
    MessageTreeWidgetItem* row = addRow(&tree, &info);
    row->setNameText();
    QCOMPARE(rowText(row), QString::fromLatin1("POSE | Message | No message"));
    QCOMPARE(row->toolTip(0), QString::fromLatin1("Where it is"));
    QCOMPARE(rowsBelow(row), lines("x | double | "));
    row->processMessage(message);
    QVERIFY(row->isMessageDisplayed());
    QCOMPARE(rowText(row), QString::fromLatin1("POSE | Message | "));
    QCOMPARE(rowsBelow(row), lines("x | double | 2.5 m"));
    row->clearValues();
    QCOMPARE(rowText(row), QString::fromLatin1("POSE | Message | No message"));
    QCOMPARE(rowsBelow(row), lines("x | double | "));
}

/** Counts how often its texts are asked for. */
class CountingRow : public MessageTreeWidgetItem
{
public:
    CountingRow(MessageTreeWidget* tree, const MessageInfo* info)
        : AbstractMessageTreeWidgetItem(tree)
        , MessageTreeWidgetItem(tree, info)
        , asked(0)
    {
    }
    QString getValueText() override
    {
        ++asked;
        return QLatin1String("value");
    }
    int asked;
};

void TestMessageTreeWidgetItem::writesIntoTheColumnsThereAre()
{
    typedef QVector<MessageTreeWidget::ColumnType> Columns;
    MessageTreeWidget tree;
    tree.setColumns(Columns() << MessageTreeWidget::NameColumn << MessageTreeWidget::CustomColumn2);
    CountingRow row(&tree, nullptr);
    row.setValueText();
    row.setTypeText();
    QCOMPARE(row.asked, 0);
    row.setAllTexts();
    QCOMPARE(rowText(&row), QString::fromLatin1("No message type set | Column Custom 2"));
    tree.setColumns(Columns() << MessageTreeWidget::ValueColumn);
    row.setValueText();
    QCOMPARE(row.text(0), QString::fromLatin1("value"));
    QCOMPARE(row.getTextForColumn(MessageTreeWidget::TypeColumn), QString::fromLatin1("Message"));
    QCOMPARE(row.getTextForColumn(MessageTreeWidget::RawValueColumn), QString());
    QCOMPARE(row.getTextForColumn(MessageTreeWidget::NoColumn), QString::fromLatin1("Column Column type 14"));
}

void TestMessageTreeWidgetItem::worksWithoutATree()
{
    TestInfo info("POSE");
    TestFieldInfo* x = info.add("x", TestFieldInfo::Secondary | TestFieldInfo::Virtual);
    info.add("secret", TestFieldInfo::Confidential);
    OwnedMessage message(&info);
    message->set(x, 2.5);
    QTreeWidget plain;
    MessageTreeWidgetItem* row = new MessageTreeWidgetItem(nullptr, &info);
    QCOMPARE(row->childCount(), 2);
    plain.addTopLevelItem(row);
    QVERIFY(!row->getMessageTreeWidget());
    row->configureInTreeWidget();
    row->processMessage(message);
    QCOMPARE(rowText(row), QString());
    QVERIFY(!row->mustShowField(nullptr));

    // In another tree than it was made for, a row follows the one it is in.
    MessageTreeWidget made;
    MessageTreeWidget tree;
    MessageTreeWidgetItem* moved = new MessageTreeWidgetItem(&made, &info);
    QCOMPARE(moved->getMessageTreeWidget(), &made);
    tree.addTopLevelItem(moved);
    QCOMPARE(moved->getMessageTreeWidget(), &tree);
    tree.takeTopLevelItem(0);
    plain.addTopLevelItem(moved);
    QVERIFY(!moved->getMessageTreeWidget());
}

void TestMessageTreeWidgetItem::keepsMainMessagesByReference()
{
    TestInfo info("MAIN");
    info.add("x");
    OwnedMessage first(&info);
    OwnedMessage second(&info);
    {
        MessageTreeWidget tree;
        MessageTreeWidgetItem* row = addRow(&tree, &info);
        row->processMessage(first);
        row->processMessage(first);
        QCOMPARE(first->getReferenceCount(), 2);
        row->processMessage(second);
        QCOMPARE(first->getReferenceCount(), 1);
        QCOMPARE(second->getReferenceCount(), 2);
        row->configureInTreeWidget();
        QCOMPARE(second->getReferenceCount(), 2);
        QCOMPARE(row->getDisplayedMessage(), static_cast<const Message*>(second));
        row->clearValues();
        QCOMPARE(second->getReferenceCount(), 1);
        row->processMessage(second);
        row->displayMessage(nullptr);
        QCOMPARE(second->getReferenceCount(), 1);
        row->displayMessage(first);
        QCOMPARE(first->getReferenceCount(), 2);
    }
    QCOMPARE(first->getReferenceCount(), 1);

    // A message that only the row holds lives as long as it is shown.
    MessageTreeWidget tree;
    MessageTreeWidgetItem* row = addRow(&tree, &info);
    TestMessage* message = info.createMessage();
    row->processMessage(message);
    message->removeReference();
    row->configureInTreeWidget();
    QCOMPARE(row->getDisplayedMessage()->getReferenceCount(), 1);
}

/** Shows what is protected. */
class OpenRow : public MessageTreeWidgetItem
{
public:
    OpenRow(MessageTreeWidget* tree, const MessageInfo* info)
        : AbstractMessageTreeWidgetItem(tree)
        , MessageTreeWidgetItem(tree, info)
    {
    }
    using MessageTreeWidgetItem::createChildItems;
    using MessageTreeWidgetItem::setDisplayedMessage;
};

void TestMessageTreeWidgetItem::letsGoByItsOwnTypeAndHoldsByTheMessages()
{
    TestInfo main("MAIN");
    TestInfo sub("SUB", false);
    OwnedMessage mainMessage(&main);
    OwnedMessage subMessage(&sub);
    subMessage->addReference();
    {
        OpenRow row(nullptr, &main);
        row.setDisplayedMessage(subMessage);
        QCOMPARE(subMessage->getReferenceCount(), 2);
        row.setDisplayedMessage(nullptr);
        QCOMPARE(subMessage->getReferenceCount(), 1);
    }
    {
        OpenRow row(nullptr, &sub);
        row.setDisplayedMessage(mainMessage);
        QCOMPARE(mainMessage->getReferenceCount(), 2);
        row.setDisplayedMessage(nullptr);
        QCOMPARE(mainMessage->getReferenceCount(), 2);
    }
    mainMessage->removeReference();
}

void TestMessageTreeWidgetItem::needsItsType()
{
    TestInfo info("T");
    TestInfo other("U");
    MessageNeedManager* manager = MessageNeedManager::getInstance();
    {
        MessageTreeWidgetItem row(nullptr, &info);
        QVERIFY(manager->isNeeded(&info));
        row.setMessageInfo(&other);
        QVERIFY(!manager->isNeeded(&info));
        QVERIFY(manager->isNeeded(&other));
    }
    QVERIFY(!manager->isNeeded(&other));
}

void TestMessageTreeWidgetItem::ignoresOtherTypes()
{
    TestInfo info("T");
    TestInfo other("U");
    OwnedMessage message(&other);
    MessageTreeWidgetItem row(nullptr, &info);
    row.processMessage(message);
    QVERIFY(!row.isMessageDisplayed());
}

void TestMessageTreeWidgetItem::displaysMessagesOfAnyType()
{
    TestInfo info("T");
    info.add("a");
    TestInfo other("U");
    TestFieldInfo* b = other.add("b");
    OwnedMessage message(&other);
    message->set(b, 4);
    MessageTreeWidget tree;
    MessageTreeWidgetItem* row = addRow(&tree, &info);
    row->displayMessage(message);
    QCOMPARE(row->getMessageInfo(), static_cast<const MessageInfo*>(&other));
    QCOMPARE(rowText(row), QString::fromLatin1("U | Message | "));
    QCOMPARE(rowsBelow(row), lines("b | double | 4"));
    row->displayMessage(nullptr);
    QCOMPARE(rowText(row), QString::fromLatin1("No message type set | Message | No message"));
    QCOMPARE(row->childCount(), 0);
}

void TestMessageTreeWidgetItem::settingTheSameTypeChangesNothing()
{
    TestInfo info("T");
    info.add("a");
    OwnedMessage message(&info);
    MessageTreeWidgetItem row(nullptr, &info);
    row.processMessage(message);
    const QTreeWidgetItem* child = row.child(0);
    row.setMessageInfo(&info);
    QVERIFY(row.isMessageDisplayed());
    QCOMPARE(static_cast<const QTreeWidgetItem*>(row.child(0)), child);
}

void TestMessageTreeWidgetItem::tellsOfHiddenConfidentialFields()
{
    TestInfo info("T");
    info.add("open");
    info.add("secret", TestFieldInfo::Confidential);
    info.add("more", TestFieldInfo::Confidential);
    MessageTreeWidget tree;
    MessageTreeWidgetItem* row = addRow(&tree, &info);
    QCOMPARE(rowsBelow(row), lines("Hidden data |  | \nopen | double | "));
    QCOMPARE(row->child(0)->toolTip(0),
             QString::fromLatin1("Due to confidentiality, the data in this message has been (partly) hidden."));
    Corvel::setConfidentialInformationDisplayEnabled(true);
    row->configureInTreeWidget();
    QCOMPARE(rowsBelow(row), lines("open | double | \nsecret | double | \nmore | double | "));
    Corvel::setConfidentialInformationDisplayEnabled(false);
    row->configureInTreeWidget();
    QCOMPARE(row->childCount(), 2);

    // Without a name column the row is there and says nothing.
    tree.setColumns(QVector<MessageTreeWidget::ColumnType>() << MessageTreeWidget::ValueColumn);
    QCOMPARE(rowsBelow(row), lines("\n"));

    TestInfo harmless("U");
    harmless.add("detail", TestFieldInfo::Secondary);
    tree.setShowPrimaryFieldsOnly(true);
    QCOMPARE(addRow(&tree, &harmless)->childCount(), 0);
}

void TestMessageTreeWidgetItem::asksForConfidentialityBeforeTheParent()
{
    // A component field that a type lists among its fields gets no row there, yet a hidden one is told of.
    TestInfo info("T");
    TestFieldInfo* group = new TestFieldInfo(QLatin1String("group"));
    TestFieldInfo* open = new TestFieldInfo(QLatin1String("open"));
    TestFieldInfo* secret = new TestFieldInfo(QLatin1String("secret"), TestFieldInfo::Confidential);
    group->addSubField(open);
    group->addSubField(secret);
    TestInfo listing("U");
    listing.add(group);
    MessageTreeWidget tree;
    tree.setColumns(QVector<MessageTreeWidget::ColumnType>() << MessageTreeWidget::NameColumn);
    QCOMPARE(rowsBelow(addRow(&tree, &listing)), lines("group\n. open"));

    // A confidential field that is hidden for another reason raises the notice too.
    Corvel::setConfidentialInformationDisplayEnabled(true);
    info.add("both", TestFieldInfo::Confidential | TestFieldInfo::Virtual);
    tree.setShowVirtualFields(false);
    QCOMPARE(rowsBelow(addRow(&tree, &info)), lines("Hidden data"));
    Corvel::setConfidentialInformationDisplayEnabled(false);
}

void TestMessageTreeWidgetItem::writesVirtualNamesInItalics()
{
    TestInfo info("T");
    info.add("sent");
    info.add("computed", TestFieldInfo::Virtual);
    MessageTreeWidget tree;
    MessageTreeWidgetItem* row = addRow(&tree, &info);
    QVERIFY(!row->child(0)->font(0).italic());
    QVERIFY(row->child(1)->font(0).italic());
    QVERIFY(!row->child(1)->font(1).italic());
    tree.setColumns(QVector<MessageTreeWidget::ColumnType>()
                    << MessageTreeWidget::ValueColumn << MessageTreeWidget::NameColumn);
    QVERIFY(!row->child(1)->font(0).italic());
    QVERIFY(row->child(1)->font(1).italic());
}

void TestMessageTreeWidgetItem::createsRowsInFieldOrder()
{
    TestInfo inner("INNER", false);
    inner.add("value");
    TestInfo info("T");
    info.add("single");
    info.add("text", TestFieldInfo::String);
    info.add("many", TestFieldInfo::Repeated);
    info.add("sub", TestFieldInfo::Plain, &inner);
    info.add("subs", TestFieldInfo::Repeated | TestFieldInfo::Optional, &inner);
    MessageTreeWidget tree;
    QCOMPARE(rowsBelow(addRow(&tree, &info)),
             lines("single | double | \ntext | string | \nmany |  | 0 repeated values\nsub | INNER | \n"
                   ". value | double | \nsubs |  | No values for optional field"));
}

void TestMessageTreeWidgetItem::rebuildsAndRefillsWhenConfigured()
{
    TestInfo info("T");
    TestFieldInfo* x = info.add("x");
    OwnedMessage message(&info);
    message->set(x, 7);
    MessageTreeWidget tree;
    MessageTreeWidgetItem* row = new MessageTreeWidgetItem(&tree, &info);
    row->processMessage(message);
    // Not in a view, there is nothing to configure.
    const QTreeWidgetItem* child = row->child(0);
    row->QTreeWidgetItem::setText(2, QLatin1String("kept"));
    row->AbstractMessageTreeWidgetItem::configureInTreeWidget();
    QCOMPARE(row->text(2), QString::fromLatin1("kept"));
    QCOMPARE(static_cast<const QTreeWidgetItem*>(row->child(0)), child);
    tree.addTopLevelItem(row);
    row->configureInTreeWidget();
    QCOMPARE(rowsBelow(row), lines("x | double | 7"));
    QCOMPARE(rowText(row), QString::fromLatin1("T | Message | "));

    // Rows of a type that is not main are filled, but not built anew.
    TestInfo sub("SUB", false);
    sub.add("y");
    MessageTreeWidgetItem* subRow = addRow(&tree, &sub);
    child = subRow->child(0);
    subRow->configureInTreeWidget();
    QCOMPARE(static_cast<const QTreeWidgetItem*>(subRow->child(0)), child);
}

void TestMessageTreeWidgetItem::followsTheExpansionPolicy()
{
    TestInfo info("T");
    info.add("x");
    MessageTreeWidget tree;
    MessageTreeWidgetItem* row = addRow(&tree, &info);
    QCOMPARE(row->getInitialExpansionPolicy(), AbstractMessageTreeWidgetItem::RestoreExpansion);
    row->setInitialExpansionPolicy(AbstractMessageTreeWidgetItem::CollapseInitially);
    QVERIFY(row->isExpanded());
    row->configureInTreeWidget();
    QVERIFY(!row->isExpanded());
    row->setInitialExpansionPolicy(AbstractMessageTreeWidgetItem::ExpandInitially);
    row->configureInTreeWidget();
    QVERIFY(row->isExpanded());

    QTreeWidget plain;
    MessageTreeWidgetItem* other = new MessageTreeWidgetItem(nullptr, &info);
    plain.addTopLevelItem(other);
    other->setExpanded(true);
    other->configureInTreeWidget();
    QVERIFY(!other->isExpanded());
}

QTEST_MAIN(TestMessageTreeWidgetItem)
#include "tst_messagetreewidgetitem.moc"
