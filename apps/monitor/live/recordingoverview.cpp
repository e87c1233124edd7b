#include "recordingoverview.h"

#include "definitions.h"

RecordingOverview::RecordingOverview(std::unique_ptr<PassInput> input, std::unique_ptr<PassInput> other,
                                     Definitions* definitions, QReadWriteLock* lock, QObject* parent)
    : QObject(parent)
    , m_definitions(definitions)
    , m_pass(
          std::move(input), std::move(other),
          [this] {
              QMetaObject::invokeMethod(
                  this, [this] { follow(); }, Qt::QueuedConnection);
          },
          lock)
{
}

RecordingOverview::~RecordingOverview() = default;

RecordingDensity::Curve RecordingOverview::getDensity(int row) const
{
    return m_isComplete ? m_pass.getDensity().getRow(row) : RecordingDensity::Curve();
}

const MessageStatistics* RecordingOverview::getStatistics(int row)
{
    return m_isComplete ? m_pass.getStatistics(row) : nullptr;
}

MessageStatisticsCoordinator* RecordingOverview::getCoordinator()
{
    return m_isComplete ? m_pass.getCoordinator() : nullptr;
}

void RecordingOverview::follow()
{
    const bool isOver = m_pass.isOver(); // asked first: the last figures come before it
    const bool isGrown = m_pass.takeFigures(&m_figures);
    qint64 time = 0;
    QVector<EarlierMessage> messages;
    const bool isFound = m_pass.takeFound(&time, &messages);
    // Types belong to a format before anybody hears of them.
    QStringList problems;
    if (isGrown || isFound)
        m_definitions->publish(&problems);
    for (const QString& problem : std::as_const(problems))
        Q_EMIT annotationProblem(problem);
    if (isGrown) {
        for (int i = 0; i < m_figures.rows.size(); ++i) {
            const OverviewRow& row = m_figures.rows.at(i);
            if (row.info && !m_numbers.contains({row.info, row.sender}))
                m_numbers.insert({row.info, row.sender}, i);
        }
        Q_EMIT grown();
    }
    if (isOver && !m_isComplete) {
        m_isComplete = true;
        Q_EMIT ended();
    }
    if (isFound)
        Q_EMIT foundBefore(time, messages);
}
