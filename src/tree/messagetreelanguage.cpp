// How a tree follows another language.

#include "abstractmessagetreewidgetitem.h"
#include "diagnostics.h"
#include "messagetreewidget.h"
#include "rowguard.h"

#include <QEvent>

CORVEL_DIAGNOSTICS("MessageTreeWidget");
#include "owntext.h"

void MessageTreeWidget::changeEvent(QEvent* event)
{
    CORVEL_DEBUG_HOOK();
    QTreeWidget::changeEvent(event);
    if (event->type() == QEvent::LanguageChange)
        translate();
}

void MessageTreeWidget::translate()
{
    CORVEL_DEBUG_HOOK();
    const TreeUpdate update(this);
    OwnText::translateAction(m_toggleTypeColumnAction, tr("&Type"));
    OwnText::translateAction(m_toggleRawValueColumnAction, tr("&Raw Value"));
    Q_FOREACH (ColumnType type, m_customColumns.keys())
        updateCustomColumn(type); // whose application may translate it
    const QVector<ColumnType> columns = m_columns;
    for (int i = 0; !update.isOver() && i < columns.size(); ++i) {
        if (columns.at(i) != NoColumn && !getCustomColumn(columns.at(i)))
            OwnText::translateHeader(model(), i, getColumnName(columns.at(i)));
    }
    if (update.isOver())
        return;
    const QList<AbstractMessageTreeWidgetItem*> rows = getTopLevelAbstractMessageTreeWidgetItems();
    const unsigned int changes = m_topLevelRowsChanges;
    for (int i = 0; !update.isOver() && i < rows.size(); ++i) {
        if (changes == m_topLevelRowsChanges || indexOfTopLevelItem(rows.at(i)) >= 0)
            rows.at(i)->translate();
    }
}
