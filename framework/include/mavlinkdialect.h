#ifndef CORVEL_MAVLINKDIALECT_H
#define CORVEL_MAVLINKDIALECT_H

#include "formatinfo.h"
#include "messageinfo.h"

#include <QHash>
#include <QStringList>

/** A MAVLink message type. */
class CORVELFRAMEWORK_EXPORT MavlinkMessageInfo : public MessageInfo
{
public:
    MavlinkMessageInfo(const QString& name, quint32 id);

    /** The message id, 0 to 2^24 - 1. */
    quint32 getId() const { return m_id; }
    /** The byte that the checksum of a frame ends with, so that sender and receiver agree on the definition. */
    quint8 getCrcExtra() const { return m_crcExtra; }
    /** Bytes of the payload without extension fields: the payload of a v1 frame. */
    int getBaseLength() const { return m_baseLength; }
    /** Bytes of the payload with extension fields: the most that a v2 frame of this definition carries. */
    int getFullLength() const { return m_fullLength; }

private:
    friend class MavlinkDialectReader;

    quint32 m_id;
    quint8 m_crcExtra;
    int m_baseLength;
    int m_fullLength;
};

/**
 * A MAVLink dialect: the message types that an XML definition file and its includes declare.
 *
 * Immutable once loaded; find() and the accessors of its types may then be called on any thread.
 */
class CORVELFRAMEWORK_EXPORT MavlinkDialect : public FormatInfo
{
public:
    /**
     * Reads a definition file with its includes, which are looked for beside the file that names them.
     *
     * @param path    the XML file
     * @param errors  what was wrong, each as "file:line: text"; must not be null
     * @return the dialect, owned by the caller; null when there is any error
     */
    static MavlinkDialect* load(const QString& path, QStringList* errors);

    /** The dialect that is built into the library: the commonest message types. Owned by the caller; never null. */
    static MavlinkDialect* loadBuiltIn();

    virtual ~MavlinkDialect();

    /** The type with that id, or null. */
    const MavlinkMessageInfo* find(quint32 id) const { return m_byId.value(id); }

    /** The files that were read: the file itself first. */
    QStringList getFiles() const { return m_files; }

private:
    friend class MavlinkDialectReader;
    explicit MavlinkDialect(const QString& name);

    QHash<quint32, const MavlinkMessageInfo*> m_byId;
    QStringList m_files;
};

#endif
