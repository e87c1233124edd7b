#include "corvel.h"
#include "messageneedmanager.h"
#include "testbase.h"
#include "treefixtures.h"

class TestMessageTreeWidgetItem : public TestBase
{
    Q_OBJECT

private Q_SLOTS:
    void showsItsTypeAndMessage();
    void writesIntoTheColumnsThereAre();
    void worksWithoutATree();
    void keepsMainMessagesByReference();
    void letsGoByItsOwnTypeAndHoldsByTheMessages();
    void needsItsTypeAndKeepsItWhenSetAgain();
    void tellsOfHiddenConfidentialFields();
    void asksForConfidentialityBeforeTheParent();
    void createsRowsInFieldOrder();
    void rebuildsAndRefillsWhenConfigured();
    void followsTheExpansionPolicy();
};

struct Fixture
{
    Fixture()
    {
        info.setShortDescriptiveText(text("Where it is"));
        x->setUnit(text("m"));
        message->set(x, 2.5);
        foreign->set(y, 4);
    }

    TestInfo info{"POSE"};
    TestFieldInfo* x = info.add("x");
    TestInfo other{"U"};
    TestFieldInfo* y = other.add("y");
    OwnedMessage message{&info};
    OwnedMessage second{&info};
    OwnedMessage foreign{&other};
    Tree tree;
};

void TestMessageTreeWidgetItem::showsItsTypeAndMessage()
{
    Fixture f;
    const QStringList noMessage = lines("POSE | Message | No message\n  x | double");
    MessageTreeWidgetItem* row = addRow(&f.tree, &f.info);
    QCOMPARE(rowTexts(f.tree), noMessage);
    QCOMPARE(row->toolTip(0), text("Where it is"));
    row->processMessage(f.foreign);
    QCOMPARE(rowTexts(f.tree), noMessage);
    row->processMessage(f.message);
    QCOMPARE(rowTexts(f.tree), lines("POSE | Message\n  x | double | 2.5 m"));
    row->clearValues();
    QCOMPARE(rowTexts(f.tree), noMessage);
    row->displayMessage(f.foreign);
    QCOMPARE(rowTexts(f.tree), lines("U | Message\n  y | double | 4"));
    row->displayMessage(nullptr);
    QCOMPARE(rowTexts(f.tree), lines("No message type set | Message | No message"));
    QVERIFY(addRow(&f.tree, nullptr)->toolTip(0).isEmpty());
}

void TestMessageTreeWidgetItem::writesIntoTheColumnsThereAre()
{
    Tree tree;
    tree.setColumns(columns("0,5"));
    MessageTreeWidgetItem row(&tree, nullptr);
    row.setAllTexts();
    row.setValueText();
    QCOMPARE(rowText(&row), text("No message type set | Column Custom 2"));
    tree.setColumns(columns("2"));
    row.setValueText();
    QCOMPARE(row.text(0), text("No message"));
    QCOMPARE(row.getTextForColumn(Tree::RawValueColumn), QString());
    QCOMPARE(row.getTextForColumn(Tree::NoColumn), text("Column Column type 14"));
}

void TestMessageTreeWidgetItem::worksWithoutATree()
{
    Fixture f;
    f.info.add("detail", TestFieldInfo::Secondary | TestFieldInfo::Virtual);
    f.info.add("secret", TestFieldInfo::Confidential);
    QTreeWidget plain;
    MessageTreeWidgetItem* row = new MessageTreeWidgetItem(nullptr, &f.info);
    QCOMPARE(row->childCount(), 3);
    plain.addTopLevelItem(row);
    QVERIFY(!row->getMessageTreeWidget());
    row->setExpanded(true);
    row->configureInTreeWidget();
    row->processMessage(f.message);
    QVERIFY(!row->isExpanded());
    QCOMPARE(rowText(row), QString());
    QVERIFY(!row->mustShowField(nullptr));

    // In another tree than it was made for, a row follows the one it is in.
    Tree tree;
    MessageTreeWidgetItem* moved = new MessageTreeWidgetItem(&f.tree, &f.info);
    QCOMPARE(moved->getMessageTreeWidget(), &f.tree);
    tree.addTopLevelItem(moved);
    QCOMPARE(moved->getMessageTreeWidget(), &tree);
    tree.takeTopLevelItem(0);
    plain.addTopLevelItem(moved);
    QVERIFY(!moved->getMessageTreeWidget());
}

