#include "abstractmessagetreewidgetitem.h"
#include "corvel.h"
#include "testbase.h"
#include "treefixtures.h"

#include <QAction>
#include <QApplication>
#include <QHeaderView>
#include <QMessageBox>
#include <QStyledItemDelegate>
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
    void tellsEveryListenerOfEveryChange();
    void repaintsWhatChangedOnTheScreen();
    void leavesNothingStaleOnTheScreen_data();
    void leavesNothingStaleOnTheScreen();
    void growsRowsWithTheirTexts();
    void growsRowsOfTextsWrittenByOthers();
    void growsRowsOfTextsWrittenByListeners();
    void leavesHeightsToOtherDelegates();
    void takesTheRowsThatListenersLeave();
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

/** A type with many fields in a shown tree, and messages in which all of them differ. */
class ShownTree
{
public:
    explicit ShownTree(int fieldCount)
        : info("T")
        , message(&info)
    {
        for (int i = 0; i < fieldCount; ++i)
            fields.append(info.add("field"));
        row = addRow(&tree, &info);
        feed(0);
        showTree(&tree);
    }

    void feed(double first)
    {
        for (int i = 0; i < fields.size(); ++i)
            message->set(fields.at(i), first + i);
        tree.processMessage(message);
    }
    void feedText(int field, const char* text)
    {
        message->set(fields.at(field), FieldValue::fromText(QString::fromLatin1(text)));
        tree.processMessage(message);
    }
    int height(int field) { return tree.visualItemRect(row->child(field)).height(); }

    TestInfo info;
    QList<TestFieldInfo*> fields;
    OwnedMessage message;
    Tree tree;
    MessageTreeWidgetItem* row;
};

void TestMessageTreeWidget::tellsEveryListenerOfEveryChange()
{
    qRegisterMetaType<QTreeWidgetItem*>("QTreeWidgetItem*"); // before Qt 6, a spy cannot tell by itself what that is
    ShownTree shown(10);
    QSignalSpy changed(shown.tree.model(), SIGNAL(dataChanged(QModelIndex, QModelIndex)));
    QSignalSpy items(&shown.tree, SIGNAL(itemChanged(QTreeWidgetItem*, int)));
    shown.feed(100);
    QCOMPARE(changed.count(), 10);
    QCOMPARE(items.count(), 10);
    shown.feed(100);
    QCOMPARE(changed.count(), 10);
}

/** Counts what is painted of a tree. */
class PaintWatcher : public QObject
{
public:
    explicit PaintWatcher(QWidget* viewport) { viewport->installEventFilter(this); }

    bool eventFilter(QObject*, QEvent* event) override
    {
        if (event->type() == QEvent::Paint)
            region += static_cast<QPaintEvent*>(event)->region();
        return false;
    }

    QRegion region;
};

void TestMessageTreeWidget::repaintsWhatChangedOnTheScreen()
{
    ShownTree shown(200);
    PaintWatcher watcher(shown.tree.viewport());
    shown.feed(1000);
    QCoreApplication::processEvents();
    // Values, and no names.
    const QModelIndex name = shown.tree.model()->index(2, 0, shown.tree.model()->index(0, 0));
    QVERIFY(watcher.region.contains(shown.tree.visualRect(name.sibling(2, 2)).center()));
    QVERIFY(!watcher.region.contains(shown.tree.visualRect(name).center()));

    // What is off the screen costs no painting.
    watcher.region = QRegion();
    shown.feedText(150, "new");
    QCoreApplication::processEvents();
    QCOMPARE(watcher.region, QRegion());
}

