#ifndef TREEACTIONS_H
#define TREEACTIONS_H

#include "fieldpath.h"

#include <QObject>

class MessageTreeWidget;
class PinnedTypes;
class QAction;
class QMenu;
class QPoint;

/** What can be done with a row of the message tree: by its context menu, by keys and from a menu of the window. */
class TreeActions : public QObject
{
    Q_OBJECT

public:
    /** Both borrowed. */
    TreeActions(MessageTreeWidget* tree, PinnedTypes* pins, QObject* parent = nullptr);

    /** The actions that copy something. */
    QList<QAction*> getCopyActions() const { return {m_copyValue, m_copyRaw, m_copyPath, m_copyJson}; }
    /** The actions that show a row elsewhere, or in another place. */
    QList<QAction*> getShowActions() const { return {m_watch, m_plot, m_pin}; }

    /** What the current row allows; called by itself before the actions are used. */
    void update();
    /** Plots the current row, or says why not. */
    void plot();

Q_SIGNALS:
    void watchRequested(const QString& expression);
    void plotRequested(const FieldPath& path);
    /** Something was done that cannot be seen. */
    void said(const QString& text);

protected:
    bool eventFilter(QObject* watched, QEvent* event) override;

private:
    QAction* addAction(const QString& text, const QKeySequence& key, void (TreeActions::*slot)());
    void showMenu(const QPoint& globalPosition);
    void copy(const QString& text);
    void copyValue();
    void copyRaw();
    void copyPath();
    void copyJson();
    void watch();
    void togglePinned();

    MessageTreeWidget* m_tree;
    PinnedTypes* m_pins;
    QAction* m_copyValue;
    QAction* m_copyRaw;
    QAction* m_copyPath;
    QAction* m_copyJson;
    QAction* m_watch;
    QAction* m_plot;
    QAction* m_pin;
};

#endif
