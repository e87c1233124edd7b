#include "statisticsprinter.h"

#include "formatinfo.h"
#include "jsontext.h"
#include "messageinfo.h"
#include "messagestatistics.h"

#include <algorithm>
#include <utility>

using namespace JsonText;

namespace
{

void appendMember(std::string* text, Separator* separator, const QString& key, quint64 number)
{
    separator->next();
    appendString(text, key);
    text->push_back(':');
    appendNumber(text, std::uint64_t(number));
}

void appendMember(std::string* text, Separator* separator, const char* key, quint64 number)
{
    appendMember(text, separator, QString::fromLatin1(key), number);
}

// Of a number that says all there is to be known, no more than that.
QString unknownName(const StreamDecoder& decoder, const StreamIdentities::Row& row)
{
    return row.typeName == decoder.StreamDecoder::describeUnknown(row.id) ? QString::number(row.id) : row.typeName;
}

void appendGaps(std::string* text, const MessageStatistics& statistics)
{
    text->push_back('[');
    Separator gaps(text);
    for (const MessageStatistics::Gap& gap : statistics.getGaps()) {
        gaps.next();
        text->append("{\"start\":");
        appendTime(text, std::int64_t(gap.start));
        text->append(",\"missingEpochs\":");
        appendNumber(text, std::uint64_t(gap.missingEpochs));
        text->append(",\"interval\":");
        appendNumber(text, std::uint64_t(gap.interval));
        text->push_back('}');
    }
    text->push_back(']');
}

void appendIntervals(std::string* text, const MessageStatistics& statistics)
{
    const QHash<long long, unsigned int> counts = statistics.getIntervalCountHash();
    text->push_back('{');
    Separator intervals(text);
    for (const long long interval : statistics.getIntervalsSortedOnFrequency(-1))
        appendMember(text, &intervals, QString::number(interval), counts.value(interval));
    text->push_back('}');
}

void appendSender(std::string* text, const MessageStatisticsCoordinator::SenderStatistics& sender)
{
    text->push_back('{');
    Separator members(text);
    appendMember(text, &members, "messages", sender.received);
    if (sender.numbered) {
        appendMember(text, &members, "lost", sender.lost);
        appendMember(text, &members, "repeated", sender.repeated);
        appendMember(text, &members, "late", sender.late);
        appendMember(text, &members, "restarts", sender.restarts);
    }
    appendMember(text, &members, "failed", sender.failed);
    text->push_back('}');
}

} // namespace

StatisticsPrinter::StatisticsPrinter(const QString& inputName, const StreamDecoder* decoder)
    : DumpSink(inputName, decoder)
    , m_monitor(&m_coordinator)
    , m_identities(m_monitor.getIdentities())
{
    m_monitor.begin(decoder);
}

void StatisticsPrinter::consume(const ReceivedMessage& message)
{
    const int row = m_identities.rowOf(message);
    m_counters.countMessage(message, row);
    m_monitor.countMessage(message, row);
}

void StatisticsPrinter::count(const StreamProblem& problem)
{
    m_counters.countProblem(problem);
    m_monitor.processProblem(problem);
}

std::string StatisticsPrinter::typesText() const
{
    std::string text = "{";
    Separator types(&text);
    QSet<const MessageInfo*> done;
    QHash<QString, int> names; // two schemas can have a type of one name
    const QVector<StreamIdentities::Row>& rows = m_identities.getRows();
    for (const StreamIdentities::Row& first : rows) {
        if (!first.info || done.contains(first.info))
            continue;
        done.insert(first.info);
        quint64 messages = 0;
        QMap<QString, quint64> counts; // several senders can have one name, as channels of one topic
        for (int i = 0; i < rows.size(); ++i) {
            if (rows.at(i).info != first.info)
                continue;
            messages += m_counters.getCount(i);
            counts[m_identities.getSenderName(rows.at(i).sender)] += m_counters.getCount(i);
        }
        std::string senders = "{";
        Separator separator(&senders);
        for (auto count = counts.cbegin(); count != counts.cend(); ++count)
            appendMember(&senders, &separator, count.key(), count.value());
        const QString name = first.info->getName();
        const int number = ++names[name];
        types.next();
        appendString(&text, number == 1 ? name : name + QLatin1Char('#') + QString::number(number));
        text.append(":{\"id\":");
        appendNumber(&text, std::uint64_t(first.id));
        text.append(",\"format\":");
        appendString(&text, first.info->getFormatInfo()->getName());
        text.append(",\"messages\":");
        appendNumber(&text, std::uint64_t(messages));
        text.append(",\"senders\":").append(senders).append("}}");
    }
    return text + '}';
}

std::string StatisticsPrinter::unknownText() const
{
    const QVector<StreamIdentities::Row>& rows = m_identities.getRows();
    QMap<quint32, QString> ids; // names in the order of the numbers
    QHash<QString, quint64> named;
    for (int i = 0; i < rows.size(); ++i) {
        if (rows.at(i).info)
            continue;
        const QString name = unknownName(*getDecoder(), rows.at(i));
        ids.insert(rows.at(i).id, name);
        named[name] += m_counters.getCount(i);
    }
    QStringList names = ids.values();
    names.removeDuplicates();
    std::string text = "{";
    Separator separator(&text);
    for (const QString& name : std::as_const(names))
        appendMember(&text, &separator, name, named.value(name));
    return text + '}';
}

