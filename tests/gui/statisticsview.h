#ifndef STATISTICSVIEW_H
#define STATISTICSVIEW_H

#include "formatinfo.h"
#include "messagestatistics.h"
#include "messagestatisticscoordinator.h"
#include "messagestatisticswidget.h"
#include "shown.h"

#include <QHeaderView>

#include <memory>
#include <vector>

/** The row reached from the top of @p tree by the names in column 0. */
inline QTreeWidgetItem* findRow(const QTreeWidget& tree, const QString& path)
{
    QTreeWidgetItem* row = tree.invisibleRootItem();
    Q_FOREACH (const QString& name, path.split(QLatin1Char('/'))) {
        QTreeWidgetItem* found = nullptr;
        for (int i = 0; row && i < row->childCount() && !found; ++i) {
            if (row->child(i)->text(0) == name)
                found = row->child(i);
        }
        row = found;
    }
    return row;
}

/** Writes down what happens in a tree. */
class Recorder : public QObject
{
    Q_OBJECT

public:
    explicit Recorder(QTreeWidget* tree)
    {
        connect(tree, SIGNAL(itemChanged(QTreeWidgetItem*, int)), SLOT(noteChange(QTreeWidgetItem*, int)));
        connect(tree->model(), SIGNAL(rowsInserted(QModelIndex, int, int)), SLOT(noteInsertion()));
        connect(tree->model(), SIGNAL(rowsRemoved(QModelIndex, int, int)), SLOT(noteRemoval()));
        connect(tree->model(), SIGNAL(layoutChanged()), SLOT(noteLayout()));
        connect(tree->header(), SIGNAL(sortIndicatorChanged(int, Qt::SortOrder)), SLOT(noteSortIndicator()));
        connect(tree->header(), SIGNAL(sectionResized(int, int, int)), SLOT(noteSize()));
    }

    /** What happened since the last call. */
    QStringList take()
    {
        const QStringList events = m_events;
        m_events.clear();
        return events;
    }

    /** Whose column 1 the next change is answered by writing into. */
    QTreeWidgetItem* victim = nullptr;

private Q_SLOTS:
    void noteChange(QTreeWidgetItem* item, int column)
    {
        QTreeWidgetItem* const row = victim;
        victim = nullptr;
        if (row)
            row->setText(1, text("?"));
        m_events.append(text("changed %1: %2").arg(column).arg(rowText(item)));
    }
    void noteInsertion() { m_events.append(text("inserted")); }
    void noteRemoval() { m_events.append(text("removed")); }
    void noteLayout() { m_events.append(text("sorted")); }
    void noteSortIndicator() { m_events.append(text("sort indicator")); }
    void noteSize() { m_events.append(text("resized")); }

private:
    QStringList m_events;
};

/**
 * A tree with the statistics that it shows, which are told in words: a type's name, and what is known of it, "count=5
 * every=20 untimed=1 unknown=2 gaps=1 missing=3 more=1 intervals=50:8,0:1 stored=9/3/200".
 */
struct View
{
    MessageStatistics* add(const QString& name, const FormatInfo* otherFormat = nullptr)
    {
        owned.push_back(
            std::unique_ptr<MessageStatistics>(new MessageStatistics(otherFormat ? otherFormat : &format, name)));
        coordinator.statistics.append(owned.back().get());
        return owned.back().get();
    }

    QTreeWidgetItem* find(const QString& path) const { return findRow(tree, path); }
    MessageStatisticsTreeWidgetItem* row(const char* path) const
    {
        return dynamic_cast<MessageStatisticsTreeWidgetItem*>(find(path));
    }
    /** What the tree shows after a refresh. */
    QStringList updated()
    {
        tree.updateTree();
        return rowTexts(tree);
    }

    /** Sets what is told, and refreshes the tree; what it then shows below the format. */
    QString operator()(const QString& words)
    {
        const QString name = words.section(' ', 0, 0);
        MessageStatistics* statistics = nullptr;
        for (std::size_t i = 0; i < owned.size(); ++i)
            if (owned.at(i)->messageName == name)
                statistics = owned.at(i).get();
        statistics = statistics || name.isEmpty() ? statistics : add(name);
        Q_FOREACH (const QString& word, words.section(' ', 1).split(' '))
            set(statistics, word.section('=', 0, 0), word.section('=', 1));
        tree.updateTree();
        return find("mavlink") ? rowTexts(find("mavlink")).join("\n") : QString();
    }

    /** Shows ten types with rows of every kind. */
    void fill()
    {
        const QString words(
            "TYPE_0%1 count=%2 %3 untimed=1 unknown=2 intervals=0:1,50:3,100:5,150:2,200:4 stored=9/2/50,10/1/50 "
            "gaps=2 missing=3");
        for (int i = 0; i < 10; ++i)
            (*this)(words.arg(i).arg(i * 37 % 10).arg(i % 2 ? "every=50" : ""));
        coordinator.eventCounts.insert(CorvelEvent::CrcError, 3);
        tree.updateTree();
    }

    FormatInfo format{text("mavlink")};
    MessageStatisticsCoordinator coordinator;
    std::vector<std::unique_ptr<MessageStatistics>> owned;
    MessageStatisticsWidget tree{&coordinator, nullptr};
    Recorder recorder{&tree};

private:
    static void set(MessageStatistics* statistics, const QString& what, const QString& value)
    {
        if (what == "intervals" || what == "stored")
            return setList(statistics, what == "stored", value.isEmpty() ? QStringList() : value.split(','));
        if (what == "count")
            statistics->count = value.toUInt();
        else if (what == "every")
            statistics->regular = (statistics->lastInterval = value.toULongLong()) != 0;
        else if (what == "untimed")
            statistics->unknownTime = value.toUInt();
        else if (what == "unknown")
            statistics->unknownInterval = value.toUInt();
        else if (what == "gaps")
            statistics->numberOfGaps = value.toInt();
        else if (what == "missing")
            statistics->numberOfMissingEpochs = value.toInt();
        else if (what == "more")
            statistics->unstoredGaps = value.toInt();
    }

    static void setList(MessageStatistics* statistics, bool isGaps, const QStringList& list)
    {
        isGaps ? statistics->gaps.clear() : statistics->intervals.clear();
        Q_FOREACH (const QString& element, list) {
            const QStringList parts = element.split(isGaps ? '/' : ':');
            if (isGaps) {
                statistics->addGap(parts.at(0).toULongLong(), parts.at(1).toUInt(), parts.at(2).toULongLong());
            } else {
                statistics->intervals.append(parts.at(0).toLongLong());
                statistics->intervalCounts[parts.at(0).toLongLong()] = parts.value(1).toUInt();
            }
        }
    }
};

#endif
