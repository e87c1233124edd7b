#include "corvel.h"
#include "eventlog.h"
#include "eventlogtablewidget.h"
#include "fieldinfo.h"
#include "fieldvaluelabel.h"
#include "formatinfo.h"
#include "messageinfo.h"
#include "messageneed.h"
#include "messagesource.h"
#include "messagestatistics.h"
#include "messagestatisticscoordinator.h"
#include "messagestatisticswidget.h"
#include "messagetreewidget.h"
#include "messagetreewidgetitem.h"
#include "messagewidget.h"
#include "pathexpression.h"
#include "pathexpressioncombobox.h"
#include "pathexpressionlabel.h"
#include "pathexpressionlineedit.h"
#include "pathexpressionlistwidget.h"
#include "shown.h"
#include "testbase.h"

#include <QLabel>

/** The widgets with a framework that shares nothing but the operations with this repository's. */
class tst_Binding : public TestBase
{
    Q_OBJECT

private Q_SLOTS:
    void initTestCase();
    void cleanupTestCase();
    void valueLabelAndForm();
    void messageTree();
    void statistics();
    void eventLog();
    void pathExpressions();

private:
    MessageInfo m_point;
    MessageInfo m_state;
    QList<FieldInfo> m_fields;
    Message m_innerMessage{&m_point};
    Message m_message{&m_state};
};

void tst_Binding::initTestCase()
{
    m_point.name = text("POINT");
    m_point.isSub = true;
    m_state.name = text("STATE");
    m_state.description = text("Where it is");
    m_fields << FieldInfo(&m_point, "x") << FieldInfo(&m_point, "y") << FieldInfo(&m_state, "speed")
             << FieldInfo(&m_state, "list", "r") << FieldInfo(&m_state, "name", "s")
             << FieldInfo(&m_state, "maybe", "o") << FieldInfo(&m_state, "where") << FieldInfo(&m_state, "secret", "c")
             << FieldInfo(&m_state, "detail", "2v");
    for (int i = 0; i < m_fields.size(); ++i) {
        const FieldInfo* const field = &m_fields.at(i);
        const bool inner = i < 2;
        (inner ? m_point : m_state).fields.append(field);
        Message& message = inner ? m_innerMessage : m_message;
        for (int value = field->isOptional() ? 0 : field->isRepeated() ? 2 : 1; value > 0; --value)
            message.values[field] << QString::number(10 * i + value);
    }
    m_fields[4].type.code = FieldType::UnsignedCharType;
    m_fields[6].type.code = FieldType::SubMessageType;
    m_fields[6].type.subMessageInfo = &m_point;
    m_message.values[&m_fields.at(6)] = QList<FieldValue>() << FieldValue(QString(), &m_innerMessage);
}

void tst_Binding::cleanupTestCase()
{
    const MemLeakTracer* const tracer = MemLeakTracer::getInstance();
    QCOMPARE(int(tracer->objects.size()), 18); // every class reports its objects
    QCOMPARE(tracer->asked.count(text("corvelgui/FieldValueLabel")), 1);
    QVERIFY(MessageNeed::needs.isEmpty());
    QCOMPARE(m_message.references + m_innerMessage.references, 2);
}

void tst_Binding::valueLabelAndForm()
{
    MessageSource source;
    FieldValueLabel label(m_state.fields.at(1), &source, false, -1);
    QCOMPARE(MessageNeed::needs.values(), QList<QVector<const MessageInfo*>>()
                                              << QVector<const MessageInfo*>(1, &m_state));
    QCOMPARE(label.text(), text("N/A"));
    Q_EMIT source.newMessage(&m_message);
    QCOMPARE(label.text(), text("32 [...]"));

    MessageWidget form(nullptr, &m_state);
    form.processMessage(&m_message);
    QStringList texts(form.windowTitle());
    Q_FOREACH (const QLabel* shown, form.findChildren<QLabel*>())
        texts += shown->text();
    texts.sort();
    QCOMPARE(texts.join(text(" ")),
             text("2 letters <21> <32> [...] <71> <81> <> N/A STATE detail list maybe name secret "
                  "speed where"));
}

