#ifndef JSONCHECK_H
#define JSONCHECK_H

#include <QByteArray>
#include <QCoreApplication>
#include <QSet>
#include <QStringList>

#include <vector>

/**
 * Finds out what is wrong with a JSON text: where it breaks off or contradicts itself, which texts are no UTF-8 or have
 * wrong escapes, which names are there twice, and what is nested too deeply.
 *
 * The parser stops at the first error, and says no more than that there is one. So there is a repaired copy for it:
 * with question marks for bytes that are no UTF-8, and cut behind the last value that is whole where the rest cannot be
 * read.
 */
class JsonCheck
{
    Q_DECLARE_TR_FUNCTIONS(JsonCheck)

public:
    explicit JsonCheck(const QByteArray& text);

    /** What is wrong, as "a.b[3] at byte 12: text". Of very many only the first. */
    const QStringList& getProblems() const { return m_problems; }

    /** Where the first of them is; -1 when there is none. */
    int getFirstPlace() const { return m_firstPlace; }

    /** Empty where not even the first value can be read. */
    const QByteArray& getRepaired() const { return m_repaired; }

private:
    enum State
    {
        AtValue,
        AtFirstName,
        AtFirstElement,
        AtName,
        BehindValue
    };

    /** An object or array that is open, and not nested too deeply. */
    struct Level
    {
        QSet<QString> names;
        QString name; // of the member that it is at
        int index;    // of the element that it is at
    };

    bool isInObject() const { return m_open.endsWith('{'); }
    bool isDeep() const { return m_open.size() > int(m_levels.size()); }

    bool step();
    bool beginValue();
    bool readName();
    bool goOn();
    bool open(bool isObject);
    bool close();
    bool readScalar();
    bool readString(QString* decoded);
    void copyString(int begin, int end);
    void skipSpace();
    bool endValue();
    bool fail(int place, const QString& text);
    QString where(int place) const;

    const QByteArray& m_text;
    int m_place;
    State m_state;
    bool m_isDone;
    QByteArray m_open; // brackets, outermost first
    std::vector<Level> m_levels;
    int m_good; // bytes of the copy up to the last value that is whole, or bracket that opens one
    QByteArray m_repaired;
    QStringList m_problems;
    int m_firstPlace;
};

#endif
