#include "schemaencoding.h"

#include <utility>

SchemaEncoding::SchemaEncoding(const Traits& traits)
    : Encoding(traits)
    , m_format(QLatin1String(traits.name))
{
}

SchemaEncoding::~SchemaEncoding()
{
    qDeleteAll(m_made);
}

FormatInfo* SchemaEncoding::getFormat(const QString&)
{
    return &m_format;
}

QVector<FormatInfo*> SchemaEncoding::getFormats() const
{
    return QVector<FormatInfo*>{&m_format};
}

TypeSchema SchemaEncoding::schemaOf(const MessageInfo* info) const
{
    const std::lock_guard<std::mutex> lock(m_mutex);
    return m_schemas.value(info);
}

QVector<const MessageInfo*> SchemaEncoding::publish()
{
    QVector<MessageInfo*> made;
    {
        const std::lock_guard<std::mutex> lock(m_mutex);
        made.swap(m_made);
    }
    QVector<const MessageInfo*> infos;
    for (MessageInfo* info : std::as_const(made)) {
        m_format.addMessageInfo(info);
        infos.append(info);
    }
    return infos;
}
