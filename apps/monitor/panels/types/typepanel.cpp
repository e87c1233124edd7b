#include "typepanel.h"

#include "celldelegate.h"
#include "columngrower.h"
#include "desk.h"
#include "emptyhint.h"
#include "messageinfo.h"

#include <QHBoxLayout>
#include <QHeaderView>
#include <QLineEdit>
#include <QSettings>
#include <QSortFilterProxyModel>
#include <QToolButton>
#include <QTreeView>
#include <QVBoxLayout>

static const char WantedKey[] = "forms"; // what they are chosen for
static const char FoldedKey[] = "types/bySender";

/** The types in the order that is chosen, and of these what somebody looks for. */
class SortedTypes : public QSortFilterProxyModel
{
public:
    SortedTypes(MessageTypeModel* types, QObject* parent)
        : QSortFilterProxyModel(parent)
        , m_types(types)
    {
        setRecursiveFilteringEnabled(true);
        setSourceModel(types);
        setDynamicSortFilter(true);
    }

    void setWords(const QStringList& words)
    {
        m_words = words;
        invalidateFilter();
    }

protected:
    bool lessThan(const QModelIndex& left, const QModelIndex& right) const override
    {
        return m_types->isBefore(left, right);
    }

    bool filterAcceptsRow(int row, const QModelIndex& parent) const override
    {
        if (m_words.isEmpty())
            return true;
        const QModelIndex index = m_types->index(row, 0, parent);
        return m_types->rowOf(index) >= 0 && m_types->hasWords(index, m_words); // a sender is there with its types
    }

private:
    const MessageTypeModel* m_types;
    QStringList m_words;
};

static QString nameOf(const QString& type, const QString& sender)
{
    return type + QLatin1Char('\t') + sender;
}

TypePanel::TypePanel(Desk* desk, QWidget* parent)
    : QWidget(parent)
    , m_desk(desk)
    , m_sorted(new SortedTypes(desk->getTypes(), this))
    , m_filter(new QLineEdit)
    , m_fold(new QToolButton)
    , m_view(new QTreeView)
{
    m_filter->setPlaceholderText(tr("Type or sender"));
    m_filter->setAccessibleName(tr("Show only these types"));
    m_filter->setClearButtonEnabled(true);
    connect(m_filter, &QLineEdit::textChanged, this, &TypePanel::filter);
    m_fold->setText(tr("By Sender"));
    m_fold->setToolTip(tr("A row for each sender, with its types below"));
    m_fold->setCheckable(true);
    connect(m_fold, &QToolButton::toggled, this, &TypePanel::setFolded);
    createView();

    QHBoxLayout* const bar = new QHBoxLayout;
    bar->addWidget(m_filter, 1);
    bar->addWidget(m_fold);
    QVBoxLayout* const layout = new QVBoxLayout(this);
    layout->setContentsMargins(0, 0, 0, 0);
    layout->setSpacing(2);
    layout->addLayout(bar);
    layout->addWidget(m_view, 1);
    setFocusProxy(m_view);

    const MessageTypeModel* const types = desk->getTypes();
    connect(m_view->selectionModel(), &QItemSelectionModel::selectionChanged, this, &TypePanel::tellChosen);
    connect(m_sorted, &QAbstractItemModel::modelAboutToBeReset, this, &TypePanel::rememberView);
    connect(m_sorted, &QAbstractItemModel::modelReset, this, &TypePanel::restoreView);
    connect(types, &MessageTypeModel::seen, this, &TypePanel::processSeen);
    connect(types, &MessageTypeModel::typesAboutToChange, this, &TypePanel::rememberChosen);
}

