#ifndef ROWMEMORY_H
#define ROWMEMORY_H

#include <QtGlobal>

class QTreeWidgetItem;

/**
 * While one lives, new rows lie side by side in memory, although others are deleted between them.
 *
 * Rows in the gaps of deleted ones lie scattered, which costs a quarter more for each value that they show from then
 * on. Most of what a row takes is allocated by Qt, so an allocator of the rows' own would not do: instead the gaps are
 * taken until the end, those that there are and those that deleted rows leave.
 */
class RowMemory
{
public:
    /** @param root  above the rows that are going to be deleted and created */
    explicit RowMemory(const QTreeWidgetItem* root);
    ~RowMemory();

    /** Deletes a row and all below it; their memory stays taken while a RowMemory lives. */
    static void deleteRow(QTreeWidgetItem* row);

private:
    Q_DISABLE_COPY(RowMemory)
};

#endif
