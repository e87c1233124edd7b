#ifndef WORDS_H
#define WORDS_H

#include <QStringList>

/** What somebody types to find rows by. */
namespace Words
{

/** The words of a line. */
inline QStringList of(const QString& line)
{
    return line.simplified().split(QLatin1Char(' '), Qt::SkipEmptyParts);
}

/** Whether each word is in one of the texts, in capitals or not. */
inline bool areIn(const QStringList& words, const QStringList& texts)
{
    for (const QString& word : words) {
        bool isIn = false;
        for (const QString& text : texts)
            isIn = isIn || text.contains(word, Qt::CaseInsensitive);
        if (!isIn)
            return false;
    }
    return true;
}

} // namespace Words

#endif
