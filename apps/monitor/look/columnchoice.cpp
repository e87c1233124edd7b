#include "columnchoice.h"

#include <QAbstractItemModel>
#include <QAction>
#include <QHeaderView>
#include <QSettings>
#include <QStringList>

void ColumnChoice::offer(QHeaderView* header, int first)
{
    const QAbstractItemModel* const model = header->model();
    header->setContextMenuPolicy(Qt::ActionsContextMenu);
    for (int column = first; column < header->count(); ++column) {
        QAction* const action = new QAction(model->headerData(column, Qt::Horizontal).toString(), header);
        action->setCheckable(true);
        action->setChecked(!header->isSectionHidden(column));
        action->setToolTip(model->headerData(column, Qt::Horizontal, Qt::ToolTipRole).toString());
        QObject::connect(action, &QAction::toggled, header,
                         [header, column](bool shown) { header->setSectionHidden(column, !shown); });
        header->addAction(action);
    }
}

void ColumnChoice::save(const QHeaderView* header, int first, QSettings& settings, const QString& key)
{
    QStringList columns;
    for (int column = first; column < header->count(); ++column)
        if (header->actions().at(column - first)->isChecked())
            columns.append(QString::number(column));
    settings.setValue(key, columns);
}

void ColumnChoice::restore(QHeaderView* header, int first, QSettings& settings, const QString& key)
{
    if (!settings.contains(key))
        return;
    const QStringList columns = settings.value(key).toStringList();
    for (int column = first; column < header->count(); ++column)
        header->actions().at(column - first)->setChecked(columns.contains(QString::number(column)));
}
