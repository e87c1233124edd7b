#ifndef TOLDTREE_H
#define TOLDTREE_H

#include "changehighlighter.h"
#include "expressionline.h"
#include "findbar.h"
#include "plotlegend.h"
#include "plotseries.h"
#include "plotstack.h"
#include "plotview.h"
#include "readingtree.h"
#include "silencewatch.h"
#include "textrows.h"
#include "treeactions.h"
#include "treedesk.h"
#include "treefilter.h"
#include "treerow.h"
#include "unsetrows.h"
#include "valuedelegate.h"
#include "waitfor.h"

#include <QAction>
#include <QClipboard>
#include <QGuiApplication>
#include <QLineEdit>
#include <QRegularExpression>
#include <QTest>
#include <QTextDocumentFragment>
#include <QToolTip>

#include <cmath>

/** A tree and a plot that do what they are told, step by step, with a clock that is set. */
struct ToldTree : TreeDesk
{
    ToldTree()
    {
        panel.getHighlighter()->setClock([this]() { return now; });
        panel.getSilence()->setClock([this]() { return now; });
        plot.resize(1400, 300); // room for all axes, whatever the font
        plot.show();
        panel.getWidget()->activateWindow();
        isActive = QTest::qWaitForWindowActive(panel.getWidget());
    }

    /** What has to be told of all steps, which semicolons divide. */
    QString tell(const QString& steps)
    {
        QStringList told;
        for (const QString& step : steps.split("; ")) {
            const QString rest = step.section(' ', 1);
            const QString text = doStep(step.section(' ', 0, 0), rest, find(rest));
            if (!text.isNull())
                told.append(text);
        }
        return told.join("; ");
    }

    qint64 now = 10000; // milliseconds
    bool isActive;
    PlotView& view = *plot.getView();

private:
    QString read(QTreeWidgetItem* row)
    {
        const QModelIndex index = tree.indexAt(tree.visualItemRect(row).center());
        const QString text = panel.getValues()->getText(index.sibling(index.row(), 1));
        static_cast<ReadingTree&>(tree).tellRowsOnScreen();
        const QString told = row->data(1, Qt::AccessibleTextRole).toString();
        return told == text ? text : text + " told as " + told;
    }

