#include "eventlog.h"
#include "eventlogtablewidget.h"
#include "formatinfo.h"
#include "messageinfo.h"
#include "messagestatistics.h"
#include "messagestatisticscoordinator.h"
#include "messagestatisticswidget.h"
#include "testbase.h"

#include <QApplication>

/** The statistics tree and the event table on top of the framework that comes with them. */
class tst_ReceptionViews : public TestBase
{
    Q_OBJECT

private Q_SLOTS:
    void statisticsOfAStream();
    void sendersAreNamedFromTheSecondOn();
    void eventsAreFollowed();
};

static QString text(const char* latin1)
{
    return QString::fromLatin1(latin1);
}

static QStringList rowTexts(const QTreeWidgetItem* parent, const QString& indent = QString())
{
    QStringList texts;
    for (int i = 0; i < parent->childCount(); ++i) {
        const QTreeWidgetItem* row = parent->child(i);
        QStringList cells;
        for (int column = 0; column < 4; ++column)
            cells.append(row->text(column));
        while (!cells.isEmpty() && cells.last().isEmpty())
            cells.removeLast();
        texts.append(indent + cells.join(text(" | ")));
        texts += rowTexts(row, indent + text("  "));
    }
    return texts;
}

static const qint64 Start = Q_INT64_C(1700000000000000); // 2023-11-14T22:13:20Z

void tst_ReceptionViews::statisticsOfAStream()
{
    FormatInfo format(text("mavlink"));
    MessageInfo* heartbeat = new MessageInfo(text("HEARTBEAT"));
    heartbeat->setShortDescriptiveText(text("That a system is present"));
    format.addMessageInfo(heartbeat);
    MessageStatisticsCoordinator coordinator;
    const int stream = coordinator.addStream(&format);
    MessageStatistics* statistics = coordinator.findOrCreate(stream, heartbeat, 0, 0x101, text("1:1"));
    for (int i = 0; i < 40; ++i) {
        if (i != 20 && i != 21)
            statistics->addReception(Start + i * Q_INT64_C(1000000));
    }
    coordinator.findOrCreate(stream, nullptr, 203, 0x101, text("1:1"))->addReception(-1);
    coordinator.countEvent(CorvelEvent::CrcError, 1314);
    MessageStatisticsWidget tree(&coordinator, nullptr);
    tree.updateTree();
    const QStringList shown = rowTexts(tree.invisibleRootItem());
    QCOMPARE(shown.filter(text("HEARTBEAT")), QStringList(text("  HEARTBEAT | 38 | 1 Hz | 1 (2 epochs)")));
    QCOMPARE(shown.filter(text(" 2 s")), QStringList(text("      2023-11-14 22:13:39.000 | 2 | 2 s")));
    QCOMPARE(shown.filter(text("      1 Hz")).size(), 1);
    QCOMPARE(shown.filter(text("CRC")), QStringList(text("CRC Errors | 1314")));
    QCOMPARE(shown.filter(text("203")), QStringList(text("  Unknown 203 | 1 | N/A")));
    tree.updateTree();
    QCOMPARE(rowTexts(tree.invisibleRootItem()), shown);
    coordinator.clear();
    tree.updateTree();
    QCOMPARE(tree.topLevelItemCount(), 0);
}

void tst_ReceptionViews::sendersAreNamedFromTheSecondOn()
{
    FormatInfo format(text("mavlink"));
    QList<MessageInfo*> infos;
    for (int i = 0; i < 8; ++i) {
        infos.append(new MessageInfo(QString::fromLatin1("TYPE %1").arg(i)));
        format.addMessageInfo(infos.last());
    }
    MessageStatisticsCoordinator coordinator;
    const int stream = coordinator.addStream(&format);
    MessageStatisticsWidget tree(&coordinator, nullptr);
    for (int i = 0; i < infos.size(); ++i)
        coordinator.findOrCreate(stream, infos.at(i), static_cast<quint32>(i), 0x101, text("1:1"))->addReception(-1);
    tree.updateTree();
    // The statistics are replaced by others, any of which might stand where another one stood.
    coordinator.findOrCreate(stream, infos.first(), 0, 0x301, text("3:1"))->addReception(-1);
    tree.updateTree();
    QStringList expected(text("TYPE 0 (1:1)"));
    expected.append(text("TYPE 0 (3:1)"));
    for (int i = 1; i < infos.size(); ++i)
        expected.append(QString::fromLatin1("TYPE %1 (1:1)").arg(i));
    QStringList names;
    for (int i = 0; i < tree.topLevelItem(0)->childCount(); ++i)
        names.append(tree.topLevelItem(0)->child(i)->text(0));
    QCOMPARE(names, expected);
}

void tst_ReceptionViews::eventsAreFollowed()
{
    EventLog log;
    log.append(CorvelEvent(CorvelEvent::SourceEvent, text("connected")), QDateTime());
    const EventLogTableWidget table(&log, nullptr);
    log.append(CorvelEvent(CorvelEvent::CrcError, text("checksum failure")), QDateTime());
    QCOMPARE(table.rowCount(), 2);
    QCOMPARE(table.item(0, 1)->text(), text("connected"));
    QCOMPARE(table.item(1, 1)->text(), text("checksum failure"));
    log.clear();
    QCOMPARE(table.rowCount(), 0);
}

QTEST_MAIN(tst_ReceptionViews)
#include "tst_receptionviews.moc"
