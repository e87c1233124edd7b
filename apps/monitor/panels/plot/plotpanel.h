#ifndef PLOTPANEL_H
#define PLOTPANEL_H

#include "fieldpath.h"

#include <QHash>
#include <QSet>
#include <QTimer>
#include <QWidget>

#include <memory>
#include <vector>

class LatestMessageSource;
class Message;
class PlotSeries;
class PlotView;
class QAction;
class QComboBox;
class QLabel;
class QSplitter;
class QToolBar;
class QTreeWidget;
class QTreeWidgetItem;

/** Draws the last minutes of some fields, live, with a list that tells their values now. */
class PlotPanel : public QWidget
{
    Q_OBJECT

public:
    /** @param latest  the picture stays while it is suspended; its newest messages begin a series. Borrowed. */
    explicit PlotPanel(LatestMessageSource* latest, QWidget* parent = nullptr);
    ~PlotPanel() override;

    /** Draws a field from now on, of each sender of its messages. */
    void addField(const FieldPath& path);
    /** Removes the series that is chosen in the list, or all. */
    void removeCurrent();
    void removeAll();

    /** A sender has another name now; its series go on. */
    void renameSender(const QString& before, const QString& now);
    /** Draws so many times a second at most. */
    void setRate(int rate) { m_timer.setInterval(1000 / rate); }

    /** The types of whose messages every one should be given to processMessage(). */
    const QSet<const MessageInfo*>& getTypes() const { return m_types; }

    /** The user's pause: what comes is kept, and the picture stays. */
    bool isPaused() const;
    void setPaused(bool paused);

    const std::vector<std::unique_ptr<PlotSeries>>& getSeries() const { return m_series; }
    PlotView* getView() const { return m_view; }
    QTreeWidget* getLegend() const { return m_legend; }

    /** What is kept of all series as comma-separated values: a line for each time, a column for each series. */
    QByteArray toCsv() const;

    /** Draws what came since the last time; called by a timer. */
    void refresh();
    /** Writes the values in the list anew, as they are to be written now. */
    void showValues();
    /** Removes all series of fields that are not to be shown now; returns the expressions that name them. */
    QStringList removeHidden();
    /** The expressions that name the fields, each once. */
    QStringList getExpressions() const;

public Q_SLOTS:
    void processMessage(const Message* message);

Q_SIGNALS:
    /** getTypes() changed. */
    void typesChanged();
    /** The row of the tree that is current was dropped here. */
    void rowDropped();
    /** All series were removed by the user. */
    void cleared();
    /** Something went wrong that the user should know. */
    void failed(const QString& text);

protected:
    void dragEnterEvent(QDragEnterEvent* event) override;
    void dropEvent(QDropEvent* event) override;
    void resizeEvent(QResizeEvent* event) override;

private:
    void createActions();
    void createLegend();
    PlotSeries* findOrAdd(const FieldPath& path, const QString& sender);
    bool isRemoved(const FieldPath& path, const QString& sender) const;
    void showLive();
    void showEverything();
    void removeSeries(std::size_t index);
    void updateNames();
    void updateEmptiness();
    void updateTypes();
    void savePicture();
    void saveValues();
    PlotSeries* currentSeries() const;
    void arrangeLegend();
    void fitValueColumn();
    QTreeWidgetItem* legendRow(const PlotSeries* series) const;

    LatestMessageSource* m_latest;
    std::vector<std::unique_ptr<PlotSeries>> m_series;
    std::vector<std::pair<FieldPath, QString>> m_removed; // senders of a field that is drawn of others
    QHash<const MessageInfo*, QVector<FieldPath>> m_paths;
    QSet<const MessageInfo*> m_types;
    PlotView* m_view;
    QTreeWidget* m_legend;
    QSplitter* m_splitter;
    QLabel* m_hint;
    QToolBar* m_bar;
    QComboBox* m_span;
    QAction* m_pause;
    QList<QAction*> m_needSeries;
    QTimer m_timer;
    bool m_changed = false;
    bool m_legendIsSized = false; // by the user
};

#endif
