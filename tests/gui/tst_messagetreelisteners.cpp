#include "testbase.h"
#include "treefixtures.h"

#include <QAction>
#include <QStyledItemDelegate>

/** Whoever is told of a change may do anything with the tree, before the tree goes on. */
class TestMessageTreeListeners : public TestBase
{
    Q_OBJECT

private Q_SLOTS:
    void rowsComeOnceThoughAMessageComesMeanwhile_data();
    void rowsComeOnceThoughAMessageComesMeanwhile();
    void whatComesMeanwhileIsNewer();
    void rowsAskOnlyTheRowsAboveThem();
    void oldRowsGoBeforeNewOnesCome();
    void anythingCanBeDoneMeanwhile_data();
    void anythingCanBeDoneMeanwhile();
    void rowsCanBeDeletedMeanwhile_data();
    void rowsCanBeDeletedMeanwhile();
    void rowsOfOthersAreDeletedOnce();
    void rowsAreConfiguredOnceHoweverSorted();
};

/** A type with a sub-message, values and fields of all filters, in a shown tree. */
struct Fixture : Stage
{
    Fixture()
        : Stage("S-: y; T: s.o=S x many.r detail.2v; U: z")
        , info(type("T"))
        , otherInfo(type("U"))
        , messages{message("T s=(y=4) x=1 many=5:7 detail=7"), message("T x=2 many=8 detail=9"), message("U z=3")}
        , one(messages[0].get())
        , second(messages[1].get())
        , foreign(messages[2].get())
        , row(add("T"))
        , other(add("T"))
    {
    }

    /** What a new tree shows of the first or the second message. */
    QStringList fresh(const Message* shown) const
    {
        Tree newTree;
        newTree.setColumns(tree.getColumns());
        newTree.setShowVirtualFields(tree.mustShowVirtualFields());
        newTree.setShowPrimaryFieldsOnly(!tree.mustShowFieldsWithRole(FieldInfo::Role(2)));
        for (int i = 0; i < tree.topLevelItemCount(); ++i)
            addRow(&newTree, info);
        newTree.processMessage(shown);
        return rowTexts(newTree);
    }

    const MessageInfo* info;
    const MessageInfo* otherInfo;
    const MessageReference messages[3];
    const Message* one;
    const Message* second;
    const Message* foreign;
    MessageTreeWidgetItem* row;
    MessageTreeWidgetItem* other;
};

typedef std::function<void(Fixture&)> Step;
Q_DECLARE_METATYPE(Step)

void TestMessageTreeListeners::rowsComeOnceThoughAMessageComesMeanwhile_data()
{
    QTest::addColumn<Step>("step");
    QTest::newRow("configured") << Step([](Fixture& f) { f.row->configureInTreeWidget(); });
    QTest::newRow("given a type") << Step([](Fixture& f) {
        f.row->setMessageInfo(nullptr);
        f.row->setMessageInfo(f.info);
    });
    QTest::newRow("given another type") << Step([](Fixture& f) {
        f.row->setMessageInfo(f.otherInfo);
        f.row->setMessageInfo(f.info);
    });
    QTest::newRow("shown another type") << Step([](Fixture& f) {
        f.row->displayMessage(f.foreign);
        f.row->displayMessage(f.one);
    });
    QTest::newRow("all configured") << Step([](Fixture& f) { f.tree.setShowVirtualFields(false); });
}

void TestMessageTreeListeners::rowsComeOnceThoughAMessageComesMeanwhile()
{
    QFETCH(Step, step);
    Fixture f;
    delete f.other;
    const Answer answer([&] { f.tree.processMessage(f.one); });
    step(f);
    QCOMPARE(rowTexts(f.tree), f.fresh(f.one));
    QCOMPARE(f.row->childCount(), f.tree.mustShowVirtualFields() ? 4 : 3);
}

void TestMessageTreeListeners::whatComesMeanwhileIsNewer()
{
    Fixture f;
    delete f.other;
    {
        // Many rows are added together; their columns of no text of their own are written when they are configured.
        f.tree.setColumns(columns("0,4"));
        const MessageReference newest = f.message("T many=1:20");
        const Answer answer(&f.tree, SIGNAL(itemChanged(QTreeWidgetItem*, int)),
                            [&] { f.tree.processMessage(newest.get()); });
        f.tree.processMessage(f.message("T many=3:22").get());
        QCOMPARE(rowTexts(f.tree), f.fresh(newest.get()));
    }
    f.tree.setColumns(columns("0,3,2"));
    f.tree.processMessage(f.one);
    {
        const Answer answer([&] { f.tree.processMessage(f.second); });
        f.tree.reconfigureTopLevelAbstractMessageTreeWidgetItems();
    }
    QCOMPARE(rowTexts(f.tree), f.fresh(f.second));
    // Also the type that the row gets, and the end of it.
    {
        const Answer answer([&] { f.row->setMessageInfo(f.otherInfo); });
        f.row->configureInTreeWidget();
    }
    QCOMPARE(rowTexts(f.tree), lines("U | Message | No message\n  z | double"));
    const Answer answer([&] { delete f.row; });
    f.row->displayMessage(f.one);
    QCOMPARE(f.tree.topLevelItemCount(), 0);
}

