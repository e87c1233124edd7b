#include "messagegrouptreewidgetitem.h"
#include "messagetreecolumn.h"
#include "testbase.h"
#include "treefixtures.h"
#include "waitfor.h"

#include <QAction>
#include <QSettings>
#include <QTemporaryFile>

/** Columns and groups of an application's own. */
class tst_MessageTreeColumn : public TestBase
{
    Q_OBJECT

private Q_SLOTS:
    void saysItsTextInEveryKindOfRow();
    void comesAndGoesAsOthersDo();
    void isAskedWhereSomebodyLooks();
    void groupsHandOnWhatTheyGet();
    void groupsStandListeners();
};

/** Tells what it is asked for, and counts how often that is. */
class Notes : public MessageTreeColumn
{
public:
    explicit Notes(int* asked = nullptr)
        : m_asked(asked)
    {
    }

    QString getHeaderText() const override { return text("Notes & more"); }
    QString getHeaderToolTip() const override { return text("All of them"); }
    QString getMessageText(MessageTreeWidgetItem* row) override
    {
        if (m_asked)
            ++*m_asked;
        return text(row->isMessageDisplayed() ? "shown" : "none");
    }
    QString getFieldText(AbstractMessageTreeWidgetItem* row, const FieldInfo* field, const Message* message) override
    {
        const QString count = message ? QString::number(field->getValueCount(message)) : text("no");
        return text("%1 of %2, %3")
            .arg(row->getIndex())
            .arg(count, message ? message->getInfo()->getName() : QString());
    }
    QString getGroupText(AbstractMessageTreeWidgetItem* row) override
    {
        return text("group of %1").arg(row->childCount());
    }
    QString getToolTip(AbstractMessageTreeWidgetItem* row) override
    {
        return row->getFieldInfo() ? row->getFieldInfo()->getName() : QString();
    }

private:
    int* m_asked;
};

static const char* const Pose = "INNER-: value deep{part}; POSE: x many.r sub.o=INNER";

void tst_MessageTreeColumn::saysItsTextInEveryKindOfRow()
{
    Stage stage(Pose);
    stage.tree.setColumns(columns("0,5"));
    stage.tree.setCustomColumn(Tree::CustomColumn2, new Notes);
    MessageGroupTreeWidgetItem* group = new MessageGroupTreeWidgetItem(&stage.tree, text("all"));
    stage.tree.addTopLevelItem(group);
    group->configureInTreeWidget();
    MessageTreeWidgetItem* row = group->addRow(stage.type("POSE"));
    const TextRow rows[] = {
        {"T", "all | group of 1\n  POSE | none\n    x | 0 of no, \n    many | -1 of no, \n    sub | 0 of no, \n"
              "      value | 0 of no, \n      deep | 0 of no, \n        part | 0 of no, "},
        {"POSE x=2 many=5,6 sub=(value=1)",
         "all | group of 1\n  POSE | shown\n    x | 0 of 1, POSE\n    many | -1 of 2, POSE\n"
         "      many [0] | 0 of 2, POSE\n      many [1] | 1 of 2, POSE\n    sub | 0 of 1, POSE\n"
         "      value | 0 of 1, INNER\n      deep | 0 of 0, INNER\n        part | 0 of 0, INNER"}};
    checkRows(rows, std::ref(stage));
    QCOMPARE(row->child(0)->toolTip(1), text("x"));
    row->setToolTip(1, text("stored"));
    QCOMPARE(row->toolTip(1), text("stored"));
    QCOMPARE(row->getTextForColumn(Tree::CustomColumn2), text("shown"));
    QCOMPARE(row->getTextForColumn(Tree::CustomColumn3), text("Column Custom 3"));

    // Between a message and its rows, those still have the sub-messages of the former one, which are gone.
    QStringList between;
    stage.tree.addColumn(Tree::ValueColumn, true);
    const Answer reader(&stage.tree, SIGNAL(itemChanged(QTreeWidgetItem*, int)),
                        [&] { between << row->child(2)->child(0)->text(1); });
    stage.send("POSE x=3 sub=(value=2)");
    QCOMPARE(between.value(0), text("0 of 1, INNER"));
}

