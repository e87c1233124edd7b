#ifndef EVENTMODEL_H
#define EVENTMODEL_H

#include "eventcauses.h"

#include <QAbstractTableModel>

/**
 * What happened, a row for each cause, as it was at the last update().
 *
 * The time of the messages and that of the clock have columns of their own.
 */
class EventModel : public QAbstractTableModel
{
    Q_OBJECT

public:
    enum Column
    {
        SeverityColumn,
        CountColumn,
        EventColumn,
        SourceColumn,
        FirstColumn, ///< by the time of the messages, in UTC
        LastColumn,
        FirstSeenColumn, ///< by the clock of this computer, and where it is
        LastSeenColumn,
        TypeColumn,
        ColumnCount
    };

    explicit EventModel(QObject* parent = nullptr);

    /**
     * Shows other causes.
     *
     * @param causes  borrowed, up to the next call; null for none
     * @param name    of the source of all of them, where they do not know any
     */
    void setCauses(const EventCauses* causes, const QString& name = QString());
    const EventCauses* getCauses() const { return m_causes; }
    /** Shows what happened meanwhile. */
    void update();
    /** Writes all texts anew. */
    void renew();

    const EventCauses::Cause& getCause(int row) const { return m_rows.at(row); }
    /** Whether the row has all these words in its texts. */
    bool hasWords(int row, const QStringList& words) const;
    /** Whether one row stands before another when its column is sorted by. */
    bool isBefore(const QModelIndex& left, const QModelIndex& right) const;
    /** All rows as they are now, as comma-separated values with a line of headings. */
    QByteArray toCsv() const;

    int rowCount(const QModelIndex& parent = QModelIndex()) const override;
    int columnCount(const QModelIndex& parent = QModelIndex()) const override;
    QVariant data(const QModelIndex& index, int role) const override;
    QVariant headerData(int section, Qt::Orientation orientation, int role) const override;

private:
    QString textAt(int row, int column) const;
    QString toolTip(int row, int column) const;
    QString originOf(const EventCauses::Cause& cause) const;
    QString timeText(qint64 time) const;
    void followDays();

    const EventCauses* m_causes = nullptr;
    QString m_name;
    QVector<EventCauses::Cause> m_rows;
    quint64 m_revision = 0;
    int m_generation = 0;
    bool m_isOfOneDay = true; // what the messages say
};

#endif
