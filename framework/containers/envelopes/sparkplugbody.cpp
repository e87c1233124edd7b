#include "sparkplugbody.h"

#include <QCoreApplication>

#include <zlib.h>

namespace
{

const char Mark[] = "SPBV1.0_COMPRESSED";
const char AlgorithmMetric[] = "algorithm";
const int Step = 64 * 1024;

// The head says whether it is one of gzip or of zlib; some write neither.
const int WithHead = 32 + MAX_WBITS;
const int WithoutHead = -MAX_WBITS;

/** Z_OK, Z_DATA_ERROR, or Z_BUF_ERROR for too much. */
int inflateAll(std::string_view from, int windowBits, QByteArray* to)
{
    z_stream stream = {};
    stream.next_in = reinterpret_cast<Bytef*>(const_cast<char*>(from.data()));
    stream.avail_in = uInt(from.size());
    if (inflateInit2(&stream, windowBits) != Z_OK)
        return Z_DATA_ERROR;
    to->clear();
    int code = Z_OK;
    while (code == Z_OK && to->size() <= SparkplugBody::GreatestSize) {
        const int before = int(to->size());
        to->resize(before + Step);
        stream.next_out = reinterpret_cast<Bytef*>(to->data()) + before;
        stream.avail_out = Step;
        code = inflate(&stream, Z_NO_FLUSH);
        to->resize(before + Step - int(stream.avail_out));
    }
    inflateEnd(&stream);
    if (to->size() > SparkplugBody::GreatestSize)
        return Z_BUF_ERROR;
    return code == Z_STREAM_END ? Z_OK : Z_DATA_ERROR;
}

} // namespace

bool SparkplugBody::unpack(Sparkplug::Payload* payload, QByteArray* bytes, QString* error)
{
    if (payload->uuid != Mark)
        return true;
    const Sparkplug::Metric* const metric = payload->find(AlgorithmMetric);
    const std::string_view algorithm = metric ? metric->value.bytes : std::string_view();
    if (!algorithm.empty() && algorithm != "GZIP" && algorithm != "DEFLATE") {
        *error = QCoreApplication::translate("Envelopes", "it is compressed by \"%1\"; what can be read is GZIP and "
                                                          "DEFLATE")
                     .arg(QString::fromUtf8(algorithm.data(), int(algorithm.size())));
        return false;
    }
    const Sparkplug::Payload outer = *payload;
    int code = inflateAll(outer.body, WithHead, bytes);
    if (code == Z_DATA_ERROR)
        code = inflateAll(outer.body, WithoutHead, bytes);
    *payload = Sparkplug::Payload();
    if (code == Z_BUF_ERROR) {
        bytes->clear();
        *error = QCoreApplication::translate("Envelopes", "decompressed it has more than %1 MiB")
                     .arg(GreatestSize / 1024 / 1024);
    } else if (code != Z_OK || !payload->read(std::string_view(bytes->constData(), std::size_t(bytes->size())))) {
        *error = QCoreApplication::translate("Envelopes", "it cannot be decompressed");
    } else {
        payload->timestamp = payload->timestamp ? payload->timestamp : outer.timestamp;
        payload->number = payload->hasNumber ? payload->number : outer.number;
        payload->hasNumber = payload->hasNumber || outer.hasNumber;
        return true;
    }
    return false;
}
