#include "fieldinfo.h"
#include "fieldvaluelabel.h"
#include "message.h"
#include "messageinfo.h"
#include "messagesource.h"
#include "messagewidget.h"
#include "minimodel.h"

#if __has_include("messagetreewidget.h")
#include "messagetreewidget.h"
#include "messagetreewidgetitem.h"
#endif
#if __has_include("messagestatisticswidget.h")
#include "messagestatistics.h"
#include "messagestatisticscoordinator.h"
#include "messagestatisticswidget.h"
#endif
#if __has_include("eventlogtablewidget.h")
#include "eventlog.h"
#include "eventlogtablewidget.h"
#endif
#if __has_include("pathexpressionlabel.h")
#include "pathexpression.h"
#include "pathexpressionlabel.h"
#include "pathexpressionlineedit.h"
#endif

#include <QGridLayout>
#include <QtTest>

#include <memory>

extern QStringList g_asked;
extern QStringList g_assertions;
extern QMap<QString, int> g_objects;

/** The widgets with a framework that shares nothing but the operations with this repository's. */
class tst_Binding : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void initTestCase();
    void cleanup();
    void cleanupTestCase();
    void valueLabel();
    void messageForm();
    void messageTree();
    void statistics();
    void eventLog();
    void pathExpressions();

private:
    MessageInfo* m_point;
    MessageInfo* m_state;

    Message* newState();
};

static QString text(const char* latin1)
{
    return QString::fromLatin1(latin1);
}

void tst_Binding::initTestCase()
{
    m_point = MiniModel::newInfo("POINT", QStringList() << text("x") << text("y"));
    m_state = MiniModel::newInfo("STATE", QStringList()
                                              << text("speed") << text("list:r") << text("name:s") << text("maybe:o")
                                              << text("where") << text("secret:c") << text("detail:2v"));
    MiniModel::setSubType(m_state, 4, m_point);
}

void tst_Binding::cleanup()
{
    for (auto account = g_objects.constBegin(); account != g_objects.constEnd(); ++account)
        QVERIFY2(account.value() == 0, qPrintable(account.key()));
    QVERIFY(!g_objects.isEmpty());
    QVERIFY(MiniModel::needs.isEmpty());
    QCOMPARE(MiniModel::messagesAlive, 0);
    QCOMPARE(g_assertions, QStringList());
}

void tst_Binding::cleanupTestCase()
{
    QCOMPARE(g_asked.count(text("corvelgui/FieldValueLabel")), 1);
    MiniModel::deleteAllInfos();
}

Message* tst_Binding::newState()
{
    static Message* const point = MiniModel::newMessage(m_point, {{1}, {2}});
    static const bool counted = --MiniModel::messagesAlive >= 0; // lives as long as the program
    Q_UNUSED(counted);
    return MiniModel::newMessage(
        m_state, {{3.5}, {7, 8}, {text("a"), text("b")}, {}, {MiniModel::fromMessage(point)}, {5}, {6}});
}

void tst_Binding::valueLabel()
{
    MessageSource source;
    FieldValueLabel speed(m_state->getFieldInfos().at(0), &source, true, -1);
    FieldValueLabel list(m_state->getFieldInfos().at(1), &source, false, -1);
    QCOMPARE(MiniModel::needs.size(), 2);
    QCOMPARE(MiniModel::needs.first(), QVector<const MessageInfo*>(1, m_state));
    QCOMPARE(speed.text(), text("N/A"));
    Message* message = newState();
    Q_EMIT source.newMessage(message);
    QCOMPARE(speed.text(), text("<3.5>"));
    QCOMPARE(list.text(), text("7 [...]"));
    message->removeReference();
}

void tst_Binding::messageForm()
{
    MessageWidget form(nullptr, m_state);
    Message* message = newState();
    form.processMessage(message);
    QCOMPARE(form.windowTitle(), text("STATE"));
    QStringList texts;
    const QGridLayout* grid = qobject_cast<QGridLayout*>(form.layout());
    for (int row = 0; row < grid->rowCount(); ++row)
        for (int column = 0; column < 2; ++column)
            texts += qobject_cast<QLabel*>(grid->itemAtPosition(row, column)->widget())->text();
    QCOMPARE(texts.mid(0, 8).join(text(" ")), text("speed <3.5> list <7> [...] name ab maybe N/A"));
    message->removeReference();
}

