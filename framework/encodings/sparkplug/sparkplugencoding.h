#ifndef SPARKPLUGENCODING_H
#define SPARKPLUGENCODING_H

#include "jsonencoding.h"

/**
 * Sparkplug B: types of what births say of a node or a device, and messages with the newest values of all its metrics.
 *
 * What a birth says is written as a JSON schema, and the values as JSON (SparkplugUnit does both), in which recordings
 * keep them: so everybody can read them.
 */
class SparkplugEncoding : public JsonEncoding
{
public:
    static const char* name() { return "sparkplug"; }

    SparkplugEncoding();

    bool recognizes(const QByteArray& head) const override;
};

#endif
