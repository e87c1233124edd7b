#ifndef MESSAGEHISTORY_H
#define MESSAGEHISTORY_H

#include "messagepass.h"
#include "subject.h"

#include <QElapsedTimer>
#include <QHash>
#include <QObject>
#include <QPointer>

#include <memory>
#include <vector>

class Desk;
class MessageList;
class SourceSession;

/** Reads what came of some types before the places where recordings are being played, in the background, for a list. */
class MessageHistory : public QObject
{
    Q_OBJECT

public:
    /** Both borrowed. */
    MessageHistory(Desk* desk, MessageList* list, QObject* parent = nullptr);
    ~MessageHistory() override;

    /** Whether any recording that is open has messages of @p types, of the sender @p only or of any when that is empty.
     */
    bool isWorthIt(const QVector<Subject>& types, const QString& only) const;
    /** Reads these of all recordings that have any, and nothing else any more. */
    void begin(const QVector<Subject>& types, const QString& only);
    void cancel();
    /** Gives the list what was read. */
    void work();

    bool isReading() const;
    /** Whether several recordings are read. */
    bool isReadingSeveral() const { return m_readings.size() > 1; }
    /** Whether the list has what was read, be it nothing. */
    bool hasCome() const { return m_hasCome; }
    /** Whether there was more than fits into the memory. */
    bool isFull() const { return m_isFull; }
    /** Whether a recording was taken to a place since the last call, or begin(), that the list does not show. */
    bool hasLeapt();
    /** How far reading is, once that takes longer; empty when there is nothing to say. */
    QString getNote() const;

private:
    struct Reading
    {
        QPointer<SourceSession> session;
        std::unique_ptr<MessagePass> pass;
        bool hasCome = false;
    };

    static bool hasAny(const SourceSession* session, const MessagePass::Wish& wish);
    static MessagePass::Wish wishOf(const SourceSession* session, const QVector<Subject>& types, const QString& only);
    void noteCome(Reading* reading);

    Desk* m_desk;
    MessageList* m_list;
    std::vector<Reading> m_readings;
    QHash<const SourceSession*, int> m_leaps;
    QElapsedTimer m_since;
    bool m_hasCome = false;
    bool m_isFull = false;
};

#endif
