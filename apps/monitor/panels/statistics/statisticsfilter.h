#ifndef STATISTICSFILTER_H
#define STATISTICSFILTER_H

#include <QHash>
#include <QObject>
#include <QStringList>

#include <functional>

class EmptyHint;
class MessageStatistics;
class MessageStatisticsWidget;
class QTreeWidgetItem;

/**
 * Hides the rows of statistics that nobody looks for; the row of a format is there while one of its types is.
 *
 * What is unfolded and what is current stay so, and rows that are hidden are updated with the others.
 */
class StatisticsFilter : public QObject
{
    Q_OBJECT

public:
    typedef QHash<const MessageStatistics*, QString> Senders;

    /** Lives in @p widget. @param getSenders  tells who sends what: the names of rows do only where several send */
    StatisticsFilter(MessageStatisticsWidget* widget, std::function<Senders()> getSenders);

    /** Leaves the rows that have all of these words, those that came since the last time too. */
    void filter(const QStringList& words);

private:
    void noteRows(const QModelIndex& parent);
    bool isWanted(QTreeWidgetItem* item) const;
    void tellIfNone(bool isNone);
    bool hide(int row, const QModelIndex& parent, bool hidden);

    MessageStatisticsWidget* m_widget;
    EmptyHint* m_hint;
    std::function<Senders()> m_getSenders;
    Senders m_senders; // as long as there are words
    QStringList m_words;
    bool m_isDue = false; // rows came or went since
};

#endif