void tst_Binding::messageTree()
{
    MessageTreeWidget tree(nullptr);
    MessageTreeWidgetItem* row = new MessageTreeWidgetItem(&tree, &m_state);
    tree.addTopLevelItem(row);
    tree.reconfigureTopLevelAbstractMessageTreeWidgetItems();
    QVERIFY(MessageNeed::needs.values().contains(QVector<const MessageInfo*>(1, &m_state)));
    tree.processMessage(&m_message);
    QCOMPARE(m_message.references, 2); // the row has it
    const QStringList open = lines("speed | T17 | <21>\nlist |  | 2 repeated values\n  list [0] | T17 | <32>\n"
                                   "  list [1] | T17 | <31>\nname | string | 2 letters\n"
                                   "maybe | T17 | No value for optional field\nwhere | T6\n  x | T17 | <1>\n"
                                   "  y | T17 | <11>");
    const QString detail = text("detail | T17 | <81>");
    QCOMPARE(rowTexts(row), lines("Hidden data") + open + QStringList(detail));
    Corvel::showConfidential = true;
    tree.setShowPrimaryFieldsOnly(true);
    QCOMPARE(rowTexts(row), open + lines("secret | T17 | <71>"));
    Corvel::showConfidential = false;
}

void tst_Binding::statistics()
{
    const FormatInfo format = {text("mini")};
    MessageStatistics counted(&format, text("STATE"));
    counted.count = 77;
    counted.regular = true;
    counted.lastInterval = 20;
    counted.setInterval(20, 76);
    counted.unknownInterval = 1;
    counted.numberOfGaps = 1;
    counted.addGap(1000, 3, 20);
    MessageStatisticsCoordinator coordinator;
    coordinator.statistics << &counted;
    coordinator.eventCounts[CorvelEvent::CrcError] = 9;
    MessageStatisticsWidget widget(&coordinator, nullptr);
    widget.updateTree();
    QCOMPARE(rowTexts(widget), lines("CRC Errors | 9\nmini\n  STATE | 77 | every 20 ms | 1 (0 epochs)\n    Gaps\n"
                                     "      t1000 | 3 | 60 ms\n    Rates/Intervals\n      Unknown interval/rate | 1\n"
                                     "      every 20 ms | 76"));
}

void tst_Binding::eventLog()
{
    EventLog log;
    log.add(QDateTime(), text("before"));
    EventLogTableWidget table(&log, nullptr);
    log.add(QDateTime(QDate(2020, 2, 29), QTime(12, 0)), text("after"));
    QCOMPARE(table.rowCount(), 2);
    QCOMPARE(table.item(0, 1)->text() + table.item(1, 1)->text(), text("beforeafter"));
    log.clear();
    QCOMPARE(table.rowCount(), 0);
}

void tst_Binding::pathExpressions()
{
    const PathExpression::Parts all = PathExpression::AllParts;
    PathExpression expression(nullptr);
    PathExpression source(nullptr);
    source.matches = lines("x\ny");
    expression.setupToMatchUnique(&m_fields.at(1));
    PathExpressionLabel label(&expression, all, nullptr);
    PathExpressionLineEdit edit(&expression, all, nullptr);
    PathExpressionListWidget list(&expression, all, &source, nullptr);
    PathExpressionComboBox box(&expression, all, &source, nullptr);
    QCOMPARE(entriesText(list) + text("; ") + entriesText(box), text("x, <y>; All, x, <y>"));
    list.setCurrentRow(0);
    QCOMPARE(label.text() + edit.text() + box.currentText(), text("xxx"));
    box.setCurrentIndex(0);
    QVERIFY(expression.isWildCard(all));
    QTest::keyClick(&edit, 'z');
    QCOMPARE(label.text(), text("*z..."));
}

QTEST_MAIN(tst_Binding)

#include "tst_binding.moc"
