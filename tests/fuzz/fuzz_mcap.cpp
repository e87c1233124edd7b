#include "definitions.h"
#include "mcapindex.h"
#include "mcapstreamdecoder.h"
#include "transcript.h"

#include <cstddef>
#include <cstdint>
#include <cstdlib>
#include <memory>
#include <sys/mman.h>
#include <unistd.h>

namespace
{

/** What is found, and behind that the bytes of the messages, every one of which must be there to be read. */
QStringList decode(const QByteArray& stream, int piece, const McapIndex* index, int* messages)
{
    Definitions definitions;
    McapStreamDecoder decoder(&definitions);
    if (index)
        decoder.setIndex(index);
    Transcript found(&decoder);
    feedAll(&decoder, stream, &found, piece);
    for (const QString& line : std::as_const(found.lines))
        if (line.left(int(line.indexOf(QLatin1Char(' ')))).section(QLatin1Char('+'), 0, 0).toLongLong() > stream.size())
            std::abort(); // behind the end
    *messages = int(found.messages.size());
    for (const QByteArray& payload : std::as_const(found.payloads))
        found.lines.append(QString::fromLatin1(payload.toHex()));
    return found.lines;
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
    int messages = 0;
    const QStringList whole = decode(stream, 1 << 20, nullptr, &messages);
    if (decode(stream, 1 + data[0], nullptr, &messages) != whole)
        std::abort(); // the result depends on the pieces

    const MemoryFile file(stream);
    QString error;
    const std::unique_ptr<McapIndex> index(McapIndex::load(file.path(), &error));
    if (!index)
        return 0;
    int ordered = 0;
    decode(stream, 4096, index.get(), &ordered);
    if (ordered != messages)
        std::abort(); // an index changes the order, and nothing else
    index->findOffset(index->getStartTime());
    index->findOffset(index->getEndTime());
    return 0;
}
