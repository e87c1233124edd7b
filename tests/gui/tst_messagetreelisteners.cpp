#include "testbase.h"
#include "treefixtures.h"

#include <QAction>
#include <QStyledItemDelegate>

/** Whoever is told of a change may do anything with the tree, before the tree goes on. */
class TestMessageTreeListeners : public TestBase
{
    Q_OBJECT

private Q_SLOTS:
    void rowsComeOnceThoughAMessageComesMeanwhile();
    void whatComesMeanwhileIsNewer();
    void rowsAskOnlyTheRowsAboveThem();
    void oldRowsGoBeforeNewOnesCome();
    void anythingCanBeDoneMeanwhile();
    void rowsCanBeDeletedMeanwhile();
    void rowsOfOthersAreDeletedOnce();
    void rowsAreConfiguredOnceHoweverSorted();
};

static const char s_one[] = "T s=(y=4) x=1 many=5:7 detail=7";

/** A type with a sub-message, values and fields of all filters, in a shown tree. */
struct Fixture : Stage
{
    Fixture()
        : Stage("S-: y; T: s.o=S x many.r detail.2v; U: z")
        , info(type("T"))
        , otherInfo(type("U"))
        , messages{message(s_one), message("T x=2 many=8 detail=9"), message("U z=3")}
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

    /** Does what one line says after the other; "one" is the first message, and "toggle NUMBER" triggers an action. */
    void perform(const QString& commands)
    {
        Q_FOREACH (const QString& command, commands.split("; ")) {
            if (command.startsWith("toggle"))
                tree.getToggleColumnActions().at(command.section(' ', 1).toInt())->trigger();
            else if (command == "columns")
                tree.clearColumns(true);
            else
                (*this)(QString(command).replace("one", s_one));
        }
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

void TestMessageTreeListeners::rowsComeOnceThoughAMessageComesMeanwhile()
{
    Q_FOREACH (const QString& step, lines("configure\ntype null; type T\ntype U; type T\ndisplay U z=3; display one\n"
                                          "setShowVirtualFields 0")) {
        Fixture f;
        delete f.other;
        const Answer answer([&] { f.tree.processMessage(f.one); });
        f.perform(step);
        QCOMPARE(step + "\n" + rowTexts(f.tree).join("\n"), step + "\n" + f.fresh(f.one).join("\n"));
        QCOMPARE(f.row->childCount(), f.tree.mustShowVirtualFields() ? 4 : 3);
    }
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
    // Also columns that change while all texts are written.
    {
        f.row->setText(0, text("?"));
        const Answer answer(
            &f.tree, SIGNAL(itemChanged(QTreeWidgetItem*, int)), [&] { f.perform("columns 2,3,0"); }, 1);
        f.row->setAllTexts();
    }
    QCOMPARE(rowTexts(f.tree), f.fresh(f.second));
    f.tree.setColumns(columns("0,3,2"));
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
    const QStringList reactions =
        lines("setShowPrimaryFieldsOnly 1\nsetHideVirtualFields 1\ncolumns 2,0\ncolumns\ntoggle 1\ntoggle 0\nanew\n"
              "configure\ntype U; display one\nT x=2 many=8 detail=9; one\nnull; one");
    static const char* const signalsOfTheTree[] = {
        SIGNAL(itemChanged(QTreeWidgetItem*, int)), SIGNAL(itemExpanded(QTreeWidgetItem*)),
        SIGNAL(itemCollapsed(QTreeWidgetItem*)), SIGNAL(itemSelectionChanged())};
    for (int i = 0; i < 10 * reactions.size(); ++i) {
        const QString& reaction = reactions.at(i / 10);
        const int listener = i % 10;
        Fixture f;
        f.tree.setSortingEnabled(listener >= 5);
        f.tree.sortByColumn(0, Qt::AscendingOrder);
        f.tree.processMessage(f.second);
        f.tree.processMessage(nullptr);
        f.tree.processMessage(f.second);
        showTree(&f.tree);
        f.tree.setCurrentItem(f.row->child(f.row->childCount() - 1));
        f.tree.sortByColumn(2, Qt::AscendingOrder);
        ReactingDelegate delegate([&] { f.perform(reaction); });
        const bool isDelegate = listener % 5 == 4;
        if (isDelegate)
            f.tree.setItemDelegate(&delegate);
        Answer answer(
            &f.tree, signalsOfTheTree[isDelegate ? 0 : listener % 5], [&] { f.perform(reaction); }, !isDelegate);
        f.tree.processMessage(f.one);
        f.row->setExpanded(false);
        f.tree.setShowVirtualFields(!f.tree.mustShowVirtualFields());
        f.tree.setSortingEnabled(false);
        QCoreApplication::processEvents();
        f.tree.setItemDelegate(nullptr);
        f.tree.reconfigureTopLevelAbstractMessageTreeWidgetItems();
        QCOMPARE(reaction + "\n" + rowTexts(f.tree).join("\n"), reaction + "\n" + f.fresh(f.one).join("\n"));
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

void TestMessageTreeListeners::rowsCanBeDeletedMeanwhile()
{
    // The victim by its place: the top-level row, and the field below that.
    const struct
    {
        int topLevel;
        int field;
        const char* left;
    } victims[] = {{1, -1, "s x many detail/s x many detail"},
                   {2, -1, "s x many detail/s x many detail"},
                   {1, 1, "s x many detail/s many detail/s x many detail"},
                   {2, 2, "s x many detail/s x many detail/s x detail"},
                   {1, 2, "s x many detail/s x detail/s x many detail"}};
    for (int i = 0; i < 10; ++i) {
        const int field = victims[i / 2].field;
        const bool bySignal = i % 2;
        Fixture f;
        DeletingRow* row = new DeletingRow(&f.tree, f.info);
        f.tree.insertTopLevelItem(1, row);
        f.tree.processMessage(f.second);
        QTreeWidgetItem* victim = f.tree.topLevelItem(victims[i / 2].topLevel);
        if (field >= 0)
            victim = victim->child(field);
        Answer answer(
            &f.tree, SIGNAL(itemChanged(QTreeWidgetItem*, int)), [&] { delete victim; }, bySignal);
        if (!bySignal)
            row->victim = victim;
        f.tree.processMessage(f.one);
        QStringList rows;
        for (int top = 0; top < f.tree.topLevelItemCount(); ++top) {
            const QTreeWidgetItem* parent = f.tree.topLevelItem(top);
            QStringList names;
            for (int child = 0; child < parent->childCount(); ++child) {
                names << parent->child(child)->text(0);
                if (names.last() == text("x"))
                    QCOMPARE(parent->child(child)->text(2), text("1"));
            }
            rows << names.join(text(" "));
        }
        QCOMPARE(rows.join("/"), text(victims[i / 2].left));
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
