#include "problemreporter.h"

#include <QCoreApplication>

ProblemReporter::ProblemReporter(const QString& inputName)
    : m_inputName(inputName)
    , m_pendingKinds(0)
{
}

QString ProblemReporter::line(const StreamProblem& problem, const QString& senderName) const
{
    return QCoreApplication::translate("StreamSource", "%1 at byte %2: %3")
        .arg(m_inputName, QString::number(problem.offset), problem.describe(senderName));
}

QString ProblemReporter::report(const StreamProblem& problem, const QString& senderName)
{
    const quint64 key = static_cast<quint64>(problem.kind) << 32 | problem.id;
    const auto known = m_kinds.find(key);
    if (known == m_kinds.end()) {
        m_kinds.insert(key, Kind());
        return line(problem, senderName);
    }
    if (known->pending++ == 0) {
        known->firstOffset = problem.offset;
        ++m_pendingKinds;
    }
    known->last = problem;
    known->sender = senderName;
    return QString();
}

QStringList ProblemReporter::takeLines()
{
    QStringList lines;
    for (Kind& kind : m_kinds) {
        if (kind.pending == 0)
            continue;
        QString text = line(kind.last, kind.sender);
        if (kind.pending > 1)
            text += QCoreApplication::translate("StreamSource", " (%1 times since byte %2)")
                        .arg(kind.pending)
                        .arg(kind.firstOffset);
        lines.append(text);
        kind.pending = 0;
    }
    m_pendingKinds = 0;
    return lines;
}