void TestMessageTreeWidgetItem::keepsMainMessagesByReference()
{
    Fixture f;
    {
        Tree tree;
        MessageTreeWidgetItem* row = addRow(&tree, &f.info);
        row->processMessage(f.message);
        row->processMessage(f.message);
        QCOMPARE(f.message->getReferenceCount(), 2);
        row->processMessage(f.second);
        QCOMPARE(f.message->getReferenceCount(), 1);
        row->configureInTreeWidget();
        QCOMPARE(f.second->getReferenceCount(), 2);
        QCOMPARE(row->getDisplayedMessage(), static_cast<const Message*>(f.second));
        row->clearValues();
        QCOMPARE(f.second->getReferenceCount(), 1);
        row->processMessage(f.second);
        row->displayMessage(nullptr);
        QCOMPARE(f.second->getReferenceCount(), 1);
        row->displayMessage(f.message);
        QCOMPARE(f.message->getReferenceCount(), 2);
    }
    QCOMPARE(f.message->getReferenceCount(), 1);

    // A message that only the row holds lives as long as it is shown.
    MessageTreeWidgetItem* row = addRow(&f.tree, &f.info);
    TestMessage* message = f.info.createMessage();
    row->processMessage(message);
    message->removeReference();
    row->configureInTreeWidget();
    QCOMPARE(row->getDisplayedMessage()->getReferenceCount(), 1);
}

/** Shows what is protected. */
class OpenRow : public MessageTreeWidgetItem
{
public:
    explicit OpenRow(const MessageInfo* info)
        : AbstractMessageTreeWidgetItem(nullptr)
        , MessageTreeWidgetItem(nullptr, info)
    {
    }
    using MessageTreeWidgetItem::setDisplayedMessage;
};

void TestMessageTreeWidgetItem::letsGoByItsOwnTypeAndHoldsByTheMessages()
{
    const Fixture f;
    TestInfo sub("SUB", false);
    OwnedMessage subMessage(&sub);
    subMessage->addReference();
    {
        OpenRow row(&f.info);
        row.setDisplayedMessage(subMessage);
        QCOMPARE(subMessage->getReferenceCount(), 2);
        row.setDisplayedMessage(nullptr);
        QCOMPARE(subMessage->getReferenceCount(), 1);
    }
    {
        OpenRow row(&sub);
        row.setDisplayedMessage(f.message);
        row.setDisplayedMessage(nullptr);
        QCOMPARE(f.message->getReferenceCount(), 2);
    }
    f.message->removeReference();
}

void TestMessageTreeWidgetItem::needsItsTypeAndKeepsItWhenSetAgain()
{
    const Fixture f;
    MessageNeedManager* manager = MessageNeedManager::getInstance();
    {
        MessageTreeWidgetItem row(nullptr, &f.info);
        row.processMessage(f.message);
        const QTreeWidgetItem* child = row.child(0);
        row.setMessageInfo(&f.info);
        QVERIFY(row.isMessageDisplayed() && row.child(0) == child && manager->isNeeded(&f.info));
        row.setMessageInfo(&f.other);
        QVERIFY(!manager->isNeeded(&f.info) && manager->isNeeded(&f.other));
    }
    QVERIFY(!manager->isNeeded(&f.other));
}

void TestMessageTreeWidgetItem::tellsOfHiddenConfidentialFields()
{
    Fixture f;
    f.info.add("secret", TestFieldInfo::Confidential);
    f.info.add("more", TestFieldInfo::Confidential);
    MessageTreeWidgetItem* row = addRow(&f.tree, &f.info);
    QCOMPARE(rowTexts(row), lines("Hidden data\nx | double"));
    QCOMPARE(row->child(0)->toolTip(0),
             text("Due to confidentiality, the data in this message has been (partly) hidden."));
    Corvel::setConfidentialInformationDisplayEnabled(true);
    row->configureInTreeWidget();
    QCOMPARE(rowTexts(row), lines("x | double\nsecret | double\nmore | double"));
    Corvel::setConfidentialInformationDisplayEnabled(false);
    row->configureInTreeWidget();
    QCOMPARE(row->childCount(), 2);

    // Without a name column the row is there and says nothing.
    f.tree.setColumns(columns("2"));
    QCOMPARE(rowTexts(row), lines("\n"));

    f.other.add("detail", TestFieldInfo::Secondary);
    f.tree.setShowPrimaryFieldsOnly(true);
    QCOMPARE(addRow(&f.tree, &f.other)->childCount(), 1);
}

