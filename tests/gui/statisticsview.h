#ifndef STATISTICSVIEW_H
#define STATISTICSVIEW_H

#include "formatinfo.h"
#include "messagestatistics.h"
#include "messagestatisticscoordinator.h"
#include "messagestatisticswidget.h"

#include <QHeaderView>
#include <QStringList>
#include <QTreeWidgetItem>

#include <memory>
#include <vector>

typedef MessageStatistics::Gap Gap;

inline QString text(const char* latin1)
{
    return QString::fromLatin1(latin1);
}

inline QStringList lines(const char* latin1)
{
    const QString all = text(latin1);
    return all.isEmpty() ? QStringList() : all.split(QLatin1Char('\n'));
}

/** What a row shows: its cells, without the empty ones at the end. */
inline QString rowText(const QTreeWidgetItem* row)
{
    QStringList cells;
    for (int column = 0; column < 4; ++column)
        cells.append(row->text(column));
    while (!cells.isEmpty() && cells.last().isEmpty())
        cells.removeLast();
    return cells.join(text(" | "));
}

/** What the rows below @p parent show, two blanks for each level. */
inline QStringList rowTexts(const QTreeWidgetItem* parent, const QString& indent = QString())
{
    QStringList texts;
    for (int i = 0; i < parent->childCount(); ++i) {
        texts.append(indent + rowText(parent->child(i)));
        texts += rowTexts(parent->child(i), indent + text("  "));
    }
    return texts;
}

inline QStringList treeText(const QTreeWidget& tree)
{
    return rowTexts(tree.invisibleRootItem());
}

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

/** What the rows of @p gaps are to show. */
inline QStringList gapTexts(const QVector<Gap>& gaps)
{
    QStringList texts;
    Q_FOREACH (const Gap& gap, gaps) {
        const unsigned long long duration = gap.missingEpochs * gap.interval;
        const QString durationText = duration < 1000 ? QString::fromLatin1("%1 ms").arg(duration)
                                                     : QString::fromLatin1("%1 s").arg(duration / 1000.0);
        texts.append(QString::fromLatin1("t%1 | %2 | %3").arg(gap.start).arg(gap.missingEpochs).arg(durationText));
    }
    return texts;
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
        m_events.append(text("changed ") + QString::number(column) + text(": ") + rowText(item));
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
    View()
        : format(text("mavlink"))
        , tree(&coordinator, nullptr)
        , recorder(&tree)
    {
    }

    MessageStatistics* add(const QString& name, const FormatInfo* otherFormat = nullptr)
    {
        owned.push_back(
            std::unique_ptr<MessageStatistics>(new MessageStatistics(otherFormat ? otherFormat : &format, name)));
        coordinator.statistics.append(owned.back().get());
        return owned.back().get();
    }
    MessageStatistics* add(const char* name, const FormatInfo* otherFormat = nullptr)
    {
        return add(text(name), otherFormat);
    }

    QTreeWidgetItem* find(const char* path) const { return findRow(tree, text(path)); }
    MessageStatisticsTreeWidgetItem* row(const char* path) const
    {
        return dynamic_cast<MessageStatisticsTreeWidgetItem*>(find(path));
    }

    /** Shows ten types with rows of every kind. */
    void fill()
    {
        for (int i = 0; i < 10; ++i) {
            MessageStatistics* statistics = add(QString::fromLatin1("TYPE %1").arg(i, 2, 10, QLatin1Char('0')));
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

    FormatInfo format;
    MessageStatisticsCoordinator coordinator;
    std::vector<std::unique_ptr<MessageStatistics>> owned;
    MessageStatisticsWidget tree;
    Recorder recorder;
};

#endif
