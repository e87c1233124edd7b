#ifndef SOURCEMODEL_H
#define SOURCEMODEL_H

#include "sourcesession.h"

#include <QAbstractTableModel>

#include <memory>
#include <vector>

/** The sources that are open, a row for each, with state and rate. Owns them. */
class SourceModel : public QAbstractTableModel
{
    Q_OBJECT

public:
    enum Column
    {
        SourceColumn,
        StateColumn,
        RateColumn,
        ColumnCount
    };

    SourceModel(SourceFactory* factory, const SourceSession::Receivers& receivers, QObject* parent = nullptr);
    ~SourceModel() override;

    /** Opens another source; null with a sentence for the user in @p error. */
    SourceSession* open(const SourceOptions& options, const StreamSource::Playback& playback, QString* error);
    void close(SourceSession* session);
    /** Records what @p session receives in @p path; false with the reason in @p error, such as that another source
     * reads or records that file. */
    bool startRecording(SourceSession* session, const QString& path, QString* error);
    void closeAll();

    int getCount() const { return int(m_sessions.size()); }
    SourceSession* getSession(int row) const;
    int rowOf(const SourceSession* session) const;

    /** The state of a source in words, with what is recorded of it. */
    static QString stateText(const SourceSession* session);

    /** Lets time go on for all of them, and shows their rates. */
    void refresh();
    /** Makes the formats of the sources known by name. */
    void followFormats();
    double getMessageRate() const;
    double getByteRate() const;

    int rowCount(const QModelIndex& parent = QModelIndex()) const override;
    int columnCount(const QModelIndex& parent = QModelIndex()) const override;
    QVariant data(const QModelIndex& index, int role) const override;
    QVariant headerData(int section, Qt::Orientation orientation, int role) const override;

Q_SIGNALS:
    void sessionAdded(SourceSession* session);
    void sessionAboutToBeRemoved(SourceSession* session);
    /** After one was removed, and what it had counted. */
    void sessionRemoved();
    void sessionChanged(SourceSession* session);

private:
    QString uniqueName(const QString& name) const;
    QVector<const FormatInfo*> knownFormats() const;
    void followNumber();

    SourceFactory* m_factory;
    SourceSession::Receivers m_receivers;
    std::vector<std::unique_ptr<SourceSession>> m_sessions;
};

#endif
