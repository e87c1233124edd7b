#include "formatinfo.h"
#include "messageinfo.h"
#include "messagestatistics.h"
#include "messagestatisticscoordinator.h"
#include "messagestatisticswidget.h"
#include "shown.h"
#include "testbase.h"

/** The statistics tree on top of the framework that comes with them. */
class tst_ReceptionViews : public TestBase
{
    Q_OBJECT

private Q_SLOTS:
    void sendersAreNamedFromTheSecondOn();
};

void tst_ReceptionViews::sendersAreNamedFromTheSecondOn()
{
    FormatInfo format(text("mavlink"));
    MessageStatisticsCoordinator coordinator;
    const int stream = coordinator.addStream();
    MessageStatisticsWidget tree(&coordinator, nullptr);
    QStringList expected = lines("  TYPE 0 (1:1) | 1 | N/A\n  TYPE 0 (3:1) | 1 | N/A");
    for (int i = 0; i < 8; ++i) {
        MessageInfo* info = new MessageInfo(text("TYPE %1").arg(i));
        format.addMessageInfo(info);
        coordinator.findOrCreate(stream, i, MessageStatisticsCoordinator::Origin(info, 0, text("1:1")))
            ->addReception(-1);
        if (i > 0)
            expected.append(text("  TYPE %1 (1:1) | 1 | N/A").arg(i));
    }
    tree.updateTree();
    // The statistics are replaced by others, any of which might stand where another one stood.
    const MessageInfo* first = format.getMessageInfos().first();
    coordinator.findOrCreate(stream, 8, MessageStatisticsCoordinator::Origin(first, 1, text("3:1")))->addReception(-1);
    tree.updateTree();
    QCOMPARE(rowTexts(tree).filter(text("TYPE")), expected);
}

QTEST_MAIN(tst_ReceptionViews)
#include "tst_receptionviews.moc"
