#include "treepanel.h"

#include "changehighlighter.h"
#include "desk.h"
#include "findbar.h"
#include "message.h"
#include "pinnedtypes.h"
#include "readingtree.h"
#include "rowtooltips.h"
#include "silencewatch.h"
#include "subjectrow.h"
#include "treeactions.h"
#include "treehint.h"
#include "treerow.h"
#include "treerows.h"
#include "unsetrows.h"
#include "valuedelegate.h"

#include <QAction>
#include <QActionGroup>
#include <QEvent>
#include <QHeaderView>
#include <QMenu>
#include <QSettings>
#include <QTimer>
#include <QVBoxLayout>

static const int LeastCharacters = 24; // whatever docks were wide in a larger window

TreePanel::TreePanel(Desk* desk)
    : m_desk(desk)
    , m_widget(new QWidget)
    , m_tree(new ReadingTree)
    , m_values(new ValueDelegate(m_tree))
{
    m_tree->setAccessibleName(tr("Message tree"));
    m_tree->setAlternatingRowColors(true);
    m_tree->setMinimumWidth(LeastCharacters * m_tree->fontMetrics().averageCharWidth());
    m_tree->header()->resizeSection(0, 260);
    m_tree->header()->resizeSection(1, 90);
    m_values->setName(0);
    m_values->setDigits(desk->getPreferences().digits);
    m_tree->setItemDelegate(m_values);
    m_tree->setSelectionMode(QAbstractItemView::ExtendedSelection);
    m_tree->setDragEnabled(true);
    m_tree->setDragDropMode(QAbstractItemView::DragOnly);
    createTools();
    createActions();
    QVBoxLayout* const layout = new QVBoxLayout(m_widget.get());
    layout->setContentsMargins(0, 0, 0, 0);
    layout->setSpacing(0);
    layout->addWidget(m_findBar);
    layout->addWidget(m_tree, 1);
    m_tree->installEventFilter(this);
    connect(desk, &Desk::arranged, this, &TreePanel::giveColumnsTheirWidths);
}

TreePanel::~TreePanel() = default;

void TreePanel::createTools()
{
    m_pins = std::make_unique<PinnedTypes>(m_tree);
    m_rows = new TreeRows(m_tree, m_pins.get(), m_desk, m_tree); // the first to know of a message
    m_findBar = new FindBar(m_tree, m_rows, m_desk->getLatest());
    m_actions = new TreeActions(m_tree, m_rows, m_desk, m_tree);
    m_silence = new SilenceWatch(m_tree, m_rows, m_desk->getLatest(), m_tree);
    m_toolTips = new RowToolTips(m_tree, m_silence, m_tree);
    m_highlighter = new ChangeHighlighter(m_tree, m_tree);
    m_unset = new UnsetRows(m_tree, m_rows, m_findBar->getFilter(), m_desk->getLatest(), m_tree);
    m_hint = new TreeHint(m_tree, m_findBar->getFilter(), m_desk);
    m_highlighter->setEnabled(m_desk->getPreferences().highlight);
    m_findBar->addRowActions(m_actions->getActionsForLines());
    connect(m_desk, &Desk::fieldUseOffered, m_findBar,
            [this](const FieldUse& use) { m_findBar->addRowActions({use.action}); });
    connect(m_desk, &Desk::senderRenamed, m_silence, &SilenceWatch::renameSender);
    connect(m_rows, &TreeRows::changed, m_hint, &TreeHint::follow);
    connect(m_desk, &Desk::rowWanted, m_rows, &TreeRows::reveal);
    connect(m_desk, &Desk::fieldWanted, m_rows, &TreeRows::revealField);
    connect(m_tree, &QTreeWidget::currentItemChanged, m_desk, [this](QTreeWidgetItem* item) {
        const TreeRow row(item);
        m_desk->setCurrentField(row.getPath(), row.getSubject());
    });
    m_desk->offerTypeUse({[this](const Subject& subject) {
                              return m_rows->isPinned(m_rows->getPinned(subject)) ? tr("Un&pin")
                                                                                  : tr("&Pin to the Top");
                          },
                          [this](const Subject& subject) {
                              const Subject pinned = m_rows->getPinned(subject);
                              m_rows->setPinned(pinned, !m_rows->isPinned(pinned));
                          }});
}

