#ifndef TREEPANEL_H
#define TREEPANEL_H

#include "panel.h"

#include <QObject>
#include <QVector>

#include <memory>

class ChangeHighlighter;
class FindBar;
class MessageTreeWidget;
class PinnedTypes;
class QAction;
class QActionGroup;
class ReadingTree;
class RowToolTips;
class SilenceWatch;
class TreeActions;
class TreeHint;
class TreeRows;
class UnsetRows;
class ValueDelegate;

/** The message tree, with everything that helps to read it: find, pins, copies, tool tips, shades and silence. */
class TreePanel : public QObject, public Panel
{
    Q_OBJECT

public:
    explicit TreePanel(Desk* desk);
    ~TreePanel() override;

    MessageTreeWidget* getTree() const;
    FindBar* getFindBar() const { return m_findBar; }
    TreeRows* getRows() const { return m_rows; }
    TreeActions* getActions() const { return m_actions; }
    SilenceWatch* getSilence() const { return m_silence; }
    ChangeHighlighter* getHighlighter() const { return m_highlighter; }
    const RowToolTips* getToolTips() const { return m_toolTips; }
    UnsetRows* getUnset() const { return m_unset; }
    /** Draws the values; knows what a cell says to a reader. */
    const ValueDelegate* getValues() const { return m_values; }

    QWidget* getWidget() override { return m_widget.get(); }
    void addActionsTo(const PanelMenus& menus) override;
    void saveSettings(QSettings& settings) override;
    void restoreSettings(QSettings& settings) override;
    void followPreferences(const Preferences& preferences) override;
    void tick() override;
    void renew() override;
    void forget(const MessageInfo* info) override;

protected:
    bool eventFilter(QObject* watched, QEvent* event) override;

private:
    void createTools();
    void createActions();
    void createArrangements();
    void showArrangement();
    void giveColumnsTheirWidths();
    void followWidth();
    bool isSqueezed() const;
    void tellStatus();

    Desk* m_desk;
    std::unique_ptr<QWidget> m_widget; // the find bar above the tree
    ReadingTree* m_tree;
    ValueDelegate* m_values;
    QVector<int> m_wantedWidths; // of columns, while the tree is too narrow for them
    QVector<int> m_givenWidths;  // meanwhile
    FindBar* m_findBar;
    std::unique_ptr<PinnedTypes> m_pins;
    TreeRows* m_rows;
    TreeActions* m_actions;
    SilenceWatch* m_silence;
    RowToolTips* m_toolTips;
    ChangeHighlighter* m_highlighter;
    UnsetRows* m_unset;
    TreeHint* m_hint;
    QActionGroup* m_arrangements; // the number of each is its action's data
    QAction* m_addAll;
    QAction* m_removeAll;
    QAction* m_addAutomatically;
    QAction* m_collapse;
    QAction* m_expand;
    QAction* m_virtualFields;
    QAction* m_primaryOnly;
    QAction* m_hideUnset;
};

#endif
