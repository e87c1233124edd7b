#include "exampleprobe.h"

#include "messagetreewidget.h"

static bool showsOven(const MessageTreeWidget& tree, QString* seen)
{
    const QTreeWidgetItem* const row = tree.topLevelItem(0);
    QStringList lines;
    for (int i = 0; i < row->childCount(); ++i)
        lines.append(row->child(i)->text(0) + QLatin1Char('|') + row->child(i)->text(2));
    *seen = lines.join(QLatin1Char('\n'));
    return row->isExpanded() && lines.size() == 3 && lines.at(0).endsWith(QStringLiteral("\u00B0C")) &&
           lines.at(1).endsWith(QLatin1String("not available")) && lines.at(2) == QLatin1String("mode|HEATING (1)");
}

static void probe()
{
    probeExample<MessageTreeWidget>(showsOven);
}
Q_COREAPP_STARTUP_FUNCTION(probe)
