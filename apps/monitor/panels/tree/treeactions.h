#ifndef TREEACTIONS_H
#define TREEACTIONS_H

#include <QObject>
#include <QVector>

class Desk;
class MessageTreeWidget;
class QAction;
class QMenu;
class QPoint;
class QTreeWidgetItem;
class TreeRow;
class TreeRows;
struct FieldUse;

/** What can be done with a row of the message tree: by its context menu, by keys and from a menu of the window. */
class TreeActions : public QObject
{
    Q_OBJECT

public:
    /** All borrowed. */
    TreeActions(MessageTreeWidget* tree, TreeRows* rows, Desk* desk, QObject* parent = nullptr);

    /** The actions that a line to type in has no use of its own for. */
    QList<QAction*> getActionsForLines() const;
    /** The actions that copy something. */
    QList<QAction*> getCopyActions() const { return {m_copyValue, m_copyRaw, m_copyPath, m_copyJson}; }
    /** The actions that show a row elsewhere, as other panels offer it, or in another place. */
    QList<QAction*> getShowActions() const;

    /** What the current row allows; called by itself before the actions are used. */
    void update();

protected:
    bool eventFilter(QObject* watched, QEvent* event) override;

private:
    QAction* addAction(const QString& text, const QKeySequence& key, void (TreeActions::*slot)());
    void addUse(const FieldUse& use);
    void take(const FieldUse& use);
    void showMenu(const QPoint& globalPosition);
    QVector<QTreeWidgetItem*> getChosen() const;
    void copy(const QString& text);
    void copyOfAll(QString (TreeRow::*get)() const, bool withNames);
    void copyValue();
    void copyRaw();
    void copyPath();
    void copyJson();
    void togglePinned();
    void say(const QString& text);

    MessageTreeWidget* m_tree;
    TreeRows* m_rows;
    Desk* m_desk;
    QAction* m_copyValue;
    QAction* m_copyRaw;
    QAction* m_copyPath;
    QAction* m_copyJson;
    QAction* m_pin;
};

#endif
