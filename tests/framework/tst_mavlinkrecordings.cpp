#include "mavlinkdialect.h"
#include "mavlinkstreamdecoder.h"
#include "message.h"
#include "receptioncounters.h"
#include "testbase.h"
#include "textrows.h"

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
        timed += message.time != Message::NoTime;
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
        QString failures;
        for (auto it = counters.getChecksumFailures().begin(); it != counters.getChecksumFailures().end(); ++it)
            failures += QStringLiteral("%1 of id %2 failed; ").arg(it.value()).arg(it.key());
        return QStringLiteral("%1 messages of %2 types from %3 senders, %4 timed; %5 unknown; ")
                   .arg(counters.getMessageCount())
                   .arg(types.size())
                   .arg(senders.size())
                   .arg(timed)
                   .arg(counters.getUnknownCount()) +
               failures +
               QStringLiteral("%1 bytes skipped; %2 cut off with %3; %4 others")
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
    void decodes()
    {
        const QString folder = qEnvironmentVariable("CORVEL_SAMPLES_DIR") + text("/mavlink/");
        QStringList errors;
        const QScopedPointer<MavlinkDialect> dialect(
            MavlinkDialect::load(folder + text("dialects/ardupilotmega.xml"), &errors));
        QCOMPARE(errors, QStringList());
        const TextRow rows[] = {
            // The recording ends within a frame: its last 11 bytes are the beginning of a HEARTBEAT.
            {"dronekit-flight.tlog",
             "tlog: 75477 messages of 35 types from 3 senders, 75477 timed; 0 unknown; 1314 of id "
             "142 failed; 0 bytes skipped; 1 cut off with 11; 0 others"},
            {"data.mavlink",
             "raw: 1476 messages of 24 types from 1 senders, 0 timed; 0 unknown; 0 bytes skipped; 1 cut "
             "off with 11; 0 others"},
            // 14 bytes stand behind the frame.
            {"capture.mav2.battery_status.tlog", "tlog: 1 messages of 1 types from 1 senders, 1 timed; 0 unknown; 14 "
                                                 "bytes skipped; 0 cut off with 0; 0 others"}};
        for (const int greatestPiece : {1 << 30, 65536, 4096, 7, 1}) {
            QCOMPARE(differences(rows,
                                 [&](const QString& name) {
                                     QFile file(folder + name);
                                     MavlinkStreamDecoder::Layout layout;
                                     if (!file.open(QIODevice::ReadOnly))
                                         return file.errorString();
                                     const QByteArray bytes = file.readAll();
                                     if (!MavlinkStreamDecoder::detectLayout(bytes.left(512), &layout))
                                         return text("no layout");
                                     MavlinkStreamDecoder decoder(dialect.data(), layout);
                                     CountingSink sink;
                                     for (int i = 0, piece = 0; i < bytes.size(); i += piece) {
                                         piece = qMin(greatestPiece, int(bytes.size()) - i);
                                         decoder.feed(bytes.constData() + i, piece, Message::NoTime, &sink);
                                     }
                                     decoder.finish(&sink);
                                     return text(decoder.hasTimes() ? "tlog: " : "raw: ") + sink.summary();
                                 }),
                     QString());
        }
    }
};

QTEST_GUILESS_MAIN(TestMavlinkRecordings)
#include "tst_mavlinkrecordings.moc"
