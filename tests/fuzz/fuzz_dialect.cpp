#include "fieldinfo.h"
#include "mavlinkdialect.h"
#include "mavlinkdialectreader.h"
#include "message.h"
#include "messagereference.h"

#include <cstddef>
#include <cstdint>
#include <cstdlib>
#include <memory>

// Reads a definition and, when it is one, a frame of each of its types.
extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size)
{
    const QByteArray bytes(reinterpret_cast<const char*>(data), static_cast<int>(size));
    QStringList errors;
    // Includes are looked for among the resources, where there are none of these.
    const std::unique_ptr<MavlinkDialect> dialect(
        MavlinkDialectReader::readBytes(QStringLiteral(":/fuzz/input.xml"), bytes, &errors));
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
