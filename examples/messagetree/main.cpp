// A window with every message type of whatever vehicle sends MAVLink to UDP port 14550, or to the address given as
// argument, and a menu that shows and hides the columns.

#include "mavlinkdialect.h"
#include "mavlinkstreamdecoder.h"
#include "messagetreewidget.h"
#include "messagetreewidgetitem.h"
#include "streamsource.h"

#include <QApplication>
#include <QMainWindow>
#include <QMenu>
#include <QMenuBar>

#include <memory>

int main(int argc, char** argv)
{
    const QApplication application(argc, argv);
    InputAddress address;
    QString error;
    if (!InputAddress::parse(application.arguments().value(1, "udp:"), &address, &error))
        return qCritical("%s", qPrintable(error)), 1;
    const std::unique_ptr<MavlinkDialect> dialect(MavlinkDialect::loadBuiltIn());
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

    QMenu* const columns = window.menuBar()->addMenu("&Columns");
    for (QAction* action : tree->getToggleColumnActions())
        columns->addAction(action);
    window.resize(800, 600);
    window.show();
    source.start();
    return application.exec();
}
