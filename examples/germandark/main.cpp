// Statistics and events of a recording or of whatever comes live, in German and in dark colours, whatever language and
// colours the desktop has.

#include "definitions.h"
#include "eventlog.h"
#include "eventlogtablewidget.h"
#include "messagestatisticswidget.h"
#include "receptionmonitor.h"
#include "streamopener.h"
#include "streamsource.h"
#include "translations.h"

#include <QApplication>
#include <QHeaderView>
#include <QSplitter>
#include <QTimer>

int main(int argc, char** argv)
{
    QApplication application(argc, argv);
    // Without an argument it is the language of the desktop. Widgets that are there already follow.
    Translations::install(QLocale(QLocale::German));
    // The widgets have no colours of their own. Qt derives most of them from those of buttons and windows.
    QPalette dark(QColor("#35383d"), QColor("#2b2d30"));
    dark.setColor(QPalette::Base, QColor("#1e1f22"));
    application.setStyle("fusion");
    application.setPalette(dark);

    InputAddress address;
    QString error;
    if (!InputAddress::parse(application.arguments().value(1, "udp:"), &address, &error))
        return qCritical("%s", qPrintable(error)), 1;
    Definitions definitions; // outlives all that names its types
    StreamOptions options;
    options.definitions = &definitions;
    StreamSource source(ByteInput::create(address), new StreamOpener(address, options)); // finds out what comes
    StreamSource::Playback atOnce;
    atOnce.factor = 0;
    source.setPlayback(atOnce);

    MessageStatisticsCoordinator statistics;
    EventLog log;
    ReceptionMonitor monitor(&statistics, &log);
    monitor.follow(&source, address.toString());

    QSplitter window(Qt::Vertical);
    MessageStatisticsWidget* const view = new MessageStatisticsWidget(&statistics, &window);
    view->setColumnWidth(0, 240);
    QTimer timer;
    QObject::connect(&timer, SIGNAL(timeout()), view, SLOT(updateTree()));
    timer.start(250);
    EventLogTableWidget* const events = new EventLogTableWidget(&log, &window);
    events->horizontalHeader()->setSectionResizeMode(QHeaderView::ResizeToContents);
    window.setWindowTitle("Statistik");
    window.resize(800, 500);
    window.show();
    source.start();
    return application.exec();
}
