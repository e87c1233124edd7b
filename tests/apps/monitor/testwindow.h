#ifndef TESTWINDOW_H
#define TESTWINDOW_H

#include "eventmodel.h"
#include "eventpanel.h"
#include "formpanel.h"
#include "mainwindow.h"
#include "messagestatisticswidget.h"
#include "messagetreewidget.h"
#include "plotpanel.h"
#include "plotseries.h"
#include "statisticspanel.h"
#include "treepanel.h"
#include "typepanel.h"
#include "waitfor.h"
#include "watch.h"
#include "watchbar.h"

#include <QAction>
#include <QMessageBox>
#include <QTest>

/** Waits for what is never sure to come in time on a busy computer. */
#define EVENTUALLY(condition) QTRY_VERIFY_WITH_TIMEOUT(condition, 30000)
#define EVENTUALLY_IS(text, expected) QTRY_COMPARE_WITH_TIMEOUT(text, QString(expected), 30000)

/** The real window, with short ways to its panels, and what they show as texts. */
struct TestWindow : MainWindow
{
    template <typename Kind>
    Kind* find() const
    {
        return getPanels().find<Kind>();
    }
    MessageTreeWidget* getTree() const { return find<TreePanel>()->getTree(); }
    MessageStatisticsWidget* getStatistics() const { return find<StatisticsPanel>()->getStatistics(); }
    /** What happened, a line for each row that is shown: "1,314 checksum failure, id 142". */
    QString events() const
    {
        QStringList lines;
        const QAbstractItemModel* const model = find<EventPanel>()->getView()->model();
        for (int row = 0; row < model->rowCount(); ++row)
            lines.append(model->index(row, EventModel::CountColumn).data().toString() + ' ' +
                         model->index(row, EventModel::EventColumn).data().toString());
        return lines.join('\n');
    }
    WatchBar* getWatches() const { return find<WatchBar>(); }
    PlotPanel* getPlot() const { return find<PlotPanel>(); }
    QAbstractItemModel* getTypes() const { return find<TypePanel>()->getView()->model(); }
    /** The action with this text, without its mark for a key; null when there is none. */
    QAction* findAction(const QString& text) const
    {
        for (QAction* const action : findChildren<QAction*>())
            if (action->text().remove('&') == text)
                return action;
        return nullptr;
    }
    /** The stream of the source that is chosen. */
    const StreamSource* getSource() const { return getDesk()->getChosenSource()->getSource(); }

    /** Opens a recording and plays it as fast as it can be read; false when it does not come to its end. */
    bool play(const QString& path)
    {
        StreamSource::Playback playback;
        playback.factor = 0;
        setPlayback(playback);
        show();
        return openAddress(path) && isPlayed(getSources()->getCount() - 1);
    }
    /** Waits for the end of a recording. */
    bool isPlayed(int source)
    {
        const StreamSource* const stream = getSources()->getSession(source)->getSource();
        return waitFor([stream]() { return stream->getState() == StreamSource::Finished; }, 60000);
    }

    /** The row of a type, or of a field directly below it; null when there is none, or nothing below it so far. */
    QTreeWidgetItem* findRow(const QString& type, const QString& field = QString()) const
    {
        for (int i = 0; i < getTree()->topLevelItemCount(); ++i) {
            QTreeWidgetItem* const row = getTree()->topLevelItem(i);
            for (int j = 0; row->text(0) == type && j < row->childCount(); ++j)
                if (field.isEmpty() || row->child(j)->text(0) == field)
                    return field.isEmpty() ? row : row->child(j);
        }
        return nullptr;
    }
    /** What the tree says of a field. */
    QString valueOf(const QString& type, const QString& field) const
    {
        const QTreeWidgetItem* const row = findRow(type, field);
        return row ? row->text(getTree()->getColumnIndex(MessageTreeWidget::ValueColumn)) : QString("no row");
    }
    /** What is counted: "HEARTBEAT (north.raw) 3, HEARTBEAT (south.raw) 2". */
    QString countedTypes() const
    {
        QStringList names;
        getStatistics()->updateTree();
        for (int i = 0; i < getStatistics()->topLevelItemCount(); ++i)
            for (int j = 0; j < getStatistics()->topLevelItem(i)->childCount(); ++j)
                names.append(getStatistics()->topLevelItem(i)->child(j)->text(0) + ' ' +
                             getStatistics()->topLevelItem(i)->child(j)->text(1));
        names.sort();
        return names.join(", ");
    }
    /** Closes the box that tells of something that went wrong, and gives its text; empty when there is not one. */
    QString takeError()
    {
        QStringList texts;
        for (QMessageBox* box : findChildren<QMessageBox*>()) {
            texts.append(box->text());
            box->close();
        }
        QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
        return texts.join(" and ");
    }
};

#endif
