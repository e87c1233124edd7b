#include "definitions.h"
#include "mcapindex.h"
#include "mcapstreamdecoder.h"
#include "message.h"

#include <QVector>

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <cstdlib>
#include <memory>
#include <sys/mman.h>
#include <unistd.h>

namespace
{

/** What is compared of a report. */
struct Report
{
    quint64 offset;
    quint64 length;
    int kind; // -1: a message
    quint32 sender;
    qint64 time;

    bool operator==(const Report& other) const
    {
        return offset == other.offset && length == other.length && kind == other.kind && sender == other.sender &&
               time == other.time;
    }
};

class Sink : public StreamSink
{
public:
    void processReceived(const ReceivedMessage& message) override
    {
        // Every byte must be there to be read.
        unsigned char sum = 0;
        for (int i = 0; i < message.size; ++i)
            sum = static_cast<unsigned char>(sum ^ message.data[i]);
        reports.append(Report{message.offset, quint64(message.size) << 8 | sum, -1, message.sender, message.time});
        ++messages;
    }

    void processProblem(const StreamProblem& problem) override
    {
        reports.append(Report{problem.offset, problem.length, int(problem.kind), 0, Message::NoTime});
    }

    QVector<Report> reports;
    int messages = 0;
};

Sink decode(const QByteArray& stream, int piece, const McapIndex* index)
{
    Definitions definitions;
    McapStreamDecoder decoder(&definitions);
    if (index)
        decoder.setIndex(index);
    Sink sink;
    for (int i = 0; i < stream.size(); i += piece) {
        const QByteArray part(stream.constData() + i, std::min(piece, int(stream.size()) - i));
        decoder.feed(part.constData(), int(part.size()), Message::NoTime, &sink);
    }
    decoder.finish(&sink);
    for (const Report& report : std::as_const(sink.reports)) {
        if (report.kind < 0)
            decoder.getSenderName(report.sender);
        if (report.offset > quint64(stream.size()))
            std::abort(); // behind the end
    }
    return sink;
}

/** A file of these bytes in memory. */
class MemoryFile
{
public:
    explicit MemoryFile(const QByteArray& bytes)
        : m_descriptor(memfd_create("fuzz", 0))
    {
        if (write(m_descriptor, bytes.constData(), std::size_t(bytes.size())) != bytes.size())
            std::abort();
    }
    ~MemoryFile() { close(m_descriptor); }

    QString path() const { return QStringLiteral("/proc/self/fd/%1").arg(m_descriptor); }

private:
    int m_descriptor;
};

} // namespace

// The first byte tells how the rest is cut into pieces; the rest is a recording.
extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size)
{
    if (size < 1)
        return 0;
    const QByteArray stream(reinterpret_cast<const char*>(data + 1), int(size - 1));
    const Sink whole = decode(stream, std::max(1, int(stream.size())), nullptr);
    if (decode(stream, 1 + data[0], nullptr).reports != whole.reports)
        std::abort(); // the result depends on the pieces

    const MemoryFile file(stream);
    QString error;
    const std::unique_ptr<McapIndex> index(McapIndex::load(file.path(), &error));
    if (!index)
        return 0;
    if (decode(stream, 4096, index.get()).messages != whole.messages)
        std::abort(); // an index changes the order, and nothing else
    index->findOffset(index->getStartTime());
    index->findOffset(index->getEndTime());
    return 0;
}
