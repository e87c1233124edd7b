#include "typepanel.h"

#include "celldelegate.h"
#include "columngrower.h"
#include "desk.h"
#include "emptyhint.h"
#include "messageinfo.h"

#include <QHeaderView>
#include <QSettings>
#include <QSortFilterProxyModel>

namespace
{

class SortedTypes : public QSortFilterProxyModel
{
public:
    SortedTypes(MessageTypeModel* types, QObject* parent)
        : QSortFilterProxyModel(parent)
        , m_types(types)
    {
        setSourceModel(types);
        setDynamicSortFilter(true);
    }

protected:
    bool lessThan(const QModelIndex& left, const QModelIndex& right) const override
    {
        return m_types->isBefore(left.row(), right.row(), left.column());
    }

private:
    const MessageTypeModel* m_types;
};

QString nameOf(const QString& type, const QString& sender)
{
    return type + QLatin1Char('\t') + sender;
}

} // namespace

static const char WantedKey[] = "forms"; // what they are chosen for

TypePanel::TypePanel(Desk* desk, QWidget* parent)
    : QTreeView(parent)
    , m_desk(desk)
    , m_sorted(new SortedTypes(desk->getTypes(), this))
{
    MessageTypeModel* const types = desk->getTypes();
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
    connect(types, &MessageTypeModel::seen, this, &TypePanel::processSeen);
    connect(types, &MessageTypeModel::typesAboutToChange, this, &TypePanel::rememberChosen);
}

void TypePanel::processSeen(const QVector<Subject>& subjects)
{
    QSet<Subject> chosen;
    QSet<QString> found;
    for (const Subject& subject : subjects) {
        for (const QString& name : {subject.info->getName(), nameOf(subject.info->getName(), subject.sender)}) {
            if (!m_wanted.contains(name))
                continue;
            chosen.insert(subject);
            found.insert(name);
        }
    }
    for (const QString& name : std::as_const(found))
        m_wanted.removeAll(name);
    const MessageTypeModel* const types = m_desk->getTypes();
    for (int row = 0; row < types->getCount() && !chosen.isEmpty(); ++row) {
        const QModelIndex index = m_sorted->mapFromSource(types->index(row, 0));
        if (chosen.contains(types->getSubject(row)))
            selectionModel()->select(index, QItemSelectionModel::Select | QItemSelectionModel::Rows);
    }
}

void TypePanel::tellChosen()
{
    QVector<Subject> subjects;
    const QModelIndexList rows = selectionModel()->selectedRows();
    for (const QModelIndex& index : rows) {
        const Subject subject = m_desk->getTypes()->getSubject(m_sorted->mapToSource(index).row());
        if (subject.info && !subjects.contains(subject))
            subjects.append(subject);
    }
    m_desk->chooseTypes(subjects);
}

void TypePanel::rememberChosen()
{
    for (const Subject& chosen : m_desk->getChosenTypes()) {
        const QString type = chosen.info->getName();
        // The only sender of a type may well be called otherwise in the next run.
        const bool isTold = m_desk->getTypes()->isFromSeveral(chosen.info);
        const QString name = isTold ? nameOf(type, chosen.sender) : type;
        if (!m_wanted.contains(name))
            m_wanted.append(name);
    }
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
