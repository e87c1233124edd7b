#include "mainwindow.h"
#include "messagetreewidget.h"
#include "testbase.h"
#include "treepanel.h"
#include "waitfor.h"

#include <QDockWidget>

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
};

QTEST_MAIN(tst_plotless)
#include "tst_plotless.moc"
