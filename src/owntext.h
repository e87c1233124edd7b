#ifndef OWNTEXT_H
#define OWNTEXT_H

#include "diagnostics.h"

#include <QAbstractItemModel>
#include <QAction>

/**
 * Texts of the library in places where applications may write, too: another language changes them only where nobody
 * has. To be included behind CORVEL_DIAGNOSTICS, as part of the file that needs them.
 */
namespace OwnText
{

/** Under which a header and a cell keep what the library wrote there; no number that applications count to. */
static const int Role = Qt::UserRole + 0x0c0e0001;

static inline void writeHeader(QAbstractItemModel* model, int column, const QString& text)
{
    CORVEL_DEBUG_HOOK();
    model->setHeaderData(column, Qt::Horizontal, text, Role);
    model->setHeaderData(column, Qt::Horizontal, text, Qt::DisplayRole);
}

static inline void translateHeader(QAbstractItemModel* model, int column, const QString& text)
{
    CORVEL_DEBUG_HOOK();
    if (model->headerData(column, Qt::Horizontal) == model->headerData(column, Qt::Horizontal, Role))
        writeHeader(model, column, text);
}

static inline void writeAction(QAction* action, const QString& text)
{
    CORVEL_DEBUG_HOOK();
    action->setProperty("corvelText", text);
    action->setText(text);
}

static inline void translateAction(QAction* action, const QString& text)
{
    CORVEL_DEBUG_HOOK();
    if (action->text() == action->property("corvelText").toString())
        writeAction(action, text);
}

} // namespace OwnText

#endif
