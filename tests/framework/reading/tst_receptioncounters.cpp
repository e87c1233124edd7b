#include "receptioncounters.h"

#include "messageinfo.h"
#include "testbase.h"
#include "textrows.h"

namespace
{

/** "1 in row 7; 1 known, 0 unknown, 21 bytes" */
QString told(const ReceptionCounters& counters)
{
    QString lines;
    for (int row = 0; row < 9; ++row)
        if (counters.getCount(row))
            lines += QStringLiteral("%1 in row %2; ").arg(counters.getCount(row)).arg(row);
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
    void countsByRowAndWhetherTypesAreKnown()
    {
        const MessageInfo beat(text("BEAT"));
        ReceivedMessage message;
        message.size = 20;
        ReceptionCounters counters;
        counters.countMessage(message, 1);
        const ReceptionCounters before = counters;
        message.info = &beat;
        counters.countMessage(message, 1);
        counters.countMessage(message, 0);
        QCOMPARE(told(before), text("1 in row 1; 0 known, 1 unknown, 20 bytes"));
        QCOMPARE(told(counters), text("1 in row 0; 2 in row 1; 2 known, 1 unknown, 60 bytes"));
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
