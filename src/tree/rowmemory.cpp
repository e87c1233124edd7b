#include "rowmemory.h"

#include "diagnostics.h"
#include "singlevaluefieldtreewidgetitem.h"

#include <QList>

CORVEL_DIAGNOSTICS("RowMemory");

static const int RowsInBlock = 4096;
// So many blocks side by side, and there are no gaps worth taking any more; and so many for each row at the most.
static const int EnoughInOrder = 128;
static const int MostForRow = 4;

static int s_living = 0;
static QList<void*> s_taken;
// What Qt stores for deleted rows, in copies that share it.
static int s_keptRows = 0;
static QList<QTreeWidgetItem*> s_keptBlocks;

static int countRows(const QTreeWidgetItem* row)
{
    CORVEL_DEBUG_HOOK();
    int count = 1;
    for (int i = 0; i < row->childCount(); ++i)
        count += countRows(row->child(i));
    return count;
}

/** Takes gaps of every size that something of a row fits into. */
static void takeGaps(int rows)
{
    CORVEL_DEBUG_HOOK();
    const std::size_t step = 2 * sizeof(void*);
    for (std::size_t size = sizeof(SingleValueFieldTreeWidgetItem); size >= step; size -= step) {
        quintptr last = 0;
        for (int i = 0, inOrder = 0; i < MostForRow * rows && inOrder < EnoughInOrder; ++i) {
            s_taken.append(::operator new(size));
            const quintptr place = reinterpret_cast<quintptr>(s_taken.last());
            inOrder = place - last < size + 2 * step ? inOrder + 1 : 0;
            last = place;
        }
    }
}

static void keepContents(const QTreeWidgetItem* row)
{
    CORVEL_DEBUG_HOOK();
    if (s_keptRows % RowsInBlock == 0)
        s_keptBlocks.append(static_cast<QTreeWidgetItem*>(::operator new(RowsInBlock * sizeof(QTreeWidgetItem))));
    new (s_keptBlocks.last() + s_keptRows % RowsInBlock) QTreeWidgetItem(*row);
    ++s_keptRows;
    for (int i = 0; i < row->childCount(); ++i)
        keepContents(row->child(i));
}

RowMemory::RowMemory(const QTreeWidgetItem* root)
{
    CORVEL_DEBUG_HOOK();
    if (++s_living == 1)
        takeGaps(countRows(root));
}

RowMemory::~RowMemory()
{
    CORVEL_DEBUG_HOOK();
    if (--s_living > 0)
        return;
    for (int i = 0; i < s_keptRows; ++i)
        s_keptBlocks.at(i / RowsInBlock)[i % RowsInBlock].~QTreeWidgetItem();
    s_keptRows = 0;
    Q_FOREACH (QTreeWidgetItem* block, s_keptBlocks)
        ::operator delete(block);
    s_keptBlocks.clear();
    Q_FOREACH (void* memory, s_taken)
        ::operator delete(memory);
    s_taken.clear();
}

void RowMemory::deleteRow(QTreeWidgetItem* row)
{
    CORVEL_DEBUG_HOOK();
    const int before = s_keptRows;
    if (s_living > 0)
        keepContents(row);
    const int after = s_keptRows;
    delete row;
    // The memory that was given back last is what is asked for next.
    for (int i = before; i < after; ++i)
        s_taken.append(::operator new(sizeof(SingleValueFieldTreeWidgetItem)));
}
