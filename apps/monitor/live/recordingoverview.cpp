#include "recordingoverview.h"

#include "definitions.h"

RecordingOverview::RecordingOverview(std::unique_ptr<ByteInput> input, std::unique_ptr<StreamOpener> opener,
                                     Definitions* definitions, QReadWriteLock* lock, QObject* parent)
    : QObject(parent)
    , m_definitions(definitions)
    , m_pass(
          std::move(input), std::move(opener),
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
    if (isGrown) {
        // Types belong to a format before anybody hears of them.
        QStringList problems;
        m_definitions->publish(&problems);
        for (int i = 0; i < m_figures.rows.size(); ++i) {
            const OverviewRow& row = m_figures.rows.at(i);
            if (row.info && !m_numbers.contains({row.info, row.sender}))
                m_numbers.insert({row.info, row.sender}, i);
        }
        for (const QString& problem : std::as_const(problems))
            Q_EMIT annotationProblem(problem);
        Q_EMIT grown();
    }
    if (isOver && !m_isComplete) {
        m_isComplete = true;
        Q_EMIT ended();
    }
    qint64 time = 0;
    QVector<EarlierMessage> messages;
    if (m_pass.takeFound(&time, &messages))
        Q_EMIT foundBefore(time, messages);
}