void TestMessageTreeListeners::rowsAskOnlyTheRowsAboveThem()
{
    Fixture f;
    Tree tree;
    const Answer answer(
        &f.tree, SIGNAL(itemExpanded(QTreeWidgetItem*)),
        [&] { tree.addTopLevelItem(new MessageTreeWidgetItem(&tree, f.info)); }, 1);
    f.row->configureInTreeWidget();
    QCOMPARE(tree.topLevelItemCount(), 1);
    QCOMPARE(tree.topLevelItem(0)->childCount(), 4);
}

void TestMessageTreeListeners::oldRowsGoBeforeNewOnesCome()
{
    Fixture f;
    delete f.other;
    QStringList needs;
    const Answer answer([&] {
        QStringList names;
        Q_FOREACH (const MessageInfo* info, MessageNeedManager::getInstance()->getNeededMessageInfos())
            names << info->getName();
        names.sort();
        needs << names.join(text("+"));
    });
    f.tree.reconfigureTopLevelAbstractMessageTreeWidgetItems();
    QCOMPARE(needs.join(text(", ")), text("S, , T, S+T"));
}

void TestMessageTreeListeners::anythingCanBeDoneMeanwhile_data()
{
    QTest::addColumn<Step>("reaction");
    const auto add = [](const char* name, const Step& reaction) { QTest::newRow(name) << reaction; };
    add("fewer fields", [](Fixture& f) { f.tree.setShowPrimaryFieldsOnly(true); });
    add("no virtual fields", [](Fixture& f) { f.tree.setHideVirtualFields(true); });
    add("other columns", [](Fixture& f) { f.tree.setColumns(columns("2,0")); });
    add("no columns", [](Fixture& f) { f.tree.clearColumns(true); });
    add("one more column", [](Fixture& f) { f.tree.getToggleRawValueColumnAction()->trigger(); });
    add("one column less", [](Fixture& f) { f.tree.getToggleTypeColumnAction()->trigger(); });
    add("all anew", [](Fixture& f) { f.tree.reconfigureTopLevelAbstractMessageTreeWidgetItems(); });
    add("one anew", [](Fixture& f) { f.row->configureInTreeWidget(); });
    add("other type and back", [](Fixture& f) {
        f.row->setMessageInfo(f.otherInfo);
        f.row->displayMessage(f.one);
    });
    add("another message and back", [](Fixture& f) {
        f.tree.processMessage(f.second);
        f.tree.processMessage(f.one);
    });
    add("no message and back", [](Fixture& f) {
        f.tree.processMessage(nullptr);
        f.tree.processMessage(f.one);
    });
}

/** A delegate that does something at the first row that it is asked for. */
class ReactingDelegate : public QStyledItemDelegate
{
public:
    explicit ReactingDelegate(const std::function<void()>& reaction)
        : m_reaction(reaction)
    {
    }
    void paint(QPainter* painter, const QStyleOptionViewItem& option, const QModelIndex& index) const override
    {
        react();
        QStyledItemDelegate::paint(painter, option, index);
    }
    QSize sizeHint(const QStyleOptionViewItem& option, const QModelIndex& index) const override
    {
        react();
        return QStyledItemDelegate::sizeHint(option, index);
    }

private:
    void react() const
    {
        const std::function<void()> reaction = m_reaction;
        m_reaction = nullptr;
        if (reaction)
            reaction();
    }

    mutable std::function<void()> m_reaction;
};

void TestMessageTreeListeners::anythingCanBeDoneMeanwhile()
{
    QFETCH(Step, reaction);
    static const char* const signalsOfTheTree[] = {
        SIGNAL(itemChanged(QTreeWidgetItem*, int)), SIGNAL(itemExpanded(QTreeWidgetItem*)),
        SIGNAL(itemCollapsed(QTreeWidgetItem*)), SIGNAL(itemSelectionChanged())};
    for (int listener = 0; listener < 10; ++listener) {
        Fixture f;
        f.tree.setSortingEnabled(listener >= 5);
        f.tree.sortByColumn(0, Qt::AscendingOrder);
        f.tree.processMessage(f.second);
        f.tree.processMessage(nullptr);
        f.tree.processMessage(f.second);
        showTree(&f.tree);
        f.tree.setCurrentItem(f.row->child(f.row->childCount() - 1));
        f.tree.sortByColumn(2, Qt::AscendingOrder);
        ReactingDelegate delegate([&] { reaction(f); });
        const bool isDelegate = listener % 5 == 4;
        if (isDelegate)
            f.tree.setItemDelegate(&delegate);
        Answer answer(
            &f.tree, signalsOfTheTree[isDelegate ? 0 : listener % 5], [&] { reaction(f); }, !isDelegate);
        f.tree.processMessage(f.one);
        f.row->setExpanded(false);
        f.tree.setShowVirtualFields(!f.tree.mustShowVirtualFields());
        f.tree.setSortingEnabled(false);
        QCoreApplication::processEvents();
        f.tree.setItemDelegate(nullptr);
        f.tree.reconfigureTopLevelAbstractMessageTreeWidgetItems();
        QCOMPARE(rowTexts(f.tree), f.fresh(f.one));
    }
}

