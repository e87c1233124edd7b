#ifndef DESK_H
#define DESK_H

#include "eventlog.h"
#include "messagesource.h"
#include "messagestatisticscoordinator.h"
#include "world.h"

#include <QObject>
#include <QPointer>
#include <QSettings>
#include <QStringList>
#include <QTemporaryFile>

#include <functional>
#include <vector>

class AbstractMessageTreeWidgetItem;
class EventLogTableWidget;
class FieldValueLabel;
class MessageStatisticsWidget;
class MessageTreeWidget;
class MessageTreeWidgetItem;
class MessageWidget;
class PathExpression;
class QAbstractItemView;
class QTreeWidget;
class QTreeWidgetItem;
class QWidget;

/**
 * Every widget of the library, some twice, on random types and with random contents, and listeners that answer what
 * the widgets signal with random operations on the same widgets.
 *
 * What a listener may not do is what Qt forbids: delete the sender of the signal that it answers, or change a model
 * from within that model's own signals. Such objects are put into a bin and go when the operation is over.
 */
class Desk : public QObject
{
    Q_OBJECT

public:
    /** @param verbose  prints every operation before it is done */
    Desk(quint64 seed, bool verbose);
    virtual ~Desk();

    /** Does @p count random operations. */
    void operate(int count);

    /** Compares what the widgets show with what new ones show; complaints, none when all is well. */
    QStringList check();

    /** How many operations there were, those of listeners included. */
    int getOperationCount() const { return m_operations; }
    /** The last operations, newest last, indented by how deep they were inside of others. */
    QStringList getHistory() const { return m_history; }

    /** Closes the boxes that come up. */
    bool eventFilter(QObject* object, QEvent* event);

private Q_SLOTS:
    void answer();
    void answerGently();
    void answerChoice();
    void answerItemChoice();

private:
    Q_DISABLE_COPY(Desk)

    typedef MessageTreeWidget Tree;

    void addTree();
    void addStatistics();
    void addTable();
    void addForm();
    void addValueLabel();
    void addEditors();
    void listen(QObject* sender, const char* slot, const std::vector<const char*>& signalsOfSender);
    void listenTo(QAbstractItemView* view);
    void listenTo(QTreeWidget* tree);
    void listenTo(PathExpression* expression);

    typedef std::vector<std::function<void()>> Operations;

    void note(const char* operation, int detail = -1);
    /** A number below @p end, which is noted behind @p what unless that is null. */
    int choose(const char* what, int end);
    /** Does the operation with the number @p choice, or the last one. */
    static void perform(int choice, const Operations& operations);
    void doOneOf(const char* what, int end, const Operations& operations) { perform(choose(what, end), operations); }
    void operateOn(QObject* target);
    QObject* pickTarget();
    void putIntoBin(QWidget* widget);
    void emptyBin();

    void operateOnWidget(QWidget* widget);
    void operateOnItemView(QAbstractItemView* view);
    void operateOnItems(QTreeWidget* tree);
    void operateOnTree(Tree* tree);
    void operateOnTreeColumns(Tree* tree);
    void operateOnRows(Tree* tree);
    void operateOnRow(MessageTreeWidgetItem* row);
    void operateOnStatistics(MessageStatisticsWidget* statistics);
    void operateOnStatisticsCells(MessageStatisticsWidget* statistics);
    void operateOnTable(EventLogTableWidget* table);
    void operateOnForm(MessageWidget* form);
    void operateOnValueLabel(FieldValueLabel* label);
    void operateOnEditor(QWidget* editor);
    void operateOnExpression(PathExpression* expression);
    void operateOnSources();
    void operateOnProcess();
    void resetProcess();
    void readFrom(QObject* target);
    void replace(QWidget* widget);

    void receive(int stream);
    MessageTreeWidgetItem* pickRow(Tree* tree);
    QTreeWidgetItem* pickItem(QTreeWidget* tree);
    void addRow(Tree* tree);
    void takeRow(Tree* tree);
    QString pickPath();

    /** The widgets of one kind. */
    template <typename Kind>
    QList<Kind*> all() const
    {
        QList<Kind*> widgets;
        Q_FOREACH (QWidget* widget, m_widgets)
            if (Kind* ofKind = qobject_cast<Kind*>(widget))
                widgets.append(ofKind);
        return widgets;
    }

    QStringList checkTree(Tree* tree, const QString& when);
    QStringList checkForm(MessageWidget* form);
    QStringList checkStatistics(MessageStatisticsWidget* statistics);
    QStringList checkTable(EventLogTableWidget* table);
    QStringList checkEditors();

    Chance m_chance;
    World m_world;
    QTemporaryFile m_file;
    QSettings m_settings;
    QWidget* m_window;
    QWidget* m_page; // another parent
    MessageSource m_source;
    MessageStatisticsCoordinator m_coordinator;
    QList<int> m_streams;
    qint64 m_time = 1000000; // of the messages counted, in microseconds
    EventLog m_log;
    EventLog m_otherLog;

    QList<QWidget*> m_widgets;
    QList<QWidget*> m_editors;             // those of them that edit or show an expression
    QList<MessageTreeWidgetItem*> m_shelf; // rows that are in no tree
    QList<PathExpression*> m_expressions;
    QList<QPointer<QWidget>> m_bin;
    QList<QTreeWidgetItem*> m_itemBin;

    bool m_verbose;
    int m_depth = 0;               // how many operations are under way
    int m_answers = 0;             // that listeners may still give
    int m_choiceDepth = 0;         // of the last operation that selects something
    bool m_rowsAreRemoved = false; // perhaps
    int m_operations = 0;
    int m_eventLoops = 0; // that are running, one in another
    QStringList m_history;
    const bool m_calm; // does nothing that rows follow only when they are configured anew
};

#endif
