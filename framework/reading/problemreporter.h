#ifndef PROBLEMREPORTER_H
#define PROBLEMREPORTER_H

#include "streamdecoder.h"

#include <QMap>
#include <QStringList>

/** Turns the problems of a stream into lines for people: the first of its kind at once, the others folded into one. */
class ProblemReporter
{
public:
    explicit ProblemReporter(const QString& inputName);

    /** The line about @p problem when it is the first of its kind and message id; else empty, and it is kept. */
    QString report(const StreamProblem& problem, const QString& senderName);

    /** Whether takeLines() would give any. */
    bool hasLines() const { return m_pendingKinds > 0; }
    /** One line for each kind and id of which problems were kept: the last one, and how many there were. */
    QStringList takeLines();

private:
    struct Kind
    {
        quint64 pending = 0;
        quint64 firstOffset = 0; // of those pending
        StreamProblem last;
        QString sender; // of the last
    };

    QString line(const StreamProblem& problem, const QString& senderName) const;

    QString m_inputName;
    QMap<quint64, Kind> m_kinds; // key: kind in the high half, id in the low
    int m_pendingKinds;
};

#endif
