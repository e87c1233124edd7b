#include "testbase.h"
#include "treefixtures.h"

#include <QHeaderView>
#include <QPaintEvent>
#include <QStyledItemDelegate>

/** What of changed values reaches the screen and other listeners, and when. */
class TestMessageTreeDisplay : public TestBase
{
    Q_OBJECT

private Q_SLOTS:
    void tellsEveryListenerOfEveryChange();
    void repaintsWhatChangedOnTheScreen();
    void leavesNothingStaleOnTheScreen();
    void growsRowsWithTheirTexts();
    void growsRowsOfTextsWrittenByOthers();
    void leavesHeightsToOtherDelegates();
    void readsValuesFromLeftToRight();
    void takesTheRowsThatListenersLeave();
};

/** A type with the fields f0, f1, ..., in a shown tree, and messages in which all of them differ. */
class ShownTree : public Stage
{
public:
    explicit ShownTree(int fieldCount)
        : Stage(words("T:", fieldCount, " f%1").toLatin1())
        , row(add("T"))
    {
        feed(0);
        showTree(&tree);
    }

    void feed(int first) { feedText(words("T", row->childCount(), " f%1=%2", first)); }
    void feedText(const QString& message)
    {
        (*this)(message);
        QCoreApplication::processEvents();
    }
    int height(int field) { return tree.visualItemRect(row->child(field)).height(); }

    MessageTreeWidgetItem* const row;

private:
    static QString words(const char* type, int count, const char* field, int first = 0)
    {
        QString all(type);
        for (int i = 0; i < count; ++i)
            all += QString(field).replace("%1", QString::number(i)).replace("%2", QString::number(first + i));
        return all;
    }
};

