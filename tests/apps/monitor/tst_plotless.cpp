#include "mainwindow.h"
#include "messagetreewidget.h"
#include "shellrun.h"
#include "testbase.h"
#include "treepanel.h"
#include "waitfor.h"

#include <QDockWidget>
#include <QTemporaryDir>

/** The window with the table of panels as it is in a program without the plot. */
class tst_plotless : public TestBase
{
    Q_OBJECT

private Q_SLOTS:
    void theWindowDoesWithoutThePlot()
    {
        MainWindow window;
        window.show();
        window.openSimulation();
        QVERIFY(waitFor([&]() { return window.getPanels().find<TreePanel>()->getTree()->topLevelItemCount() >= 5; },
                        30000));
        QVERIFY(window.findChild<QDockWidget*>("events") && !window.findChild<QDockWidget*>("plot"));
        QVERIFY(!window.getDesk()->wish("plot", "corvel/ATTITUDE/roll"));
        const QString about = window.getAboutText();
        QVERIFY2(about.contains("BSD-3-Clause") && !about.contains("GPL"), qPrintable(about));
    }

    void theProgramRefusesToPlot()
    {
        static const TextRow rows[] = {
            {"{ plotless_monitor --settings no.ini --plot corvel/ATTITUDE/roll; echo \"= $?\"; } 2>&1 | tail -n 2",
             "corvel-monitor: this program was built without the plot\n= 2"}};
        const QTemporaryDir folder;
        check(rows, folder.path());
    }
};

QTEST_MAIN(tst_plotless)
#include "tst_plotless.moc"
