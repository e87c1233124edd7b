#include "fieldvaluelabel.h"
#include "shown.h"

#include <QAction>
#include <QApplication>
#include <QLabel>
#include <QMainWindow>
#include <QMenu>
#include <QMenuBar>
#include <QRegularExpression>
#include <QTimer>

#include <cstdio>
#include <cstdlib>

/** What a window shows: the text of a label, or the rows of the tree that it is or has, a plus before expanded ones. */
static QString shownBy(QWidget* window)
{
    if (const QLabel* const label = qobject_cast<QLabel*>(window))
        return label->text();
    QTreeWidget* tree = qobject_cast<QTreeWidget*>(window);
    tree = tree ? tree : window->findChild<QTreeWidget*>();
    if (!tree)
        return QString();
    QStringList rows;
    for (QTreeWidgetItemIterator row(tree); *row; ++row)
        rows.append(QLatin1String((*row)->isExpanded() ? "+" : "") + rowText(*row));
    return rows.join(QLatin1Char('\n'));
}

/** Whether the last action of the window's last menu, if it has one, takes a column away or adds one, and undoes that,
 * and all names can be read meanwhile. */
static bool togglesAColumn(const QMainWindow* window)
{
    if (!window)
        return true;
    QAction* const action = window->menuBar()->actions().last()->menu()->actions().last();
    const QTreeWidget* const tree = window->findChild<QTreeWidget*>();
    const int columns = tree->columnCount();
    action->trigger();
    const int toggled = tree->columnCount();
    const bool isReadable =
        tree->columnWidth(0) >= tree->fontMetrics().horizontalAdvance(tree->topLevelItem(0)->text(0));
    action->trigger();
    return std::abs(toggled - columns) == 1 && tree->columnCount() == columns && isReadable;
}

/**
 * Looks at the windows of the example again and again: it succeeds once one shows what CORVEL_EXPECTED, a regular
 * expression, matches, and fails when that has not happened within half a minute or when it has warned of anything.
 */
static void probe()
{
    qInstallMessageHandler([](QtMsgType, const QMessageLogContext&, const QString& text) {
        if (text.startsWith(QLatin1String("This plugin does not support")))
            return; // a platform without a screen excuses itself
        std::fprintf(stderr, "The example warns: %s\n", qPrintable(text));
        std::exit(1);
    });
    QTimer* const timer = new QTimer(qApp);
    QObject::connect(timer, &QTimer::timeout, timer, [looks = 0]() mutable {
        const QRegularExpression expected(QString::fromUtf8(qgetenv("CORVEL_EXPECTED")));
        QString seen;
        for (QWidget* window : QApplication::topLevelWidgets()) {
            if (!window->isVisible())
                continue;
            seen += shownBy(window) + QLatin1Char('\n');
            if (expected.match(shownBy(window)).hasMatch() && togglesAColumn(qobject_cast<QMainWindow*>(window)) &&
                expected.match(shownBy(window)).hasMatch()) {
                // A label leaves its timer behind, which is no leak of the example's.
                if (FieldValueLabel* const label = qobject_cast<FieldValueLabel*>(window))
                    label->setTimeOut(-1);
                return QApplication::exit(0);
            }
        }
        if (++looks > 600) {
            std::fprintf(stderr, "The example does not show what it should. It shows:\n%s\n", qPrintable(seen));
            QApplication::exit(1);
        }
    });
    timer->start(50);
}
Q_COREAPP_STARTUP_FUNCTION(probe)