/** Brings a shown tree into one of the situations in which the place of a cell is not what it was. */
static void arrange(ShownTree* shown, const QString& situation)
{
    Tree& tree = shown->tree;
    QTreeWidgetItem* row = shown->row->child(2);
    if (situation == QLatin1String("scrolled"))
        tree.scrollToItem(shown->row->child(60), QAbstractItemView::PositionAtTop);
    if (situation == QLatin1String("scrolled sideways")) {
        tree.setColumnWidth(0, 700);
        tree.setHorizontalScrollMode(QAbstractItemView::ScrollPerPixel);
        tree.scrollTo(tree.model()->index(0, 2), QAbstractItemView::PositionAtCenter);
    }
    if (situation == QLatin1String("resized"))
        tree.setColumnWidth(1, 7);
    if (situation == QLatin1String("hidden"))
        tree.setColumnHidden(0, true);
    if (situation == QLatin1String("moved"))
        tree.header()->moveSection(2, 0);
    if (situation == QLatin1String("from right to left"))
        tree.setLayoutDirection(Qt::RightToLeft);
    if (situation == QLatin1String("spanned")) {
        tree.setColumns(QVector<Tree::ColumnType>() << Tree::ValueColumn << Tree::NameColumn);
        row = shown->row->child(2); // made anew
        row->setFirstColumnSpanned(true);
    }
    if (situation == QLatin1String("large")) {
        QFont font = tree.font();
        font.setPointSize(2 * font.pointSize());
        tree.setFont(font);
    }
    if (situation == QLatin1String("sorted")) {
        tree.sortByColumn(2, Qt::DescendingOrder);
        tree.setSortingEnabled(true);
    }
    if (situation == QLatin1String("wrapped")) {
        tree.setWordWrap(true);
        tree.setColumnWidth(2, 30);
    }
    if (situation == QLatin1String("two lines"))
        shown->feedText(2, "two\nlines");
    if (situation == QLatin1String("edited")) {
        row->setFlags(row->flags() | Qt::ItemIsEditable);
        tree.openPersistentEditor(row, 2);
    }
    for (int i = 0; i < 5; ++i)
        QCoreApplication::processEvents();
}

static QImage pictureOf(Tree* tree)
{
    QImage picture(tree->viewport()->size(), QImage::Format_RGB32);
    tree->viewport()->render(&picture);
    return picture;
}

void TestMessageTreeWidget::leavesNothingStaleOnTheScreen_data()
{
    QTest::addColumn<QString>("situation");
    Q_FOREACH (const QString& situation,
               lines("plain\nscrolled\nscrolled sideways\nresized\nhidden\nmoved\nfrom right to left\nspanned\n"
                     "large\nsorted\nwrapped\ntwo lines\nedited"))
        QTest::newRow(qPrintable(situation)) << situation;
}

void TestMessageTreeWidget::leavesNothingStaleOnTheScreen()
{
    // What was on the screen is drawn from a second tree, so that drawing it cannot help the first.
    QFETCH(QString, situation);
    ShownTree twin(100);
    arrange(&twin, situation);
    ShownTree shown(100);
    arrange(&shown, situation);
    const QImage before = pictureOf(&twin.tree);
    PaintWatcher watcher(shown.tree.viewport());
    shown.feed(500);
    QCoreApplication::processEvents();
    QCoreApplication::processEvents();
    const QRegion painted = watcher.region;
    const QImage after = pictureOf(&shown.tree);
    QCOMPARE(before.size(), after.size());
    QVERIFY(before != after);
    int stale = 0;
    for (int y = 0; y < after.height(); ++y) {
        for (int x = 0; x < after.width(); ++x)
            stale += before.pixel(x, y) != after.pixel(x, y) && !painted.contains(QPoint(x, y));
    }
    QCOMPARE(stale, 0);
}

void TestMessageTreeWidget::growsRowsWithTheirTexts()
{
    ShownTree shown(60);
    const int one = shown.height(1);
    shown.feedText(1, "two\nlines");
    QCoreApplication::processEvents();
    const int two = shown.height(1);
    QVERIFY(two > one);
    QCOMPARE(shown.height(0), one);
    QCOMPARE(shown.tree.visualItemRect(shown.row->child(2)).top(),
             shown.tree.visualItemRect(shown.row->child(1)).bottom() + 1);
    shown.feedText(1, "other\nlines");
    QCoreApplication::processEvents();
    QCOMPARE(shown.height(1), two);
    shown.feedText(1, "one line");
    QCoreApplication::processEvents();
    QCOMPARE(shown.height(1), one);
    // Also where it was never seen since the change.
    shown.feedText(55, "two\nlines");
    QCoreApplication::processEvents();
    QCOMPARE(shown.height(55), two);
}

