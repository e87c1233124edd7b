#include "corvel.h"
#include "testbase.h"
#include "treefixtures.h"

#include <QAction>

class TestMessageTreeWidget : public TestBase
{
    Q_OBJECT

private Q_SLOTS:
    void namesEveryColumnType();
    void togglesColumns();
    void refusesDuplicateColumns();
    void takesAnyColumnTypeAndLeavesOthersAlone();
    void routesMessagesToAllRowsInOrder();
    void filtersFields();
    void remembersExpansion();
};

static QString headerText(const Tree& tree)
{
    return rowText(tree.headerItem());
}

void TestMessageTreeWidget::namesEveryColumnType()
{
    QStringList names;
    for (int i = 0; i < 15; ++i)
        names << Tree::getDefaultColumnName(Tree::ColumnType(i));
    QCOMPARE(names, lines("Name\nRaw value\nValue\nType\nCustom 1\nCustom 2\nCustom 3\nCustom 4\nCustom 5\nCustom 6\n"
                          "Custom 7\nCustom 8\nCustom 9\nCustom 10\nColumn type 14"));
    QCOMPARE(Tree::getDefaultColumnName(Tree::ColumnType(-1)), text("Column type -1"));
}

void TestMessageTreeWidget::togglesColumns()
{
    Stage stage("POSE: x[m]");
    QAction* const typeAction = stage.tree.getToggleTypeColumnAction();
    QAction* const rawAction = stage.tree.getToggleRawValueColumnAction();
    QCOMPARE(stage.tree.getToggleColumnActions(), QVector<QAction*>() << typeAction << rawAction);
    QCOMPARE(typeAction->text() + rawAction->text(), text("&Type&Raw Value"));
    QVERIFY(!stage.tree.uniformRowHeights());
    // What is checked, the header, and the rows.
    const auto play = [&](const QString& command) {
        if (command == "type" || command == "raw")
            (command == "type" ? typeAction : rawAction)->trigger();
        else
            stage(command);
        return text("%1%2 %3\n").arg(typeAction->isChecked()).arg(rawAction->isChecked()).arg(headerText(stage.tree)) +
               rowTexts(stage.tree).join("\n");
    };
    const TextRow rows[] = {
        {"add POSE", "10 Name | Type | Value\nPOSE | Message | No message\n  x | double"},
        {"POSE x=1.5", "10 Name | Type | Value\nPOSE | Message\n  x | double | 1.5 m"},
        {"raw", "11 Name | Type | Value | Raw value\nPOSE | Message\n  x | double | 1.5 m | 1.5"},
        {"type", "01 Name | Value | Raw value\nPOSE\n  x | 1.5 m | 1.5"},
        {"raw", "00 Name | Value\nPOSE\n  x | 1.5 m"},
        {"type", "10 Name | Value | Type\nPOSE |  | Message\n  x | 1.5 m | double"},
    };
    checkRows(rows, play);
    QCOMPARE(stage.tree.getColumnIndex(Tree::ValueColumn), 1);
    QVERIFY(!stage.tree.hasColumn(Tree::RawValueColumn));
    stage.tree.clearColumns(true);
    QCOMPARE(stage.tree.columnCount(), 0);
    QVERIFY(!typeAction->isChecked() && !stage.tree.hasColumn(Tree::ValueColumn));
    stage.send("POSE x=1");
}

void TestMessageTreeWidget::refusesDuplicateColumns()
{
    Tree tree;
    BoxCloser closer;
    tree.setColumns(columns("0,3,0,2"));
    QCOMPARE(closer.texts, lines("Duplicate column\nAttempt to add to a MessageTreeWidget a column that is already "
                                 "present: Name. Duplicate column was not added."));
    QCOMPARE(headerText(tree), text("Name | Type | Value"));
    // The platform without a screen says something of its own about windows of fixed size.
    Q_FOREACH (const QString& warning, takeWarnings())
        QVERIFY2(warning.contains(QLatin1String("propagateSizeHints")), qPrintable(warning));
}

void TestMessageTreeWidget::takesAnyColumnTypeAndLeavesOthersAlone()
{
    Tree tree;
    tree.clearColumns(false);
    tree.setColumnCount(2);
    tree.addColumn(Tree::NameColumn, true);
    tree.addColumn(Tree::CustomColumn2, true);
    tree.addColumn(Tree::ColumnType(1000), true); // reported on the error stream, and taken all the same
    QCOMPARE(columnsText(tree), text("14,14,0,5,1000"));
    QCOMPARE(tree.getColumnIndex(Tree::NameColumn), 2);
    QCOMPARE(tree.getColumnIndex(Tree::ColumnType(5000)), -1);
    QCOMPARE(tree.getColumnIndex(Tree::ColumnType(-5)), -1);
    QVERIFY(!tree.hasColumn(Tree::ColumnType(-5)));
    const Types types("POSE: x");
    addRow(&tree, types.type("POSE"));
    QCOMPARE(rowTexts(tree), lines(" |  | POSE | Column Custom 2 | Column Column type 1000\n"
                                   "   |  | x | Column Custom 2 | Column Column type 1000"));
    tree.setColumns(columns("2,4"));
    QCOMPARE(headerText(tree), text("Value | Custom 1"));
}

