#include "desk.h"

#include "eventlogtablewidget.h"
#include "fieldvaluelabel.h"
#include "messageneedmanager.h"
#include "messagestatisticswidget.h"
#include "messagetreewidget.h"
#include "messagetreewidgetitem.h"
#include "messagewidget.h"
#include "pathexpression.h"
#include "pathexpressioncombobox.h"
#include "pathexpressionlabel.h"
#include "pathexpressionlineedit.h"
#include "pathexpressionlistwidget.h"

#include <QAction>
#include <QApplication>
#include <QHeaderView>
#include <QItemSelectionModel>

#include <cstdio>

static const int KeptHistory = 400;
static const int MaxDepth = 4;

// Opened before the settings are made of its name.
static QString openedName(QTemporaryFile* file)
{
    file->open();
    return file->fileName();
}

Desk::Desk(quint64 seed, bool verbose)
    : m_chance(seed)
    , m_world(&m_chance)
    , m_settings(openedName(&m_file), QSettings::IniFormat)
    , m_window(new QWidget)
    , m_page(new QWidget(m_window))
    , m_time(1000000)
    , m_verbose(verbose)
    , m_depth(0)
    , m_answers(0)
    , m_choiceDepth(0)
    , m_operations(0)
    , m_calm(m_chance.coin())
{
    m_window->resize(600, 500);
    m_streams.append(m_coordinator.addStream());
    for (int i = 0; i < 3; ++i) {
        m_expressions.append(new PathExpression(this));
        listenTo(m_expressions.last());
    }
    const QByteArray without = qgetenv("CORVEL_STRESS_WITHOUT");
    for (int i = without.contains("trees") ? 2 : 0; i < 2; ++i)
        addTree();
    addStatistics();
    addTable();
    if (!without.contains("forms"))
        addForm();
    addValueLabel();
    addEditors();
    connect(MessageNeedManager::getInstance(), SIGNAL(needsChanged()), SLOT(answer()));
    connect(&m_log, SIGNAL(newEntry(EventLog::Entry)), SLOT(answer()));
    connect(&m_log, SIGNAL(cleared()), SLOT(answer()));
    qApp->installEventFilter(this);
    m_window->show();
}

Desk::~Desk()
{
    m_answers = 0;
    emptyBin();
    qDeleteAll(m_shelf);
    Q_FOREACH (FieldValueLabel* label, m_valueLabels)
        label->setTimeOut(-1); // only so the timer goes
    // Not all of them are the window's children any more.
    qDeleteAll(m_valueLabels);
    qDeleteAll(m_trees);
    qDeleteAll(m_statistics);
    qDeleteAll(m_tables);
    qDeleteAll(m_forms);
    qDeleteAll(m_editors);
    delete m_window;
    QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
    resetProcess();
}

void Desk::listenTo(QAbstractItemView* view)
{
    connect(view->selectionModel(), SIGNAL(currentChanged(QModelIndex, QModelIndex)), SLOT(answerChoice()));
    connect(view->selectionModel(), SIGNAL(selectionChanged(QItemSelection, QItemSelection)), SLOT(answerChoice()));
    connect(view, SIGNAL(clicked(QModelIndex)), SLOT(answer()));
    QAbstractItemModel* model = view->model();
    const char* const changes[] = {SIGNAL(rowsInserted(QModelIndex, int, int)),
                                   SIGNAL(rowsRemoved(QModelIndex, int, int)), SIGNAL(layoutChanged()),
                                   SIGNAL(modelReset()), SIGNAL(dataChanged(QModelIndex, QModelIndex))};
    for (unsigned int i = 0; i < sizeof(changes) / sizeof(changes[0]); ++i)
        connect(model, changes[i], SLOT(answerGently()));
}