void TreePanel::createActions()
{
    m_addAll = new QAction(tr("&Add All Types"), m_widget.get());
    m_addAll->setShortcut(QKeySequence(tr("Ctrl+Shift+A")));
    connect(m_addAll, &QAction::triggered, m_rows, [this]() { m_rows->chooseAll(true); });
    m_removeAll = new QAction(tr("&Remove All Types"), m_widget.get());
    connect(m_removeAll, &QAction::triggered, m_rows, [this]() { m_rows->chooseAll(false); });
    m_collapse = new QAction(tr("&Collapse All"), m_widget.get());
    connect(m_collapse, &QAction::triggered, m_tree, &QTreeView::collapseAll);
    m_expand = new QAction(tr("&Expand All"), m_widget.get());
    connect(m_expand, &QAction::triggered, m_rows, &TreeRows::expandAll);
    connect(m_expand, &QAction::triggered, m_unset, &UnsetRows::followAll); // perhaps no message comes any more
    createArrangements();

    m_addAutomatically = new QAction(tr("Add New T&ypes Automatically"), m_widget.get());
    m_virtualFields = new QAction(tr("&Virtual Fields"), m_widget.get());
    m_primaryOnly = new QAction(tr("&Primary Fields Only"), m_widget.get());
    m_hideUnset = new QAction(tr("Hide &Unset Fields"), m_widget.get());
    for (QAction* const action : {m_addAutomatically, m_virtualFields, m_primaryOnly, m_hideUnset})
        action->setCheckable(true);
    m_addAutomatically->setChecked(m_rows->mustAddAutomatically());
    m_virtualFields->setChecked(m_tree->mustShowVirtualFields());
    connect(m_addAutomatically, &QAction::toggled, m_rows, &TreeRows::setAddAutomatically);
    connect(m_virtualFields, SIGNAL(toggled(bool)), m_tree, SLOT(setShowVirtualFields(bool)));
    connect(m_primaryOnly, SIGNAL(toggled(bool)), m_tree, SLOT(setShowPrimaryFieldsOnly(bool)));
    connect(m_hideUnset, &QAction::toggled, m_unset, &UnsetRows::setHidden);
}

void TreePanel::createArrangements()
{
    m_arrangements = new QActionGroup(m_widget.get());
    const auto add = [this](TreeRows::Arrangement arrangement, const QString& text, const QString& toolTip) {
        QAction* const action = m_arrangements->addAction(text);
        action->setCheckable(true);
        action->setData(int(arrangement));
        action->setStatusTip(toolTip);
    };
    add(TreeRows::ByType, tr("By &Type"), tr("A row for each type, with the newest message of whoever sent it"));
    add(TreeRows::ByTypeAndSender, tr("By Type and S&ender"), tr("A row for each type of each sender"));
    add(TreeRows::BySender, tr("By &Sender"), tr("A row for each sender, with its types below"));
    connect(m_arrangements, &QActionGroup::triggered, m_rows,
            [this](const QAction* action) { m_rows->setArrangement(TreeRows::Arrangement(action->data().toInt())); });
    showArrangement();
}

void TreePanel::showArrangement()
{
    const QList<QAction*> actions = m_arrangements->actions();
    for (QAction* const action : actions)
        action->setChecked(action->data().toInt() == m_rows->getArrangement());
}

void TreePanel::addActionsTo(const PanelMenus& menus)
{
    menus.edit->addActions(m_actions->getCopyActions());
    menus.edit->addSeparator();
    m_findBar->addActionsTo(menus.edit, menus.bar);

    menus.tree->addActions({m_addAll, m_removeAll, m_addAutomatically});
    menus.tree->addSeparator();
    menus.tree->addActions({m_expand, m_collapse});
    menus.tree->addSeparator();
    menus.tree->addActions(m_actions->getShowActions());
    for (QMenu* const menu : {menus.edit, menus.tree})
        connect(menu, &QMenu::aboutToShow, m_actions, &TreeActions::update);

    QList<QAction*> columns; // which a vector is in Qt 6 only
    for (QAction* action : m_tree->getToggleColumnActions())
        columns.append(action);
    menus.view->addMenu(tr("&Rows"))->addActions(m_arrangements->actions());
    menus.view->addMenu(tr("&Columns"))->addActions(columns);
    m_tree->header()->setContextMenuPolicy(Qt::ActionsContextMenu);
    m_tree->header()->addActions(columns);
    menus.view->addSeparator();
    menus.view->addActions({m_virtualFields, m_primaryOnly, m_hideUnset});
}

static QVector<int> widthsOf(const QHeaderView* header)
{
    return {header->sectionSize(0), header->sectionSize(1)};
}

static void setWidths(QHeaderView* header, const QVector<int>& widths)
{
    for (int column = 0; column < widths.size(); ++column)
        header->resizeSection(column, widths.at(column));
}

void TreePanel::giveColumnsTheirWidths()
{
    // Once the docks have left the tree what it gets.
    QTimer::singleShot(0, m_tree, [this]() {
        m_wantedWidths.clear();
        setWidths(m_tree->header(), {m_tree->width() * 2 / 5, m_tree->width() / 6});
    });
}

