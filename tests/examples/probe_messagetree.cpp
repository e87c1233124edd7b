#include "exampleprobe.h"

#include "messagetreewidget.h"

#include <QMainWindow>
#include <QMenuBar>

static bool showsFlight(const QMainWindow& window, QString* seen)
{
    MessageTreeWidget* const tree = window.findChild<MessageTreeWidget*>();
    const QList<QTreeWidgetItem*> rows = tree->findItems(QStringLiteral("ATTITUDE"), Qt::MatchExactly);
    if (rows.size() != 1)
        return *seen = QStringLiteral("%1 rows of ATTITUDE").arg(rows.size()), false;
    const int columns = tree->columnCount();
    window.menuBar()->actions().first()->menu()->actions().last()->trigger();
    const bool toggled = tree->columnCount() == columns + 1 || tree->columnCount() == columns - 1;
    window.menuBar()->actions().first()->menu()->actions().last()->trigger();
    QStringList cells;
    for (int column = 0; column < columns; ++column)
        cells.append(rows.first()->child(1)->text(column));
    *seen = cells.join(QStringLiteral(" | "));
    return toggled && cells.first() == QLatin1String("roll") && cells.join(QString()).contains(QLatin1String("rad"));
}

static void probe()
{
    probeExample<QMainWindow>(showsFlight);
}
Q_COREAPP_STARTUP_FUNCTION(probe)