/** A row that writes down what it gets. */
class RecordingRow : public AbstractMessageTreeWidgetItem
{
public:
    RecordingRow(const char* name, QStringList* record)
        : AbstractMessageTreeWidgetItem(nullptr)
        , m_record(record)
    {
        QTreeWidgetItem::setText(0, ::text(name));
    }

    void clearValues() override {}
    void processMessage(const Message* message) override
    {
        m_record->append(QTreeWidgetItem::text(0) + (message ? message->getInfo()->getName() : QLatin1String("null")));
    }

private:
    QStringList* m_record;
};

void TestMessageTreeWidget::routesMessagesToAllRowsInOrder()
{
    const Types types("T:");
    QStringList record;
    Tree tree;
    // The rows that get a message, after one change or another.
    const auto routed = [&](const char* message) {
        record.clear();
        tree.processMessage(types.message(message).get());
        return record.join(QLatin1String(" "));
    };
    RecordingRow* b = new RecordingRow("b", &record);
    RecordingRow* a = new RecordingRow("a", &record);
    tree.addTopLevelItem(b);
    b->addChild(new RecordingRow("child", &record));
    QCOMPARE(routed("T"), text("bT"));
    tree.insertTopLevelItem(0, a);
    tree.insertTopLevelItem(1, new QTreeWidgetItem);
    QCOMPARE(routed("T"), text("aT bT"));
    QCOMPARE(routed("null"), text("anull bnull"));
    tree.sortItems(0, Qt::DescendingOrder);
    QCOMPARE(routed("T"), text("bT aT"));
    tree.takeTopLevelItem(0);
    QCOMPARE(routed("T"), text("aT"));
    tree.addTopLevelItem(b);
    QCOMPARE(routed("T"), text("aT bT"));
    delete a;
    QCOMPARE(routed("T"), text("bT"));
    tree.clear();
    QCOMPARE(routed("T"), QString());
}

void TestMessageTreeWidget::filtersFields()
{
    Stage stage("T: plain computed.v detail.2 flags.2{minor.2 group.2{major}}");
    const char* const shown = "T\n  plain\n  computed\n  flags\n    group\n      major";
    const TextRow rows[] = {
        {"columns 0", ""},
        {"add T", "T\n  plain\n  computed\n  detail\n  flags\n    minor\n    group\n      major"},
        {"setShowVirtualFields 0", "T\n  plain\n  detail\n  flags\n    minor\n    group\n      major"},
        {"setHideSecondaryFields 0", "T\n  plain\n  flags\n    group\n      major"}, // deliberately the wrong way round
        {"setHideVirtualFields 0", shown},
    };
    checkRows(rows, std::ref(stage));
    // Only changes build the rows anew, without what was added to them.
    stage.first()->addChild(new QTreeWidgetItem(lines("added")));
    stage("setShowVirtualFields 1");
    QCOMPARE(stage("setShowPrimaryFieldsOnly 1"), text(shown) + "\n  added");

    QString shownRoles;
    for (int role = 0; role < 5; ++role)
        shownRoles += QString::number(stage.tree.mustShowFieldsWithRole(FieldInfo::Role(role)));
    QCOMPARE(shownRoles, text("11001"));
}

void TestMessageTreeWidget::remembersExpansion()
{
    const Types types("INNER-: value; T: flags{first} sub=INNER");
    Tree first;
    MessageTreeWidgetItem* row = addRow(&first, types.type("T"));
    // A type, and so a sub-message, starts expanded, a field collapsed.
    QCOMPARE(expansionText(&first), text("T+ flags first sub+ value"));
    row->child(0)->setExpanded(true);
    row->child(1)->setExpanded(false);
    row->setExpanded(false);

    Tree second;
    MessageTreeWidgetItem* other = addRow(&second, types.type("T"));
    QCOMPARE(expansionText(&second), text("T flags+ first sub value"));
    QVERIFY(!second.mustInitiallyBeExpanded(nullptr));
    // The tree as it was left survives a change of columns.
    other->setExpanded(true);
    second.getToggleTypeColumnAction()->trigger();
    QCOMPARE(expansionText(&second), text("T+ flags+ first sub value"));

    // A row without a type has nothing to remember.
    MessageTreeWidgetItem* empty = addRow(&second, nullptr);
    empty->addChild(new QTreeWidgetItem);
    empty->setExpanded(false);
    QVERIFY(second.mustInitiallyBeExpanded(empty));
    RecordingRow* plain = new RecordingRow("", nullptr);
    second.addTopLevelItem(plain);
    QVERIFY(!second.mustInitiallyBeExpanded(plain));
}

QTEST_MAIN(TestMessageTreeWidget)
#include "tst_messagetreewidget.moc"