    // The rest of a step is a number, a text or the way to a row.
    QString doStep(const QString& verb, const QString& rest, QTreeWidgetItem* row)
    {
        FindBar* const bar = panel.getFindBar();
        // Messages, and time that goes by.
        if (verb == "nav") // with a speed, and perhaps a mode
            sendNav(rest.section(' ', 0, 0).toDouble(), rest.contains(' ') ? rest.section(' ', 1).toUInt() : 2);
        else if (verb == "cells")
            sendCells(rest.toInt());
        else if (verb == "wait")
            now += rest.toInt();
        else if (verb == "sender")
            m_sender = rest;
        else if (verb == "pause" || verb == "resume")
            getLatest()->setSuspended(verb == "pause");
        else if (verb == "forgetcells")
            Q_EMIT getLatest()->forgotten(battery);
        else if (verb == "forget")
            Q_EMIT getLatest()->forgotten(nav);
        else if (verb == "gone")
            Q_EMIT getLatest()->senderGone(nav, m_sender);
        // What somebody does.
        else if (verb == "find")
            bar->find(rest);
        else if (verb == "close")
            bar->close();
        else if (verb == "escape")
            QTest::keyClick(bar->getEdit(), Qt::Key_Escape);
        else if (verb == "next" || verb == "previous")
            return verb == "next" ? bar->findNext() : bar->findPrevious(), nameOf(tree.currentItem());
        else if (verb == "collapse")
            tree.collapseAll();
        else if (verb == "expand")
            row->setExpanded(true);
        else if (verb == "pin" || verb == "unpin")
            panel.getRows()->setPinned({nav, QString()}, verb == "pin");
        else if (verb == "unset")
            panel.getUnset()->setHidden(!panel.getUnset()->isHidden());
        else if (verb == "secondary")
            tree.setHideSecondaryFields(false), tree.reconfigureTopLevelAbstractMessageTreeWidgetItems();
        else if (verb == "plain" || verb == "highlight")
            setHighlight(verb == "highlight");
        else if (verb == "plot")
            plot.addField(TreeRow(row).getPath(), {TreeRow(row).getSubject().sender, false});
        else if (verb == "choose" || verb == "remove")
            choose(rest.toInt(), verb == "remove");
        else if (verb == "difference") // of all lines that there are
            plot.getLegend()->selectAll(), plot.addDifference();
        else if (verb == "expression")
            return enter(rest);
        else if (verb == "above" || verb == "below")
            plot.moveCurrent(verb == "below" ? 1 : -1);
        else if (verb == "function") // its number
            plot.setFunction(PlotFunction::Kind(rest.toInt()));
        else if (verb == "empty")
            plot.removeAll();
        else if (verb == "width") // 0 for as wide as can be
            plot.getView()->setMinimumWidth(rest.toInt()),
                plot.getView()->setMaximumWidth(rest.toInt() ? rest.toInt() : QWIDGETSIZE_MAX);
        else if (verb == "hold" || verb == "follow")
            plot.setPaused(verb == "hold");
        else if (verb == "grab")
            QTest::mouseClick(plot.getView(), Qt::LeftButton);
        else if (verb == "point") // at a time; at none when there is no number
            point(rest);
        else if (verb == "zoom")
            plot.getView()->zoom(rest.toDouble());
        // What there is to see.
        else if (verb == "copy")
            return copyOf(rest.split(" + "));
        else if (verb == "until")
            return waitFor([&]() { return shown() == rest; }) ? QString() : shown();
        else
            return QString("") + look(verb, row);
        return QString();
    }
    QString look(const QString& verb, QTreeWidgetItem* row)
    {
        const TreeRow treeRow(row);
        if (verb == "shown")
            return shown();
        if (verb == "error")
            return panel.getFindBar()->getFilter()->getErrorString();
        if (verb == "matches")
            return QString::number(panel.getFindBar()->getFilter()->getMatchCount());
        if (verb == "what")
            return treeRow.getPath().getExpression() + (treeRow.isNumeric() ? " # " : " ") + treeRow.getValueText();
        if (verb == "says")
            return row->text(1);
        if (verb == "reads") // in the tree as it is drawn, which is what a screen reader is told
            return read(row);
        if (verb == "shade") {
            panel.getHighlighter()->update();
            return QString::number(row->data(1, Qt::BackgroundRole).isValid() ? row->background(1).color().alpha() : 0);
        }
        if (verb == "grey") {
            panel.getSilence()->check();
            const bool is[] = {row->data(0, Qt::ForegroundRole).isValid(), row->data(1, Qt::ForegroundRole).isValid()};
            return is[0] == is[1] ? (is[0] ? "grey" : "black") : "grey in part";
        }
        if (verb == "tip")
            return tipOf(row);
        plot.refresh();
        if (verb == "points" || verb == "legend")
            return plotted(verb == "points").join(", ");
        if (verb == "axes") // of those units, with a dash for one that there is no room for, and as many curves
            return axes().join(' ');
        if (verb == "plots") // how many curves each has
            return plots().join(' ');
        if (verb == "span")
            return QString("%1 to %2").arg(view.xAxis->range().lower - 3600).arg(view.xAxis->range().upper - 3600);
        // A key that copies the row.
        tree.setCurrentItem(row);
        tree.setFocus();
        const QKeySequence keys(verb);
        QTest::keySequence(&tree, keys);
        return QGuiApplication::clipboard()->text();
    }
    QString copyOf(const QStringList& ways)
    {
        tree.clearSelection();
        for (const QString& way : ways)
            find(way)->setSelected(true);
        panel.getActions()->getCopyActions().first()->trigger();
        return QGuiApplication::clipboard()->text().replace('\t', ": ").replace('\n', " / ");
    }
    QString tipOf(QTreeWidgetItem* row)
    {
        tree.scrollToItem(row);
        const QPoint place = tree.visualItemRect(row).center();
        QHelpEvent help(QEvent::ToolTip, place, tree.viewport()->mapToGlobal(place));
        QCoreApplication::sendEvent(tree.viewport(), &help);
        QString text = QToolTip::text().replace(QRegularExpression("</?b>"), "*");
        QToolTip::hideText();
        return QTextDocumentFragment::fromHtml(text).toPlainText().replace('\n', " / ");
    }
    void sendNav(double number, unsigned int state)
    {
        TestMessage* const message = createNav(number, state);
        message->setSender(m_sender);
        send(message, 3600000 + now);
    }
    void point(const QString& second)
    {
        plot.refresh();
        view.replot();
        const QRect all = view.axisRect()->rect();
        const QPointF place(second.isEmpty() ? -1 : view.xAxis->coordToPixel(3600 + second.toDouble()),
                            all.center().y());
        QMouseEvent move(QEvent::MouseMove, place, view.mapToGlobal(place.toPoint()), Qt::NoButton, Qt::NoButton,
                         Qt::NoModifier);
        QCoreApplication::sendEvent(&view, &move);
    }
    void choose(int series, bool andRemove)
    {
        plot.getLegend()->setCurrentItem(plot.getLegend()->topLevelItem(series));
        if (andRemove)
            plot.removeChosen();
    }
    // What is wrong with it, if anything is.
    QString enter(const QString& expression)
    {
        ExpressionLine* const line = plot.getExpressionLine();
        line->open();
        line->getEdit()->setText(expression);
        QTest::keyClick(line->getEdit(), Qt::Key_Return);
        return line->isVisible() ? line->getText() : QString();
    }
    // The values of each field in their order, with a dash for a point without one; or what the legend says.
    QStringList plotted(bool points) const
    {
        QStringList texts;
        for (int i = 0; i < int(plot.getSeries().size()); ++i) {
            const QTreeWidgetItem* const row = plot.getLegend()->topLevelItem(i);
            QStringList values;
            const SeriesPoints& all = plot.getSeries()[std::size_t(i)]->getPoints();
            for (qint64 j = 0; j < all.getCount(); ++j)
                values.append(std::isnan(all.at(j).value) ? QString("-") : QString::number(all.at(j).value));
            texts.append(points ? values.join(' ') : row->text(0) + ' ' + row->text(1));
        }
        return texts;
    }
    QStringList plots() const
    {
        QStringList texts;
        for (int i = 0; i < plot.getPlots()->getCount(); ++i)
            texts.append(QString::number(plot.getPlots()->getView(i)->graphCount()));
        return texts;
    }
    QStringList axes() const
    {
        QStringList texts;
        for (const char* unit : {"m/s", "m", ""})
            if (const QCPAxis* const axis = view.findAxis(unit))
                texts.append(QString("[%1]%2%3").arg(unit, axis->visible() ? "" : "-").arg(axis->graphs().size()));
        return texts;
    }
    void setHighlight(bool on)
    {
        Preferences preferences;
        preferences.highlight = on;
        setPreferences(preferences);
    }
    QString m_sender;
    static QString nameOf(const QTreeWidgetItem* row)
    {
        return row ? row->parent()->text(0) + '.' + row->text(0) : QString("none");
    }
};

template <std::size_t Count>
void checkTold(const TextRow (&rows)[Count])
{
    QVERIFY(ToldTree().isActive);
    checkRows(rows, [](const QString& steps) { return ToldTree().tell(steps); });
}

#endif
