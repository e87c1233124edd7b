#include "mavlinkdialect.h"
#include "mavlinkstreamdecoder.h"
#include "message.h"
#include "receptioncounters.h"
#include "testbase.h"

#include <QFile>
#include <QScopedPointer>
#include <QSet>

namespace
{

class CountingSink : public StreamSink
{
public:
    void processReceived(const ReceivedMessage& message) override
    {
        counters.countMessage(message);
        if (message.time != Message::NoTime)
            ++timed;
    }
    void processProblem(const StreamProblem& problem) override { counters.countProblem(problem); }

    QString summary() const
    {
        QSet<quint32> types;
        QSet<quint32> senders;
        for (const ReceptionCounters::Row& row : counters.getRows()) {
            types.insert(row.id);
            senders.insert(row.sender);
        }
        QStringList failures;
        for (auto it = counters.getChecksumFailures().begin(); it != counters.getChecksumFailures().end(); ++it)
            failures.append(QStringLiteral("%1 of id %2").arg(it.value()).arg(it.key()));
        return QStringLiteral("%1 messages of %2 types from %3 senders, %4 timed; %5 unknown; failures: %6; "
                              "skipped %7; cut off %8 with %9 bytes; other %10")
            .arg(counters.getMessageCount())
            .arg(types.size())
            .arg(senders.size())
            .arg(timed)
            .arg(counters.getUnknownCount())
            .arg(failures.join(QLatin1String(", ")))
            .arg(counters.getSkippedBytes())
            .arg(counters.getTruncatedFrames())
            .arg(counters.getTruncatedBytes())
            .arg(counters.getLengthMismatches() + counters.getUnsupportedFrames());
    }

    ReceptionCounters counters;
    int timed = 0;
};

} // namespace

/** Real recordings, with the full dialect. */
class TestMavlinkRecordings : public TestBase
{
    Q_OBJECT

private Q_SLOTS:
    void initTestCase();
    void decodes_data();
    void decodes();

private:
    QString m_folder;
    QScopedPointer<MavlinkDialect> m_dialect;
};

void TestMavlinkRecordings::initTestCase()
{
    m_folder = qEnvironmentVariable("CORVEL_SAMPLES_DIR") + QStringLiteral("/mavlink/");
    QStringList errors;
    m_dialect.reset(MavlinkDialect::load(m_folder + QStringLiteral("dialects/ardupilotmega.xml"), &errors));
    QCOMPARE(errors, QStringList());
}

void TestMavlinkRecordings::decodes_data()
{
    QTest::addColumn<QString>("file");
    QTest::addColumn<int>("layout");
    QTest::addColumn<QString>("summary");
    // The recording ends within a frame: its last 11 bytes are the beginning of a HEARTBEAT.
    QTest::newRow("flight")
        << "dronekit-flight.tlog" << int(MavlinkStreamDecoder::TlogLayout)
        << "75477 messages of 35 types from 3 senders, 75477 timed; 0 unknown; failures: 1314 of id "
           "142; skipped 0; cut off 1 with 11 bytes; other 0";
    QTest::newRow("raw stream")
        << "data.mavlink" << int(MavlinkStreamDecoder::RawLayout)
        << "1476 messages of 24 types from 1 senders, 0 timed; 0 unknown; failures: ; skipped 0; "
           "cut off 1 with 11 bytes; other 0";
    // 14 bytes stand behind the frame.
    QTest::newRow("one message") << "capture.mav2.battery_status.tlog" << int(MavlinkStreamDecoder::TlogLayout)
                                 << "1 messages of 1 types from 1 senders, 1 timed; 0 unknown; failures: ; skipped 14; "
                                    "cut off 0 with 0 bytes; other 0";
}

void TestMavlinkRecordings::decodes()
{
    QFETCH(QString, file);
    QFETCH(int, layout);
    QFETCH(QString, summary);
    QFile input(m_folder + file);
    QVERIFY2(input.open(QIODevice::ReadOnly), qPrintable(input.errorString()));
    const QByteArray bytes = input.readAll();

    MavlinkStreamDecoder::Layout found = MavlinkStreamDecoder::RawLayout;
    QVERIFY(MavlinkStreamDecoder::detectLayout(bytes.left(512), &found));
    QCOMPARE(int(found), layout);
    for (const int piece : {int(bytes.size()), 65536, 4096, 7, 1}) {
        MavlinkStreamDecoder decoder(m_dialect.data(), found);
        CountingSink sink;
        for (int i = 0; i < bytes.size(); i += piece)
            decoder.feed(bytes.constData() + i, qMin(piece, int(bytes.size()) - i), Message::NoTime, &sink);
        decoder.finish(&sink);
        QCOMPARE(sink.summary(), summary);
    }
}

QTEST_GUILESS_MAIN(TestMavlinkRecordings)
#include "tst_mavlinkrecordings.moc"
