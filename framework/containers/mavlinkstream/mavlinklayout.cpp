#include "mavlinkframe.h"
#include "mavlinkstreamdecoder.h"

#include <algorithm>

using namespace MavlinkFrame;

namespace
{

// Further in, a recording would have to be mostly noise.
const int SearchedBytes = 65536;

/** How many frames must follow one another to be no accident. What begins with the recording needs less of it. */
int convincingFrames(bool atStart, int timeSize)
{
    return atStart || timeSize ? 2 : 4;
}

/** Whether frames follow one another from the magic byte at @p magic, each behind @p timeSize bytes of time. */
bool isChain(const QByteArray& head, int magic, int timeSize)
{
    const int size = int(head.size());
    const bool atStart = magic == timeSize;
    int frames = 0;
    int position = magic;
    while (frames < convincingFrames(atStart, timeSize)) {
        // The chain is cut off by the end of what we have: a whole frame before it is little to go by.
        if (position >= size)
            return frames >= (atStart ? 1 : 2);
        const char* const bytes = head.constData() + position;
        if (!isMagic(*bytes) || (timeSize && !isPlausibleTime(readTime(bytes - timeSize))))
            return false;
        if (position + headerSize(*bytes) > size)
            return frames >= (atStart ? 1 : 2);
        const Header header(bytes);
        if (!header.isUnderstood())
            return false;
        if (position + header.size() > size)
            return frames >= (atStart ? 1 : 2);
        ++frames;
        position += header.size() + timeSize;
    }
    return true;
}

/**
 * Whether a recording begins with a time stamp and a whole frame: not much, but all that a recording of one message
 * has, and one whose times count from the start of the vehicle.
 */
bool beginsWithTimeAndFrame(const QByteArray& head)
{
    const int size = int(head.size());
    const char* const bytes = head.constData() + TimeSize;
    if (size < TimeSize + HeaderSizeV2 || !isMagic(*bytes) || readTime(head.constData()) >= LatestTime)
        return false;
    const Header header(bytes);
    return header.isUnderstood() && TimeSize + header.size() <= size;
}

} // namespace

bool MavlinkStreamDecoder::detectLayout(const QByteArray& head, Layout* layout)
{
    const int limit = std::min(int(head.size()), SearchedBytes);
    for (int position = 0; position < limit; ++position) {
        if (!isMagic(head.at(position)))
            continue;
        if (position >= TimeSize && isChain(head, position, TimeSize)) {
            *layout = TlogLayout;
            return true;
        }
        if (isChain(head, position, 0)) {
            *layout = RawLayout;
            return true;
        }
    }
    if (!beginsWithTimeAndFrame(head))
        return false;
    *layout = TlogLayout;
    return true;
}