void tst_MessageTreeColumn::comesAndGoesAsOthersDo()
{
    Stage stage("POSE: x");
    stage.add("POSE");
    stage.tree.setColumns(columns("0,4,2"));
    QTemporaryFile file;
    QVERIFY(file.open());
    QSettings settings(file.fileName(), QSettings::IniFormat);
    stage.tree.saveSettings(settings);
    stage.tree.setColumns(columns("0"));
    stage.tree.setCustomColumn(Tree::CustomColumn1, new Notes);
    QAction* action = stage.tree.getToggleColumnActions().value(2);
    QVERIFY(action && !action->isChecked());
    QCOMPARE(action->text(), text("Notes && more"));
    stage.tree.restoreSettings(settings);
    QVERIFY(action->isChecked());
    QCOMPARE(rowText(stage.tree.headerItem()), text("Name | Notes & more | Value"));
    QCOMPARE(stage.tree.headerItem()->toolTip(1), text("All of them"));
    action->trigger();
    QCOMPARE(columnsText(stage.tree), text("0,2"));
    QCOMPARE(stage.tree.headerItem()->toolTip(1), QString());
    action->trigger();
    QCOMPARE(rowTexts(stage.tree), lines("POSE | No message | none\n  x |  | 0 of no, "));
    stage.tree.setCustomColumn(Tree::CustomColumn1, new Notes); // the former one goes
    stage.tree.setCustomColumn(Tree::CustomColumn1, nullptr);
    QCOMPARE(stage.tree.getToggleColumnActions().size(), 2);
    QCOMPARE(rowTexts(stage.tree), lines("POSE | No message | Column Custom 1\n  x |  | Column Custom 1"));
    QCOMPARE(rowText(stage.tree.headerItem()), text("Name | Value | Custom 1"));
    stage.tree.setCustomColumn(Tree::ValueColumn, new Notes);
    QCOMPARE(takeWarnings(), lines("MessageTreeWidget::setCustomColumn: 2 is no type of a custom column"));
    stage.tree.setCustomColumn(Tree::CustomColumn9, new Notes); // goes with the tree
}

void tst_MessageTreeColumn::isAskedWhereSomebodyLooks()
{
    QByteArray types;
    for (int i = 0; i < 500; ++i)
        types += "T" + QByteArray::number(i) + ": x; ";
    Stage stage(types.constData());
    int asked = 0;
    stage.tree.setCustomColumn(Tree::CustomColumn1, new Notes(&asked));
    stage.tree.setColumns(columns("0,2,4"));
    for (int i = 0; i < 500; ++i)
        stage.add("T" + QByteArray::number(i));
    showTree(&stage.tree);
    for (int turn = 0; turn < 2; ++turn) { // a row that was empty is measured
        QCoreApplication::processEvents();
        asked = 0;
        for (int i = 100; i < 500; ++i)
            stage.send("T" + QByteArray::number(i) + " x=" + QByteArray::number(turn));
    }
    QCoreApplication::processEvents();
    QCOMPARE(asked, 0);
    stage.send("T1 x=2");
    QVERIFY(waitFor([&] { return asked > 0; }));
    asked = 0;
    stage.tree.updateCustomColumn(Tree::CustomColumn1);
    QVERIFY(waitFor([&] { return asked > 0; }));
    QVERIFY2(asked < 400, qPrintable(QString::number(asked)));
}

/** A group for messages with one x. */
class GroupOfX : public MessageGroupTreeWidgetItem
{
public:
    GroupOfX(Stage* stage, const char* name)
        : MessageGroupTreeWidgetItem(&stage->tree, ::text(name))
    {
        stage->tree.addTopLevelItem(this);
        configureInTreeWidget();
    }
    void processMessage(const Message* message) override
    {
        if (message)
            addRow(message->getInfo());
        MessageGroupTreeWidgetItem::processMessage(message);
    }
    QString getValueText() override { return ::text("%1 types").arg(childCount()); }
};

void tst_MessageTreeColumn::groupsHandOnWhatTheyGet()
{
    Stage stage("A: x; B: y");
    stage.tree.setColumns(columns("0,2"));
    GroupOfX* group = new GroupOfX(&stage, "left");
    QVERIFY(!group->addRow(nullptr) && !group->findRow(nullptr));
    const TextRow rows[] = {{"A x=1", "left | 1 types\n  A\n    x | 1"},
                            {"B y=2", "left | 2 types\n  A\n    x | 1\n  B\n    y | 2"},
                            {"A x=3", "left | 2 types\n  A\n    x | 3\n  B\n    y | 2"}};
    checkRows(rows, std::ref(stage));
    QCOMPARE(group->addRow(stage.type("A")), group->findRow(stage.type("A")));
    group->setName(text("right"));
    QVERIFY(!group->isExpanded() && group->child(0)->isExpanded());
    group->setExpanded(true);
    stage.tree.setColumns(columns("2,0"));
    QVERIFY(group->isExpanded());
    stage.tree.processMessage(nullptr);
    QCOMPARE(rowTexts(stage.tree).first(), text("2 types | right"));
    QVERIFY(!group->findRow(stage.type("A"))->isMessageDisplayed());
}

void tst_MessageTreeColumn::groupsStandListeners()
{
    Stage stage("A: x");
    GroupOfX* group = new GroupOfX(&stage, "group");
    stage.send("A x=1");
    {
        const Answer remover(
            &stage.tree, SIGNAL(itemChanged(QTreeWidgetItem*, int)), [&] { delete group->child(0); }, 1);
        stage.send("A x=2");
    }
    QCOMPARE(group->childCount(), 0);
    {
        const Answer adder([&] { group->addRow(stage.type("A")); }); // told of the row's need, before it is there
        stage.send("A x=3");
    }
    QCOMPARE(group->childCount(), 1);
    const Answer remover(
        &stage.tree, SIGNAL(itemChanged(QTreeWidgetItem*, int)), [&] { delete group; }, 1);
    stage.send("A x=4");
    QCOMPARE(stage.tree.topLevelItemCount(), 0);
}

QTEST_MAIN(tst_MessageTreeColumn)

#include "tst_messagetreecolumn.moc"
