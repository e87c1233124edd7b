#include "eventlog.h"
#include "eventlogtablewidget.h"
#include "fieldvaluelabel.h"
#include "messagesource.h"
#include "messagestatistics.h"
#include "messagestatisticscoordinator.h"
#include "messagestatisticswidget.h"
#include "messagewidget.h"
#include "pathexpressioncombobox.h"
#include "pathexpressionlabel.h"
#include "pathexpressionlineedit.h"
#include "pathexpressionlistwidget.h"
#include "pathwidgetfixtures.h"
#include "testbase.h"
#include "treefixtures.h"

#include <QSettings>
#include <QTemporaryFile>

#include <memory>

/** What widgets borrow may go before them, as the members of a window go before its children. */
class tst_Borrowed : public TestBase
{
    Q_OBJECT

private Q_SLOTS:
    void typesThatGoLeaveTheirViewsEmpty();
    void rowsMayGoWithTheirType();
    void expressionsThatGoLeaveTheirEditorsEmpty();
    void formatsThatGoLeaveNoOptions();
    void statisticsAndLogThatGoLeaveTheirViews();
};

static const char s_types[] =
    "INNER-: deep.r; POSE: x[m] many.r sub=INNER parts.r=INNER name.s flags{first last}; FAR: y";
static const char s_pose[] =
    "POSE x=2 many=1:30 sub=(deep=1:3) parts=(deep=4),(deep=5) name='abc' flags=1 first=1 last=0";

void tst_Borrowed::typesThatGoLeaveTheirViewsEmpty()
{
    std::unique_ptr<Types> types(new Types(s_types));
    const Types staying("STAY: z flag{part}");
    Tree tree;
    addRow(&tree, types->type("POSE"));
    addRow(&tree, staying.type("STAY"));
    addRow(&tree, types->type("FAR"));
    FieldValueLabel label(types->field("x"), nullptr, true, -1);
    FieldValueLabel stayingLabel(staying.field("z"), nullptr, true, -1);
    MessageWidget form(nullptr, types->type("POSE"));
    const MessageReference pose(types->message(s_pose));
    tree.processMessage(pose.get());
    label.processMessage(pose.get());
    form.processMessage(pose.get());
    showTree(&tree);
    tree.expandAll();
    tree.setCurrentItem(tree.topLevelItem(0)->child(3)->child(1)->child(0));
    QCOMPARE(tree.currentItem()->text(0), text("deep"));
    QCOMPARE(label.text(), text("2 m"));

    types.reset();
    QCOMPARE(pose.get()->getReferenceCount(), 1);
    const QString empty = text("No message type set | Message | No message");
    const QString staysEmpty =
        text("\nSTAY | Message | No message\n  z | double\n  flag | double\n    part | double\n");
    QCOMPARE(rowTexts(tree).join(text("\n")), empty + staysEmpty + empty);
    QCOMPARE(label.text() + text(", ") + form.windowTitle(), text("N/A, No message type set"));
    QVERIFY(!label.getFieldInfo() && !form.getMessageInfo() && form.children().isEmpty());
    QCOMPARE(MessageNeedManager::getInstance()->getNeededMessageInfos(), QVector<const MessageInfo*>()
                                                                             << staying.type("STAY"));

    QTemporaryFile file;
    QVERIFY(file.open());
    QSettings settings(file.fileName(), QSettings::IniFormat);
    tree.saveExpansionState(settings);
    QCOMPARE(settings.value("expandedMessages").toStringList(), QStringList("\\0/STAY"));
    Q_FOREACH (const QString& field, settings.value("expandedFields").toStringList())
        QVERIFY2(field.startsWith("\\0/STAY/"), qPrintable(field));
    tree.selectAll();
    tree.reconfigureTopLevelAbstractMessageTreeWidgetItems();
    tree.resizeColumns();
    showTree(&tree);
    const MessageReference message(staying.message("STAY z=3 flag=4 part=5"));
    tree.processMessage(message.get());
    label.processMessage(message.get());
    stayingLabel.processMessage(message.get());
    form.processMessage(message.get());
    QCOMPARE(rowText(tree.topLevelItem(1)->child(0)), text("z | double | 3"));
    QCOMPARE(label.text() + text(", ") + stayingLabel.text(), text("N/A, 3"));

    const Types later(s_types);
    tree.processMessage(later.message(s_pose).get());
    QCOMPARE(rowText(tree.topLevelItem(0)), empty);
    dynamic_cast<MessageTreeWidgetItem*>(tree.topLevelItem(0))->setMessageInfo(later.type("FAR"));
    QCOMPARE(rowText(tree.topLevelItem(0)), text("FAR | Message | No message"));
}

