#ifndef STATISTICSPANEL_H
#define STATISTICSPANEL_H

#include "panel.h"

#include <QElapsedTimer>
#include <QObject>

#include <memory>

class MessageStatisticsWidget;
class QTreeWidgetItem;
struct Subject;

/** How often and how regularly messages come: double-click goes to a gap. */
class StatisticsPanel : public QObject, public Panel
{
    Q_OBJECT

public:
    explicit StatisticsPanel(Desk* desk);
    ~StatisticsPanel() override;

    MessageStatisticsWidget* getStatistics() const { return m_widget.get(); }

    QWidget* getWidget() override;
    void addActionsTo(const PanelMenus& menus) override;
    void saveSettings(QSettings& settings) override;
    void restoreSettings(QSettings& settings) override;
    void tick() override;

protected:
    bool eventFilter(QObject* watched, QEvent* event) override;

private:
    void reveal(const Subject& subject);
    void jumpToGap(QTreeWidgetItem* item);
    void update();

    Desk* m_desk;
    std::unique_ptr<MessageStatisticsWidget> m_widget;
    QElapsedTimer m_sinceUpdate;
    qint64 m_updateTime = 0; // nanoseconds that the last one took
};

#endif
