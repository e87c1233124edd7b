#include "natsmessage.h"

#include <cstdlib>

namespace
{

const std::size_t MostProperties = 1000;
const std::string_view LineEnd = "\r\n";

std::string_view viewOf(const char* text)
{
    return text ? std::string_view(text) : std::string_view();
}

void addProperty(std::string_view name, std::string_view value, Envelope* envelope)
{
    if (envelope->properties.size() >= MostProperties)
        return;
    envelope->properties.emplace_back(name, value);
    if (name == "Content-Type")
        envelope->contentType = value;
}

} // namespace

Envelope readNatsMessage(natsMsg* message)
{
    Envelope envelope;
    envelope.topic = viewOf(natsMsg_GetSubject(message));
    envelope.payload = std::string_view(natsMsg_GetData(message), std::size_t(natsMsg_GetDataLength(message)));
    const char** names = nullptr;
    int nameCount = 0;
    if (natsMsgHeader_Keys(message, &names, &nameCount) != NATS_OK)
        return envelope;
    for (int i = 0; i < nameCount; ++i) {
        const char** values = nullptr;
        int valueCount = 0;
        if (natsMsgHeader_Values(message, names[i], &values, &valueCount) != NATS_OK)
            continue;
        for (int j = 0; j < valueCount; ++j)
            addProperty(viewOf(names[i]), viewOf(values[j]), &envelope);
        std::free(values);
    }
    std::free(names);
    return envelope;
}

std::string_view natsHeader(natsMsg* message, const char* name)
{
    const char* value = nullptr;
    return natsMsgHeader_Get(message, name, &value) == NATS_OK ? viewOf(value) : std::string_view();
}

void readNatsHeaders(std::string_view block, Envelope* envelope)
{
    std::size_t begin = block.find(LineEnd);
    while (begin != std::string_view::npos) {
        begin += LineEnd.size();
        const std::size_t end = block.find(LineEnd, begin);
        const std::string_view line = block.substr(begin, end == std::string_view::npos ? end : end - begin);
        const std::size_t colon = line.find(':');
        if (colon != std::string_view::npos) {
            std::string_view value = line.substr(colon + 1);
            while (!value.empty() && value.front() == ' ')
                value.remove_prefix(1);
            addProperty(line.substr(0, colon), value, envelope);
        }
        begin = end;
    }
}
