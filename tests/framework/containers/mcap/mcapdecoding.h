#ifndef MCAPDECODING_H
#define MCAPDECODING_H

#include "definitions.h"
#include "mcapfixtures.h"
#include "mcapindex.h"
#include "mcapstreamdecoder.h"
#include "testfolder.h"
#include "transcript.h"

#include <memory>

using namespace McapFixtures;

/** Recordings in files, for their indexes. */
class McapFiles : public TestFolder
{
public:
    std::unique_ptr<McapIndex> indexOf(const QByteArray& bytes)
    {
        QString error;
        std::unique_ptr<McapIndex> index(McapIndex::load(write(bytes), &error));
        if (!index)
            qWarning("%s", qPrintable(error));
        return index;
    }
};

typedef std::shared_ptr<Definitions> SharedDefinitions;

struct McapDecoding
{
    McapDecoding(const SharedDefinitions& shared, McapStreamDecoder::Mode mode)
        : definitions(shared)
        , decoder(shared.get(), mode)
    {
    }

    SharedDefinitions definitions;
    McapStreamDecoder decoder;
};

/** Everything that a decoder finds in some bytes, without offsets. */
class Decoded : public McapDecoding, public Transcript
{
public:
    explicit Decoded(const QByteArray& bytes, const McapIndex* index = nullptr, quint64 from = 0, int piece = 1 << 20,
                     McapStreamDecoder::Mode mode = McapStreamDecoder::Recording,
                     const SharedDefinitions& shared = std::make_shared<Definitions>())
        : McapDecoding(shared, mode)
        , Transcript(&decoder, false)
    {
        if (index)
            decoder.setIndex(index);
        if (from > 0)
            decoder.restart(from);
        feedAll(&decoder, bytes, this, piece, from);
    }
    Decoded(const QByteArray& bytes, const SharedDefinitions& shared)
        : Decoded(bytes, nullptr, 0, 1 << 20, McapStreamDecoder::Recording, shared)
    {
    }

    /** The messages with what is in them. */
    QStringList contents() const
    {
        QStringList all;
        for (int i = 0; i < messages.size(); ++i)
            all.append(messages.at(i) + QLatin1Char(' ') + QString::fromLatin1(payloads.at(i).toHex()));
        return all;
    }
};

#endif
