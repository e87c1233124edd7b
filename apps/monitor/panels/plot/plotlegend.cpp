#include "plotlegend.h"

#include "celldelegate.h"
#include "plotseries.h"
#include "plotview.h"

#include <QHeaderView>
#include <QPainter>

namespace
{

const int LeastBeside = 90; // characters of a plot with its list beside it
const int LeastLinesBelow = 15;

enum Column
{
    NameColumn,
    ValueColumn
};

QIcon lineSample(const QColor& color, Qt::PenStyle style)
{
    QPixmap sample(16, 16);
    sample.fill(Qt::transparent);
    QPainter painter(&sample);
    painter.setPen(QPen(color, 3, style));
    painter.drawLine(0, 8, 16, 8);
    painter.end();
    return QIcon(sample);
}

} // namespace

PlotLegend::PlotLegend(QWidget* parent)
    : QTreeWidget(parent)
{
    setColumnCount(2);
    setHeaderLabels({tr("Field"), tr("Value")});
    setRootIsDecorated(false);
    setSelectionMode(ExtendedSelection);
    setAccessibleName(tr("Plotted fields"));
    header()->setStretchLastSection(false);
    header()->setMinimumSectionSize(fontMetrics().averageCharWidth() * 4);
    setColumnWidth(ValueColumn, header()->sectionSizeHint(ValueColumn));
    header()->setSectionResizeMode(NameColumn, QHeaderView::Stretch);
    CellDelegate* const cells = new CellDelegate(this);
    cells->setName(NameColumn);
    setItemDelegate(cells);
    setMinimumWidth(120);
}

void PlotLegend::setName(int row, const PlotSeries* series, const PlotView* view, const QString& name,
                         const QString& sender)
{
    QTreeWidgetItem* const item = topLevelItem(row);
    item->setIcon(NameColumn, lineSample(view->getColor(series), view->findGraph(series)->pen().style()));
    item->setText(NameColumn, name);
    item->setData(NameColumn, CellDelegate::KeptRole, sender);
    item->setToolTip(NameColumn, series->getDescription());
}

void PlotLegend::setGroup(int row, int group)
{
    for (const int column : {NameColumn, ValueColumn})
        topLevelItem(row)->setBackground(column, group % 2 ? palette().brush(QPalette::AlternateBase) : QBrush());
}

void PlotLegend::setValue(int row, const QString& text)
{
    QTreeWidgetItem* const item = topLevelItem(row);
    if (item->text(ValueColumn) != text)
        item->setText(ValueColumn, text);
}

void PlotLegend::setValueTitle(const QString& time)
{
    const QString title = time.isEmpty() ? tr("Value") : time;
    if (headerItem()->text(ValueColumn) != title)
        headerItem()->setText(ValueColumn, title);
}

std::vector<std::size_t> PlotLegend::getChosen() const
{
    std::vector<std::size_t> chosen;
    for (int i = 0; i < topLevelItemCount(); ++i)
        if (topLevelItem(i)->isSelected())
            chosen.push_back(std::size_t(i));
    return chosen;
}

bool PlotLegend::isBesideIn(const QSize& plot) const
{
    const bool isLow = plot.height() < fontMetrics().height() * LeastLinesBelow;
    return plot.width() > plot.height() && (isLow || plot.width() > fontMetrics().averageCharWidth() * LeastBeside);
}

// Grows with its values and does not shrink, or the names would move.
void PlotLegend::fitValueColumn()
{
    int width = fontMetrics().horizontalAdvance(headerItem()->text(ValueColumn));
    for (int i = 0; i < topLevelItemCount(); ++i)
        width = qMax(width, fontMetrics().horizontalAdvance(topLevelItem(i)->text(ValueColumn)));
    width = qMin(width + 2 * fontMetrics().averageCharWidth(), viewport()->width() * 9 / 20);
    if (width > columnWidth(ValueColumn))
        setColumnWidth(ValueColumn, width);
}