void TestMessageTreeWidget::growsRowsOfTextsWrittenByOthers()
{
    ShownTree shown(5);
    const int one = shown.height(1);
    shown.row->child(1)->setText(2, QLatin1String("two\nlines"));
    QCoreApplication::processEvents();
    QVERIFY(shown.height(1) > one);
    shown.feed(500);
    QCoreApplication::processEvents();
    QCOMPARE(shown.height(1), one);
}

/** Answers the first change of a row by a text of its own. */
class AnsweringListener : public QObject
{
    Q_OBJECT

public:
    AnsweringListener(Tree* tree, QTreeWidgetItem* row)
        : m_row(row)
    {
        connect(tree, SIGNAL(itemChanged(QTreeWidgetItem*, int)), SLOT(answer(QTreeWidgetItem*)));
    }

private Q_SLOTS:
    void answer(QTreeWidgetItem* row)
    {
        if (row != m_row)
            return;
        m_row = nullptr;
        row->setText(2, QLatin1String("two\nlines"));
    }

private:
    QTreeWidgetItem* m_row;
};

void TestMessageTreeWidget::growsRowsOfTextsWrittenByListeners()
{
    ShownTree shown(5);
    const int one = shown.height(1);
    AnsweringListener listener(&shown.tree, shown.row->child(1));
    shown.feed(500);
    QCoreApplication::processEvents();
    QVERIFY(shown.height(1) > one);
    shown.feed(700);
    QCoreApplication::processEvents();
    QCOMPARE(shown.height(1), one);
}

/** Deletes a row as soon as another changes. */
class DeletingListener : public QObject
{
    Q_OBJECT

public:
    DeletingListener(Tree* tree, QTreeWidgetItem* row)
        : m_row(row)
    {
        connect(tree, SIGNAL(itemChanged(QTreeWidgetItem*, int)), SLOT(deleteRow()));
    }

private Q_SLOTS:
    void deleteRow()
    {
        QTreeWidgetItem* row = m_row;
        m_row = nullptr;
        delete row;
    }

private:
    QTreeWidgetItem* m_row;
};

void TestMessageTreeWidget::takesTheRowsThatListenersLeave()
{
    TestInfo info("T");
    TestFieldInfo* x = info.add("x");
    OwnedMessage message(&info);
    message->set(x, 1);
    Tree tree;
    addRow(&tree, &info);
    MessageTreeWidgetItem* second = addRow(&tree, &info);
    MessageTreeWidgetItem* last = addRow(&tree, nullptr);
    last->setMessageInfo(&info);
    DeletingListener listener(&tree, second);
    tree.processMessage(message);
    QCOMPARE(tree.topLevelItemCount(), 2);
    QCOMPARE(rowsBelow(last), lines("x | double | 1"));
    TestInfo other("OTHER");
    last->setMessageInfo(&other);
    last->setMessageInfo(&info);
    tree.processMessage(message);
    QCOMPARE(rowsBelow(last), lines("x | double | 1"));
}

/** A delegate whose rows are the higher the longer their texts are. */
class LengthDelegate : public QStyledItemDelegate
{
public:
    QSize sizeHint(const QStyleOptionViewItem&, const QModelIndex& index) const override
    {
        return QSize(50, 30 + index.data().toString().size());
    }
};

void TestMessageTreeWidget::leavesHeightsToOtherDelegates()
{
    ShownTree shown(5);
    LengthDelegate delegate;
    shown.tree.setItemDelegateForColumn(2, &delegate);
    QCoreApplication::processEvents();
    shown.feedText(1, "twelve chars");
    QCoreApplication::processEvents();
    QCOMPARE(shown.height(1), 42);
    shown.feedText(1, "four");
    QCoreApplication::processEvents();
    QCOMPARE(shown.height(1), 34);
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
