#ifndef JSONLOCATOR_H
#define JSONLOCATOR_H

#include <QByteArray>
#include <QHash>
#include <QString>
#include <QStringList>
#include <QVector>

/** Knows in which line of a JSON text something stands, which Qt's JSON classes do not tell. */
class JsonLocator
{
public:
    /** A key that an object has twice, of which Qt's JSON classes keep one. */
    struct Duplicate
    {
        QString key;
        int line;
    };

    /** @param text  well-formed JSON */
    explicit JsonLocator(const QByteArray& text);

    /**
     * The line, from 1, of the member or element that keys and indices lead to; of what contains it when there is no
     * such one.
     */
    int getLine(QStringList path) const;

    const QVector<Duplicate>& getDuplicates() const { return m_duplicates; }

    /** The line of the byte at @p offset. */
    static int lineAt(const QByteArray& text, int offset);

private:
    QHash<QString, int> m_lines;
    QVector<Duplicate> m_duplicates;
};

#endif
