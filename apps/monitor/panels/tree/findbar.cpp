#include "findbar.h"

#include "icons.h"
#include "labels.h"
#include "messagetreewidget.h"
#include "treefilter.h"

#include <QAction>
#include <QHBoxLayout>
#include <QKeyEvent>
#include <QLabel>
#include <QLineEdit>
#include <QLocale>
#include <QMenu>
#include <QShortcut>
#include <QStyle>
#include <QToolBar>
#include <QToolButton>

FindBar::FindBar(MessageTreeWidget* tree, TreeRows* rows, LatestMessageSource* latest, QWidget* parent)
    : QWidget(parent)
    , m_tree(tree)
    , m_filter(new TreeFilter(tree, rows, latest, this))
    , m_edit(new QLineEdit)
    , m_result(new QLabel)
{
    m_edit->setPlaceholderText(tr("Type, field or value, or a path such as */ATTITUDE/roll"));
    m_edit->setAccessibleName(tr("Find in the message tree"));
    m_edit->setClearButtonEnabled(true);
    m_edit->installEventFilter(this);
    setToldName(m_result, tr("Matches"));
    m_result->setMinimumWidth(m_result->fontMetrics().horizontalAdvance(tr("Not a path yet"))); // the line stands still
    QLabel* const label = new QLabel(tr("Fi&nd:"));
    label->setBuddy(m_edit);

    QAction* const open = new QAction(tr("&Find..."), this);
    open->setShortcut(QKeySequence::Find);
    open->setIcon(Icons::create(Icons::Find));
    open->setIconText(tr("Find"));
    open->setToolTip(tr("Show only what matches a text (%1)").arg(open->shortcut().toString(QKeySequence::NativeText)));
    connect(open, &QAction::triggered, this, &FindBar::open);
    QAction* const next = new QAction(tr("Find &Next"), this);
    next->setShortcut(QKeySequence(Qt::Key_F3));
    connect(next, &QAction::triggered, this, &FindBar::findNext);
    QAction* const previous = new QAction(tr("Find Pre&vious"), this);
    previous->setShortcut(QKeySequence(Qt::SHIFT | Qt::Key_F3));
    connect(previous, &QAction::triggered, this, &FindBar::findPrevious);
    m_actions = {open, next, previous};

    QHBoxLayout* const layout = new QHBoxLayout(this);
    layout->setContentsMargins(6, 3, 6, 3);
    layout->addWidget(label);
    layout->addWidget(m_edit, 1);
    layout->addWidget(m_result);
    const auto addButton = [this, layout](Qt::ArrowType arrow, const QString& name, const QString& toolTip,
                                          void (FindBar::*slot)()) {
        QToolButton* const button = new QToolButton;
        button->setAutoRaise(true);
        button->setAccessibleName(name);
        button->setToolTip(toolTip);
        if (arrow == Qt::NoArrow)
            button->setIcon(style()->standardIcon(QStyle::SP_TitleBarCloseButton));
        else
            button->setArrowType(arrow);
        connect(button, &QToolButton::clicked, this, slot);
        layout->addWidget(button);
    };
    addButton(Qt::UpArrow, tr("Previous match"), tr("Previous match (Shift+F3)"), &FindBar::findPrevious);
    addButton(Qt::DownArrow, tr("Next match"), tr("Next match (F3)"), &FindBar::findNext);
    addButton(Qt::NoArrow, tr("Close the find bar"), tr("Close and show everything (Esc)"), &FindBar::close);

    // The tree has no use of its own for the key; from there as from here it ends the search.
    m_escape = new QShortcut(QKeySequence(Qt::Key_Escape), tree);
    m_escape->setContext(Qt::WidgetShortcut);
    m_escape->setEnabled(false);
    connect(m_escape, &QShortcut::activated, this, &FindBar::close);
    connect(m_edit, &QLineEdit::textChanged, this, &FindBar::apply);
    connect(m_filter, &TreeFilter::matchCountChanged, this, &FindBar::showResult);
    hide();
}

void FindBar::addActionsTo(QMenu* menu, QToolBar* bar)
{
    menu->addActions(m_actions);
    bar->addAction(m_actions.first());
}

void FindBar::addRowActions(const QList<QAction*>& actions)
{
    for (QAction* const action : actions)
        static_cast<QWidget*>(m_edit)->addAction(action); // the line's own operation would make a button of it
}

void FindBar::setAvailable(bool available)
{
    for (QAction* const action : std::as_const(m_actions))
        action->setEnabled(available);
}

// A line to type in takes some keys for itself that mean something in the window, such as Ctrl+K.
bool FindBar::eventFilter(QObject* watched, QEvent* event)
{
    if (event->type() != QEvent::ShortcutOverride)
        return QWidget::eventFilter(watched, event);
    const auto* const key = static_cast<QKeyEvent*>(event);
    const bool isOfWindow = key->modifiers() == Qt::ControlModifier &&
                            (key->key() == Qt::Key_K || key->key() == Qt::Key_D || key->key() == Qt::Key_E);
    if (!isOfWindow)
        return QWidget::eventFilter(watched, event);
    event->ignore();
    return true;
}

void FindBar::open()
{
    show();
    m_escape->setEnabled(true);
    m_edit->setFocus(Qt::ShortcutFocusReason);
    m_edit->selectAll();
    apply();
}

void FindBar::find(const QString& text)
{
    m_edit->setText(text);
    open();
}

void FindBar::close()
{
    hide();
    m_escape->setEnabled(false);
    m_filter->setText(QString());
    m_tree->setFocus();
}

void FindBar::apply()
{
    m_filter->setText(m_edit->text());
    showResult();
}

void FindBar::showResult()
{
    const QString error = m_filter->getErrorString();
    const int count = m_filter->getMatchCount();
    m_result->setToolTip(error);
    if (!m_filter->isActive())
        m_result->clear();
    else if (!error.isEmpty())
        m_result->setText(tr("Not a path yet"));
    else if (count == 0)
        m_result->setText(m_filter->isBusy() ? tr("Looking ...") : tr("Nothing found"));
    else
        m_result->setText((count == 1 ? tr("1 match") : tr("%1 matches").arg(QLocale().toString(count))) +
                          (m_filter->isBusy() ? QString(QChar(0x2026)) : QString()));
}

void FindBar::goToMatch(bool forward)
{
    if (!isVisible())
        open();
    else
        m_filter->goToMatch(forward);
}

void FindBar::findNext()
{
    goToMatch(true);
}

void FindBar::findPrevious()
{
    goToMatch(false);
}

void FindBar::keyPressEvent(QKeyEvent* event)
{
    switch (event->key()) {
    case Qt::Key_Escape:
        close();
        return;
    case Qt::Key_Return:
    case Qt::Key_Enter:
        goToMatch(!(event->modifiers() & Qt::ShiftModifier));
        return;
    case Qt::Key_Down:
        m_tree->setFocus();
        return;
    default:
        QWidget::keyPressEvent(event);
    }
}
