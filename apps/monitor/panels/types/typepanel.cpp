#include "typepanel.h"

#include "celldelegate.h"
#include "columngrower.h"
#include "desk.h"
#include "emptyhint.h"
#include "messageinfo.h"

#include <QHeaderView>
#include <QSettings>
#include <QSortFilterProxyModel>

static const char WantedKey[] = "forms"; // what they are chosen for

TypePanel::TypePanel(Desk* desk, QWidget* parent)
    : QTreeView(parent)
    , m_desk(desk)
    , m_sorted(new QSortFilterProxyModel(this))
{
    MessageTypeModel* const types = desk->getTypes();
    m_sorted->setSourceModel(types);
    m_sorted->setSortRole(MessageTypeModel::SortRole);
    m_sorted->setDynamicSortFilter(true);
    setModel(m_sorted);
    setRootIsDecorated(false);
    setUniformRowHeights(true);
    setSortingEnabled(true);
    sortByColumn(MessageTypeModel::TypeColumn, Qt::AscendingOrder);
    setSelectionMode(QAbstractItemView::ExtendedSelection);
    setAccessibleName(tr("Message types"));
    header()->setStretchLastSection(false);
    header()->setSectionResizeMode(MessageTypeModel::TypeColumn, QHeaderView::Stretch);
    // Widths of their own would let the columns jump with every number that grows.
    header()->resizeSection(MessageTypeModel::SenderColumn,
                            fontMetrics().horizontalAdvance(QLatin1String(" Sender  ^ ")));
    for (const int column : {MessageTypeModel::CountColumn, MessageTypeModel::RateColumn})
        header()->resizeSection(column, fontMetrics().horizontalAdvance(QLatin1String(" 000,000 ")));
    CellDelegate* const cells = new CellDelegate(this);
    cells->setName(MessageTypeModel::TypeColumn);
    cells->setName(MessageTypeModel::SenderColumn);
    setItemDelegate(cells);
    new ColumnGrower(this, MessageTypeModel::SenderColumn, 25);
    new EmptyHint(this, tr("Message types appear here as they are received."));

    connect(selectionModel(), &QItemSelectionModel::selectionChanged, this, &TypePanel::tellChosen);
    connect(types, &QAbstractItemModel::modelReset, this, &TypePanel::tellChosen);
    connect(types, &MessageTypeModel::typeSeen, this, &TypePanel::processTypeSeen);
    connect(types, &MessageTypeModel::typesAboutToChange, this, &TypePanel::rememberChosen);
}

void TypePanel::processTypeSeen(const MessageInfo* info)
{
    if (m_wanted.removeAll(info->getName()) == 0)
        return;
    const MessageTypeModel* const types = m_desk->getTypes();
    for (int row = 0; row < types->rowCount(); ++row) {
        const QModelIndex index = m_sorted->mapFromSource(types->index(row, 0));
        if (types->getMessageInfo(row) == info)
            selectionModel()->select(index, QItemSelectionModel::Select | QItemSelectionModel::Rows);
    }
}

void TypePanel::tellChosen()
{
    QVector<const MessageInfo*> infos;
    const QModelIndexList rows = selectionModel()->selectedRows();
    for (const QModelIndex& index : rows) {
        const MessageInfo* const info = m_desk->getTypes()->getMessageInfo(m_sorted->mapToSource(index).row());
        if (info && !infos.contains(info))
            infos.append(info);
    }
    m_desk->chooseTypes(infos);
}

void TypePanel::rememberChosen()
{
    for (const MessageInfo* info : m_desk->getChosenTypes())
        if (!m_wanted.contains(info->getName()))
            m_wanted.append(info->getName());
}

void TypePanel::saveSettings(QSettings& settings)
{
    rememberChosen();
    settings.setValue(QLatin1String(WantedKey), m_wanted);
}

void TypePanel::restoreSettings(QSettings& settings)
{
    m_wanted += settings.value(QLatin1String(WantedKey)).toStringList();
}