void Desk::listenTo(QTreeWidget* tree)
{
    const char* const changes[] = {SIGNAL(itemChanged(QTreeWidgetItem*, int)), SIGNAL(itemExpanded(QTreeWidgetItem*)),
                                   SIGNAL(itemCollapsed(QTreeWidgetItem*)), SIGNAL(itemSelectionChanged()),
                                   SIGNAL(currentItemChanged(QTreeWidgetItem*, QTreeWidgetItem*))};
    for (unsigned int i = 0; i < sizeof(changes) / sizeof(changes[0]); ++i)
        connect(tree, changes[i], SLOT(answer()));
    connect(tree->header(), SIGNAL(sortIndicatorChanged(int, Qt::SortOrder)), SLOT(answer()));
    connect(tree->header(), SIGNAL(sectionResized(int, int, int)), SLOT(answerGently()));
    listenTo(static_cast<QAbstractItemView*>(tree));
}

void Desk::listenTo(PathExpression* expression)
{
    connect(expression, SIGNAL(partsChanged(PathExpression::Parts)), SLOT(answer()));
    connect(expression, SIGNAL(expressionChanged(const QString&)), SLOT(answer()));
    connect(expression, SIGNAL(matchesMayHaveChanged()), SLOT(answer()));
}

void Desk::addTree()
{
    Tree* tree = new Tree(m_chance.percent(80) ? m_window : nullptr);
    m_trees.append(tree);
    Q_FOREACH (QAction* action, tree->getToggleColumnActions())
        connect(action, SIGNAL(toggled(bool)), SLOT(answer()));
    for (int i = 0; i < 3; ++i)
        addRow(tree);
    listenTo(tree);
    if (m_chance.coin())
        connect(&m_source, SIGNAL(newMessage(const Message*)), tree, SLOT(processMessage(const Message*)));
}

void Desk::addStatistics()
{
    m_statistics.append(new MessageStatisticsWidget(&m_coordinator, m_window));
    listenTo(m_statistics.last());
}

void Desk::addTable()
{
    EventLogTableWidget* table = new EventLogTableWidget(&m_log, m_window);
    m_tables.append(table);
    connect(table, SIGNAL(cellChanged(int, int)), SLOT(answer()));
    connect(table->model(), SIGNAL(rowsInserted(QModelIndex, int, int)), SLOT(answer()));
    listenTo(table);
}

void Desk::addForm()
{
    m_forms.append(new MessageWidget(m_window, m_world.pickInfo()));
    if (m_chance.coin())
        connect(&m_source, SIGNAL(newMessage(const Message*)), m_forms.last(), SLOT(processMessage(const Message*)));
}

void Desk::addValueLabel()
{
    const FieldInfo* field = m_world.getFields().isEmpty() ? nullptr : m_chance.pick(m_world.getFields());
    m_valueLabels.append(
        new FieldValueLabel(field, m_chance.coin() ? &m_source : nullptr, m_chance.coin(), m_chance.below(2) - 1));
    m_valueLabels.last()->setParent(m_window);
}

void Desk::addEditors()
{
    const PathExpression::Parts parts[] = {PathExpression::MessagePart, PathExpression::FormatPart,
                                           PathExpression::AllParts, PathExpression::FieldPart};
    PathExpression* expression = m_chance.pick(m_expressions);
    PathExpression* source = m_chance.pick(m_expressions);
    const PathExpression::Parts part = parts[m_chance.below(4)];
    m_editors << new PathExpressionLabel(expression, part, m_window)
              << new PathExpressionLineEdit(expression, part, m_window);
    connect(m_editors.last(), SIGNAL(textChanged(const QString&)), SLOT(answer()));
    m_editors << new PathExpressionListWidget(expression, part, source, m_window);
    listenTo(static_cast<QAbstractItemView*>(m_editors.last()));
    m_editors << new PathExpressionComboBox(expression, part, source, m_window);
    connect(m_editors.last(), SIGNAL(currentIndexChanged(int)), SLOT(answer()));
}

