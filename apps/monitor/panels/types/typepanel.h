#ifndef TYPEPANEL_H
#define TYPEPANEL_H

#include "panel.h"
#include "subject.h"

#include <QSet>
#include <QStringList>
#include <QWidget>

class QContextMenuEvent;
class QLabel;
class QLineEdit;
class QMenu;
class QModelIndex;
class QToolButton;
class QTreeView;
class SortedTypes;

/** The list of the message types that came. Those that are ticked are in the tree, those that are chosen are forms. */
class TypePanel : public QWidget, public Panel
{
    Q_OBJECT

public:
    explicit TypePanel(Desk* desk, QWidget* parent = nullptr);

    QTreeView* getView() const { return m_view; }
    QLineEdit* getFilter() const { return m_filter; }
    /** Lets each sender have a row, with those of its types below. */
    void setFolded(bool folded);

    /** Chooses these types, by their names, as soon as they are received. */
    void chooseWhenSeen(const QStringList& types) { m_wanted += types; }

    QWidget* getWidget() override { return this; }
    void saveSettings(QSettings& settings) override;
    void restoreSettings(QSettings& settings) override;
    void tick() override;

    /** What can be done with the rows that are chosen; the caller's. */
    QMenu* createMenu();

protected:
    void contextMenuEvent(QContextMenuEvent* event) override;

private:
    void createView();
    void followCurrent(const QModelIndex& current);
    void keepOnly(const QVector<Subject>& subjects);
    QVector<Subject> getSelected() const;
    void filter(const QString& text);
    void processSeen(const QVector<Subject>& subjects);
    void choose(const QSet<Subject>& subjects);
    void rememberChosen();
    void followGroups();
    void rememberView();
    void restoreView();
    void tellChosen();

    Desk* m_desk;
    SortedTypes* m_sorted;
    QLineEdit* m_filter;
    QToolButton* m_fold;
    QTreeView* m_view;
    QLabel* m_hint;
    QStringList m_wanted; // names of types, and perhaps their senders behind a tab
    bool m_isReset = false;
    QSet<QString> m_unfolded; // senders, while the list begins anew
};

#endif
