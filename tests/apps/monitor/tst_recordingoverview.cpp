#include "definitions.h"
#include "mavlinkframes.h"
#include "mcapfixtures.h"
#include "message.h"
#include "messageinfo.h"
#include "recordingoverview.h"
#include "sourcefactory.h"
#include "statisticscsv.h"
#include "testbase.h"
#include "testfolder.h"
#include "waitfor.h"

#include <QSignalSpy>

#include <numeric>

namespace
{

/** The overview of a file. */
struct Pass
{
    explicit Pass(const QString& path)
    {
        overview.reset(new RecordingOverview(open(path), open(path), factory.getDefinitions()));
    }
    std::unique_ptr<PassInput> open(const QString& path)
    {
        SourceOptions options;
        options.address = path;
        SourceParts parts;
        QString error;
        if (!factory.create(options, &parts, &error))
            qWarning("%s", qPrintable(error));
        return std::make_unique<PassInput>(std::move(parts.input), std::move(parts.opener));
    }
    bool run()
    {
        QSignalSpy ends(overview.get(), &RecordingOverview::ended);
        overview->start();
        return waitFor([&]() { return ends.size() == 1; }, 60000) && overview->isComplete();
    }

    static QString sum(const RecordingDensity::Curve& curve)
    {
        return QString::number(std::accumulate(curve.counts.begin(), curve.counts.end(), quint64(0)));
    }
    /** "ATTITUDE 1:1 5 in 4 s, lost 2 | ... | 15 and 1 damaged in time, 1 event". */
    QString text() const
    {
        QStringList rows;
        for (const OverviewRow& row : overview->getRows())
            rows.append(QString("%1 %2 %3%4, lost %5")
                            .arg(row.typeName, row.sender)
                            .arg(row.count)
                            .arg(row.firstTime == Message::NoTime
                                     ? QString()
                                     : QString(" in %1 s").arg((row.lastTime - row.firstTime) / 1e6))
                            .arg(row.lost));
        rows.append(QString("%1 and %2 damaged in time, %3 events")
                        .arg(sum(overview->getDensity()), sum(overview->getDamage()))
                        .arg(overview->getEvents()->getRows().size()));
        return rows.join(" | ");
    }

    SourceFactory factory;
    std::unique_ptr<RecordingOverview> overview;
};

} // namespace

/** What one pass says of a recording, and what of it when it is damaged, has no times or is not wanted any more. */
class tst_recordingoverview : public TestBase
{
    Q_OBJECT

private Q_SLOTS:
    void itSaysWhatThereIs_data();
    void itSaysWhatThereIs();
    void statisticsAreThoseOfAMonitor();
    void itIsCancelled();
    void whatWasBeforeIsFoundMeanwhile();
    void densityIsFlatInMemory();

private:
    const MavlinkScript m_script;
    const TestFolder m_folder;
};

void tst_recordingoverview::itSaysWhatThereIs_data()
{
    QTest::addColumn<QByteArray>("content");
    QTest::addColumn<QString>("expected");
    QTest::addColumn<QString>("error");

    QTest::newRow("a tlog") << m_script.bytes("0:H1 1000000:A2 4000000:A5")
                            << "HEARTBEAT 1:1 1 in 0 s, lost 2 | ATTITUDE 1:1 2 in 3 s, lost 2 | "
                               "3 and 0 damaged in time, 0 events"
                            << "";
    QTest::newRow("damage") << m_script.bytes("0:H1 1000000:A2~20 2000000:A3 xyz 4000000:A4<20")
                            << "HEARTBEAT 1:1 1 in 0 s, lost 1 | ATTITUDE 1:1 1 in 0 s, lost 1 | "
                               "2 and 3 damaged in time, 3 events"
                            << "";
    QTest::newRow("no times") << m_script.bytes("H1 A2 A3")
                              << "HEARTBEAT 1:1 1, lost 0 | ATTITUDE 1:1 2, lost 0 | 0 and 0 damaged in time, 0 events"
                              << "";
    QTest::newRow("unknown") << m_script.bytes("0:H1 5:U2 9:H3")
                             << "HEARTBEAT 1:1 2 in 9e-06 s, lost 0 | id 70000 1:1 1 in 0 s, lost 0 | "
                                "3 and 0 damaged in time, 1 events"
                             << "";
    McapFixtures::Recording recording(McapFixtures::settings(McapWriter::Lz4, 256));
    const quint16 here = recording.addPoints("/here");
    const quint16 there = recording.addPoints("/there");
    for (int i = 0; i < 100; ++i)
        recording.writer.writeMessage(i % 10 ? here : there, 0, quint64(i + 1) * 1000 * McapFixtures::Millisecond,
                                      McapFixtures::point(i));
    QTest::newRow("MCAP") << recording.finished()
                          << "demo.Point /there 10 in 90 s, lost -1 | demo.Point /here 90 in 98 s, lost -1 | "
                             "100 and 0 damaged in time, 0 events"
                          << "";
    QTest::newRow("nothing known") << QByteArray("a letter") << "0 and 0 damaged in time, 0 events"
                                   << ": not recognised";
}