void Desk::note(const char* operation, int detail)
{
    ++m_operations;
    QString line = QString(m_depth * 2, QLatin1Char(' ')) + QLatin1String(operation);
    if (detail >= 0)
        line += QString::fromLatin1(" %1").arg(detail);
    if (m_verbose) {
        std::fprintf(stderr, "%6d %s\n", m_operations, line.toLocal8Bit().constData());
        std::fflush(stderr);
    }
    m_history.append(line);
    if (m_history.size() > KeptHistory)
        m_history.removeFirst();
}

void Desk::operate(int count)
{
    for (int i = 0; i < count; ++i) {
        m_answers = m_chance.percent(20) ? 0 : m_chance.below(12);
        ++m_depth;
        m_choiceDepth = 0;
        if (m_chance.percent(15))
            operateOnSources();
        else if (m_chance.percent(6))
            operateOnProcess();
        else
            operateOn(pickTarget());
        --m_depth;
        emptyBin();
    }
}

QObject* Desk::pickTarget()
{
    const int choice = m_chance.below(100);
    if (choice < 50)
        return m_chance.pick(m_trees);
    if (choice < 65)
        return m_chance.pick(m_statistics);
    if (choice < 70)
        return m_chance.pick(m_tables);
    if (choice < 76)
        return m_chance.pick(m_forms);
    if (choice < 81)
        return m_chance.pick(m_valueLabels);
    if (choice < 92)
        return m_chance.pick(m_editors);
    return m_chance.pick(m_expressions);
}

bool Desk::isOnDesk(QObject* object) const
{
    QWidget* widget = qobject_cast<QWidget*>(object);
    return m_trees.contains(qobject_cast<Tree*>(widget)) ||
           m_statistics.contains(qobject_cast<MessageStatisticsWidget*>(widget)) ||
           m_tables.contains(qobject_cast<EventLogTableWidget*>(widget)) || m_editors.contains(widget) ||
           m_expressions.contains(qobject_cast<PathExpression*>(object));
}

void Desk::answer()
{
    if (m_answers <= 0 || m_depth == 0 || m_depth > MaxDepth || m_chance.percent(70))
        return;
    --m_answers;
    ++m_depth;
    const int outerChoiceDepth = m_choiceDepth;
    m_choiceDepth = 0;
    // Mostly on the very object that signalled, which is where the trouble is; headers, models and actions are theirs.
    QObject* target = sender();
    while (target && !isOnDesk(target))
        target = target->parent();
    if (m_chance.percent(20))
        operateOnSources();
    else if (m_chance.percent(5))
        operateOnProcess();
    else if (target && m_chance.percent(75))
        operateOn(target);
    else
        operateOn(pickTarget());
    --m_depth;
    m_choiceDepth = outerChoiceDepth;
}

void Desk::answerChoice()
{
    // Also emitted while a model removes rows, when nobody may change it.
    if (m_choiceDepth == m_depth)
        answer();
}

void Desk::answerGently()
{
    if (m_answers <= 0 || m_depth == 0 || m_depth > MaxDepth || m_chance.percent(80))
        return;
    ++m_depth;
    readFrom(pickTarget());
    --m_depth;
}

void Desk::operateOn(QObject* target)
{
    QWidget* widget = qobject_cast<QWidget*>(target);
    if (widget && m_chance.percent(6)) {
        operateOnWidget(widget);
        return;
    }
    if (PathExpression* expression = qobject_cast<PathExpression*>(target))
        operateOnExpression(expression);
    else if (Tree* tree = qobject_cast<Tree*>(target))
        operateOnTree(tree);
    else if (MessageStatisticsWidget* statistics = qobject_cast<MessageStatisticsWidget*>(target))
        operateOnStatistics(statistics);
    else if (EventLogTableWidget* table = qobject_cast<EventLogTableWidget*>(target))
        operateOnTable(table);
    else if (MessageWidget* form = qobject_cast<MessageWidget*>(target))
        operateOnForm(form);
    else if (FieldValueLabel* label = qobject_cast<FieldValueLabel*>(target))
        operateOnValueLabel(label);
    else if (widget)
        operateOnEditor(widget);
    else
        operateOnSources();
}
