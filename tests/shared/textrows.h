#ifndef TEXTROWS_H
#define TEXTROWS_H

#include <QStringList>
#include <QtTest>

#include <cstddef>

inline QString text(const char* utf8)
{
    return QString::fromUtf8(utf8);
}

/** What a test gives, and what has to become of it. */
struct TextRow
{
    const char* given;
    const char* expected;
};

/** A line for each row of which @p function, from a QString to a QString, makes something else; empty when all is well.
 */
template <std::size_t Count, typename Function>
QString differences(const TextRow (&rows)[Count], Function function)
{
    QStringList lines;
    for (std::size_t i = 0; i < Count; ++i) {
        const QString actual = function(text(rows[i].given));
        if (actual != text(rows[i].expected))
            lines << QString::fromLatin1("\"%1\" became \"%2\", not \"%3\"")
                         .arg(text(rows[i].given), actual, text(rows[i].expected));
    }
    return lines.join(QLatin1String("\n"));
}

/** Checks that there are none, and shows all. */
template <std::size_t Count, typename Function>
void checkRows(const TextRow (&rows)[Count], Function function)
{
    const QString wrong = differences(rows, function);
    QVERIFY2(wrong.isEmpty(), qPrintable(wrong));
}

#endif