// Unless the user gave them other widths since.
bool TreePanel::isSqueezed() const
{
    return !m_wantedWidths.isEmpty() && widthsOf(m_tree->header()) == m_givenWidths;
}

// Beside a plot that was just opened, values are what the tree is for; when there is room again, names have theirs.
void TreePanel::followWidth()
{
    QHeaderView* const header = m_tree->header();
    const int most = m_tree->width() * 2 / 3;
    if (!isSqueezed()) {
        m_wantedWidths.clear();
        if (header->sectionPosition(m_tree->getColumnIndex(MessageTreeWidget::ValueColumn)) <= most)
            return;
        m_wantedWidths = widthsOf(header);
    }
    const bool hasRoom = m_wantedWidths.at(0) + m_wantedWidths.at(1) <= most;
    setWidths(header, hasRoom ? m_wantedWidths : QVector<int>{m_tree->width() * 2 / 5, m_tree->width() / 6});
    m_givenWidths = widthsOf(header);
    if (hasRoom)
        m_wantedWidths.clear();
}

// Rows keep the colours that they were given.
bool TreePanel::eventFilter(QObject* watched, QEvent* event)
{
    if (event->type() == QEvent::PaletteChange) {
        m_highlighter->clear();
        m_silence->followPalette();
        m_rows->followPalette();
    }
    if (event->type() == QEvent::Resize)
        QTimer::singleShot(0, m_tree, [this]() { followWidth(); });
    return QObject::eventFilter(watched, event);
}

void TreePanel::followPreferences(const Preferences& preferences)
{
    m_silence->setIntervals(preferences.silentIntervals);
    if (preferences.highlight != m_highlighter->isEnabled())
        m_highlighter->setEnabled(preferences.highlight);
    m_values->setDigits(preferences.digits);
    m_tree->viewport()->update();
}

void TreePanel::tick()
{
    m_hint->follow();
    m_findBar->setAvailable(m_desk->getSources()->getCount() > 0); // the start page has nothing to find
    if (!m_desk->isPaused())
        tellStatus();
}

// Of the rows that somebody can see.
void TreePanel::tellStatus()
{
    const MessageTypeModel* const types = m_desk->getTypes();
    const QList<QTreeWidgetItem*> rows = m_tree->getRowsOnScreen();
    for (QTreeWidgetItem* const item : rows) {
        auto* const row = dynamic_cast<SubjectRow*>(item);
        if (!row || !m_silence->describe(row->getSubject()).isEmpty())
            continue; // which says more
        Subject subject = row->getSubject();
        if (subject.sender.isEmpty() && row->getDisplayedMessage())
            subject.sender = row->getDisplayedMessage()->getSender();
        const bool isTold = row->isSenderShown() || item->parent() || subject.sender.isEmpty();
        QStringList texts = types->describe(subject);
        if (!isTold)
            texts.prepend(subject.sender);
        row->setStatus(texts.join(QStringLiteral(" \u00b7 ")));
    }
}

MessageTreeWidget* TreePanel::getTree() const
{
    return m_tree;
}

void TreePanel::renew()
{
    m_tree->reconfigureTopLevelAbstractMessageTreeWidgetItems();
}

void TreePanel::forget(const MessageInfo* info)
{
    m_rows->forget(info);
    m_silence->forget(info);
}

void TreePanel::saveSettings(QSettings& settings)
{
    settings.beginGroup(QLatin1String("tree"));
    const bool squeezed = isSqueezed(); // which holds for this window only
    if (squeezed)
        setWidths(m_tree->header(), m_wantedWidths);
    m_tree->saveSettings(settings);
    if (squeezed)
        setWidths(m_tree->header(), m_givenWidths);
    m_tree->saveExpansionState(settings);
    settings.setValue(QLatin1String("showVirtualFields"), m_virtualFields->isChecked());
    settings.setValue(QLatin1String("primaryFieldsOnly"), m_primaryOnly->isChecked());
    m_rows->saveSettings(settings);
    m_unset->saveSettings(settings);
    settings.endGroup();
}

void TreePanel::restoreSettings(QSettings& settings)
{
    settings.beginGroup(QLatin1String("tree"));
    m_virtualFields->setChecked(settings.value(QLatin1String("showVirtualFields"), true).toBool());
    m_primaryOnly->setChecked(settings.value(QLatin1String("primaryFieldsOnly"), false).toBool());
    m_unset->restoreSettings(settings);
    m_hideUnset->setChecked(m_unset->isHidden());
    m_rows->restoreSettings(settings);
    showArrangement();
    m_addAutomatically->setChecked(m_rows->mustAddAutomatically());
    m_tree->loadExpansionState(settings);
    if (settings.contains(QLatin1String("headerstate")))
        m_tree->restoreSettings(settings);
    settings.endGroup();
}
