#include "rowguard.h"

#include "abstractmessagetreewidgetitem.h"
#include "diagnostics.h"

CORVEL_DIAGNOSTICS("RowGuard");

RowGuard* RowGuard::s_innermost = nullptr;

RowGuard::RowGuard(const void* object)
    : m_object(object)
    , m_outer(s_innermost)
{
    CORVEL_DEBUG_HOOK();
    s_innermost = this;
}

RowGuard::RowGuard(const AbstractMessageTreeWidgetItem* row)
    : m_object(row)
    , m_outer(s_innermost)
{
    CORVEL_DEBUG_HOOK();
    s_innermost = this;
}

RowGuard::~RowGuard()
{
    CORVEL_DEBUG_HOOK();
    s_innermost = m_outer;
}

bool RowGuard::isBroken() const
{
    CORVEL_DEBUG_HOOK();
    return !m_object;
}

bool RowGuard::breakAll(const void* object)
{
    CORVEL_DEBUG_HOOK();
    bool wereAny = false;
    for (RowGuard* guard = s_innermost; guard; guard = guard->m_outer) {
        if (guard->m_object == object) {
            guard->m_object = nullptr;
            wereAny = true;
        }
    }
    return wereAny;
}

bool RowGuard::isWatched(const void* object)
{
    CORVEL_DEBUG_HOOK();
    for (const RowGuard* guard = s_innermost; guard; guard = guard->m_outer) {
        if (guard->m_object == object)
            return true;
    }
    return false;
}

TreeUpdate::TreeUpdate(MessageTreeWidget* tree)
    : m_guard(tree)
    , m_tree(tree)
{
    CORVEL_DEBUG_HOOK();
    if (tree)
        ++tree->m_updates;
}

TreeUpdate::~TreeUpdate()
{
    CORVEL_DEBUG_HOOK();
    if (!m_guard.isBroken())
        m_tree->endUpdate();
}

bool TreeUpdate::isOver() const
{
    CORVEL_DEBUG_HOOK();
    return m_guard.isBroken();
}

RowHold::RowHold(MessageTreeWidget* tree, Reason reason)
    : m_guard(tree)
    , m_tree(tree)
    , m_rowsWereRemoved(tree && tree->m_rowsAreRemoved)
{
    CORVEL_DEBUG_HOOK();
    if (!tree)
        return;
    ++tree->m_holds;
    tree->m_rowsAreRemoved = m_rowsWereRemoved || reason == RowsAreRemoved;
}

RowHold::~RowHold()
{
    CORVEL_DEBUG_HOOK();
    if (m_guard.isBroken())
        return;
    m_tree->m_rowsAreRemoved = m_rowsWereRemoved;
    if (--m_tree->m_holds == 0)
        AbstractMessageTreeWidgetItem::deleteReleasedRows(m_tree);
}
