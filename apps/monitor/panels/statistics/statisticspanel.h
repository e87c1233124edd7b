#ifndef STATISTICSPANEL_H
#define STATISTICSPANEL_H

#include "panel.h"

#include <QHash>
#include <QObject>
#include <QPointer>

#include <memory>

class MessageStatistics;
class MessageStatisticsCoordinator;
class MessageStatisticsWidget;
class QLabel;
class QLineEdit;
class QStackedWidget;
class QTabBar;
class QTreeWidgetItem;
class RecordingOverview;
class StatisticsFilter;
struct Subject;

/**
 * How often and how regularly messages come: double-click goes to a gap.
 *
 * Of what is received, and, where a recording is chosen, of the whole of it, too, which a jump leaves as it is.
 */
class StatisticsPanel : public QObject, public Panel
{
    Q_OBJECT

public:
    explicit StatisticsPanel(Desk* desk);
    ~StatisticsPanel() override;

    /** Of what was received. */
    MessageStatisticsWidget* getStatistics() const { return m_widget; }
    /** Of the whole of the recording that is chosen; null for a live source, and while it is looked through. */
    MessageStatisticsWidget* getWholeStatistics() const { return m_whole; }
    /** Words that the rows have that are shown. */
    QLineEdit* getFilter() const { return m_filter; }
    /** Shows the whole of a recording, where there is one, or what was received. */
    void setWhole(bool whole);

    QWidget* getWidget() override;
    void addActionsTo(const PanelMenus& menus) override;
    void saveSettings(QSettings& settings) override;
    void restoreSettings(QSettings& settings) override;
    void tick() override;

protected:
    bool eventFilter(QObject* watched, QEvent* event) override;

private:
    void reveal(const Subject& subject);
    MessageStatisticsWidget* createWidget(MessageStatisticsCoordinator* coordinator);
    QHash<const MessageStatistics*, QString> getSenders() const;
    QHash<const MessageStatistics*, QString> getWholeSenders() const;
    void filter();
    static void listGaps(QTreeWidgetItem* item);
    void jumpToGap(QTreeWidgetItem* item);
    void update();
    void followOverview();
    void choose(int tab);

    Desk* m_desk;
    std::unique_ptr<QWidget> m_page;
    QTabBar* m_tabs;
    QLineEdit* m_filter;
    QStackedWidget* m_stack;
    MessageStatisticsWidget* m_widget;
    StatisticsFilter* m_shownRows; // of m_widget
    MessageStatisticsWidget* m_whole = nullptr;
    StatisticsFilter* m_shownWholeRows = nullptr; // of m_whole
    QPointer<RecordingOverview> m_overview;       // that m_whole shows
    QLabel* m_progress;
    bool m_wantsWhole = true;
};

#endif
