#include "receptioncounters.h"

#include "message.h"
#include "messageinfo.h"
#include "testbase.h"
#include "textrows.h"

namespace
{

ReceivedMessage received(const MessageInfo* info, quint32 id, quint32 sender, int size)
{
    ReceivedMessage message;
    message.info = info;
    message.id = id;
    message.sender = sender;
    message.size = size;
    return message;
}

/** "BEAT 0 from 7: 1; 1 known, 0 unknown, 21 bytes" */
QString told(const ReceptionCounters& counters)
{
    QString lines;
    for (const ReceptionCounters::Row& row : counters.getRows())
        lines += QStringLiteral("%1 %2 from %3: %4; ")
                     .arg(row.info ? row.info->getName() : text("?"))
                     .arg(row.id)
                     .arg(row.sender)
                     .arg(row.count);
    return lines + QStringLiteral("%1 known, %2 unknown, %3 bytes")
                       .arg(counters.getMessageCount())
                       .arg(counters.getUnknownCount())
                       .arg(counters.getByteCount());
}

} // namespace

class TestReceptionCounters : public TestBase
{
    Q_OBJECT

private Q_SLOTS:
    void countsTypesAndSendersApart()
    {
        const MessageInfo beat(text("BEAT"));
        const MessageInfo tilt(text("TILT"));
        ReceptionCounters counters;
        counters.countMessage(received(&tilt, 30, 7, 40));
        const ReceptionCounters before = counters;
        for (const ReceivedMessage& message :
             {received(&beat, 0, 7, 21), received(&beat, 0, 30, 21), received(&tilt, 30, 7, 38),
              received(nullptr, 7, 30, 12), received(&tilt, 30, 0, 40)})
            counters.countMessage(message);
        QCOMPARE(told(before), text("TILT 30 from 7: 1; 1 known, 0 unknown, 40 bytes"));
        QCOMPARE(told(counters), text("TILT 30 from 7: 2; BEAT 0 from 7: 1; BEAT 0 from 30: 1; ? 7 from 30: 1; "
                                      "TILT 30 from 0: 1; 5 known, 1 unknown, 172 bytes"));
    }

    void countsEveryKindOfProblem()
    {
        ReceptionCounters counters;
        for (int kind = StreamProblem::ChecksumFailure; kind <= StreamProblem::InputFailure; ++kind) {
            for (int i = 0; i < 3 + kind; ++i) {
                StreamProblem problem;
                problem.kind = static_cast<StreamProblem::Kind>(kind);
                problem.length = 5;
                problem.id = i == 0 ? 30 : 142;
                counters.countProblem(problem);
            }
        }
        QCOMPARE(counters.getChecksumFailures(), (QMap<quint32, quint64>{{30, 1}, {142, 2}}));
        QCOMPARE(QStringLiteral("%1 failed, %2 of wrong length, %3 unsupported, %4 bytes skipped, %5 cut off with %6; ")
                         .arg(counters.getChecksumFailureCount())
                         .arg(counters.getLengthMismatches())
                         .arg(counters.getUnsupportedFrames())
                         .arg(counters.getSkippedBytes())
                         .arg(counters.getTruncatedFrames())
                         .arg(counters.getTruncatedBytes()) +
                     told(counters),
                 text("3 failed, 4 of wrong length, 5 unsupported, 30 bytes skipped, 7 cut off with 35; "
                      "0 known, 0 unknown, 0 bytes"));
    }
};

QTEST_GUILESS_MAIN(TestReceptionCounters)
#include "tst_receptioncounters.moc"
