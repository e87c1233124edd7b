#ifndef ROWGUARD_H
#define ROWGUARD_H

#include <QtGlobal>

class AbstractMessageTreeWidgetItem;
class MessageTreeWidget;

// Nearly everything that a row does is told to somebody: changed texts and selections to the slots of the tree's
// signals, needs to those of the framework's, sizes and paintings to a delegate. He may answer with any operation on
// the same row and the same tree, before the row goes on. What follows is for functions that have to go on after that.

/**
 * Tells a function whether what it works on is still there, or still the newest of its kind.
 *
 * Lives on the stack. The addresses of members serve as names for what is under way with them.
 */
class RowGuard
{
public:
    explicit RowGuard(const void* object);
    /** Breaks when the row is deleted. */
    explicit RowGuard(const AbstractMessageTreeWidgetItem* row);
    ~RowGuard();

    bool isBroken() const;

    /** Breaks the guards of @p object; whether there were any. */
    static bool breakAll(const void* object);
    /** Whether a guard of @p object lives that is not broken. */
    static bool isWatched(const void* object);

private:
    Q_DISABLE_COPY(RowGuard)

    static RowGuard* s_innermost;

    const void* m_object;
    RowGuard* const m_outer;
};

/** While one lives, the tree does not make all its rows anew: who asks for that gets it when the outermost goes. */
class TreeUpdate
{
public:
    /** @param tree  may be null */
    explicit TreeUpdate(MessageTreeWidget* tree);
    ~TreeUpdate();

    /** Whether the tree has been deleted. */
    bool isOver() const;

private:
    Q_DISABLE_COPY(TreeUpdate)

    RowGuard m_guard;
    MessageTreeWidget* const m_tree;
};

/** While one lives, rows that have to go stay in the tree: somebody further out, in Qt, still looks at one. */
class RowHold
{
public:
    enum Reason
    {
        RowsAreShown,  ///< rows may be added
        RowsAreRemoved ///< rows are neither added nor removed by anybody else
    };

    /** @param tree  may be null */
    RowHold(MessageTreeWidget* tree, Reason reason);
    ~RowHold();

private:
    Q_DISABLE_COPY(RowHold)

    RowGuard m_guard;
    MessageTreeWidget* const m_tree;
    const bool m_rowsWereRemoved;
};

#endif
