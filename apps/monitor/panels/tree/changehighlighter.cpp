#include "changehighlighter.h"

#include "abstractmessagetreewidgetitem.h"
#include "readingtree.h"
#include "theme.h"

#include <QElapsedTimer>
#include <QTreeWidgetItem>

#include <iterator>

static const int LookMilliseconds = 100;
static const int FadeMilliseconds = 1000;
static const int BusyMilliseconds = 2500; // a value that changed so short a time before is nothing special
static const int FullShade = 45;          // per cent of the colour of selections
static const int FaintShade = 14;
static const int Steps = 5; // as few as look smooth: each is a repaint

ChangeHighlighter::ChangeHighlighter(ReadingTree* tree, QObject* parent)
    : QObject(parent)
    , m_tree(tree)
{
    QElapsedTimer elapsed;
    elapsed.start();
    m_clock = [elapsed]() { return elapsed.elapsed() + 1; };
    m_timer.setInterval(LookMilliseconds);
    connect(&m_timer, &QTimer::timeout, this, &ChangeHighlighter::update);
    // Rows are held by address only as long as none goes away.
    connect(tree->model(), &QAbstractItemModel::rowsAboutToBeRemoved, this, &ChangeHighlighter::forget);
    connect(tree->model(), &QAbstractItemModel::columnsAboutToBeRemoved, this, &ChangeHighlighter::clear);
    connect(tree->model(), &QAbstractItemModel::modelAboutToBeReset, this, &ChangeHighlighter::clear);
}

void ChangeHighlighter::setEnabled(bool enabled)
{
    m_enabled = enabled;
    clear();
    if (enabled)
        m_timer.start();
    else
        m_timer.stop();
}

void ChangeHighlighter::clear()
{
    for (auto cell = m_cells.begin(); cell != m_cells.end(); ++cell)
        if (cell->shown > 0)
            shade(cell.key(), m_column, 0);
    m_cells.clear();
}

void ChangeHighlighter::forget(const QModelIndex& parent, int first, int last)
{
    // An index of the tree's model points to its item; Qt 5 hands out neither for the other.
    const QTreeWidgetItem* const parentItem = static_cast<QTreeWidgetItem*>(parent.internalPointer());
    for (auto cell = m_cells.begin(); cell != m_cells.end();) {
        QTreeWidgetItem* step = cell.key();
        while (step && step->parent() != parentItem)
            step = step->parent();
        const int row = !step ? -1 : parentItem ? parentItem->indexOfChild(step) : m_tree->indexOfTopLevelItem(step);
        const bool goes = row >= first && row <= last;
        cell = goes ? m_cells.erase(cell) : std::next(cell);
    }
}

static bool isOfField(const QTreeWidgetItem* item)
{
    const auto* const row = dynamic_cast<const AbstractMessageTreeWidgetItem*>(item);
    return row && row->getFieldInfo();
}

void ChangeHighlighter::update()
{
    if (!m_enabled || !m_tree->isVisible())
        return;
    const int column = m_tree->getColumnIndex(MessageTreeWidget::ValueColumn);
    if (column != m_column) {
        clear();
        m_column = column;
    }
    if (column < 0)
        return;
    const qint64 now = m_clock();
    QHash<QTreeWidgetItem*, Cell> cells;
    const QList<QTreeWidgetItem*> rows = m_tree->getRowsOnScreen();
    for (QTreeWidgetItem* item : rows) {
        const bool isNew = !m_cells.contains(item);
        Cell cell = m_cells.take(item);
        const QString text = item->text(column);
        // What was empty got its first value, which is no change; neither is what the row of a type or a sender says.
        if (!isNew && text != cell.text && !cell.text.isEmpty() && isOfField(item)) {
            cell.strength = cell.changed && now - cell.changed < BusyMilliseconds ? FaintShade : FullShade;
            cell.changed = now;
        }
        cell.text = text;
        const qint64 age = now - cell.changed;
        const int step = cell.changed ? int(qMax<qint64>(0, Steps - age * Steps / FadeMilliseconds)) : 0;
        const int percent = cell.strength * step / Steps;
        if (percent != cell.shown)
            shade(item, column, percent);
        cell.shown = percent;
        cells.insert(item, cell);
    }
    for (auto gone = m_cells.begin(); gone != m_cells.end(); ++gone)
        if (gone->shown > 0)
            shade(gone.key(), column, 0);
    m_cells = cells;
}

void ChangeHighlighter::shade(QTreeWidgetItem* item, int column, int percent)
{
    if (percent <= 0) {
        item->setData(column, Qt::BackgroundRole, QVariant());
        return;
    }
    // Translucent, so that the stripes of the rows stay visible below it.
    item->setBackground(column, Theme::changeShade(m_tree->palette(), percent));
}
