#ifndef TREEHINT_H
#define TREEHINT_H

#include <QLabel>

class Desk;
class MessageTreeWidget;
class TreeFilter;

/** Says in a message tree without rows why there are none, and what to do next. */
class TreeHint : public QLabel
{
    Q_OBJECT

public:
    /** Lives in @p tree; all borrowed. */
    TreeHint(MessageTreeWidget* tree, const TreeFilter* filter, Desk* desk);

    void follow();

private:
    QString reason() const;

    MessageTreeWidget* m_tree;
    const TreeFilter* m_filter;
    Desk* m_desk;
};

#endif
