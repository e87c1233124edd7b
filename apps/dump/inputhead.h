#ifndef INPUTHEAD_H
#define INPUTHEAD_H

#include "byteinput.h"
#include "mavlinkstreamdecoder.h"

#include <functional>

/** The first bytes of an input, read to find out how its frames lie. */
struct InputHead
{
    /**
     * Reads until the layout is plain, 64 KiB were read, the input ends or fails, or @p goOn says no.
     *
     * @return whether the layout is known
     */
    bool recognize(ByteInput* input, const std::function<bool()>& goOn);

    QByteArray bytes; ///< what was read, which is to be decoded first
    MavlinkStreamDecoder::Layout layout = MavlinkStreamDecoder::RawLayout;
    ByteInput::Status status = ByteInput::Nothing; ///< of the last read
};

#endif
