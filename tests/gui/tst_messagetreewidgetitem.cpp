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
    void needsItsTypeAndKeepsItWhenSetAgain();
    void tellsOfHiddenConfidentialFields();
    void createsRowsInFieldOrder();
    void rebuildsAndRefillsWhenConfigured();
    void followsTheExpansionPolicy();
};

void TestMessageTreeWidgetItem::showsItsTypeAndMessage()
{
    Stage stage("POSE: x[m]; U: y");
    stage.type("POSE")->setShortDescriptiveText("Where it is");
    const char* const noMessage = "POSE | Message | No message\n  x | double";
    const TextRow rows[] = {
        {"add POSE", noMessage},
        {"U y=4", noMessage},
        {"POSE x=2.5", "POSE | Message\n  x | double | 2.5 m"},
        {"clear", noMessage},
        {"display U y=4", "U | Message\n  y | double | 4"},
        {"display null", "No message type set | Message | No message"},
        {"display POSE x=1", "POSE | Message\n  x | double | 1 m"},
        {"columns 2,0", " | POSE\n  1 m | x"},
    };
    checkRows(rows, std::ref(stage));
    QCOMPARE(stage.first()->toolTip(1), text("Where it is"));
    QCOMPARE(stage.add("")->toolTip(1), QString());
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
    const Types types("POSE: x detail.v2 secret.c");
    Tree tree;
    Tree other;
    QTreeWidget plain;
    MessageTreeWidgetItem* row = new MessageTreeWidgetItem(nullptr, types.type("POSE"));
    QCOMPARE(row->childCount(), 3);
    plain.addTopLevelItem(row);
    QVERIFY(!row->getMessageTreeWidget());
    row->setExpanded(true);
    row->configureInTreeWidget();
    row->processMessage(types.message("POSE x=1").get());
    QVERIFY(!row->isExpanded());
    QCOMPARE(rowText(row), QString());
    QVERIFY(!row->mustShowField(nullptr));

    // In another tree than it was made for, a row follows the one it is in.
    MessageTreeWidgetItem* moved = new MessageTreeWidgetItem(&tree, types.type("POSE"));
    QCOMPARE(moved->getMessageTreeWidget(), &tree);
    other.addTopLevelItem(moved);
    QCOMPARE(moved->getMessageTreeWidget(), &other);
    other.takeTopLevelItem(0);
    plain.addTopLevelItem(moved);
    QVERIFY(!moved->getMessageTreeWidget());
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

void TestMessageTreeWidgetItem::keepsMainMessagesByReference()
{
    const Types types("POSE: x; SUB-: y");
    const MessageReference first = types.message("POSE x=1");
    const MessageReference second = types.message("POSE x=2");
    const MessageReference inner = types.message("SUB y=1");
    const auto references = [&] {
        return text("%1 %2 %3")
            .arg(first->getReferenceCount())
            .arg(second->getReferenceCount())
            .arg(inner->getReferenceCount());
    };
    {
        Tree tree;
        MessageTreeWidgetItem* row = addRow(&tree, types.type("POSE"));
        row->processMessage(first.get());
        row->processMessage(first.get());
        QCOMPARE(references(), text("2 1 1"));
        row->processMessage(second.get());
        row->configureInTreeWidget();
        QCOMPARE(references(), text("1 2 1"));
        QCOMPARE(row->getDisplayedMessage(), second.get());
        row->clearValues();
        QCOMPARE(references(), text("1 1 1"));
        row->processMessage(second.get());
        row->displayMessage(nullptr);
        QCOMPARE(references(), text("1 1 1"));
        row->displayMessage(first.get());
        QCOMPARE(references(), text("2 1 1"));

        // A message that only the row holds lives as long as it is shown.
        row->processMessage(types.message("POSE x=3").get());
        row->configureInTreeWidget();
        QCOMPARE(row->getDisplayedMessage()->getReferenceCount(), 1);
    }
    QCOMPARE(references(), text("1 1 1"));

    // Let go by the row's own type, and held by the message's.
    OpenRow row(types.type("POSE"));
    OpenRow sub(types.type("SUB"));
    inner->addReference();
    row.setDisplayedMessage(inner.get());
    sub.setDisplayedMessage(first.get());
    QCOMPARE(references(), text("2 1 2"));
    row.setDisplayedMessage(nullptr);
    sub.setDisplayedMessage(nullptr);
    QCOMPARE(references(), text("2 1 1"));
    first->removeReference();
}

void TestMessageTreeWidgetItem::needsItsTypeAndKeepsItWhenSetAgain()
{
    const Types types("POSE: x; U: y");
    const MessageNeedManager* manager = MessageNeedManager::getInstance();
    const MessageInfo* const info = types.type("POSE");
    const MessageInfo* const other = types.type("U");
    {
        MessageTreeWidgetItem row(nullptr, info);
        row.processMessage(types.message("POSE x=1").get());
        const QTreeWidgetItem* child = row.child(0);
        row.setMessageInfo(info);
        QVERIFY(row.isMessageDisplayed() && row.child(0) == child && manager->isNeeded(info));
        row.setMessageInfo(other);
        QVERIFY(!manager->isNeeded(info) && manager->isNeeded(other));
    }
    QVERIFY(!manager->isNeeded(other));
}

void TestMessageTreeWidgetItem::tellsOfHiddenConfidentialFields()
{
    Stage stage("POSE: x secret.c more.c; U: y detail.2; LISTING: group{open secret.c}; BOTH: both.cv");
    const TextRow rows[] = {
        {"columns 0", ""},
        {"add POSE", "POSE\n  Hidden data\n  x"},
        {"open 1", "POSE\n  x\n  secret\n  more"},
        {"open 0", "POSE\n  Hidden data\n  x"},
        {"columns 2", "No message\n  \n  "}, // without a name column the row is there and says nothing
    };
    const auto play = [&](const QString& command) {
        Corvel::setConfidentialInformationDisplayEnabled(command == "open 1");
        return stage(command.startsWith("open") ? QString("anew") : command);
    };
    checkRows(rows, play);
    stage("columns 0");
    QCOMPARE(stage.first()->child(0)->toolTip(0),
             text("Due to confidentiality, the data in this message has been (partly) hidden."));
    delete stage.first();
    const TextRow notices[] = {
        {"setShowPrimaryFieldsOnly 1", ""},
        {"add U", "U\n  y"},
        // What a type lists within another field gets no row of its own, and is not told of when hidden.
        {"add LISTING", "U\n  y\nLISTING\n  group\n    open"},
        // A confidential field that is hidden for another reason raises the notice too.
        {"setShowVirtualFields 0", "U\n  y\nLISTING\n  group\n    open"},
        {"open 1", "U\n  y\nLISTING\n  group\n    open\n    secret"},
    };
    checkRows(notices, play);
    QCOMPARE(rowTexts(stage.add("BOTH")), lines("Hidden data"));
    Corvel::setConfidentialInformationDisplayEnabled(false);
}

void TestMessageTreeWidgetItem::createsRowsInFieldOrder()
{
    Stage stage("INNER-: value; POSE: x computed.v text.s many.r sub=INNER subs.ro=INNER");
    const TextRow rows[] = {
        {"add POSE", "POSE | Message | No message\n  x | double\n  computed | double\n  text | string\n"
                     "  many |  | 0 repeated values\n  sub | INNER\n    value | double\n"
                     "  subs |  | No values for optional field"},
    };
    checkRows(rows, std::ref(stage));

    // The names of virtual fields are in italics.
    const QTreeWidgetItem* const row = stage.first();
    for (int nameColumn = 0; nameColumn < 2; ++nameColumn) {
        QVERIFY(!row->child(0)->font(nameColumn).italic());
        QVERIFY(row->child(1)->font(nameColumn).italic());
        QVERIFY(!row->child(1)->font(1 - nameColumn).italic());
        stage("columns 2,0");
    }
}

void TestMessageTreeWidgetItem::rebuildsAndRefillsWhenConfigured()
{
    Stage stage("POSE: x; SUB-: y");
    MessageTreeWidgetItem* row = new MessageTreeWidgetItem(&stage.tree, stage.type("POSE"));
    row->processMessage(stage.message("POSE x=2.5").get());
    // Not in a view, there is nothing to configure.
    row->QTreeWidgetItem::setText(2, "kept");
    row->AbstractMessageTreeWidgetItem::configureInTreeWidget();
    QCOMPARE(row->text(2), text("kept"));
    stage.tree.addTopLevelItem(row);
    QCOMPARE(stage("anew"), text("POSE | Message\n  x | double | 2.5"));

    // Rows of a type that is not main are filled, but not built anew.
    MessageTreeWidgetItem* subRow = stage.add("SUB");
    const QTreeWidgetItem* child = subRow->child(0);
    subRow->configureInTreeWidget();
    QCOMPARE(static_cast<const QTreeWidgetItem*>(subRow->child(0)), child);
}

void TestMessageTreeWidgetItem::followsTheExpansionPolicy()
{
    Stage stage("POSE: x");
    MessageTreeWidgetItem* row = stage.add("POSE");
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
