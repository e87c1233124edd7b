#include "fieldinfo.h"
#include "mavlinkdialect.h"
#include "mavlinkdialectreader.h"
#include "message.h"
#include "messagereference.h"

#include <cstddef>
#include <cstdint>
#include <cstdlib>
#include <memory>

namespace
{

struct Element
{
    const char* name;
    const char* attributes[5];
};

const Element elements[] = {{"enums", {}},
                            {"enum", {"name", "bitmask"}},
                            {"entry", {"value", "name"}},
                            {"description", {}},
                            {"messages", {}},
                            {"message", {"id", "name"}},
                            {"field", {"type", "name", "enum", "units", "invalid"}},
                            {"field", {"type", "name", "display", "print_format", "multiplier"}},
                            {"extensions", {}},
                            {"include", {}},
                            {"version", {}},
                            {"other", {"name"}}};

// The last is an empty one.
const QByteArrayList values =
    QByteArray("A|B|C|D|0|1|2|255|256|16777215|-1|0x10|2**31|int8_t|uint16_t|uint64_t|float|double|char|char[16]|int32_"
               "t[4]|uint8_t[255]|float[0]|char[256]|uint8_t_mavlink_version|m/"
               "s|degE7|us|true|bitmask|0x%08x|UINT16_MAX|[NaN]|[0:, 7]|1e-3|&lt;|")
        .split('|');

const std::uint8_t elementCount = sizeof elements / sizeof *elements;
const std::uint8_t valueCount = std::uint8_t(values.size());

/**
 * A text in which elements end as they have to: nearly all others are refused before anything is looked at.
 *
 * A byte each opens an element, closes one, or is text; those behind an opening one are its attributes.
 */
QByteArray makeDefinition(const std::uint8_t* data, std::size_t size)
{
    QByteArray text = "<mavlink>";
    QByteArrayList open{"mavlink"};
    const std::uint8_t* const end = data + size;
    while (data < end) {
        const std::uint8_t command = *data++;
        if (command < elementCount) {
            const Element& element = elements[command];
            text += QByteArray("<") + element.name;
            for (const char* attribute : element.attributes)
                if (attribute && data < end && *data++ < valueCount)
                    text += QByteArray(" ") + attribute + "=\"" + values.at(data[-1]) + '"';
            text += '>';
            open.append(element.name);
        } else if (command < 2 * elementCount) {
            if (open.size() > 1)
                text += "</" + open.takeLast() + '>';
        } else {
            text += values.at(command % valueCount);
        }
    }
    while (!open.isEmpty())
        text += "</" + open.takeLast() + '>';
    return text;
}

} // namespace

// Reads a definition and, when it is one, a frame of each of its types.
extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size)
{
    const bool isPlain = size > 0 && data[0] == '<';
    const QByteArray bytes(reinterpret_cast<const char*>(data), static_cast<int>(size));
    QStringList errors;
    // Includes are looked for among the resources, where there are none of these.
    const std::unique_ptr<MavlinkDialect> dialect(MavlinkDialectReader::readBytes(
        QStringLiteral(":/fuzz/input.xml"), isPlain ? bytes : makeDefinition(data, size), &errors));
    if (dialect.get() == nullptr ? errors.isEmpty() : !errors.isEmpty())
        std::abort(); // a dialect without, or errors: never both, never neither
    if (!dialect)
        return 0;
    for (const MessageInfo* info : dialect->getMessageInfos()) {
        const QByteArray frame = QByteArray("\xfd\x30\0\0\0\0\0\0\0\0", 10) + bytes.left(0x30);
        const MessageReference message = MessageReference::adopt(new Message(info, frame));
        for (const FieldInfo* field : info->getFieldInfos()) {
            for (const FieldValue& value : field->getValues(message.get()))
                field->getInterpretedString(value, true);
            field->getStringValue(message.get());
        }
    }
    return 0;
}
