#include "treehint.h"

#include "desk.h"
#include "messagetreewidget.h"
#include "treefilter.h"

#include <QVBoxLayout>

TreeHint::TreeHint(MessageTreeWidget* tree, const TreeFilter* filter, Desk* desk)
    : QLabel(tree->viewport())
    , m_tree(tree)
    , m_filter(filter)
    , m_desk(desk)
{
    Theme::makeHint(this);
    setAttribute(Qt::WA_TransparentForMouseEvents);
    QVBoxLayout* const layout = new QVBoxLayout(tree->viewport());
    layout->addWidget(this);
    follow();
}

void TreeHint::follow()
{
    const bool nothingFound =
        m_filter->isActive() && m_filter->getErrorString().isEmpty() && m_filter->getMatchCount() == 0;
    setVisible(m_tree->topLevelItemCount() == 0 || nothingFound);
    setText(reason());
}

QString TreeHint::reason() const
{
    if (m_tree->topLevelItemCount() > 0)
        return tr("Nothing matches what is searched for; Esc shows everything again.");
    if (m_desk->getTypes()->rowCount() > 0)
        return tr("Tick a message type in the list to see its fields here, or add all of them (Ctrl+Shift+A).");
    const SourceSession* const session = m_desk->getChosenSource();
    if (!session)
        return tr("Open a recording (Ctrl+O), connect to a device (Ctrl+K), or drop a recording here.");
    if (!session->getErrorText().isEmpty())
        return tr("%1: %2").arg(session->getName(), session->getErrorText());
    const int percent = session->getSource()->getPreparedPercent();
    if (percent < 0)
        return tr("Waiting for messages from %1 ...").arg(session->getName());
    return tr("Looking through %1: %2 % are done. Close the source to cancel.").arg(session->getName()).arg(percent);
}
