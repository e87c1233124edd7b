#include "abstractmessagetreewidgetitem.h"
#include "corvel.h"
#include "testbase.h"
#include "treefixtures.h"

#include <QAction>
#include <QApplication>
#include <QHeaderView>
#include <QMessageBox>
#include <QTimer>

typedef MessageTreeWidget Tree;

/** Closes the warning box that is about to come up and keeps what it says. */
class BoxCloser : public QObject
{
    Q_OBJECT

public:
    BoxCloser() { QTimer::singleShot(0, this, SLOT(closeBox())); }

    QStringList texts;

private Q_SLOTS:
    void closeBox()
    {
        QMessageBox* box = qobject_cast<QMessageBox*>(QApplication::activeModalWidget());
        if (!box)
            return;
        texts << box->windowTitle() << box->text();
        box->close();
    }
};

class TestMessageTreeWidget : public TestBase
{
    Q_OBJECT

private Q_SLOTS:
    void showsNameTypeAndValueAtFirst();
    void namesEveryColumnType();
    void togglesColumns();
    void refusesDuplicateColumns();
    void leavesOtherColumnsAlone();
    void takesAnyColumnType();
    void headerTextsDoNotComeBack();
    void routesMessagesToAllRowsInOrder();
    void noticesEveryChangeOfItsTopLevelRows();
    void filtersFields();
    void hideSecondaryFieldsTurnsTheSenseAround();
    void reconfiguresOnlyForChanges();
    void remembersExpansion();
    void survivesNull();
};

static QList<int> columnNumbers(const Tree& tree)
{
    QList<int> numbers;
    Q_FOREACH (Tree::ColumnType type, tree.getColumns())
        numbers << type;
    return numbers;
}

static QStringList headerTexts(const Tree& tree)
{
    QStringList texts;
    for (int i = 0; i < tree.columnCount(); ++i)
        texts << tree.headerItem()->text(i);
    return texts;
}

void TestMessageTreeWidget::showsNameTypeAndValueAtFirst()
{
    Tree tree;
    QCOMPARE(columnNumbers(tree), QList<int>() << 0 << 3 << 2);
    QCOMPARE(headerTexts(tree), lines("Name\nType\nValue"));
    QCOMPARE(tree.getColumnIndex(Tree::ValueColumn), 2);
    QCOMPARE(tree.getColumnIndex(Tree::RawValueColumn), -1);
    QVERIFY(!tree.hasColumn(Tree::CustomColumn10));
    QVERIFY(tree.hasColumn(Tree::NameColumn));
    QVERIFY(tree.getToggleTypeColumnAction()->isChecked());
    QVERIFY(!tree.getToggleRawValueColumnAction()->isChecked());
    QCOMPARE(tree.getToggleColumnActions(),
             QVector<QAction*>() << tree.getToggleTypeColumnAction() << tree.getToggleRawValueColumnAction());
    QCOMPARE(tree.getToggleTypeColumnAction()->text(), QString::fromLatin1("&Type"));
    QCOMPARE(tree.getToggleRawValueColumnAction()->text(), QString::fromLatin1("&Raw Value"));
    QVERIFY(!tree.uniformRowHeights());
}

void TestMessageTreeWidget::namesEveryColumnType()
{
    QStringList names;
    for (int i = 0; i < 15; ++i)
        names << Tree::getDefaultColumnName(Tree::ColumnType(i));
    QCOMPARE(names, lines("Name\nRaw value\nValue\nType\nCustom 1\nCustom 2\nCustom 3\nCustom 4\nCustom 5\nCustom 6\n"
                          "Custom 7\nCustom 8\nCustom 9\nCustom 10\nColumn type 14"));
    QCOMPARE(Tree::getDefaultColumnName(Tree::ColumnType(1000)), QString::fromLatin1("Column type 1000"));
    QCOMPARE(Tree::getDefaultColumnName(Tree::ColumnType(-1)), QString::fromLatin1("Column type -1"));
}

