#ifndef EVENTCAUSES_H
#define EVENTCAUSES_H

#include "fieldpath.h"
#include "severity.h"

#include <QHash>
#include <QStringList>
#include <QVector>

/** Something that happened. */
struct Event
{
    int source;        ///< see EventCauses::addSource()
    QString type;      ///< what such events are called
    Severity severity; ///< of vehicles' texts, as they say
    QString sender;    ///< as its format writes it; empty where it is the source itself
    QString text;      ///< in words
    QString kind;      ///< what makes events the same, in words; empty where that is the text
    qint64 time;       ///< of the messages, microseconds since 1970, or Message::NoTime
    qint64 seen;       ///< when it was, by the clock of this computer, or Message::NoTime

    int most = 1000;               ///< causes of this type and source that have rows of their own
    int field = -1;                ///< that the text was read from, see EventCauses::addField(); or -1
    bool wantsDefinitions = false; ///< whether other definitions may help
    quint64 count = 1;             ///< 0 for a fault whose consequences follow, which are what is counted
};

/**
 * What happened, by cause: who reports the same as before is counted, and nothing becomes longer.
 *
 * Of each type of events of a source, so many causes have a row of their own; one more stands for all others. There are
 * never more than MostRows. One thread at a time.
 */
class EventCauses
{
public:
    static const int MostRows = 10000;

    /** What a row stands for. */
    enum Extent
    {
        One,
        RestOfType, ///< all causes of its type and source that have no row of their own
        RestOfAll   ///< all that came when there was no room for others
    };

    struct Cause
    {
        Event newest; ///< with the worst severity of all
        quint64 count;
        qint64 firstTime; ///< the least of the messages, or Message::NoTime
        qint64 lastTime;
        qint64 firstSeen;
        qint64 lastSeen;
        Extent extent;
        quint64 revision; ///< of the newest change, see getRevision()

        /** How many there were; of a fault that had no consequences, that it is there. */
        quint64 getCount() const { return qMax<quint64>(1, count); }
    };

    /** A source is open from here on; its number. Names stay when it is closed. */
    int addSource(const QString& name);
    QString getSourceName(int source) const { return m_sources.value(source); }
    /** Whether senders need the names of their sources. */
    bool hasSeveralSources() const { return m_sources.size() > 1; }

    /** Notes a field that texts are read from; its number. They are hidden while that is. */
    int addField(const FieldPath& path);

    /** Counts an event; the number of its row. */
    int add(const Event& event);
    /** Takes over what others counted of the same source; where each of their rows is now. */
    QVector<int> add(const EventCauses& others);
    /** Puts the rows in the order of their first times; where each of them is now. Nothing can be added any more. */
    QVector<int> sortByTime();
    void clear();

    /** In the order of their first events. A row goes only with all of them. */
    const QVector<Cause>& getRows() const { return m_rows; }
    /** Grows with every change of a row. */
    quint64 getRevision() const { return m_revision; }
    /** How often everything was cleared. */
    int getGeneration() const { return m_generation; }

    /** What happened, in words, in one line; what is hidden now is told as that. */
    QString textOf(const Cause& cause) const;
    /** The same of the newest event, which may tell a figure. */
    QString newestTextOf(const Cause& cause) const;

private:
    struct Key
    {
        int source;
        Severity severity;
        QString type;
        QString sender;
        QString what; // kind or text

        bool operator==(const Key& other) const
        {
            return source == other.source && severity == other.severity && what == other.what &&
                   sender == other.sender && type == other.type;
        }
    };
    typedef decltype(qHash(0)) Hash;
    friend Hash qHash(const EventCauses::Key& key, Hash seed)
    {
        return ::qHash(key.what, seed) ^ ::qHash(key.sender, seed) ^ Hash(key.source * 8 + int(key.severity));
    }
    /** A type of events of a source. */
    struct Group
    {
        int count = 0;
        int rest = -1; // row of what has none of its own
    };

    int find(const Event& event);
    int append(const Event& event, Extent extent);
    int rowOfRest(int* rest, const Event& event);

    QStringList m_sources;
    QVector<FieldPath> m_fields;
    QVector<Cause> m_rows;
    QHash<Key, int> m_numbers;
    QHash<QPair<int, QString>, Group> m_groups;
    int m_rest = -1; // row of what came when there were too many
    quint64 m_revision = 0;
    int m_generation = 0;
};

#endif
