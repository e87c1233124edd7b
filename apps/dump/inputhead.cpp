#include "inputhead.h"

namespace
{

const int GreatestHead = 64 * 1024;
const int TimeoutMs = 100;

} // namespace

bool InputHead::recognize(ByteInput* input, const std::function<bool()>& goOn)
{
    QByteArray piece;
    while (goOn()) {
        status = input->read(&piece, TimeoutMs);
        if (status == ByteInput::Failed)
            return false;
        // A pipe may bring its first bytes one by one: the same is asked again with more.
        bytes += piece;
        if (!bytes.isEmpty() && MavlinkStreamDecoder::detectLayout(bytes, &layout))
            return true;
        if (status == ByteInput::End || bytes.size() >= GreatestHead)
            return false;
    }
    return false;
}