/** A row that deletes one when something is written into it. */
class DeletingRow : public MessageTreeWidgetItem
{
public:
    DeletingRow(Tree* tree, const MessageInfo* info)
        : AbstractMessageTreeWidgetItem(tree)
        , MessageTreeWidgetItem(tree, info)
    {
    }

    QTreeWidgetItem* victim = nullptr;

    void setData(int column, int role, const QVariant& value) override
    {
        QTreeWidgetItem* const row = victim;
        victim = nullptr;
        if (row != this)
            MessageTreeWidgetItem::setData(column, role, value);
        delete row;
    }
};

void TestMessageTreeListeners::rowsCanBeDeletedMeanwhile_data()
{
    // The victim by its place: the top-level row, and the field below that.
    QTest::addColumn<int>("topLevel");
    QTest::addColumn<int>("field");
    QTest::addColumn<QString>("left");
    const QString all = text("s x many detail");
    QTest::newRow("itself") << 1 << -1 << all + text("/") + all;
    QTest::newRow("the next") << 2 << -1 << all + text("/") + all;
    QTest::newRow("its field") << 1 << 1 << all + text("/s many detail/") + all;
    QTest::newRow("the field of another") << 2 << 2 << all + text("/") + all + text("/s x detail");
    QTest::newRow("a whole field") << 1 << 2 << all + text("/s x detail/") + all;
}

void TestMessageTreeListeners::rowsCanBeDeletedMeanwhile()
{
    QFETCH(int, topLevel);
    QFETCH(int, field);
    QFETCH(QString, left);
    for (int bySignal = 0; bySignal < 2; ++bySignal) {
        Fixture f;
        DeletingRow* row = new DeletingRow(&f.tree, f.info);
        f.tree.insertTopLevelItem(1, row);
        f.tree.processMessage(f.second);
        QTreeWidgetItem* victim = f.tree.topLevelItem(topLevel);
        if (field >= 0)
            victim = victim->child(field);
        Answer answer(
            &f.tree, SIGNAL(itemChanged(QTreeWidgetItem*, int)), [&] { delete victim; }, bySignal);
        if (!bySignal)
            row->victim = victim;
        f.tree.processMessage(f.one);
        QStringList rows;
        for (int i = 0; i < f.tree.topLevelItemCount(); ++i) {
            const QTreeWidgetItem* parent = f.tree.topLevelItem(i);
            QStringList names;
            for (int child = 0; child < parent->childCount(); ++child) {
                names << parent->child(child)->text(0);
                if (names.last() == text("x"))
                    QCOMPARE(parent->child(child)->text(2), text("1"));
            }
            rows << names.join(text(" "));
        }
        QCOMPARE(rows.join(text("/")), left);
        f.tree.reconfigureTopLevelAbstractMessageTreeWidgetItems();
        QCOMPARE(rowTexts(f.tree), f.fresh(f.one));
    }
}

void TestMessageTreeListeners::rowsOfOthersAreDeletedOnce()
{
    Fixture f;
    f.tree.setCurrentItem(new QTreeWidgetItem(f.row));
    const Answer change(
        &f.tree, SIGNAL(itemChanged(QTreeWidgetItem*, int)), [&] { f.row->displayMessage(f.foreign); }, 1);
    const Answer choice(
        &f.tree, SIGNAL(itemSelectionChanged()), [&] { f.row->displayMessage(f.one); }, 1);
    f.tree.processMessage(f.second);
    f.tree.processMessage(f.one);
    QCOMPARE(rowTexts(f.tree), f.fresh(f.one));
}

/** A row whose name is another one each time, and that counts how often it is configured. */
class RestlessRow : public AbstractMessageTreeWidgetItem
{
public:
    explicit RestlessRow(int number)
        : AbstractMessageTreeWidgetItem(nullptr)
        , m_number(number)
    {
    }

    int configured = 0;

    QString getNameText() override { return QString::number(m_number = m_number * 7 % 997); }
    void clearValues() override {}
    void processMessage(const Message*) override {}
    void configureInTreeWidget() override
    {
        ++configured;
        AbstractMessageTreeWidgetItem::configureInTreeWidget();
    }

private:
    int m_number;
};

void TestMessageTreeListeners::rowsAreConfiguredOnceHoweverSorted()
{
    Tree tree;
    tree.setSortingEnabled(true);
    tree.sortByColumn(0, Qt::AscendingOrder);
    QList<RestlessRow*> rows;
    RestlessRow* parent = new RestlessRow(1);
    tree.addTopLevelItem(parent);
    for (int i = 0; i < 50; ++i) {
        rows << new RestlessRow(i + 1);
        parent->addChild(rows.last());
    }
    for (int round = 1; round < 5; ++round) {
        tree.reconfigureTopLevelAbstractMessageTreeWidgetItems();
        Q_FOREACH (const RestlessRow* row, rows)
            QCOMPARE(row->configured, round);
    }
}

QTEST_MAIN(TestMessageTreeListeners)
#include "tst_messagetreelisteners.moc"
