#include "mavlinkencoding.h"

#include "mavlinkdialect.h"

#include <QCoreApplication>

#include <algorithm>

static const Encoding::Traits MavlinkTraits{"mavlink", QT_TRANSLATE_NOOP("Encoding", "MAVLink dialect"), "*.xml", "",
                                            true};

MavlinkEncoding::MavlinkEncoding()
    : Encoding(MavlinkTraits)
    , m_common(nullptr)
{
}

MavlinkEncoding::~MavlinkEncoding() {}

MavlinkEncoding::Loaded* MavlinkEncoding::find(const QString& path)
{
    const auto found =
        std::find_if(m_loaded.rbegin(), m_loaded.rend(), [&](const Loaded& loaded) { return loaded.path == path; });
    return found == m_loaded.rend() ? nullptr : &*found;
}

MavlinkDialect* MavlinkEncoding::getDialect(const QString& path)
{
    const std::lock_guard<std::mutex> lock(m_mutex);
    if (!path.isEmpty())
        if (const Loaded* const named = find(path))
            return named->dialect.get();
    if (!m_common) {
        m_common = MavlinkDialect::loadBuiltIn();
        m_loaded.push_back({std::unique_ptr<MavlinkDialect>(m_common), QString(), false});
    }
    return m_common;
}

bool MavlinkEncoding::recognizes(const QByteArray& head) const
{
    return (head.startsWith("\xEF\xBB\xBF") ? head.mid(3) : head).trimmed().startsWith('<');
}

FormatInfo* MavlinkEncoding::load(const QString& path, const QStringList&, Definitions::Scope scope,
                                  QStringList* errors)
{
    const bool isNamed = scope == Definitions::NamingSources;
    if (isNamed) {
        const std::lock_guard<std::mutex> lock(m_mutex);
        if (Loaded* const known = find(path)) {
            known->isNamed = true;
            return known->dialect.get();
        }
    }
    MavlinkDialect* const dialect = MavlinkDialect::load(path, errors);
    if (!dialect)
        return nullptr;
    const std::lock_guard<std::mutex> lock(m_mutex);
    m_loaded.push_back({std::unique_ptr<MavlinkDialect>(dialect), path, isNamed});
    if (!isNamed)
        m_common = dialect;
    return dialect;
}

FormatInfo* MavlinkEncoding::getFormat(const QString& path)
{
    return getDialect(path);
}

QVector<FormatInfo*> MavlinkEncoding::getFormats() const
{
    const std::lock_guard<std::mutex> lock(m_mutex);
    QVector<FormatInfo*> formats;
    if (m_common)
        formats.append(m_common);
    for (const Loaded& loaded : m_loaded)
        if (loaded.isNamed && loaded.dialect.get() != m_common)
            formats.append(loaded.dialect.get());
    return formats;
}