void tst_Borrowed::rowsMayGoWithTheirType()
{
    std::unique_ptr<Types> types(new Types("NODE: next.r=NODE x"));
    Tree tree;
    for (int i = 0; i < 5; ++i)
        addRow(&tree, types->type("NODE"));
    const MessageReference message(types->message("NODE next=(next=(x=1) x=2),(x=3) x=4"));
    tree.processMessage(message.get());
    QCOMPARE(message.get()->getReferenceCount(), 6);
    showTree(&tree);
    // Whoever hears of a change deletes a row, be it one that shows the end already or not.
    const Answer answer(&tree, SIGNAL(itemChanged(QTreeWidgetItem*, int)), [&tree] {
        delete tree.topLevelItem(tree.topLevelItemCount() - 1);
        tree.reconfigureTopLevelAbstractMessageTreeWidgetItems();
    });
    types.reset();
    QCOMPARE(message.get()->getReferenceCount(), 1);
    QVERIFY(tree.topLevelItemCount() < 4);
    Q_FOREACH (const QString& row, rowTexts(tree))
        QCOMPARE(row, text("No message type set | Message | No message"));
}

void tst_Borrowed::expressionsThatGoLeaveTheirEditorsEmpty()
{
    const LetterFormat format;
    std::unique_ptr<PathExpression> expression(new PathExpression);
    std::unique_ptr<PathExpression> source(new PathExpression);
    expression->setString("f/B");
    const Parts type(QFlag(2));
    PathExpressionLabel label(expression.get(), type, nullptr);
    PathExpressionLineEdit edit(expression.get(), type, nullptr);
    PathExpressionListWidget list(expression.get(), type, source.get(), nullptr);
    PathExpressionListWidget listOfOwn(expression.get(), type, expression.get(), nullptr);
    PathExpressionComboBox box(expression.get(), type, source.get(), nullptr);
    PathExpressionComboBox lone(expression.get(), type, expression.get(), nullptr);
    const auto shown = [&] {
        return QStringList() << label.text() << edit.text() << entriesText(list) << entriesText(listOfOwn)
                             << entriesText(box) << entriesText(lone);
    };
    QCOMPARE(shown(), lines("B\nB\nA, <B>, C\n<B>\nAll, A, <B>, C\nAll, <B>"));

    listOfOwn.setOptionsSourcePathExpression(source.get()); // borrows the other for one thing still
    listOfOwn.setOptionsSourcePathExpression(expression.get());
    lone.setOptionsSourcePathExpression(nullptr);
    expression.reset();
    const char none[] = "No path expression set!\nNo path expression set!";
    const QStringList withoutExpression = lines(none) << "A, B, C"
                                                      << "Null options source path expression set!"
                                                      << "<Null path expression set!>"
                                                      << "<Null path expression set!>";
    QCOMPARE(shown(), withoutExpression);
    QVERIFY(!label.getPathExpression() && !lone.getPathExpression() && !listOfOwn.getOptionsSourcePathExpression());
    QTest::keyClick(&edit, Qt::Key_X);
    QTest::keyClick(&edit, Qt::Key_Return);
    list.setCurrentRow(1);
    label.setParts(PathExpression::AllParts);
    source.reset();
    QCOMPARE(entriesText(list), text("Null options source path expression set!"));
    box.setParts(PathExpression::AllParts);
    PathExpression later;
    box.setPathExpression(&later);
    QCOMPARE(entriesText(box), text("<Null options source path expression set!>"));
}

void tst_Borrowed::formatsThatGoLeaveNoOptions()
{
    std::unique_ptr<LetterFormat> format(new LetterFormat);
    PathExpression expression;
    PathExpressionListWidget list(&expression, Parts(QFlag(2)), nullptr, nullptr);
    PathExpressionComboBox box(&expression, Parts(QFlag(2)), nullptr, nullptr);
    QCOMPARE(entriesText(list), text("A, B, C"));
    format.reset();
    QCOMPARE(entriesText(list) + text("; ") + entriesText(box), text("No options; <No options>"));
}

void tst_Borrowed::statisticsAndLogThatGoLeaveTheirViews()
{
    const Types types("A: x; B: x");
    std::unique_ptr<MessageStatisticsCoordinator> coordinator(new MessageStatisticsCoordinator);
    std::unique_ptr<EventLog> log(new EventLog);
    MessageStatisticsWidget widget(coordinator.get(), nullptr);
    EventLogTableWidget table(log.get(), nullptr);
    const int stream = coordinator->addStream();
    for (int row = 0; row < 2; ++row)
        coordinator
            ->findOrCreate(stream, row,
                           MessageStatisticsCoordinator::Origin(types.type(row ? text("B") : text("A")), 0, QString()))
            ->addReception(1000);
    coordinator->countEvent(CorvelEvent::CrcError);
    log->append(CorvelEvent(CorvelEvent::CrcError, text("wrong")), QDateTime());
    widget.updateTree();
    QCOMPARE(widget.topLevelItemCount(), 2);
    coordinator.reset();
    QCOMPARE(rowTexts(widget), QStringList());
    widget.updateTree();
    widget.updateSome();
    log.reset();
    QCOMPARE(table.item(0, 1)->text(), text("wrong")); // it was copied
}

QTEST_MAIN(tst_Borrowed)

#include "tst_borrowed.moc"
