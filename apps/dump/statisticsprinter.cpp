#include "statisticsprinter.h"

#include "formatinfo.h"
#include "jsontext.h"
#include "messageinfo.h"

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

} // namespace

StatisticsPrinter::StatisticsPrinter(const QString& inputName, const StreamDecoder* decoder)
    : DumpSink(inputName, decoder)
{
}

std::string StatisticsPrinter::typesText() const
{
    std::string text = "{";
    Separator types(&text);
    QSet<quint32> done;
    const QVector<ReceptionCounters::Row>& rows = m_counters.getRows();
    for (const ReceptionCounters::Row& first : rows) {
        if (!first.info || done.contains(first.id))
            continue;
        done.insert(first.id);
        quint64 messages = 0;
        std::string senders = "{";
        Separator separator(&senders);
        for (const ReceptionCounters::Row& row : rows) {
            if (row.id != first.id)
                continue;
            messages += row.count;
            appendMember(&senders, &separator, getDecoder()->getSenderName(row.sender), row.count);
        }
        types.next();
        appendString(&text, first.info->getName());
        text.append(":{\"id\":");
        appendNumber(&text, std::uint64_t(first.id));
        text.append(",\"messages\":");
        appendNumber(&text, std::uint64_t(messages));
        text.append(",\"senders\":").append(senders).append("}}");
    }
    return text + '}';
}

std::string StatisticsPrinter::unknownText() const
{
    QMap<quint32, quint64> counts;
    for (const ReceptionCounters::Row& row : m_counters.getRows())
        if (!row.info)
            counts[row.id] += row.count;
    std::string text = "{";
    Separator separator(&text);
    for (auto count = counts.cbegin(); count != counts.cend(); ++count)
        appendMember(&text, &separator, QString::number(count.key()), count.value());
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

void StatisticsPrinter::finish()
{
    std::string text = "{\"input\":";
    appendString(&text, getInputName());
    text.append(",\"format\":");
    appendString(&text, getDecoder()->getFormatInfo()->getName());
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
    text.append("}\n");
    print(text);
}
