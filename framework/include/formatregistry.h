#ifndef CORVEL_FORMATREGISTRY_H
#define CORVEL_FORMATREGISTRY_H

#include "corvelframework_export.h"

#include <QObject>
#include <QVector>

class FormatInfo;

/**
 * The formats whose message types and fields a PathExpression finds by name. GUI thread only.
 *
 * An application adds a format once its descriptions are complete and may be shown; a format leaves by itself when it
 * is deleted.
 *
 * @code
 * MavlinkDialect* dialect = MavlinkDialect::loadBuiltIn();
 * FormatRegistry::getInstance()->addFormat(dialect);
 * @endcode
 */
class CORVELFRAMEWORK_EXPORT FormatRegistry : public QObject
{
    Q_OBJECT

public:
    /** The process-wide registry; never null, never destroyed. */
    static FormatRegistry* getInstance();

    /** Makes @p format known, behind the others. Borrowed. A format already known and null are ignored. */
    void addFormat(const FormatInfo* format);

    /** To be called when types or fields were added to @p format; one that is not known is ignored. */
    void updateFormat(const FormatInfo* format);

    /** Forgets @p format; one that is not known is ignored. */
    void removeFormat(const FormatInfo* format);

    /** The known formats in the order in which they were added. */
    QVector<const FormatInfo*> getFormatInfos() const { return m_formats; }

    /**
     * A number that changes with every addFormat() and updateFormat() of @p format, and that no other format ever has,
     * not even a later one at the same address. 0 for one that is not known.
     */
    quint64 getRevision(const FormatInfo* format) const;

    /** A number that changes with every formatsChanged(), before it is emitted. */
    quint64 getRevision() const { return m_lastRevision; }

Q_SIGNALS:
    /** A format came or went, or the types or fields of one changed. */
    void formatsChanged();

private:
    Q_DISABLE_COPY(FormatRegistry)

    FormatRegistry();

    QVector<const FormatInfo*> m_formats;
    QVector<quint64> m_revisions; // of the format at the same place
    quint64 m_lastRevision;
};

#endif
