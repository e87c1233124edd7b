#include "treeactions.h"

#include "desk.h"
#include "messageinfo.h"
#include "messagetreewidget.h"
#include "treerow.h"
#include "treerows.h"

#include <QAction>
#include <QClipboard>
#include <QContextMenuEvent>
#include <QGuiApplication>
#include <QMenu>

#include <algorithm>
#include <vector>

static const int MostTold = 60; // characters of what was copied
static const int SaidMilliseconds = 4000;

TreeActions::TreeActions(MessageTreeWidget* tree, TreeRows* rows, Desk* desk, QObject* parent)
    : QObject(parent)
    , m_tree(tree)
    , m_rows(rows)
    , m_desk(desk)
{
    m_copyValue = addAction(tr("&Copy Value"), QKeySequence::Copy, &TreeActions::copyValue);
    m_copyRaw = addAction(tr("Copy &Raw Value"), QKeySequence(tr("Ctrl+Shift+C")), &TreeActions::copyRaw);
    m_copyPath = addAction(tr("Copy &Path"), QKeySequence(tr("Ctrl+Alt+C")), &TreeActions::copyPath);
    m_copyJson = addAction(tr("Copy as &JSON"), QKeySequence(tr("Ctrl+J")), &TreeActions::copyJson);
    m_pin = addAction(tr("Pi&n"), QKeySequence(tr("Ctrl+D")), &TreeActions::togglePinned);
    for (const FieldUse& use : desk->getFieldUses())
        addUse(use);
    connect(desk, &Desk::fieldUseOffered, this, &TreeActions::addUse); // by panels that come later
    tree->setContextMenuPolicy(Qt::DefaultContextMenu);
    tree->installEventFilter(this);
    tree->viewport()->installEventFilter(this);
    connect(tree, &QTreeWidget::currentItemChanged, this, &TreeActions::update);
    connect(tree, &QTreeWidget::itemSelectionChanged, this, &TreeActions::update);
    update();
}

QAction* TreeActions::addAction(const QString& text, const QKeySequence& key, void (TreeActions::*slot)())
{
    QAction* const action = new QAction(text, this);
    action->setShortcut(key);
    action->setShortcutContext(Qt::WidgetShortcut);
    connect(action, &QAction::triggered, this, slot);
    m_tree->addAction(action);
    return action;
}

void TreeActions::addUse(const FieldUse& use)
{
    use.action->setShortcutContext(Qt::WidgetShortcut);
    connect(use.action, &QAction::triggered, this, [this, use]() { take(use); });
    m_tree->addAction(use.action);
    update();
}

QList<QAction*> TreeActions::getShowActions() const
{
    QList<QAction*> actions;
    for (const FieldUse& use : m_desk->getFieldUses())
        actions.append(use.action);
    return actions << m_pin;
}

QList<QAction*> TreeActions::getActionsForLines() const
{
    return getShowActions() << m_copyPath << m_copyJson;
}

/** The rows that are chosen, from above; the current one where it is the only one. */
QVector<QTreeWidgetItem*> TreeActions::getChosen() const
{
    const QList<QTreeWidgetItem*> items = m_tree->selectedItems();
    if (items.size() < 2)
        return {m_tree->currentItem()};
    std::vector<std::pair<int, QTreeWidgetItem*>> places;
    for (QTreeWidgetItem* const item : items)
        places.emplace_back(m_tree->visualItemRect(item).top(), item);
    std::sort(places.begin(), places.end());
    QVector<QTreeWidgetItem*> chosen;
    for (const auto& place : places)
        chosen.append(place.second);
    return chosen;
}

void TreeActions::update()
{
    bool isField = false;
    bool isNumber = false;
    int rows = 0;
    QList<QTreeWidgetItem*> items = m_tree->selectedItems();
    if (items.isEmpty())
        items.append(m_tree->currentItem());
    for (int i = 0; i < items.size() && !(rows > 1 && isField && isNumber); ++i) {
        const TreeRow row(items.at(i));
        rows += row.isNull() ? 0 : 1;
        isField = isField || row.getPath().getField();
        isNumber = isNumber || row.isNumeric();
    }
    const bool isRow = rows > 0;
    // Whether there is a value now is seen when it is copied: a value may come while the menu is open.
    m_copyValue->setEnabled(isField);
    m_copyRaw->setEnabled(isField);
    m_copyPath->setEnabled(isRow);
    m_copyJson->setEnabled(isRow);
    for (const FieldUse& use : m_desk->getFieldUses())
        use.action->setEnabled(use.takeAll             ? rows > 1
                               : use.takesTypes        ? isRow
                               : use.refusal.isEmpty() ? isField
                                                       : isNumber);
    const Subject pinned = m_rows->getPinned(m_tree->currentItem());
    QString name = pinned.sender;
    if (pinned.info)
        name = pinned.info->getName() + (name.isEmpty() ? QString() : QLatin1Char(' ') + name);
    m_pin->setEnabled(!name.isEmpty());
    m_pin->setText(name.isEmpty()             ? tr("Pi&n")
                   : m_rows->isPinned(pinned) ? tr("Unpi&n %1").arg(name)
                                              : tr("Pi&n %1 to the Top").arg(name));
}

