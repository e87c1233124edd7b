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
    TestInfo info("POSE");
    TestFieldInfo* x = info.add("x");
    x->setUnit(text("m"));
    Tree tree;
    QCOMPARE(headerText(tree), text("Name | Type | Value"));
    QVERIFY(!tree.uniformRowHeights());
    QAction* const typeAction = tree.getToggleTypeColumnAction();
    QAction* const rawAction = tree.getToggleRawValueColumnAction();
    QCOMPARE(tree.getToggleColumnActions(), QVector<QAction*>() << typeAction << rawAction);
    QCOMPARE(typeAction->text() + rawAction->text(), text("&Type&Raw Value"));
    MessageTreeWidgetItem* row = addRow(&tree, &info);
    OwnedMessage message(&info);
    message->set(x, 1.5);
    tree.processMessage(message);
    QCOMPARE(rowTexts(row), lines("x | double | 1.5 m"));

    QVERIFY(typeAction->isChecked() && !rawAction->isChecked());
    rawAction->trigger();
    QCOMPARE(headerText(tree), text("Name | Type | Value | Raw value"));
    QCOMPARE(rowTexts(row), lines("x | double | 1.5 m | 1.5"));
    typeAction->trigger();
    QCOMPARE(headerText(tree), text("Name | Value | Raw value"));
    QCOMPARE(rowTexts(row), lines("x | 1.5 m | 1.5"));
    QCOMPARE(tree.getColumnIndex(Tree::ValueColumn), 1);
    QVERIFY(!tree.hasColumn(Tree::TypeColumn));
    QVERIFY(!typeAction->isChecked() && rawAction->isChecked());
    rawAction->trigger();
    typeAction->trigger();
    QCOMPARE(rowTexts(row), lines("x | 1.5 m | double"));

    tree.clearColumns(true);
    QCOMPARE(tree.columnCount(), 0);
    QVERIFY(!typeAction->isChecked());
    QVERIFY(!tree.hasColumn(Tree::ValueColumn));
    tree.processMessage(message);
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
    TestInfo info("POSE");
    info.add("x");
    addRow(&tree, &info);
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
    TestInfo info("T");
    OwnedMessage message(&info);
    QStringList record;
    Tree tree;
    // The rows that get a message, after one change or another.
    const auto routed = [&](const Message* routedMessage) {
        record.clear();
        tree.processMessage(routedMessage);
        return record.join(QLatin1String(" "));
    };
    RecordingRow* b = new RecordingRow("b", &record);
    RecordingRow* a = new RecordingRow("a", &record);
    tree.addTopLevelItem(b);
    b->addChild(new RecordingRow("child", &record));
    QCOMPARE(routed(message), text("bT"));
    tree.insertTopLevelItem(0, a);
    tree.insertTopLevelItem(1, new QTreeWidgetItem);
    QCOMPARE(routed(message), text("aT bT"));
    QCOMPARE(routed(nullptr), text("anull bnull"));
    tree.sortItems(0, Qt::DescendingOrder);
    QCOMPARE(routed(message), text("bT aT"));
    tree.takeTopLevelItem(0);
    QCOMPARE(routed(message), text("aT"));
    tree.addTopLevelItem(b);
    QCOMPARE(routed(message), text("aT bT"));
    delete a;
    QCOMPARE(routed(message), text("bT"));
    tree.clear();
    QCOMPARE(routed(message), QString());
}

void TestMessageTreeWidget::filtersFields()
{
    TestInfo info("T");
    info.add("plain");
    info.add("computed", TestFieldInfo::Virtual);
    info.add("detail", TestFieldInfo::Secondary);
    TestFieldInfo* flags = new TestFieldInfo(text("flags"), TestFieldInfo::Secondary);
    addComponent(flags, "minor", TestFieldInfo::Secondary);
    addComponent(addComponent(flags, "group", TestFieldInfo::Secondary), "major");
    info.add(flags);
    Tree tree;
    tree.setColumns(columns("0"));
    MessageTreeWidgetItem* row = addRow(&tree, &info);
    QCOMPARE(rowTexts(row), lines("plain\ncomputed\ndetail\nflags\n  minor\n  group\n    major"));
    tree.setShowVirtualFields(false);
    QCOMPARE(rowTexts(row), lines("plain\ndetail\nflags\n  minor\n  group\n    major"));
    tree.setHideSecondaryFields(false); // deliberately the wrong way round
    QCOMPARE(rowTexts(row), lines("plain\nflags\n  group\n    major"));
    tree.setHideVirtualFields(false);
    const QStringList shown = lines("plain\ncomputed\nflags\n  group\n    major");
    QCOMPARE(rowTexts(row), shown);
    // Only changes build the rows anew, without what was added to them.
    row->addChild(new QTreeWidgetItem(lines("added")));
    tree.setShowVirtualFields(true);
    tree.setShowPrimaryFieldsOnly(true);
    QCOMPARE(rowTexts(row), shown + lines("added"));

    QString shownRoles;
    for (int role = 0; role < 5; ++role)
        shownRoles += QString::number(tree.mustShowFieldsWithRole(FieldInfo::Role(role)));
    QCOMPARE(shownRoles, text("11001"));
}

void TestMessageTreeWidget::remembersExpansion()
{
    TestInfo inner("INNER", false);
    inner.add("value");
    TestInfo info("T");
    TestFieldInfo* flags = new TestFieldInfo(text("flags"));
    addComponent(flags, "first");
    info.add(flags);
    info.add("sub", TestFieldInfo::Plain, &inner);
    const auto expanded = [](const QTreeWidgetItem* row) {
        return text("%1 %2 %3")
            .arg(row->isExpanded())
            .arg(row->child(0)->isExpanded())
            .arg(row->child(1)->isExpanded());
    };
    Tree first;
    MessageTreeWidgetItem* row = addRow(&first, &info);
    QCOMPARE(expanded(row), text("1 0 1")); // a type, and so a sub-message, starts expanded, a field collapsed
    row->child(0)->setExpanded(true);
    row->child(1)->setExpanded(false);
    row->setExpanded(false);

    Tree second;
    MessageTreeWidgetItem* other = addRow(&second, &info);
    QCOMPARE(expanded(other), text("0 1 0"));
    QVERIFY(!second.mustInitiallyBeExpanded(nullptr));
    // The tree as it was left survives a change of columns.
    other->setExpanded(true);
    second.getToggleTypeColumnAction()->trigger();
    QCOMPARE(expanded(other), text("1 1 0"));

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
