#include "typepanel.h"

#include "celldelegate.h"
#include "columnchoice.h"
#include "columngrower.h"
#include "desk.h"
#include "emptyhint.h"
#include "messageinfo.h"
#include "namecolumn.h"
#include "words.h"

#include <QAction>
#include <QClipboard>
#include <QContextMenuEvent>
#include <QGuiApplication>
#include <QHBoxLayout>
#include <QHeaderView>
#include <QLineEdit>
#include <QMenu>
#include <QSettings>
#include <QSortFilterProxyModel>
#include <QToolButton>
#include <QTreeView>
#include <QVBoxLayout>

static const char WantedKey[] = "forms"; // what they are chosen for
static const char FoldedKey[] = "types/bySender";
static const char ColumnsKey[] = "types/columns"; // those that are shown

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

/** A tree in which rows are equally high, so that of many that change there is nothing to be found out but what is
 * seen. */
class TypeView : public QTreeView
{
protected:
    void dataChanged(const QModelIndex& first, const QModelIndex& last, const QVector<int>& roles) override
    {
        // It would look for the place of each.
        if (last.row() - first.row() > MostPlaces)
            viewport()->update();
        else
            QTreeView::dataChanged(first, last, roles);
    }

private:
    static const int MostPlaces = 100;
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
    , m_view(new TypeView)
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

    const MessageTypeModel* const types = desk->getTypes();
    connect(m_view->selectionModel(), &QItemSelectionModel::selectionChanged, this, &TypePanel::tellChosen);
    connect(m_view->selectionModel(), &QItemSelectionModel::currentChanged, this, &TypePanel::followCurrent);
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
    // Widths of their own would let the columns jump with every number that grows.
    const QFontMetrics metrics = m_view->fontMetrics();
    header->resizeSection(MessageTypeModel::SenderColumn, metrics.horizontalAdvance(QLatin1String(" Sender ")));
    for (const int column : {MessageTypeModel::CountColumn, MessageTypeModel::RateColumn})
        header->resizeSection(column, metrics.horizontalAdvance(QLatin1String(" 000,000 ")));
    for (int column = MessageTypeModel::RangeColumn; column < MessageTypeModel::ColumnCount; ++column) {
        header->resizeSection(
            column, metrics.horizontalAdvance(
                        QLatin1String(column == MessageTypeModel::RangeColumn ? " 000 Hz - 000 Hz " : " 0,000,000 ")));
        header->setSectionHidden(column, true); // until somebody wants them
    }
    ColumnChoice::offer(header, MessageTypeModel::CountColumn);
    CellDelegate* const cells = new CellDelegate(m_view);
    cells->setName(MessageTypeModel::TypeColumn);
    cells->setName(MessageTypeModel::SenderColumn);
    m_view->setItemDelegate(cells);
    m_view->setMinimumHeight(2 * m_view->fontMetrics().lineSpacing()); // on a small screen
    new ColumnGrower(m_view, MessageTypeModel::SenderColumn, 25);
    new ColumnGrower(m_view, MessageTypeModel::CountColumn, 25);
    new ColumnGrower(m_view, MessageTypeModel::RateColumn, 25);
    new NameColumn(m_view, 38);
    m_hint = new EmptyHint(m_view, QString());
    filter(QString());
}

// What somebody goes to here is what he wants to read there.
void TypePanel::followCurrent(const QModelIndex& current)
{
    if (m_isReset || !current.isValid())
        return;
    const MessageTypeModel* const types = m_desk->getTypes();
    const QModelIndex index = m_sorted->mapToSource(current);
    const int row = types->rowOf(index);
    if (types->subjectsAt(index).isEmpty())
        return; // of what is not known there is no row
    Q_EMIT m_desk->rowWanted(row < 0 ? Subject{nullptr, types->getSender(index)} : types->getSubject(row));
}

QVector<Subject> TypePanel::getSelected() const
{
    QSet<Subject> subjects; // a sender may be chosen beside some of its types
    const QModelIndexList rows = m_view->selectionModel()->selectedRows();
    for (const QModelIndex& index : rows) {
        const QVector<Subject> found = m_desk->getTypes()->subjectsAt(m_sorted->mapToSource(index));
        for (const Subject& subject : found)
            subjects.insert(subject);
    }
    return QVector<Subject>(subjects.constBegin(), subjects.constEnd());
}

