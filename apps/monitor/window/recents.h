#ifndef RECENTS_H
#define RECENTS_H

#include "sourcefactory.h"

#include <QObject>
#include <QVector>

class QSettings;
class SourceSession;

/** What was open before, the newest first, with what it was opened with. Passwords are not kept. */
class Recents : public QObject
{
    Q_OBJECT

public:
    struct Entry
    {
        SourceOptions options;
        bool hadPassword = false; ///< which has to be asked for again

        /** What it is called in a list. */
        QString getTitle() const;
        /** All of it, for a tool tip. */
        QString getDescription() const;
    };

    explicit Recents(QObject* parent = nullptr);

    const QVector<Entry>& getRecordings() const { return m_recordings; }
    const QVector<Entry>& getConnections() const { return m_connections; }
    /** Puts a source in front of its list; simulations and standard input are in none. */
    void remember(const SourceSession* session);

    void saveSettings(QSettings& settings) const;
    void restoreSettings(QSettings& settings);

Q_SIGNALS:
    void changed();

private:
    QVector<Entry> m_recordings;
    QVector<Entry> m_connections;
};

#endif