std::string StatisticsPrinter::checksumText() const
{
    std::string text = "{";
    Separator separator(&text);
    const QMap<quint32, quint64>& failures = m_counters.getChecksumFailures();
    for (auto failure = failures.cbegin(); failure != failures.cend(); ++failure)
        appendMember(&text, &separator, QString::number(failure.key()), failure.value());
    return text + '}';
}

// Intervals are milliseconds, as keys too; the interval 0 stands for messages of the same time as their predecessor.
std::string StatisticsPrinter::statisticsText() const
{
    std::string text = "[";
    Separator entries(&text);
    for (int i = 0; i < m_identities.getRows().size(); ++i) {
        const StreamIdentities::Row& row = m_identities.getRows().at(i);
        // Beyond a thousand unknown types they are not told apart.
        const MessageStatistics* const statistics = m_coordinator.find(m_monitor.getStream(), i);
        if (!statistics)
            continue;
        entries.next();
        text.append("{\"type\":");
        if (row.info)
            appendString(&text, row.info->getName());
        else
            text.append("null");
        text.append(",\"sender\":");
        appendString(&text, m_identities.getSenderName(row.sender));
        text.push_back(',');
        Separator members(&text);
        appendMember(&text, &members, "id", row.id);
        appendMember(&text, &members, "messages", statistics->getCount());
        appendMember(&text, &members, "noTime", statistics->getCountWithUnknownTime());
        appendMember(&text, &members, "unknownInterval", statistics->getCountWithKnownTimeButUnknownInterval());
        text.append(",\"intervals\":");
        appendIntervals(&text, *statistics);
        text.push_back(',');
        Separator totals(&text);
        appendMember(&text, &totals, "gapCount", quint64(statistics->getNumberOfGaps()));
        appendMember(&text, &totals, "missingEpochs", quint64(statistics->getNumberOfMissingEpochs()));
        text.append(",\"gaps\":");
        appendGaps(&text, *statistics);
        text.push_back('}');
    }
    return text + ']';
}

std::string StatisticsPrinter::sendersText() const
{
    std::string text = "{";
    Separator senders(&text);
    typedef MessageStatisticsCoordinator::SenderStatistics Sender;
    QVector<Sender> named;
    Sender together; // what the numbers of all of them say, where they share them
    for (const Sender& sender : m_coordinator.getSenderStatistics()) {
        if (sender.sender < 0) {
            together = sender;
            continue;
        }
        const auto same =
            std::find_if(named.begin(), named.end(), [&](const Sender& other) { return other.name == sender.name; });
        if (same == named.end()) {
            named.append(sender);
            continue;
        }
        same->received += sender.received;
        same->numbered = same->numbered || sender.numbered;
        same->lost += sender.lost;
        same->repeated += sender.repeated;
        same->late += sender.late;
        same->restarts += sender.restarts;
        same->failed += sender.failed;
    }
    for (const Sender& sender : std::as_const(named)) {
        senders.next();
        appendString(&text, sender.name);
        text.push_back(':');
        appendSender(&text, sender);
    }
    text.push_back('}');
    if (together.numbered) {
        text.append(",\"sendersTogether\":");
        appendSender(&text, together);
    }
    return text;
}

std::string StatisticsPrinter::eventsText() const
{
    std::string text = "{";
    Separator separator(&text);
    for (int i = CorvelEvent::OtherEvent; i <= CorvelEvent::DefinitionProblem; ++i) {
        const CorvelEvent::Type type = static_cast<CorvelEvent::Type>(i);
        if (const unsigned int count = m_coordinator.getEventCount(type))
            appendMember(&text, &separator, CorvelEvent::getEnglishTypeName(type), count);
    }
    return text + '}';
}

void StatisticsPrinter::finish()
{
    std::string text = "{\"input\":";
    appendString(&text, getInputName());
    const auto append = [&text](const char* key, quint64 number) {
        text.append(",\"").append(key).append("\":");
        appendNumber(&text, std::uint64_t(number));
    };
    append("messages", m_counters.getMessageCount());
    text.append(",\"types\":").append(typesText());
    text.append(",\"checksumFailures\":").append(checksumText());
    text.append(",\"unknownIds\":").append(unknownText());
    append("unsupportedFrames", m_counters.getUnsupportedFrames());
    append("lengthMismatches", m_counters.getLengthMismatches());
    append("skippedBytes", m_counters.getSkippedBytes());
    append("truncatedFrames", m_counters.getTruncatedFrames());
    append("truncatedBytes", m_counters.getTruncatedBytes());
    text.append(",\"statistics\":").append(statisticsText());
    text.append(",\"senders\":").append(sendersText());
    text.append(",\"events\":").append(eventsText());
    text.append("}\n");
    print(text);
}