void TestMessageTreeWidget::togglesColumns()
{
    TestInfo info("POSE");
    TestFieldInfo* x = info.add("x");
    x->setUnit(QLatin1String("m"));
    Tree tree;
    MessageTreeWidgetItem* row = addRow(&tree, &info);
    OwnedMessage message(&info);
    message->set(x, 1.5);
    tree.processMessage(message);
    QCOMPARE(rowsBelow(row), lines("x | double | 1.5 m"));

    tree.getToggleRawValueColumnAction()->trigger();
    QCOMPARE(columnNumbers(tree), QList<int>() << 0 << 3 << 2 << 1);
    QCOMPARE(rowsBelow(row), lines("x | double | 1.5 m | 1.5"));
    tree.getToggleTypeColumnAction()->trigger();
    QCOMPARE(columnNumbers(tree), QList<int>() << 0 << 2 << 1);
    QCOMPARE(tree.getColumnIndex(Tree::ValueColumn), 1);
    QCOMPARE(headerTexts(tree), lines("Name\nValue\nRaw value"));
    QCOMPARE(rowsBelow(row), lines("x | 1.5 m | 1.5"));
    QVERIFY(tree.getToggleRawValueColumnAction()->isChecked());
    tree.getToggleRawValueColumnAction()->trigger();
    tree.getToggleTypeColumnAction()->trigger();
    QCOMPARE(rowsBelow(row), lines("x | 1.5 m | double"));

    tree.clearColumns(true);
    QCOMPARE(tree.columnCount(), 0);
    QVERIFY(!tree.getToggleTypeColumnAction()->isChecked());
    tree.processMessage(message);
}

void TestMessageTreeWidget::refusesDuplicateColumns()
{
    Tree tree;
    BoxCloser closer;
    tree.setColumns(QVector<Tree::ColumnType>()
                    << Tree::NameColumn << Tree::TypeColumn << Tree::NameColumn << Tree::ValueColumn);
    QCOMPARE(closer.texts, lines("Duplicate column\nAttempt to add to a MessageTreeWidget a column that is already "
                                 "present: Name. Duplicate column was not added."));
    QCOMPARE(columnNumbers(tree), QList<int>() << 0 << 3 << 2);
    QCOMPARE(tree.columnCount(), 3);
    // The platform without a screen says something of its own about windows of fixed size.
    Q_FOREACH (const QString& warning, takeWarnings())
        QVERIFY2(warning.contains(QLatin1String("propagateSizeHints")), qPrintable(warning));
}

void TestMessageTreeWidget::leavesOtherColumnsAlone()
{
    Tree tree;
    tree.clearColumns(false);
    tree.setColumnCount(2);
    tree.addColumn(Tree::NameColumn, true);
    tree.addColumn(Tree::CustomColumn2, true);
    QCOMPARE(columnNumbers(tree), QList<int>() << 14 << 14 << 0 << 5);
    QCOMPARE(tree.getColumnIndex(Tree::NameColumn), 2);
    TestInfo info("POSE");
    info.add("x");
    MessageTreeWidgetItem* row = addRow(&tree, &info);
    QCOMPARE(rowText(row), QString::fromLatin1(" |  | POSE | Column Custom 2"));
    QCOMPARE(rowsBelow(row), lines(" |  | x | Column Custom 2"));
}

void TestMessageTreeWidget::takesAnyColumnType()
{
    Tree tree;
    tree.addColumn(Tree::ColumnType(999), true);
    QCOMPARE(tree.getColumns().last(), Tree::ColumnType(999));
    QCOMPARE(tree.getColumnIndex(Tree::ColumnType(999)), 3);
    QCOMPARE(tree.getColumnIndex(Tree::ColumnType(5000)), -1);
    // Reported on the error stream, and taken all the same.
    tree.addColumn(Tree::ColumnType(1000), true);
    QCOMPARE(static_cast<int>(tree.getColumns().last()), 1000);
    QCOMPARE(tree.getColumnIndex(Tree::ColumnType(1000)), 4);
    QVERIFY(!tree.hasColumn(Tree::ColumnType(-5)));
    QCOMPARE(tree.getColumnIndex(Tree::ColumnType(-5)), -1);
}

void TestMessageTreeWidget::headerTextsDoNotComeBack()
{
    Tree tree;
    tree.setColumns(QVector<Tree::ColumnType>() << Tree::ValueColumn << Tree::CustomColumn1);
    QCOMPARE(headerTexts(tree), lines("Value\nCustom 1"));
}