#if __has_include("messagetreewidget.h")
static QStringList rowTexts(const QTreeWidgetItem* row, const QString& indent = QString())
{
    QStringList texts;
    texts.append(indent + row->text(0) + text(" = ") + row->text(1));
    for (int i = 0; i < row->childCount(); ++i)
        if (!row->child(i)->isHidden())
            texts += rowTexts(row->child(i), indent + text("  "));
    return texts;
}

void tst_Binding::messageTree()
{
    MessageTreeWidget tree(nullptr);
    tree.setColumns(QVector<MessageTreeWidget::ColumnType>()
                    << MessageTreeWidget::NameColumn << MessageTreeWidget::ValueColumn);
    MessageTreeWidgetItem* row = new MessageTreeWidgetItem(&tree, m_state);
    tree.addTopLevelItem(row);
    tree.reconfigureTopLevelAbstractMessageTreeWidgetItems();
    QVERIFY(MiniModel::needs.values().contains(QVector<const MessageInfo*>(1, m_state)));
    Message* message = newState();
    tree.processMessage(message);
    message->removeReference();
    QCOMPARE(MiniModel::messagesAlive, 1); // the row has it
    const QStringList texts = rowTexts(row);
    QVERIFY2(texts.contains(text("  speed = <3.5>")), qPrintable(texts.join(text("\n"))));
    QVERIFY2(texts.contains(text("  name = ab")), qPrintable(texts.join(text("\n"))));
    QVERIFY2(texts.filter(text("<8>")).size() == 1, qPrintable(texts.join(text("\n"))));
    QVERIFY2(texts.contains(text("    y = <2>")), qPrintable(texts.join(text("\n"))));
    QVERIFY2(texts.filter(text("secret")).isEmpty(), qPrintable(texts.join(text("\n"))));

    MiniModel::showConfidential = true;
    tree.reconfigureTopLevelAbstractMessageTreeWidgetItems();
    QVERIFY(rowTexts(row).contains(text("  secret = <5>")));
    MiniModel::showConfidential = false;
}
#else
void tst_Binding::messageTree() {}
#endif

#if __has_include("messagestatisticswidget.h")
void tst_Binding::statistics()
{
    MessageStatisticsCoordinator coordinator;
    const std::unique_ptr<MessageStatistics> counted(MiniModel::addStatistics(&coordinator, "STATE", 77));
    MessageStatisticsWidget widget(&coordinator, nullptr);
    widget.updateTree();
    const QList<QTreeWidgetItem*> rows = widget.findItems(text("STATE"), Qt::MatchExactly | Qt::MatchRecursive);
    QCOMPARE(int(rows.size()), 1);
    QVERIFY(rows.at(0)->parent());
    QCOMPARE(rows.at(0)->parent()->text(0), text("mini"));
    QStringList texts;
    for (int column = 0; column < widget.columnCount(); ++column)
        texts.append(rows.at(0)->text(column));
    QVERIFY2(texts.contains(text("77")), qPrintable(texts.join(text(" "))));
    QVERIFY2(texts.contains(text("every 20")), qPrintable(texts.join(text(" "))));
}
#else
void tst_Binding::statistics() {}
#endif

#if __has_include("eventlogtablewidget.h")
void tst_Binding::eventLog()
{
    EventLog log;
    MiniModel::log(&log, QDateTime(), "before");
    EventLogTableWidget table(&log, nullptr);
    MiniModel::log(&log, QDateTime(QDate(2020, 2, 29), QTime(12, 0)), "after");
    QCOMPARE(table.rowCount(), 2);
    QVERIFY(!table.findItems(text("before"), Qt::MatchContains).isEmpty());
    QVERIFY(!table.findItems(text("after"), Qt::MatchContains).isEmpty());
    MiniModel::clear(&log);
    QCOMPARE(table.rowCount(), 0);
}
#else
void tst_Binding::eventLog() {}
#endif

#if __has_include("pathexpressionlabel.h")
void tst_Binding::pathExpressions()
{
    PathExpression expression(nullptr);
    expression.setupToMatchUnique(m_point->getFieldInfos().at(1));
    PathExpressionLabel label(nullptr);
    label.setPathExpression(&expression);
    PathExpressionLineEdit edit(nullptr);
    edit.setPathExpression(&expression);
    QCOMPARE(label.text(), text("mini|POINT|y"));
    expression.setString(text("mini|STATE|speed"));
    QCOMPARE(label.text(), text("mini|STATE|speed"));
    QCOMPARE(edit.text(), text("mini|STATE|speed"));
}
#else
void tst_Binding::pathExpressions() {}
#endif

QTEST_MAIN(tst_Binding)

#include "tst_binding.moc"
