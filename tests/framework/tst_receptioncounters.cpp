#include "receptioncounters.h"

#include "message.h"
#include "messageinfo.h"
#include "testbase.h"

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

StreamProblem problem(StreamProblem::Kind kind, quint64 length, quint32 id = 0)
{
    StreamProblem result;
    result.kind = kind;
    result.length = length;
    result.id = id;
    return result;
}

QString rowText(const ReceptionCounters::Row& row)
{
    return QStringLiteral("%1 %2 from %3: %4")
        .arg(row.info ? row.info->getName() : QStringLiteral("?"))
        .arg(row.id)
        .arg(row.sender)
        .arg(row.count);
}

QString rowTexts(const ReceptionCounters& counters)
{
    QStringList lines;
    for (const ReceptionCounters::Row& row : counters.getRows())
        lines.append(rowText(row));
    return lines.join(QLatin1String("; "));
}

} // namespace

class TestReceptionCounters : public TestBase
{
    Q_OBJECT

private Q_SLOTS:
    void countsTypesAndSendersApart();
    void countsEveryKindOfProblem();
    void copiesAreIndependent();
};

void TestReceptionCounters::countsTypesAndSendersApart()
{
    const MessageInfo beat(QStringLiteral("BEAT"));
    const MessageInfo tilt(QStringLiteral("TILT"));
    ReceptionCounters counters;
    counters.countMessage(received(&tilt, 30, 7, 40));
    counters.countMessage(received(&beat, 0, 7, 21));
    counters.countMessage(received(&beat, 0, 30, 21));
    counters.countMessage(received(&tilt, 30, 7, 38));
    counters.countMessage(received(nullptr, 7, 30, 12));
    counters.countMessage(received(&tilt, 30, 0, 40));
    QCOMPARE(rowTexts(counters), QStringLiteral("TILT 30 from 7: 2; BEAT 0 from 7: 1; BEAT 0 from 30: 1; "
                                                "? 7 from 30: 1; TILT 30 from 0: 1"));
    QCOMPARE(counters.getMessageCount(), quint64(5));
    QCOMPARE(counters.getUnknownCount(), quint64(1));
    QCOMPARE(counters.getByteCount(), quint64(172));
}

void TestReceptionCounters::countsEveryKindOfProblem()
{
    ReceptionCounters counters;
    counters.countProblem(problem(StreamProblem::ChecksumFailure, 20, 142));
    counters.countProblem(problem(StreamProblem::ChecksumFailure, 20, 30));
    counters.countProblem(problem(StreamProblem::ChecksumFailure, 20, 142));
    counters.countProblem(problem(StreamProblem::SkippedBytes, 5));
    counters.countProblem(problem(StreamProblem::SkippedBytes, 6));
    counters.countProblem(problem(StreamProblem::TruncatedFrame, 11));
    counters.countProblem(problem(StreamProblem::UnsupportedFrame, 30));
    counters.countProblem(problem(StreamProblem::LengthMismatch, 30));
    counters.countProblem(problem(StreamProblem::LengthMismatch, 30));
    counters.countProblem(problem(StreamProblem::InputFailure, 0));
    QMap<quint32, quint64> failures;
    failures.insert(30, 1);
    failures.insert(142, 2);
    QCOMPARE(counters.getChecksumFailures(), failures);
    QCOMPARE(counters.getChecksumFailureCount(), quint64(3));
    QCOMPARE(counters.getSkippedBytes(), quint64(11));
    QCOMPARE(counters.getTruncatedFrames(), quint64(1));
    QCOMPARE(counters.getTruncatedBytes(), quint64(11));
    QCOMPARE(counters.getUnsupportedFrames(), quint64(1));
    QCOMPARE(counters.getLengthMismatches(), quint64(2));
    QCOMPARE(counters.getMessageCount(), quint64(0));
    QCOMPARE(counters.getByteCount(), quint64(0));
}

void TestReceptionCounters::copiesAreIndependent()
{
    const MessageInfo beat(QStringLiteral("BEAT"));
    ReceptionCounters counters;
    counters.countMessage(received(&beat, 0, 1, 21));
    const ReceptionCounters before = counters;
    counters.countMessage(received(&beat, 0, 1, 21));
    QCOMPARE(rowTexts(before), QStringLiteral("BEAT 0 from 1: 1"));
    QCOMPARE(rowTexts(counters), QStringLiteral("BEAT 0 from 1: 2"));
}

QTEST_GUILESS_MAIN(TestReceptionCounters)
#include "tst_receptioncounters.moc"