bool TreeActions::eventFilter(QObject* watched, QEvent* event)
{
    if (event->type() == QEvent::ContextMenu) {
        const auto* const request = static_cast<QContextMenuEvent*>(event);
        if (request->reason() == QContextMenuEvent::Mouse) {
            QTreeWidgetItem* const item = m_tree->itemAt(m_tree->viewport()->mapFromGlobal(request->globalPos()));
            if (!item || !item->isSelected())
                m_tree->setCurrentItem(item);
            showMenu(request->globalPos());
        } else if (m_tree->currentItem()) {
            const QRect rect = m_tree->visualItemRect(m_tree->currentItem());
            showMenu(m_tree->viewport()->mapToGlobal(rect.bottomLeft()));
        }
        return true;
    }
    return QObject::eventFilter(watched, event);
}

void TreeActions::showMenu(const QPoint& globalPosition)
{
    update();
    if (!m_copyPath->isEnabled() && !m_pin->isEnabled())
        return;
    QMenu* const menu = new QMenu(m_tree);
    menu->setAttribute(Qt::WA_DeleteOnClose);
    menu->addActions(getShowActions());
    menu->addSeparator();
    menu->addActions(getCopyActions());
    menu->popup(globalPosition);
}

void TreeActions::copy(const QString& text)
{
    if (text.isEmpty()) {
        say(tr("There is nothing to copy yet."));
        return;
    }
    QGuiApplication::clipboard()->setText(text);
    const QString line = text.section(QLatin1Char('\n'), 0, 0);
    say(tr("Copied: %1").arg(line.size() > MostTold ? line.left(MostTold) + QChar(0x2026) : line));
}

/** Copies what @p get has of each row that is chosen; of several, each with its name in a line of a table. */
void TreeActions::copyOfAll(QString (TreeRow::*get)() const, bool withNames)
{
    QStringList lines;
    const QVector<QTreeWidgetItem*> items = getChosen();
    for (QTreeWidgetItem* const item : items) {
        const TreeRow row(item);
        const QString text = row.isNull() ? QString() : (row.*get)();
        if (!text.isEmpty())
            lines.append(withNames && items.size() > 1 ? row.getPath().getFieldName() + QLatin1Char('\t') + text
                                                       : text);
    }
    copy(lines.join(QLatin1Char('\n')));
}

void TreeActions::copyValue()
{
    copyOfAll(&TreeRow::getValueText, true);
}

void TreeActions::copyRaw()
{
    copyOfAll(&TreeRow::getRawValueText, true);
}

void TreeActions::copyPath()
{
    copyOfAll(&TreeRow::getExpression, false);
}

void TreeActions::copyJson()
{
    copyOfAll(&TreeRow::getJson, false);
}

void TreeActions::take(const FieldUse& use)
{
    bool isRefused = false;
    QVector<FieldUse::Row> fields; // of all rows first: what is done with one may change the tree
    const QVector<QTreeWidgetItem*> items = getChosen();
    for (QTreeWidgetItem* const item : items) {
        const TreeRow row(item);
        const Subject subject = row.getSubject();
        const bool isTold = !subject.sender.isEmpty() && m_desk->getTypes()->isFromSeveral(subject.info);
        if (!use.refusal.isEmpty() && !row.isNumeric())
            isRefused = true;
        else if (row.getPath().getField() || ((use.takeAll || use.takesTypes) && !row.isNull()))
            fields.append({row.getPath(), {subject.sender, isTold}});
    }
    if (use.takeAll && fields.size() > 1)
        use.takeAll(fields);
    for (const FieldUse::Row& field : std::as_const(fields))
        if (!use.takeAll)
            use.take(field.path, field.origin);
    if (isRefused && fields.isEmpty())
        say(use.refusal);
    update();
}

void TreeActions::say(const QString& text)
{
    Q_EMIT m_desk->said(text, SaidMilliseconds);
}

void TreeActions::togglePinned()
{
    const Subject pinned = m_rows->getPinned(m_tree->currentItem());
    m_rows->setPinned(pinned, !m_rows->isPinned(pinned));
    update();
}
