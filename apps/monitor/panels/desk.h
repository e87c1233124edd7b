#ifndef DESK_H
#define DESK_H

#include "eventcauses.h"
#include "fieldpath.h"
#include "latestmessagesource.h"
#include "messageinfo.h" // which signals about types need
#include "messagestatisticscoordinator.h"
#include "messagetap.h"
#include "messagetypemodel.h"
#include "preferences.h"
#include "sourcefactory.h"
#include "sourcemodel.h"

#include <QPointer>

class QAction;

/** Whose values a field that is taken from a row has. */
struct Origin
{
    QString sender; ///< may be empty
    bool isTold;    ///< whether the row says so, as others send the type as well
};

/** Something that a panel does with a field, offered to whoever shows fields. */
struct FieldUse
{
    /** A row that it is about. */
    struct Row
    {
        FieldPath path; ///< a field, or a type
        Origin origin;
    };

    QString name;    ///< for command lines
    QAction* action; ///< with text and key; the panel's own. Triggered, it is about the field that is current.
    QString refusal; ///< what is said of a field that is no number; empty where any field will do
    std::function<void(const FieldPath&, const Origin&)> take;
    /** Takes the field that an expression names, as soon as it is known; what is wrong with it, or an empty text. */
    std::function<QString(const QString&)> wish;
    /** In place of the others: takes all rows that are chosen, two at least, also those of types. */
    std::function<void(const QVector<Row>&)> takeAll = nullptr;
    bool takesTypes = false; ///< also takes the row of a type, as a path without a field
};

/** Something that a panel does with a type of a sender, offered to whoever lists them. */
struct TypeUse
{
    std::function<QString(const Subject&)> text; ///< as in a menu
    std::function<void(const Subject&)> take;
};

/**
 * What all panels work on: the sources that are open with what they bring, and what the user chose of it.
 *
 * Panels do not know one another. What one of them wants of another, or of the window, goes by way of this.
 */
class Desk : public QObject
{
    Q_OBJECT

public:
    explicit Desk(QObject* parent = nullptr);
    ~Desk() override;

    SourceFactory* getFactory() { return &m_factory; }
    /** The open sources. */
    SourceModel* getSources() { return &m_sources; }
    /** The types that they brought, and which of them are in the tree. */
    MessageTypeModel* getTypes() { return &m_types; }
    /** Their newest messages, twenty times a second or so, for what people read. */
    LatestMessageSource* getLatest() { return &m_latest; }
    /** Every single message, for who asks by a TapListener. */
    MessageTap* getTap() { return &m_tap; }
    MessageStatisticsCoordinator* getCoordinator() { return &m_coordinator; }
    /** What happened since the program was started, of all sources. */
    EventCauses* getEvents() { return &m_events; }

    /** Lets time go on for sources and types. */
    void refresh();

    /** The source that the user chose; the first one when there is no choice, or null. */
    SourceSession* getChosenSource() const;
    void chooseSource(SourceSession* session);

    /** The types that are chosen in the list, each with its sender, in its order. */
    const QVector<Subject>& getChosenTypes() const { return m_chosenTypes; }
    void chooseTypes(const QVector<Subject>& types);

    /** The message that is chosen in a list of messages; null for none. It is none of those that views are given. */
    const MessageReference& getChosenMessage() const { return m_chosenMessage; }
    void chooseMessage(const MessageReference& message);

    /** What is current in the tree: the way to a field, or a type; null for neither. */
    const FieldPath& getCurrentField() const { return m_currentField; }
    /** The row of the type in which that lies; without a type for neither. */
    const Subject& getCurrentSubject() const { return m_currentSubject; }
    void setCurrentField(const FieldPath& path, const Subject& subject);

    /** What there is in all of a recording that is open; null for a live source, for null, and while it is not there.
     */
    static RecordingOverview* getOverview(const SourceSession* session);

    /** Goes to @p time, microseconds since 1970, in the recording that has it, the chosen one first, and pauses there.
     */
    void jumpTo(qint64 time);
    /** Likewise in one recording, which is seekable. */
    static void jumpTo(SourceSession* session, qint64 time);

    /** Lets all views stand still, or catch up; what arrives is counted and recorded all the same. */
    void setPaused(bool paused);
    bool isPaused() const { return m_isPaused; }
    /** Whether anybody can see the views; newest messages are handed on only then. */
    void setVisible(bool visible);

    const Preferences& getPreferences() const { return m_preferences; }
    void setPreferences(const Preferences& preferences);
    /** Shows confidential data from now on, or hides it. */
    void setConfidentialShown(bool shown);
    /** To be called when descriptions of types changed that may be shown. */
    void renew() { Q_EMIT renewed(); }

    void offerUse(const FieldUse& use);
    /**
     * Uses what @p expression names as soon as it is known; false when no panel offers a use of this name.
     *
     * @param fault  is told what is wrong with an expression that can never name anything; may be null
     */
    bool wish(const QString& use, const QString& expression, QString* fault = nullptr);
    const QVector<FieldUse>& getFieldUses() const { return m_fieldUses; }
    void offerTypeUse(const TypeUse& use) { m_typeUses.append(use); }
    const QVector<TypeUse>& getTypeUses() const { return m_typeUses; }

Q_SIGNALS:
    /** Another source was chosen, or another one is the first. */
    void chosenSourceChanged();
    void chosenTypesChanged();
    void chosenMessageChanged();
    void currentFieldChanged();
    /** The user wants the row of a field to be current, as a sender sends it. */
    void fieldWanted(const FieldPath& path, const QString& sender);
    /** The user wants to see the bytes of the message that is chosen. */
    void bytesWanted();
    /** There is another getOverview() of @p session, or more in it. */
    void overviewGrown(SourceSession* session);
    /** The overview of @p session is complete: it has statistics and events. */
    void overviewEnded(SourceSession* session);
    /** A sender is called otherwise now. */
    void senderRenamed(const QString& before, const QString& now);
    void pausedChanged(bool paused);
    void preferencesChanged();
    /** All values are to be written anew. */
    void renewed();
    void fieldUseOffered(const FieldUse& use);
    /** The user wants to see the row of a type, or without one that of a sender. */
    void rowWanted(const Subject& subject);

    /** The user should know this for some seconds. */
    void said(const QString& text, int milliseconds);
    /** Something went wrong that the user wanted. */
    void failed(const QString& text);
    /** Something was wrong with what arrived. */
    void problem(const QString& text);
    /** The panel with this widget has got something that the user wants to see. */
    void wanted(QWidget* widget);
    /** The panels have got their first sizes. */
    void arranged();
    /** What failed before works again. */
    void recovered();
    /** The user wants this file added to the definitions. */
    void annotationsRequested(const QString& path);
    /** The user wants to choose a file of definitions. */
    void definitionsWanted();

private:
    void addSession(SourceSession* session);
    SourceSession* findRecording(qint64 time);

    SourceFactory m_factory;
    MessageStatisticsCoordinator m_coordinator;
    EventCauses m_events;
    LatestMessageSource m_latest;
    MessageTap m_tap;
    MessageTypeModel m_types;
    SourceModel m_sources;
    QPointer<SourceSession> m_chosenSource;
    QVector<Subject> m_chosenTypes;
    MessageReference m_chosenMessage;
    FieldPath m_currentField;
    Subject m_currentSubject{};
    QVector<FieldUse> m_fieldUses;
    QVector<TypeUse> m_typeUses;
    Preferences m_preferences;
    bool m_isPaused = false;
    bool m_isVisible = true;
};

#endif
