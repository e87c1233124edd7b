#ifndef OPENER_H
#define OPENER_H

#include "sourcefactory.h"
#include "streamsource.h"

#include <QObject>
#include <QPointer>
#include <QStringList>

class Desk;
class SourceSession;

/** Opens what the user names: sources, definitions, annotations; and tells on the desk what cannot be opened. */
class Opener : public QObject
{
    Q_OBJECT

public:
    /** @param desk  borrowed */
    explicit Opener(Desk* desk, QObject* parent = nullptr);

    void setPlayback(const StreamSource::Playback& playback) { m_playback = playback; }
    /** What addresses are opened with that come without any of it. */
    void setDefinitions(const SourceOptions& definitions) { m_definitions = definitions; }

    /** Uses the definition file @p path from the next input on; @p annotations may be empty. False when it cannot be
     * used. */
    bool loadDialect(const QString& path, const QString& annotations);
    /** Adds the annotations in @p path to the definitions in use; false when something is wrong with them. */
    bool loadAnnotations(const QString& path);

    /** Opens all of them, definitions among them too; false when not all could be opened. */
    bool openAll(const QStringList& addresses);
    /** Opens what @p options describe beside what is open; null with the reason in @p error. */
    SourceSession* open(const SourceOptions& options, QString* error);
    /** Shows a simulation. @p untilAnother closes it as soon as another source is opened. */
    void openSimulation(bool untilAnother, const Demonstration* demonstration);

Q_SIGNALS:
    void opened(const SourceSession* session);
    /** A file was opened that nobody recognises: what its messages are has to be said. */
    void schemaMissing(SourceSession* session);

private:
    Desk* m_desk;
    StreamSource::Playback m_playback;
    SourceOptions m_definitions;
    QPointer<SourceSession> m_demonstration; // goes when another source comes
};

#endif
