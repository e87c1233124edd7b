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

void TreeActions::update()
{
    const TreeRow row(m_tree->currentItem());
    const FieldInfo* const field = row.getPath().getField();
    // Whether there is a value now is seen when it is copied: a value may come while the menu is open.
    m_copyValue->setEnabled(field);
    m_copyRaw->setEnabled(field);
    m_copyPath->setEnabled(!row.isNull());
    m_copyJson->setEnabled(!row.isNull());
    for (const FieldUse& use : m_desk->getFieldUses())
        use.action->setEnabled(use.refusal.isEmpty() ? field != nullptr : row.isNumeric());
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
            m_tree->setCurrentItem(m_tree->itemAt(m_tree->viewport()->mapFromGlobal(request->globalPos())));
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

void TreeActions::copyValue()
{
    copy(TreeRow(m_tree->currentItem()).getValueText());
}

void TreeActions::copyRaw()
{
    copy(TreeRow(m_tree->currentItem()).getRawValueText());
}

void TreeActions::copyPath()
{
    copy(TreeRow(m_tree->currentItem()).getPath().getExpression());
}

void TreeActions::copyJson()
{
    copy(TreeRow(m_tree->currentItem()).getJson());
}

void TreeActions::take(const FieldUse& use)
{
    const TreeRow row(m_tree->currentItem());
    const Subject subject = row.getSubject();
    const bool isTold = !subject.sender.isEmpty() && m_desk->getTypes()->isFromSeveral(subject.info);
    if (!use.refusal.isEmpty() && !row.isNumeric())
        say(use.refusal);
    else if (row.getPath().getField())
        use.take(row.getPath(), {subject.sender, isTold});
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