void TestMessageTreeWidgetItem::asksForConfidentialityBeforeTheParent()
{
    // A component field that a type lists among its fields gets no row there, yet a hidden one is told of.
    TestFieldInfo* group = new TestFieldInfo(text("group"));
    addComponent(group, "open");
    addComponent(group, "secret", TestFieldInfo::Confidential);
    TestInfo listing("U");
    listing.add(group);
    Tree tree;
    tree.setColumns(columns("0"));
    QCOMPARE(rowTexts(addRow(&tree, &listing)), lines("group\n  open"));

    // A confidential field that is hidden for another reason raises the notice too.
    TestInfo info("T");
    info.add("both", TestFieldInfo::Confidential | TestFieldInfo::Virtual);
    Corvel::setConfidentialInformationDisplayEnabled(true);
    tree.setShowVirtualFields(false);
    QCOMPARE(rowTexts(addRow(&tree, &info)), lines("Hidden data"));
    Corvel::setConfidentialInformationDisplayEnabled(false);
}

void TestMessageTreeWidgetItem::createsRowsInFieldOrder()
{
    Fixture f;
    TestInfo inner("INNER", false);
    inner.add("value");
    f.info.add("computed", TestFieldInfo::Virtual);
    f.info.add("text", TestFieldInfo::String);
    f.info.add("many", TestFieldInfo::Repeated);
    f.info.add("sub", TestFieldInfo::Plain, &inner);
    f.info.add("subs", TestFieldInfo::Repeated | TestFieldInfo::Optional, &inner);
    const MessageTreeWidgetItem* row = addRow(&f.tree, &f.info);
    QCOMPARE(rowTexts(row), lines("x | double\ncomputed | double\ntext | string\nmany |  | 0 repeated values\n"
                                  "sub | INNER\n  value | double\nsubs |  | No values for optional field"));

    // The names of virtual fields are in italics.
    for (int nameColumn = 0; nameColumn < 2; ++nameColumn) {
        QVERIFY(!row->child(0)->font(nameColumn).italic());
        QVERIFY(row->child(1)->font(nameColumn).italic());
        QVERIFY(!row->child(1)->font(1 - nameColumn).italic());
        f.tree.setColumns(columns("2,0"));
    }
}

void TestMessageTreeWidgetItem::rebuildsAndRefillsWhenConfigured()
{
    Fixture f;
    MessageTreeWidgetItem* row = new MessageTreeWidgetItem(&f.tree, &f.info);
    row->processMessage(f.message);
    // Not in a view, there is nothing to configure.
    row->QTreeWidgetItem::setText(2, QLatin1String("kept"));
    row->AbstractMessageTreeWidgetItem::configureInTreeWidget();
    QCOMPARE(row->text(2), text("kept"));
    f.tree.addTopLevelItem(row);
    row->configureInTreeWidget();
    QCOMPARE(rowTexts(f.tree), lines("POSE | Message\n  x | double | 2.5 m"));

    // Rows of a type that is not main are filled, but not built anew.
    TestInfo sub("SUB", false);
    sub.add("y");
    MessageTreeWidgetItem* subRow = addRow(&f.tree, &sub);
    const QTreeWidgetItem* child = subRow->child(0);
    subRow->configureInTreeWidget();
    QCOMPARE(static_cast<const QTreeWidgetItem*>(subRow->child(0)), child);
}

void TestMessageTreeWidgetItem::followsTheExpansionPolicy()
{
    Fixture f;
    MessageTreeWidgetItem* row = addRow(&f.tree, &f.info);
    QCOMPARE(row->getInitialExpansionPolicy(), AbstractMessageTreeWidgetItem::RestoreExpansion);
    row->setInitialExpansionPolicy(AbstractMessageTreeWidgetItem::CollapseInitially);
    QVERIFY(row->isExpanded());
    row->configureInTreeWidget();
    QVERIFY(!row->isExpanded());
    row->setInitialExpansionPolicy(AbstractMessageTreeWidgetItem::ExpandInitially);
    row->configureInTreeWidget();
    QVERIFY(row->isExpanded());
}

QTEST_MAIN(TestMessageTreeWidgetItem)
#include "tst_messagetreewidgetitem.moc"
