#ifndef CORVEL_KEYINDEX_H
#define CORVEL_KEYINDEX_H

#include <QVector>

/**
 * Numbers by their 64-bit keys, for tables that are asked for every message and change seldom.
 *
 * Several times as fast as a QHash: the keys lie side by side in one block, at the place that a multiplication gives or
 * the next free one behind it. Plain and copyable.
 */
class KeyIndex
{
public:
    KeyIndex()
        : m_count(0)
        , m_shift(0)
    {
    }

    /** The key of a type and a sender. */
    static quint64 keyOf(quint32 id, quint32 sender) { return quint64(id) << 32 | sender; }

    /** The number of that key; -1 when there is none. */
    int find(quint64 key) const
    {
        if (m_count == 0)
            return -1;
        const Entry* const entries = m_entries.constData();
        const int last = int(m_entries.size()) - 1;
        int i = placeOf(key);
        while (entries[i].number >= 0 && entries[i].key != key)
            i = (i + 1) & last;
        return entries[i].number;
    }

    /** Adds a key that is not there yet; @p number must not be negative. */
    void insert(quint64 key, int number)
    {
        if (2 * ++m_count > m_entries.size())
            grow();
        put(key, number);
    }

    void clear() { *this = KeyIndex(); }

private:
    struct Entry
    {
        quint64 key;
        int number; // -1 where there is none
    };

    // Ids and senders are mostly small numbers in a row: with both halves near the golden ratio, these spread evenly.
    int placeOf(quint64 key) const { return int(key * Q_UINT64_C(0x9e3779b99e3779b9) >> m_shift); }

    void put(quint64 key, int number)
    {
        int i = placeOf(key);
        while (m_entries.at(i).number >= 0)
            i = (i + 1) & (int(m_entries.size()) - 1);
        const Entry entry = {key, number};
        m_entries[i] = entry;
    }

    void grow()
    {
        const QVector<Entry> old = m_entries;
        const Entry none = {0, -1};
        m_entries = old.isEmpty() ? QVector<Entry>(16, none) : QVector<Entry>(2 * old.size(), none);
        m_shift = old.isEmpty() ? 60 : m_shift - 1;
        for (int i = 0; i < old.size(); ++i) {
            if (old.at(i).number >= 0)
                put(old.at(i).key, old.at(i).number);
        }
    }

    QVector<Entry> m_entries; // a power of two of them, at least twice as many as keys
    int m_count;
    int m_shift; // that leaves as many bits as tell the entries apart
};

#endif
