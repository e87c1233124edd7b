#ifndef PLOTLEGEND_H
#define PLOTLEGEND_H

#include <QTreeWidget>

#include <vector>

class PlotSeries;
class PlotView;

/** The list of what is plotted: a row for each series, with its line, its name and a value. */
class PlotLegend : public QTreeWidget
{
    Q_OBJECT

public:
    explicit PlotLegend(QWidget* parent = nullptr);

    /** Writes who a row stands for, with the line as @p view draws it. @p sender is what of the name is never left out.
     */
    void setName(int row, const PlotSeries* series, const PlotView* view, const QString& name, const QString& sender);
    /** Tells rows of one plot from those of the next. */
    void setGroup(int row, int group);
    void setValue(int row, const QString& text);
    /** Says of what time the values are; empty when they are those of now. */
    void setValueTitle(const QString& time);
    /** The numbers of the rows that are chosen. */
    std::vector<std::size_t> getChosen() const;
    /** Whether it stands beside the lines in a plot of this size, or below them, as names would be cut there. */
    bool isBesideIn(const QSize& plot) const;
    /** Makes room for the values. */
    void fitValueColumn();
};

#endif
