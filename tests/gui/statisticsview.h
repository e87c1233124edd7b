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
    }

    /** What happened since the last call. */
    QStringList take()
    {
        const QStringList events = m_events;
        m_events.clear();
        return events;
    }

private Q_SLOTS:
    void noteChange(QTreeWidgetItem* item, int column)
    {
        m_events.append(text("changed %1: %2").arg(column).arg(rowText(item)));
    }
    void noteInsertion() { m_events.append(text("inserted")); }
    void noteRemoval() { m_events.append(text("removed")); }
    void noteLayout() { m_events.append(text("sorted")); }
    void noteSortIndicator() { m_events.append(text("sort indicator")); }

private:
    QStringList m_events;
};

/** A tree with the statistics that it shows. */
struct View
{
    MessageStatistics* add(const QString& name, const FormatInfo* otherFormat = nullptr)
    {
        owned.push_back(
            std::unique_ptr<MessageStatistics>(new MessageStatistics(otherFormat ? otherFormat : &format, name)));
        coordinator.statistics.append(owned.back().get());
        return owned.back().get();
    }

    QTreeWidgetItem* find(const char* path) const { return findRow(tree, text(path)); }
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

    /** Shows ten types with rows of every kind. */
    void fill()
    {
        for (int i = 0; i < 10; ++i) {
            MessageStatistics* statistics = add(text("TYPE %1").arg(i, 2, 10, QLatin1Char('0')));
            statistics->count = static_cast<unsigned int>(i * 37 % 10);
            statistics->regular = i % 2;
            statistics->lastInterval = 50;
            for (int j = 0; j < 5; ++j)
                statistics->setInterval(50 * j, static_cast<unsigned int>(j * 7 % 5 + 1));
            statistics->unknownTime = 1;
            statistics->unknownInterval = 2;
            statistics->addGap(9, 2, 50);
            statistics->addGap(10, 1, 50);
            statistics->numberOfGaps = 2;
            statistics->numberOfMissingEpochs = 3;
        }
        coordinator.eventCounts.insert(CorvelEvent::CrcError, 3);
        tree.updateTree();
    }

    FormatInfo format{text("mavlink")};
    MessageStatisticsCoordinator coordinator;
    std::vector<std::unique_ptr<MessageStatistics>> owned;
    MessageStatisticsWidget tree{&coordinator, nullptr};
    Recorder recorder{&tree};
};

#endif
