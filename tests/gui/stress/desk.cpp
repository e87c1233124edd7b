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
    , m_verbose(verbose)
    , m_calm(m_chance.coin())
{
    m_window->resize(600, 500);
    m_streams.append(m_coordinator.addStream());
    for (int i = 0; i < 3; ++i) {
        m_expressions.append(new PathExpression(this));
        listen(m_expressions.last(), SLOT(answer()),
               {SIGNAL(partsChanged(PathExpression::Parts)), SIGNAL(expressionChanged(const QString&)),
                SIGNAL(matchesMayHaveChanged())});
    }
    addTree();
    addTree();
    addStatistics();
    addTable();
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
    Q_FOREACH (FieldValueLabel* label, all<FieldValueLabel>())
        label->setTimeOut(-1); // only so the timer goes
    qDeleteAll(m_widgets);     // not all of them are the window's children any more
    delete m_window;
    QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
    resetProcess();
}

void Desk::listen(QObject* sender, const char* slot, const std::vector<const char*>& signalsOfSender)
{
    for (std::size_t i = 0; i < signalsOfSender.size(); ++i)
        connect(sender, signalsOfSender.at(i), slot);
}

void Desk::listenTo(QAbstractItemView* view)
{
    listen(
        view->selectionModel(), SLOT(answerChoice()),
        {SIGNAL(currentChanged(QModelIndex, QModelIndex)), SIGNAL(selectionChanged(QItemSelection, QItemSelection))});
    listen(view, SLOT(answer()), {SIGNAL(clicked(QModelIndex))});
    listen(view->model(), SLOT(answerGently()),
           {SIGNAL(rowsInserted(QModelIndex, int, int)), SIGNAL(rowsRemoved(QModelIndex, int, int)),
            SIGNAL(layoutChanged()), SIGNAL(modelReset()), SIGNAL(dataChanged(QModelIndex, QModelIndex))});
}

void Desk::listenTo(QTreeWidget* tree)
{
    listen(tree, SLOT(answer()),
           {SIGNAL(itemChanged(QTreeWidgetItem*, int)), SIGNAL(itemExpanded(QTreeWidgetItem*)),
            SIGNAL(itemCollapsed(QTreeWidgetItem*))});
    listen(tree, SLOT(answerItemChoice()),
           {SIGNAL(itemSelectionChanged()), SIGNAL(currentItemChanged(QTreeWidgetItem*, QTreeWidgetItem*))});
    listen(tree->header(), SLOT(answer()), {SIGNAL(sortIndicatorChanged(int, Qt::SortOrder))});
    listen(tree->header(), SLOT(answerGently()), {SIGNAL(sectionResized(int, int, int))});
    listenTo(static_cast<QAbstractItemView*>(tree));
}

void Desk::addTree()
{
    Tree* tree = new Tree(m_chance.percent(80) ? m_window : nullptr);
    m_widgets.append(tree);
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
    MessageStatisticsWidget* statistics = new MessageStatisticsWidget(&m_coordinator, m_window);
    m_widgets.append(statistics);
    listenTo(statistics);
}

void Desk::addTable()
{
    EventLogTableWidget* table = new EventLogTableWidget(&m_log, m_window);
    m_widgets.append(table);
    listen(table, SLOT(answer()), {SIGNAL(cellChanged(int, int))});
    listen(table->model(), SLOT(answer()), {SIGNAL(rowsInserted(QModelIndex, int, int))});
    listenTo(table);
}

void Desk::addForm()
{
    m_widgets.append(new MessageWidget(m_window, m_world.pickInfo()));
    if (m_chance.coin())
        connect(&m_source, SIGNAL(newMessage(const Message*)), m_widgets.last(), SLOT(processMessage(const Message*)));
}

void Desk::addValueLabel()
{
    const FieldInfo* field = m_chance.pick(m_world.getFields());
    m_widgets.append(
        new FieldValueLabel(field, m_chance.coin() ? &m_source : nullptr, m_chance.coin(), m_chance.below(2) - 1));
    m_widgets.last()->setParent(m_window);
}

void Desk::addEditors()
{
    const PathExpression::Parts parts[] = {PathExpression::MessagePart, PathExpression::FormatPart,
                                           PathExpression::AllParts, PathExpression::FieldPart};
    PathExpression* expression = m_chance.pick(m_expressions);
    PathExpression* source = m_chance.pick(m_expressions);
    const PathExpression::Parts part = parts[m_chance.below(4)];
    PathExpressionLineEdit* edit = new PathExpressionLineEdit(expression, part, m_window);
    PathExpressionListWidget* list = new PathExpressionListWidget(expression, part, source, m_window);
    PathExpressionComboBox* box = new PathExpressionComboBox(expression, part, source, m_window);
    listen(edit, SLOT(answer()), {SIGNAL(textChanged(const QString&))});
    listenTo(list);
    listen(box, SLOT(answer()), {SIGNAL(currentIndexChanged(int))});
    m_editors << new PathExpressionLabel(expression, part, m_window) << edit << list << box;
    m_widgets += m_editors;
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

int Desk::choose(const char* what, int end)
{
    const int choice = m_chance.below(end);
    if (what)
        note(what, choice);
    return choice;
}

void Desk::perform(int choice, const Operations& operations)
{
    operations.at(qMin(static_cast<std::size_t>(choice), operations.size() - 1))();
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
        return m_chance.pick(all<Tree>());
    if (choice < 65)
        return m_chance.pick(all<MessageStatisticsWidget>());
    if (choice < 70)
        return m_chance.pick(all<EventLogTableWidget>());
    if (choice < 76)
        return m_chance.pick(all<MessageWidget>());
    if (choice < 81)
        return m_chance.pick(all<FieldValueLabel>());
    if (choice < 92)
        return m_chance.pick(m_editors);
    return m_chance.pick(m_expressions);
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
    while (target && !m_widgets.contains(qobject_cast<QWidget*>(target)) && !qobject_cast<PathExpression*>(target))
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

void Desk::answerItemChoice()
{
    const bool outerRowsAreRemoved = m_rowsAreRemoved;
    m_rowsAreRemoved = m_rowsAreRemoved || m_choiceDepth != m_depth;
    answer();
    m_rowsAreRemoved = outerRowsAreRemoved;
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
