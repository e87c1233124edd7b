// A window with every message type of whatever vehicle sends MAVLink to UDP port 14550, or to the address given as
// argument, and a menu that shows and hides the columns. What is arranged in it - columns, unfolded rows, its size - is
// there again the next time.

#include "formatregistry.h"
#include "mavlinkdialect.h"
#include "mavlinkstreamdecoder.h"
#include "messagetreewidget.h"
#include "messagetreewidgetitem.h"
#include "streamsource.h"

#include <QApplication>
#include <QMainWindow>
#include <QMenu>
#include <QMenuBar>
#include <QSettings>
#include <QStatusBar>

#include <memory>

int main(int argc, char** argv)
{
    const QApplication application(argc, argv);
    InputAddress address;
    QString error;
    if (!InputAddress::parse(application.arguments().value(1, "udp:"), &address, &error))
        return qCritical("%s", qPrintable(error)), 1;
    const std::unique_ptr<MavlinkDialect> dialect(MavlinkDialect::loadBuiltIn());
    FormatRegistry::getInstance()->addFormat(dialect.get()); // settings name types and fields by their paths
    StreamSource source(ByteInput::create(address),
                        new MavlinkStreamDecoder(dialect.get(), MavlinkStreamDecoder::RawLayout));

    QMainWindow window;
    MessageTreeWidget* const tree = new MessageTreeWidget(&window);
    // A row states that it needs its type, so that messages of it are delivered.
    for (const MessageInfo* info : dialect->getMessageInfos())
        tree->addTopLevelItem(new MessageTreeWidgetItem(tree, info));
    tree->reconfigureTopLevelAbstractMessageTreeWidgetItems(); // unfolds rows of types that nobody has folded yet
    tree->resizeColumns();
    // Here all types are to be seen at first. Rows that were folded once stay so whenever columns come and go.
    for (int i = 0; i < tree->topLevelItemCount(); ++i)
        tree->topLevelItem(i)->setExpanded(false);
    QObject::connect(&source, SIGNAL(newMessage(const Message*)), tree, SLOT(processMessage(const Message*)));
    window.setCentralWidget(tree);

    QMenu* const file = window.menuBar()->addMenu("&File");
    file->addAction("&Quit", &window, SLOT(close()))->setShortcut(QKeySequence("Ctrl+Q"));
    QMenu* const columns = window.menuBar()->addMenu("&Columns");
    for (QAction* action : tree->getToggleColumnActions())
        columns->addAction(action);
    window.resize(800, 600);

    QSettings settings("Corvel", "messagetree");
    if (settings.contains("geometry")) {
        window.restoreGeometry(settings.value("geometry").toByteArray());
        tree->loadExpansionState(settings); // behind the folding above: unfolds again what is in it
        tree->restoreSettings(settings);
        tree->reconfigureTopLevelAbstractMessageTreeWidgetItems();
    }
    window.show();
    QObject::connect(&source, &StreamSource::stateChanged, &window, [&](int state) {
        if (state == StreamSource::Failed) // such as a file that is not there, or a port that is in use
            window.statusBar()->showMessage(source.getErrorString());
    });
    source.start();
    const int result = application.exec();
    settings.setValue("geometry", window.saveGeometry());
    tree->saveSettings(settings);
    tree->saveExpansionState(settings);
    return result;
}
