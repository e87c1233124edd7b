#include "formatregistry.h"

#include "formatinfo.h"

FormatRegistry::FormatRegistry()
    : m_lastRevision(0)
{
}

FormatRegistry* FormatRegistry::getInstance()
{
    // Never destroyed: a format with static storage may go when the program has all but ended.
    static FormatRegistry* const instance = new FormatRegistry;
    return instance;
}

void FormatRegistry::addFormat(const FormatInfo* format)
{
    if (!format || m_formats.contains(format))
        return;
    format->m_registered = true;
    m_formats.append(format);
    m_revisions.append(++m_lastRevision);
    Q_EMIT formatsChanged();
}

void FormatRegistry::updateFormat(const FormatInfo* format)
{
    const int index = m_formats.indexOf(format);
    if (index < 0)
        return;
    m_revisions[index] = ++m_lastRevision;
    Q_EMIT formatsChanged();
}

void FormatRegistry::removeFormat(const FormatInfo* format)
{
    const int index = m_formats.indexOf(format);
    if (index < 0)
        return;
    format->m_registered = false;
    m_formats.remove(index);
    m_revisions.remove(index);
    ++m_lastRevision;
    Q_EMIT formatsChanged();
}

quint64 FormatRegistry::getRevision(const FormatInfo* format) const
{
    const int index = m_formats.indexOf(format);
    return index < 0 ? 0 : m_revisions.at(index);
}