/** A row that writes down what it gets. */
class RecordingRow : public AbstractMessageTreeWidgetItem
{
public:
    RecordingRow(const char* name, QStringList* record)
        : AbstractMessageTreeWidgetItem(nullptr)
        , m_name(QString::fromLatin1(name))
        , m_record(record)
    {
    }

    void clearValues() override {}
    void processMessage(const Message* message) override
    {
        m_record->append(m_name + (message ? message->getInfo()->getName() : QLatin1String("null")));
    }

private:
    QString m_name;
    QStringList* m_record;
};

static QString taken(QStringList* record)
{
    const QString text = record->join(QLatin1String(" "));
    record->clear();
    return text;
}

void TestMessageTreeWidget::routesMessagesToAllRowsInOrder()
{
    TestInfo info("T");
    OwnedMessage message(&info);
    QStringList record;
    Tree tree;
    tree.addTopLevelItem(new RecordingRow("b", &record));
    tree.addTopLevelItem(new QTreeWidgetItem);
    tree.addTopLevelItem(new RecordingRow("a", &record));
    tree.topLevelItem(0)->addChild(new RecordingRow("child", &record));
    tree.processMessage(message);
    tree.processMessage(nullptr);
    QCOMPARE(taken(&record), QString::fromLatin1("bT aT bnull anull"));
}

void TestMessageTreeWidget::noticesEveryChangeOfItsTopLevelRows()
{
    TestInfo info("T");
    OwnedMessage message(&info);
    QStringList record;
    Tree tree;
    RecordingRow* b = new RecordingRow("b", &record);
    b->setText(0, QLatin1String("b"));
    RecordingRow* a = new RecordingRow("a", &record);
    a->setText(0, QLatin1String("a"));
    tree.addTopLevelItem(b);
    tree.processMessage(message);
    tree.insertTopLevelItem(0, a);
    tree.processMessage(message);
    QCOMPARE(taken(&record), QString::fromLatin1("bT aT bT"));
    tree.sortItems(0, Qt::DescendingOrder);
    tree.processMessage(message);
    QCOMPARE(taken(&record), QString::fromLatin1("bT aT"));
    tree.takeTopLevelItem(0);
    tree.processMessage(message);
    QCOMPARE(taken(&record), QString::fromLatin1("aT"));
    tree.addTopLevelItem(b);
    tree.processMessage(message);
    delete a;
    tree.processMessage(message);
    QCOMPARE(taken(&record), QString::fromLatin1("aT bT bT"));
    tree.clear();
    tree.processMessage(message);
    QCOMPARE(taken(&record), QString());
}

void TestMessageTreeWidget::filtersFields()
{
    TestInfo info("T");
    info.add("plain");
    info.add("computed", TestFieldInfo::Virtual);
    info.add("detail", TestFieldInfo::Secondary);
    TestFieldInfo* flags = new TestFieldInfo(QLatin1String("flags"), TestFieldInfo::Secondary);
    flags->addSubField(new TestFieldInfo(QLatin1String("minor"), TestFieldInfo::Secondary));
    TestFieldInfo* group = new TestFieldInfo(QLatin1String("group"), TestFieldInfo::Secondary);
    group->addSubField(new TestFieldInfo(QLatin1String("major")));
    flags->addSubField(group);
    info.add(flags);
    Tree tree;
    tree.setColumns(QVector<Tree::ColumnType>() << Tree::NameColumn);
    MessageTreeWidgetItem* row = addRow(&tree, &info);
    QCOMPARE(rowsBelow(row), lines("plain\ncomputed\ndetail\nflags\n. minor\n. group\n. . major"));
    tree.setShowVirtualFields(false);
    QCOMPARE(rowsBelow(row), lines("plain\ndetail\nflags\n. minor\n. group\n. . major"));
    tree.setShowPrimaryFieldsOnly(true);
    QCOMPARE(rowsBelow(row), lines("plain\nflags\n. group\n. . major"));
    tree.setHideVirtualFields(false);
    QCOMPARE(rowsBelow(row), lines("plain\ncomputed\nflags\n. group\n. . major"));

    QVERIFY(!tree.mustShowFieldsWithRole(FieldInfo::Role(2)));
    QVERIFY(!tree.mustShowFieldsWithRole(FieldInfo::Role(3)));
    QVERIFY(tree.mustShowFieldsWithRole(FieldInfo::Role(4)));
    QVERIFY(tree.mustShowFieldsWithRole(FieldInfo::Role(0)));
}

