#include "mqttcheck.h"

#include <cstddef>
#include <cstdint>
#include <cstdlib>

#include <QByteArray>

/** What is handed on, and the error. */
static QByteArray check(const QByteArray& stream, bool isFive, qint64 piece)
{
    MqttCheck check(isFive);
    QByteArray passed;
    QByteArray held;
    for (qint64 at = 0; at < stream.size() && check.getError().isEmpty(); at += piece) {
        held += stream.mid(int(at), int(piece));
        check.check(held.constData(), held.size());
        passed += held.left(int(check.getChecked()));
        held.remove(0, int(check.getChecked()));
    }
    return passed + check.getError().toUtf8();
}

// The first byte is the version, and how the stream is cut into pieces; the rest comes behind an answer.
extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size)
{
    if (size < 1)
        return 0;
    const bool isFive = data[0] & 1;
    const QByteArray stream = QByteArray::fromHex(isFive ? "2003000000" : "20020000") +
                              QByteArray(reinterpret_cast<const char*>(data + 1), int(size - 1));
    if (check(stream, isFive, 1 << 20) != check(stream, isFive, 1 + (data[0] >> 1)))
        std::abort(); // the result depends on the pieces
    return 0;
}
