#include "mavlinkdialect.h"

#include "mavlinkdialectreader.h"

#include <QtGlobal>

MavlinkMessageInfo::MavlinkMessageInfo(const QString& name, quint32 id)
    : MessageInfo(name)
    , m_id(id)
    , m_crcExtra(0)
    , m_baseLength(0)
    , m_fullLength(0)
{
}

MavlinkDialect::MavlinkDialect(const QString& name)
    : FormatInfo(name)
{
}

MavlinkDialect::~MavlinkDialect() {}

MavlinkDialect* MavlinkDialect::load(const QString& path, QStringList* errors)
{
    return MavlinkDialectReader::read(path, errors);
}

MavlinkDialect* MavlinkDialect::loadBuiltIn()
{
    QStringList errors;
    MavlinkDialect* dialect = MavlinkDialectReader::read(QLatin1String(":/corvel/dialects/corvel.xml"), &errors);
    if (!dialect)
        qFatal("The built-in dialect is damaged: %s", qPrintable(errors.join(QLatin1Char('\n'))));
    return dialect;
}