void TypePanel::createView()
{
    m_view->setModel(m_sorted);
    m_view->setRootIsDecorated(false);
    m_view->setUniformRowHeights(true);
    m_view->setSortingEnabled(true);
    m_view->sortByColumn(MessageTypeModel::TypeColumn, Qt::AscendingOrder);
    m_view->setSelectionMode(QAbstractItemView::ExtendedSelection);
    m_view->setAccessibleName(tr("Message types"));
    QHeaderView* const header = m_view->header();
    header->setStretchLastSection(false);
    header->setSectionResizeMode(MessageTypeModel::TypeColumn, QHeaderView::Stretch);
    // Widths of their own would let the columns jump with every number that grows.
    const QFontMetrics metrics = m_view->fontMetrics();
    header->resizeSection(MessageTypeModel::SenderColumn, metrics.horizontalAdvance(QLatin1String(" Sender  ^ ")));
    for (const int column : {MessageTypeModel::CountColumn, MessageTypeModel::RateColumn})
        header->resizeSection(column, metrics.horizontalAdvance(QLatin1String(" 000,000 ")));
    CellDelegate* const cells = new CellDelegate(m_view);
    cells->setName(MessageTypeModel::TypeColumn);
    cells->setName(MessageTypeModel::SenderColumn);
    m_view->setItemDelegate(cells);
    new ColumnGrower(m_view, MessageTypeModel::SenderColumn, 25);
    m_hint = new EmptyHint(m_view, QString());
    filter(QString());
}

void TypePanel::setFolded(bool folded)
{
    m_fold->setChecked(folded);
    m_desk->getTypes()->setFolded(folded);
    m_view->setRootIsDecorated(folded);
    m_view->setColumnHidden(MessageTypeModel::SenderColumn, folded);
}

// What is chosen stays so while the list does not show it.
void TypePanel::filter(const QString& text)
{
    const QVector<Subject>& chosen = m_desk->getChosenTypes();
    m_isReset = true;
    m_sorted->setWords(text.simplified().split(QLatin1Char(' '), Qt::SkipEmptyParts));
    if (!text.isEmpty() && m_desk->getTypes()->isFolded())
        m_view->expandAll();
    choose(QSet<Subject>(chosen.cbegin(), chosen.cend()));
    m_isReset = false;
    m_hint->setText(text.isEmpty() ? tr("Message types appear here as they are received.")
                                   : tr("No type and no sender is called so."));
}

// Counts of what lies below senders are asked for when they are painted.
void TypePanel::tick()
{
    if (m_desk->getTypes()->isFolded() && !m_desk->isPaused())
        m_view->viewport()->update();
}

void TypePanel::rememberView()
{
    m_isReset = true;
    m_unfolded.clear();
    for (int row = 0; row < m_sorted->rowCount() && m_view->rootIsDecorated(); ++row)
        if (m_view->isExpanded(m_sorted->index(row, 0)))
            m_unfolded.insert(m_sorted->index(row, 0).data().toString());
}

void TypePanel::restoreView()
{
    const QVector<Subject>& chosen = m_desk->getChosenTypes();
    for (int row = 0; row < m_sorted->rowCount() && !m_unfolded.isEmpty(); ++row)
        if (m_unfolded.contains(m_sorted->index(row, 0).data().toString()))
            m_view->setExpanded(m_sorted->index(row, 0), true);
    choose(QSet<Subject>(chosen.cbegin(), chosen.cend()));
    m_isReset = false;
    tellChosen();
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
    choose(chosen);
}

void TypePanel::choose(const QSet<Subject>& subjects)
{
    const MessageTypeModel* const types = m_desk->getTypes();
    QItemSelection selection;
    for (int row = 0; row < types->getCount() && !subjects.isEmpty(); ++row) {
        const QModelIndex index = m_sorted->mapFromSource(types->indexOf(row));
        if (index.isValid() && subjects.contains(types->getSubject(row)))
            selection.select(index, index);
    }
    m_view->selectionModel()->select(selection, QItemSelectionModel::Select | QItemSelectionModel::Rows);
}

void TypePanel::tellChosen()
{
    if (m_isReset)
        return;
    QVector<Subject> subjects;
    const QModelIndexList rows = m_view->selectionModel()->selectedRows();
    for (const QModelIndex& index : rows) {
        const int row = m_desk->getTypes()->rowOf(m_sorted->mapToSource(index));
        const Subject subject = row < 0 ? Subject{nullptr, QString()} : m_desk->getTypes()->getSubject(row);
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
    settings.setValue(QLatin1String(FoldedKey), m_fold->isChecked());
}

void TypePanel::restoreSettings(QSettings& settings)
{
    m_wanted += settings.value(QLatin1String(WantedKey)).toStringList();
    setFolded(settings.value(QLatin1String(FoldedKey)).toBool());
}
