#ifndef CORVEL_MESSAGESTATISTICSWIDGET_H
#define CORVEL_MESSAGESTATISTICSWIDGET_H

#include "corvelgui_export.h"
#include "messagestatistics.h"

#include <QElapsedTimer>
#include <QHash>
#include <QList>
#include <QTreeWidget>
#include <QVector>

class FormatInfo;
class MessageStatisticsCoordinator;
class MessageStatisticsTreeWidgetItem;
class QSettings;

// Of dataChanged() one form overrides Qt's: which one differs between the majors, so neither can say so.
#if defined(__clang__)
#pragma clang diagnostic push
#pragma clang diagnostic ignored "-Winconsistent-missing-override"
#endif

/**
 * A tree of reception statistics: how often and how regularly the messages of each type arrive, and when they went
 * missing.
 *
 * Below a row for each format stands a row for each message type, and below that the rates or intervals seen and the
 * gaps. A row on top counts checksum errors while there are any. The widget reads nothing by itself: the owner calls
 * updateTree(), for instance by a timer. Rows belong to the widget and must not be deleted or moved by others, except
 * for those of gaps, which come back when they were deleted.
 *
 * Another language of the application reaches headers, fixed names and tool tips at once, and what stands in the
 * columns with the next updateTree().
 *
 * @code
 * MessageStatisticsWidget* view = new MessageStatisticsWidget(coordinator, parent);
 * QObject::connect(timer, SIGNAL(timeout()), view, SLOT(updateTree()));
 * timer->start(250);
 * @endcode
 *
 * Columns are as wide as those of any tree, which cuts long names, until the application calls setColumnWidth() or,
 * when there are rows, resizeColumnToContents().
 *
 * With thousands of types, for instance of a thousand senders, let the timer call updateSome().
 */
class CORVELGUI_EXPORT MessageStatisticsWidget : public QTreeWidget
{
    Q_OBJECT

public:
    /**
     * An empty tree, sorted by message name; the first updateTree() fills it.
     *
     * @param coordinator  whose statistics to show; not null. Borrowed; when it goes, the tree is left empty.
     * @param parent       may be null
     */
    MessageStatisticsWidget(MessageStatisticsCoordinator* coordinator, QWidget* parent);
    virtual ~MessageStatisticsWidget();

    /** Writes header layout and sort order as "headerstate", "sortColumn" and "sortOrder" into the current group. */
    void writeSettings(QSettings& settings);
    /** Reads what writeSettings() wrote; with nothing saved the tree is sorted by message name, ascending. */
    void readSettings(QSettings& settings);

    // What stands in the rows counts, whoever wrote it: the first form is the virtual one of Qt 4, the second that of
    // Qt 5 and 6.
    void dataChanged(const QModelIndex& topLeft, const QModelIndex& bottomRight);
    void dataChanged(const QModelIndex& topLeft, const QModelIndex& bottomRight, const QVector<int>& roles);

public Q_SLOTS:
    /**
     * Brings the tree up to date with the coordinator; what did not change is not written.
     *
     * The Gaps column is visible while any type has stored gaps. Called while the tree is being brought up to date, by
     * somebody who listens to its changes, it takes effect when that is done.
     */
    void updateTree();
    /**
     * The same by and by, for as short a time that nobody notices: what can be seen at once, rows that are to come some
     * at a time, the others in turn, and what is below a folded row when it is unfolded. Rows of what is not listed any
     * more go at once.
     *
     * A tree that is sorted by what changes is sorted with each call that changes it: where that takes long, calls in
     * quick succession do nothing.
     *
     * @param milliseconds  for the rows whose turn it is, at least one; four times as long for those that come. Sorting
     *                      takes what it takes, and the others have as long then.
     */
    void updateSome(int milliseconds = 3);

protected:
    void changeEvent(QEvent* event) override;

private Q_SLOTS:
    void processItemExpanded(QTreeWidgetItem* item);

private:
    Q_DISABLE_COPY(MessageStatisticsWidget)

    static void letGo(void* widget, const QObject* object, bool show);
    QList<MessageStatistics*> getStatistics() const;
    void setupColumns();
    void translate();
    static QStringList getHeaderTexts();
    void setGapsColumnVisible(bool visible);
    QTreeWidgetItem* getFormatItem(const FormatInfo* format);
    MessageStatisticsTreeWidgetItem* getAndUpdateItemFor(MessageStatistics* statistics);
    void deleteEmptyFormatItems();
    bool updateItems();
    void removeStaleItems();
    void updateCrcErrorsItem();
    void updateSeenItems();
    void addItems(qint64 milliseconds);
    bool updateItemsInTurn(qint64 milliseconds);
    void updateItem(MessageStatisticsTreeWidgetItem* item);

    MessageStatisticsCoordinator* m_coordinator;
    QHash<MessageStatistics*, MessageStatisticsTreeWidgetItem*> m_statisticsItems;
    QHash<const FormatInfo*, QTreeWidgetItem*> m_formatItems;
    QTreeWidgetItem* m_crcErrorsItem;

    // For updateSome(): what was listed, the first of it that may have no row, and whose turn it is.
    QList<MessageStatistics*> m_listed;
    int m_firstNew;
    int m_turn;
    bool m_turnHadGaps;
    QElapsedTimer m_sinceStep;
    qint64 m_stepTime; // milliseconds that the last one took
    qint64 m_sortTime; // what of it went into sorting
};

#if defined(__clang__)
#pragma clang diagnostic pop
#endif

/**
 * The row of one message type in a MessageStatisticsWidget, with its sub-rows.
 *
 * The count in the row is a number and sorts as one; the counts in sub-rows are texts and sort as texts.
 */
class CORVELGUI_EXPORT MessageStatisticsTreeWidgetItem : public QTreeWidgetItem
{
public:
    /** A filled row outside of any tree. @p statistics must not be null; borrowed, must outlive the last update. */
    explicit MessageStatisticsTreeWidgetItem(MessageStatistics* statistics);
    virtual ~MessageStatisticsTreeWidgetItem();

    /**
     * Brings the row and its sub-rows up to date; what did not change is not written. Called by somebody who listens to
     * such changes, it takes effect when these are done.
     */
    void updateContents();
    /** Expands the row and its "Rates/Intervals" row; the gaps stay as they are. */
    void fullExpand();

    /** The statistics shown; never null. */
    MessageStatistics* getMessageStatistics();
    /** The gap that @p item, a row below this one, shows until the next update; null when it shows none. */
    const MessageStatistics::Gap* getGap(const QTreeWidgetItem* item) const;

private:
    Q_DISABLE_COPY(MessageStatisticsTreeWidgetItem)
    friend class MessageStatisticsWidget;

    void updateNow();
    void updateCells();
    void writeFixedTexts();
    void updateIntervalSubItems();
    void updateGapSubItems();
    bool updateGapRows(const QVector<MessageStatistics::Gap>& gaps);
    bool hasGapRows(int count) const;

    MessageStatistics* m_statistics;
    QTreeWidgetItem* m_intervalsItem;
    QHash<long long, QTreeWidgetItem*> m_intervalItems;
    QTreeWidgetItem* m_noTimeItem;
    QTreeWidgetItem* m_unknownIntervalItem;
    QVector<MessageStatistics::Gap> m_shownGaps;
    QTreeWidgetItem* m_gapsItem;
};

#endif
