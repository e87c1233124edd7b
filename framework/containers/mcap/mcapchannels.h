#ifndef MCAPCHANNELS_H
#define MCAPCHANNELS_H

#include "definitions.h"

#include <QByteArray>
#include <QHash>
#include <QString>

#include <functional>
#include <memory>
#include <mutex>
#include <vector>

class MessageInfo;

namespace Mcap
{
struct Channel;
}

/**
 * The schemas and channels that a stream has announced.
 *
 * Everything happens on one thread, except that getTopic(), describe() and getSchema() may be called on any.
 */
class McapChannels
{
public:
    /** What messages of a channel are. Never moves or changes. */
    struct Entry
    {
        const MessageInfo* info; ///< null when they cannot be decoded
        quint32 id;              ///< of the type, or of the channel where there is none
        quint32 sender;
        bool isWanted; ///< see setTypeFilter()
    };

    explicit McapChannels(Definitions* definitions);
    ~McapChannels();

    /** Which of the types that come are wanted: all, unless told. */
    void setTypeFilter(const std::function<bool(const MessageInfo*)>& isWanted) { m_isWanted = isWanted; }

    /**
     * Forgets what was announced, for another file may announce other things under the same numbers, and the same
     * under others: a topic that has messages of the same type as before goes on as what it was.
     */
    void beginFile();

    /** Takes the body of a schema record; what is wrong, or an empty text. */
    QString addSchema(const char* body, quint64 size);
    /** Takes the body of a channel record; what is wrong, or an empty text. */
    QString addChannel(const char* body, quint64 size);

    /** The channel of that number, or null when none was announced. */
    const Entry* find(quint16 channel) const { return channel < m_byNumber.size() ? m_byNumber[channel] : nullptr; }

    bool hasSchema(quint16 schema) const { return m_schemas.contains(schema); }

    /** Makes up a channel that was not announced, until it is. */
    const Entry* makeUp(quint16 channel);

    /** Whether a channel was announced that find() does not know before meet(), for want of a schema. */
    bool isAwaited(quint16 channel) const { return m_awaited.contains(channel); }
    /** Makes the type of such a channel of the first of its messages; what is wrong in @p problem. */
    const Entry* meet(quint16 channel, const QByteArray& message, QString* problem);

    QString getTopic(quint32 sender) const;
    /** "/topic (json, not decodable)" of an Entry::id without a type; null when there is none. */
    QString describe(quint32 id) const;
    /** What was announced of the messages of an Entry::id without a type. */
    TypeSchema getSchema(quint32 id) const;

private:
    struct Schema
    {
        QByteArray name;
        QByteArray encoding;
        QByteArray data;
        quint32 version; // of its number: there is seldom more than one
    };

    struct Known : Entry
    {
        QString likeness; // what it shares with the same channel of another file
        quint32 file;     // that announced it last
    };

    struct Announcement
    {
        QByteArray record;
        quint32 schemaVersion; // that it was made with; 0 for none
        Known* entry;          // null before there is one
    };

    /** What was found out of the messages of a channel. */
    struct Type
    {
        const MessageInfo* info = nullptr;
        TypeSchema schema;
        bool isAwaited = false; // whether there is none before there is a message
        QString kind;           // what they are, in a word
        QString problem;        // what is wrong; else empty
    };

    struct Awaited
    {
        QString topic;
        TypeSchema schema;
    };

    bool makeRoom(quint64 size);
    static quint64 sizeOf(const Schema& schema);
    /** Messages that cannot be decoded. */
    struct Unknown
    {
        QString description;
        TypeSchema schema;
    };

    TypeSchema schemaOf(const Mcap::Channel& channel) const;
    void findType(const Mcap::Channel& channel, const QString& topic, Type* type);
    void makeType(Type* type);
    Known* add(quint16 channel, const MessageInfo* info, const QString& topic, const QString& kind,
               const TypeSchema& schema);
    Known* takeEarlier(const QString& likeness);
    void setNumber(quint16 channel, Known* entry);

    Definitions* m_definitions;
    std::function<bool(const MessageInfo*)> m_isWanted; // may be empty
    quint64 m_kept;                                     // bytes of definitions
    QHash<quint16, Schema> m_schemas;
    QHash<quint16, Schema> m_earlierSchemas;      // of the files before
    QHash<quint16, Announcement> m_announcements; // by channel
    QHash<quint16, Awaited> m_awaited;            // channels whose first message says what they are
    QHash<const MessageInfo*, quint32> m_ids;
    std::vector<std::unique_ptr<Known>> m_entries;
    QHash<QString, std::vector<Known*>> m_earlier; // of the files before, by likeness, the first one last
    quint32 m_file = 0;
    std::vector<const Entry*> m_byNumber;
    QHash<quint16, quint32> m_versions; // how often a channel was announced as something else

    mutable std::mutex m_mutex; // for what follows
    QHash<quint32, QString> m_topics;
    QHash<quint32, Unknown> m_unknown;
};

#endif
