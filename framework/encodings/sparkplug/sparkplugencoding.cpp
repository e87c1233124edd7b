#include "sparkplugencoding.h"

#include <QCoreApplication>

static const Encoding::Traits SparkplugTraits{"sparkplug", QT_TRANSLATE_NOOP("Encoding", "Sparkplug births"), "",
                                              "jsonschema", false};

SparkplugEncoding::SparkplugEncoding()
    : JsonEncoding(SparkplugTraits)
{
}

bool SparkplugEncoding::recognizes(const QByteArray&) const
{
    return false;
}