void TestMessageTreeDisplay::tellsEveryListenerOfEveryChange()
{
    qRegisterMetaType<QTreeWidgetItem*>("QTreeWidgetItem*"); // before Qt 6, a spy cannot tell by itself what that is
    ShownTree shown(10);
    QSignalSpy changed(shown.tree.model(), SIGNAL(dataChanged(QModelIndex, QModelIndex)));
    QSignalSpy items(&shown.tree, SIGNAL(itemChanged(QTreeWidgetItem*, int)));
    for (int i = 0; i < 2; ++i) {
        shown.feed(100);
        QCOMPARE(changed.count(), 10);
        QCOMPARE(items.count(), 10);
    }
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

void TestMessageTreeDisplay::repaintsWhatChangedOnTheScreen()
{
    ShownTree shown(200);
    PaintWatcher watcher(shown.tree.viewport());
    shown.feed(1000);
    // Values, and no names.
    const QModelIndex name = shown.tree.model()->index(2, 0, shown.tree.model()->index(0, 0));
    QVERIFY(watcher.region.contains(shown.tree.visualRect(name.sibling(2, 2)).center()));
    QVERIFY(!watcher.region.contains(shown.tree.visualRect(name).center()));

    // What is off the screen costs no painting.
    watcher.region = QRegion();
    shown.feedText("T f150='new'");
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
    if (situation == QLatin1String("hidden"))
        tree.setColumnHidden(0, true);
    if (situation == QLatin1String("from right to left"))
        tree.setLayoutDirection(Qt::RightToLeft);
    if (situation == QLatin1String("spanned")) {
        tree.setColumns(columns("2,0"));
        shown->row->child(2)->setFirstColumnSpanned(true);
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
        shown->feedText("T f2='two\nlines'");
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

void TestMessageTreeDisplay::leavesNothingStaleOnTheScreen()
{
    Q_FOREACH (const QString& situation, lines("plain\nscrolled\nscrolled sideways\nhidden\nfrom right to left\n"
                                               "spanned\nsorted\nwrapped\ntwo lines\nedited")) {
        // What was on the screen is drawn from a second tree, so that drawing it cannot help the first.
        ShownTree twin(100);
        arrange(&twin, situation);
        ShownTree shown(100);
        arrange(&shown, situation);
        const QImage before = pictureOf(&twin.tree);
        PaintWatcher watcher(shown.tree.viewport());
        shown.feed(500);
        QCoreApplication::processEvents();
        const QRegion painted = watcher.region;
        const QImage after = pictureOf(&shown.tree);
        QCOMPARE(before.size(), after.size());
        QVERIFY2(before != after, qPrintable(situation));
        int stale = 0;
        for (int y = 0; y < after.height(); ++y)
            for (int x = 0; x < after.width(); ++x)
                stale += before.pixel(x, y) != after.pixel(x, y) && !painted.contains(QPoint(x, y));
        QVERIFY2(stale == 0, qPrintable(situation));
    }
}

void TestMessageTreeDisplay::growsRowsWithTheirTexts()
{
    ShownTree shown(60);
    const int one = shown.height(1);
    shown.feedText("T f1='two\nlines'");
    const int two = shown.height(1);
    QVERIFY(two > one);
    QCOMPARE(shown.height(0), one);
    shown.feedText("T f1='other\nlines'");
    QCOMPARE(shown.height(1), two);
    shown.feedText("T f1='one line'");
    QCOMPARE(shown.height(1), one);
    // Also where it was never seen since the change.
    shown.feedText("T f55='two\nlines'");
    QCOMPARE(shown.height(55), two);
}

void TestMessageTreeDisplay::growsRowsOfTextsWrittenByOthers()
{
    ShownTree shown(5);
    const int one = shown.height(0);
    QTreeWidgetItem* row = shown.row->child(0);
    const auto write = [row] { row->setText(2, "two\nlines"); };
    write();
    QCoreApplication::processEvents();
    QVERIFY(shown.height(0) > one);
    shown.feed(500);
    QCOMPARE(shown.height(0), one);
    const Answer answer(&shown.tree, SIGNAL(itemChanged(QTreeWidgetItem*, int)), write, 1);
    shown.feed(600);
    QVERIFY(shown.height(0) > one);
    shown.feed(700);
    QCOMPARE(shown.height(0), one);
}

void TestMessageTreeDisplay::readsValuesFromLeftToRight()
{
    MessageTreeWidget tree;
    const QStyledItemDelegate* cells = qobject_cast<const QStyledItemDelegate*>(tree.itemDelegate());
    QVERIFY(cells);
    const auto shown = [cells](const QString& value) { return cells->displayText(value, QLocale::c()); };
    const TextRow here[] = {{"-0.5 rad", "-0.5 rad"}};
    checkRows(here, shown);
    tree.setLayoutDirection(Qt::RightToLeft);
    const TextRow mirrored[] = {{"-0.5 rad", "\u202a-0.5 rad"}, {"-5", "\u202a-5"}, {"", ""}, {"\u05d0 5", "\u05d0 5"}};
    checkRows(mirrored, shown);
}

void TestMessageTreeDisplay::takesTheRowsThatListenersLeave()
{
    Stage stage("T: x; OTHER:");
    stage.add("T");
    MessageTreeWidgetItem* second = stage.add("T");
    MessageTreeWidgetItem* last = stage.add("");
    last->setMessageInfo(stage.type("T"));
    const Answer answer(
        &stage.tree, SIGNAL(itemChanged(QTreeWidgetItem*, int)), [second] { delete second; }, 1);
    const QString shown("T | Message\n  x | double | 1\nT | Message\n  x | double | 1");
    QCOMPARE(stage("T x=1"), shown);
    last->setMessageInfo(stage.type("OTHER"));
    last->setMessageInfo(stage.type("T"));
    QCOMPARE(stage("T x=1"), shown);
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

void TestMessageTreeDisplay::leavesHeightsToOtherDelegates()
{
    ShownTree shown(5);
    LengthDelegate delegate;
    shown.tree.setItemDelegateForColumn(2, &delegate);
    QCoreApplication::processEvents();
    shown.feedText("T f1='twelve chars'");
    QCOMPARE(shown.height(1), 42);
    shown.feedText("T f1='four'");
    QCOMPARE(shown.height(1), 34);
}

QTEST_MAIN(TestMessageTreeDisplay)
#include "tst_messagetreedisplay.moc"