void TypePanel::keepOnly(const QVector<Subject>& subjects)
{
    MessageTypeModel* const types = m_desk->getTypes();
    const QSet<Subject> kept(subjects.constBegin(), subjects.constEnd());
    QVector<Subject> others;
    for (int row = 0; row < types->getCount(); ++row)
        if (types->getMessageInfo(row) && !kept.contains(types->getSubject(row)))
            others.append(types->getSubject(row));
    types->request(others, false);
    types->request(subjects, true);
}

QMenu* TypePanel::createMenu()
{
    MessageTypeModel* const types = m_desk->getTypes();
    const QVector<Subject> subjects = getSelected();
    QMenu* const menu = new QMenu(this);
    if (!subjects.isEmpty()) {
        const bool isShown = std::all_of(subjects.cbegin(), subjects.cend(),
                                         [types](const Subject& subject) { return types->isInTree(subject); });
        menu->addAction(isShown ? tr("&Take out of the Tree") : tr("&Show in the Tree"), this,
                        [types, subjects, isShown]() { types->request(subjects, !isShown); });
        menu->addAction(tr("Show &Only This in the Tree"), this, [this, subjects]() { keepOnly(subjects); });
        menu->addSeparator();
    }
    for (const TypeUse& use : m_desk->getTypeUses())
        if (subjects.size() == 1)
            menu->addAction(use.text(subjects.first()), this, [use, subjects]() { use.take(subjects.first()); });
    const QModelIndexList rows = m_view->selectionModel()->selectedRows(MessageTypeModel::TypeColumn);
    QStringList names;
    for (const QModelIndex& index : rows)
        if (!names.contains(index.data().toString())) // others send the type as well
            names.append(index.data().toString());
    if (!names.isEmpty())
        menu->addAction(tr("&Copy Name"), this,
                        [names]() { QGuiApplication::clipboard()->setText(names.join(QLatin1Char('\n'))); });
    if (!names.isEmpty() && subjects.isEmpty()) // of what is not known
        menu->addAction(tr("Load &Definitions..."), m_desk, &Desk::definitionsWanted);
    menu->addMenu(tr("Co&lumns"))->addActions(m_view->header()->actions());
    return menu;
}

void TypePanel::contextMenuEvent(QContextMenuEvent* event)
{
    QMenu* const menu = createMenu();
    menu->setAttribute(Qt::WA_DeleteOnClose);
    const bool isOfMouse = event->reason() == QContextMenuEvent::Mouse;
    const QRect row = m_view->visualRect(m_view->currentIndex());
    menu->popup(isOfMouse ? event->globalPos() : m_view->viewport()->mapToGlobal(row.bottomLeft()));
}

void TypePanel::setFolded(bool folded)
{
    m_fold->setChecked(folded);
    m_desk->getTypes()->setFolded(folded);
    followGroups();
    m_view->setColumnHidden(MessageTypeModel::SenderColumn, folded);
}

// What is chosen stays so while the list does not show it.
void TypePanel::filter(const QString& text)
{
    const QVector<Subject>& chosen = m_desk->getChosenTypes();
    m_isReset = true;
    m_sorted->setWords(Words::of(text));
    if (!text.isEmpty() && m_desk->getTypes()->isFolded())
        m_view->expandAll();
    choose(QSet<Subject>(chosen.cbegin(), chosen.cend()));
    m_isReset = false;
    m_hint->setText(text.isEmpty() ? tr("Message types appear here as they are received.")
                                   : tr("No type and no sender is called so."));
}

// Counts of what lies below others are asked for when they are painted.
void TypePanel::tick()
{
    followGroups();
    if (m_desk->getTypes()->hasGroups() && !m_desk->isPaused())
        m_view->viewport()->update();
}

void TypePanel::followGroups()
{
    if (m_view->rootIsDecorated() != m_desk->getTypes()->hasGroups())
        m_view->setRootIsDecorated(m_desk->getTypes()->hasGroups());
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
    ColumnChoice::save(m_view->header(), MessageTypeModel::CountColumn, settings, QLatin1String(ColumnsKey));
}

void TypePanel::restoreSettings(QSettings& settings)
{
    m_wanted += settings.value(QLatin1String(WantedKey)).toStringList();
    setFolded(settings.value(QLatin1String(FoldedKey)).toBool());
    ColumnChoice::restore(m_view->header(), MessageTypeModel::CountColumn, settings, QLatin1String(ColumnsKey));
}
