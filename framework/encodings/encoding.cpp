#include "encoding.h"

Encoding::Encoding(const Traits& traits)
    : m_traits(traits)
{
}

Encoding::~Encoding() {}

bool Encoding::recognizes(const QByteArray&) const
{
    return false;
}

FormatInfo* Encoding::load(const QString&, const QStringList&, Definitions::Scope, QStringList*)
{
    return nullptr;
}

bool Encoding::readsSchema(const QByteArray& encoding) const
{
    return QByteArray(m_traits.schemas).split(' ').contains(encoding) && !encoding.isEmpty();
}

QStringList Encoding::getTypeNames() const
{
    return QStringList();
}

const MessageInfo* Encoding::findType(const QString&, QString*)
{
    return nullptr;
}

const MessageInfo* Encoding::makeType(const TypeSchema&, QString*)
{
    return nullptr;
}

TypeSchema Encoding::schemaOf(const MessageInfo*) const
{
    return TypeSchema();
}

QVector<const MessageInfo*> Encoding::publish()
{
    return QVector<const MessageInfo*>();
}
