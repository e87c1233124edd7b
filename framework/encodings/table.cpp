#include "encoding.h"

#include "jsonencoding.h"
#include "mavlinkencoding.h"
#include "protobufencoding.h"
#include "rosencoding.h"
#include "sparkplugencoding.h"

namespace
{

template <class Row>
std::unique_ptr<Encoding> create()
{
    return std::unique_ptr<Encoding>(new Row);
}

// The order in which they are asked whether a file is theirs.
std::unique_ptr<Encoding> (*const encodings[])() = {
    create<MavlinkEncoding>, create<ProtobufEncoding>, create<CdrEncoding>,
    create<Ros1Encoding>,    create<JsonEncoding>,     create<SparkplugEncoding>,
};

} // namespace

std::vector<std::unique_ptr<Encoding>> createEncodings()
{
    std::vector<std::unique_ptr<Encoding>> created;
    for (const auto make : encodings)
        created.push_back(make());
    return created;
}
