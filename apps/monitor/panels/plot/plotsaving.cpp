// The part of PlotPanel that saves what is drawn.

#include "csvfile.h"
#include "desk.h"
#include "plotpanel.h"
#include "plotseries.h"
#include "plotview.h"
#include "valuesaver.h"

#include <QBuffer>
#include <QFileDialog>
#include <QSplitter>

std::vector<PlotValues::Column> PlotPanel::getColumns() const
{
    std::vector<PlotValues::Column> columns;
    for (const auto& series : getSeries()) {
        const QString unit = series->getUnit();
        const QString name = m_plots->getView(m_plots->getPlace(series.get()))->findGraph(series.get())->name();
        columns.push_back({unit.isEmpty() ? name : QStringLiteral("%1 [%2]").arg(name, unit), series->getPoints()});
    }
    return columns;
}

void PlotPanel::savePicture()
{
    const QString path = QFileDialog::getSaveFileName(this, tr("Save Picture"), QLatin1String("plot.png"),
                                                      tr("PNG pictures (*.png);;All files (*)"));
    if (path.isEmpty())
        return;
    QBuffer picture;
    picture.open(QIODevice::WriteOnly);
    m_splitter->grab().save(&picture, "PNG");
    CsvFile::write(m_desk, path, picture.data());
}

void PlotPanel::saveValues()
{
    const QString path = CsvFile::askPath(this, tr("Save Values"), QLatin1String("plot.csv"));
    if (path.isEmpty())
        return;
    ValueSaver* const saver = new ValueSaver(getColumns(), path, this);
    connect(saver, &ValueSaver::failed, m_desk, &Desk::failed);
    connect(saver, &ValueSaver::saved, m_desk, [this, path]() { CsvFile::tellSaved(m_desk, path); });
    saver->start();
}
