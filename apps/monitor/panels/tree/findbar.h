#ifndef FINDBAR_H
#define FINDBAR_H

#include <QWidget>

class LatestMessageSource;
class MessageTreeWidget;
class QLabel;
class QLineEdit;
class QMenu;
class QShortcut;
class QToolBar;
class TreeFilter;
class TreeRows;

/** A bar above the message tree in which somebody types what to look for; hidden until it is asked for. */
class FindBar : public QWidget
{
    Q_OBJECT

public:
    /** All borrowed. */
    FindBar(MessageTreeWidget* tree, TreeRows* rows, LatestMessageSource* latest, QWidget* parent = nullptr);

    /** Adds the actions that find something, with their keys; the first of them to @p bar as well. */
    void addActionsTo(QMenu* menu, QToolBar* bar);
    /** Lets the keys of these do what they do in the tree. */
    void addRowActions(const QList<QAction*>& actions);

    /** Whether the actions can be used, because there is a tree to be seen. */
    void setAvailable(bool available);

    QLineEdit* getEdit() const { return m_edit; }
    TreeFilter* getFilter() const { return m_filter; }

public Q_SLOTS:
    /** Shows the bar with its text selected. */
    void open();
    /** Shows the bar and looks for @p text. */
    void find(const QString& text);
    /** Hides the bar; the tree is as it was before. */
    void close();
    void findNext();
    void findPrevious();

protected:
    void keyPressEvent(QKeyEvent* event) override;
    bool eventFilter(QObject* watched, QEvent* event) override;

private:
    void apply();
    void showResult();
    void goToMatch(bool forward);

    MessageTreeWidget* m_tree;
    TreeFilter* m_filter;
    QLineEdit* m_edit;
    QLabel* m_result;
    QShortcut* m_escape;
    QList<QAction*> m_actions;
};

#endif