void TestMessageTreeWidget::hideSecondaryFieldsTurnsTheSenseAround()
{
    Tree tree;
    tree.setHideSecondaryFields(false);
    QVERIFY(!tree.mustShowFieldsWithRole(FieldInfo::SecondaryRole));
    tree.setHideSecondaryFields(true);
    QVERIFY(tree.mustShowFieldsWithRole(FieldInfo::SecondaryRole));
}

void TestMessageTreeWidget::reconfiguresOnlyForChanges()
{
    TestInfo info("T");
    info.add("x");
    Tree tree;
    MessageTreeWidgetItem* row = addRow(&tree, &info);
    // A row that is built anew loses what was added to it.
    row->addChild(new QTreeWidgetItem);
    tree.setShowVirtualFields(true);
    tree.setShowPrimaryFieldsOnly(false);
    QCOMPARE(row->childCount(), 2);
    tree.setShowPrimaryFieldsOnly(true);
    QCOMPARE(row->childCount(), 1);
}

void TestMessageTreeWidget::remembersExpansion()
{
    TestInfo inner("INNER", false);
    inner.add("value");
    TestInfo info("T");
    TestFieldInfo* flags = new TestFieldInfo(QLatin1String("flags"));
    flags->addSubField(new TestFieldInfo(QLatin1String("first")));
    info.add(flags);
    info.add("sub", TestFieldInfo::Plain, &inner);

    Tree first;
    MessageTreeWidgetItem* row = addRow(&first, &info);
    QVERIFY(row->isExpanded());            // a type starts expanded
    QVERIFY(!row->child(0)->isExpanded()); // a field starts collapsed
    QVERIFY(row->child(1)->isExpanded());  // a sub-message counts as a type
    row->child(0)->setExpanded(true);
    row->child(1)->setExpanded(false);
    row->setExpanded(false);

    Tree second;
    MessageTreeWidgetItem* other = addRow(&second, &info);
    QVERIFY(!other->isExpanded());
    QVERIFY(other->child(0)->isExpanded());
    QVERIFY(!other->child(1)->isExpanded());
    QVERIFY(second.mustInitiallyBeExpanded(
        static_cast<AbstractMessageTreeWidgetItem*>(dynamic_cast<AbstractMessageTreeWidgetItem*>(other->child(0)))));
    QVERIFY(!second.mustInitiallyBeExpanded(nullptr));

    // The tree as it was left survives a change of columns.
    other->setExpanded(true);
    second.getToggleTypeColumnAction()->trigger();
    QVERIFY(other->isExpanded());
    QVERIFY(other->child(0)->isExpanded());
    QVERIFY(!other->child(1)->isExpanded());

    MessageTreeWidgetItem* empty = addRow(&second, nullptr);
    empty->addChild(new QTreeWidgetItem);
    empty->setExpanded(false);
    QVERIFY(second.mustInitiallyBeExpanded(empty));

    RecordingRow* plain = new RecordingRow("", nullptr);
    second.addTopLevelItem(plain);
    QVERIFY(!second.mustInitiallyBeExpanded(plain));
}

void TestMessageTreeWidget::survivesNull()
{
    TestInfo info("T");
    TestFieldInfo* x = info.add("x");
    OwnedMessage message(&info);
    message->set(x, 1);
    Tree tree;
    MessageTreeWidgetItem* row = addRow(&tree, &info);
    addRow(&tree, nullptr);
    tree.processMessage(message);
    QCOMPARE(rowsBelow(row), lines("x | double | 1"));
    tree.processMessage(nullptr);
    QCOMPARE(rowText(row), QString::fromLatin1("T | Message | No message"));
    QCOMPARE(rowsBelow(row), lines("x | double | "));
    tree.processMessage(message);
    QCOMPARE(rowsBelow(row), lines("x | double | 1"));
}

QTEST_MAIN(TestMessageTreeWidget)
#include "tst_messagetreewidget.moc"