void tst_recordingoverview::itSaysWhatThereIs()
{
    QFETCH(QByteArray, content);
    QFETCH(QString, expected);
    QFETCH(QString, error);
    Pass pass(m_folder.write("recording", content));
    QVERIFY(pass.run());
    QCOMPARE(pass.text(), expected);
    QVERIFY2(pass.overview->getErrorString().contains(error), qPrintable(pass.overview->getErrorString()));
    QCOMPARE(pass.overview->getErrorString().isEmpty(), error.isEmpty());
    const QVector<OverviewRow> rows = pass.overview->getRows();
    for (int i = 0; i < rows.size(); ++i) {
        QCOMPARE(pass.overview->find(rows.at(i).info, rows.at(i).sender), rows.at(i).info ? i : -1);
        QVERIFY(!rows.at(i).info || rows.at(i).info->getFormatInfo());
    }
}

void tst_recordingoverview::statisticsAreThoseOfAMonitor()
{
    QByteArray bytes;
    for (int i = 0; i < 2000; ++i)
        if (i % 400 < 370)
            bytes += m_script.bytes(QString("%1:A%2").arg(i * 50000).arg(1 + i % 255)) +
                     (i % 50 ? QByteArray() : m_script.bytes(QString("%1:H1 noise").arg(i * 50000 + 1)));
    const QString path = m_folder.write("gaps.tlog", bytes);
    Pass pass(path);
    QVERIFY(pass.run());

    Definitions definitions;
    StreamOptions options;
    options.definitions = &definitions;
    const OpenedInput opened = openStream(InputAddress::ofFile(path), options);
    MessageStatisticsCoordinator coordinator;
    ReceptionMonitor monitor(&coordinator);
    monitor.begin(opened.stream.decoder.get());
    for (QByteArray piece; opened.input->read(&piece, 0) == ByteInput::Data;)
        opened.stream.decoder->feed(piece.constData(), int(piece.size()), Message::NoTime, &monitor);
    opened.stream.decoder->finish(&monitor);
    QStringList problems;
    definitions.publish(&problems);
    const QByteArray expected = StatisticsCsv::toCsv(coordinator);
    QVERIFY2(expected.contains(",ATTITUDE,"), expected.constData());
    QVERIFY(pass.overview->getRows().at(0).gaps > 0);
    QCOMPARE(StatisticsCsv::toCsv(*pass.overview->getCoordinator()), expected);
}

void tst_recordingoverview::itIsCancelled()
{
    QByteArray bytes;
    for (int i = 0; i < 200000; ++i)
        bytes += m_script.bytes("1:H1");
    const QString path = m_folder.write("long.tlog", bytes);
    for (int i = 0; i < 3; ++i) {
        Pass pass(path);
        QSignalSpy ends(pass.overview.get(), &RecordingOverview::ended);
        if (i > 0)
            pass.overview->start();
        if (i > 1)
            QVERIFY(waitFor([&]() { return pass.overview->getMessageCount() > 0; }));
        pass.overview.reset();
        QCoreApplication::processEvents();
        QVERIFY(ends.isEmpty() || i > 1);
    }
}

void tst_recordingoverview::whatWasBeforeIsFoundMeanwhile()
{
    Pass pass(m_folder.write("before.tlog", m_script.bytes("1000000:H1").repeated(500000) +
                                                m_script.bytes("5000000:A2") +
                                                m_script.bytes("9000000:H3").repeated(500000)));
    QStringList found;
    connect(pass.overview.get(), &RecordingOverview::foundBefore, this,
            [&](qint64, const QVector<EarlierMessage>& messages) {
                QString names = pass.overview->isComplete() ? "at the end:" : "at once:";
                for (const EarlierMessage& message : messages)
                    names += ' ' + message.typeName;
                found.append(names);
            });
    pass.overview->findBefore(qint64(MavlinkScript::Noon) + 5100000);
    QVERIFY(pass.run());
    QVERIFY(waitFor([&]() { return !found.isEmpty() && found.last() == "at the end: HEARTBEAT ATTITUDE"; }));
    QVERIFY2(found.first().startsWith("at once:") && found.first().endsWith("ATTITUDE"), qPrintable(found.first()));
}

void tst_recordingoverview::densityIsFlatInMemory()
{
    RecordingDensity density;
    density.setSpan(0, 2047999);
    for (int row = 0; row < 2000; ++row) {
        density.countMessage(row, row * 1000, quint64(row));
        density.countMessage(row, 2047999, 5000);
        density.countMessage(row, 2048000, 0); // outside
    }
    QCOMPARE(Pass::sum(density.getAll()), QString("4000"));
    const RecordingDensity::Curve curve = density.getRow(40);
    QCOMPARE(int(curve.counts.size()), 256);
    QCOMPARE(curve.width * qint64(curve.counts.size()), qint64(2048000));
    QVERIFY(curve.counts.at(5) == 1 && curve.counts.at(255) == 1 && Pass::sum(curve) == "2");
    // Coarse bins begin at 40, and what lies in that of the time is to be looked for.
    qint64 from = 0;
    const std::vector<RecordingDensity::Place> places = density.getPlacesBefore(47000, &from);
    QCOMPARE(int(places.size()), 40);
    QCOMPARE(from, qint64(40000));
    QVERIFY(places.back().row == 39 && places.back().time == 39000 && places.back().offset == 39);
    QVERIFY(density.getPlacesBefore(0, &from).empty());
}

QTEST_MAIN(tst_recordingoverview)
#include "tst_recordingoverview.moc"
