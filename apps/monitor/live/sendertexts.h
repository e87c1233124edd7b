#ifndef SENDERTEXTS_H
#define SENDERTEXTS_H

#include "eventcauses.h"
#include "streamdecoder.h"

#include <QElapsedTimer>

#include <array>
#include <functional>
#include <memory>

class QReadWriteLock;

/**
 * Makes events of the texts that senders say: status texts of vehicles, logs of robots. Which types these are, and
 * where they have text and severity, stands in one table.
 *
 * Messages of other types cost a comparison. One thread at a time.
 */
class SenderTexts : public StreamSink
{
public:
    /** How the sender of a message is called. */
    typedef std::function<QString(const ReceivedMessage&)> Name;

    /**
     * @param causes  borrowed
     * @param source  its number there
     * @param isLive  whether texts come now, by the clock of this computer
     */
    SenderTexts(EventCauses* causes, int source, bool isLive, const Name& nameSender);
    ~SenderTexts() override;

    /** Held for reading while fields are read, on another thread than that of the GUI. */
    void setDescriptionLock(QReadWriteLock* lock) { m_lock = lock; }
    /** Who is told of each text, with the row that counts it. */
    void setListener(const std::function<void(const Event&, int row)>& listen) { m_listen = listen; }

    void processReceived(const ReceivedMessage& message) override
    {
        if (message.info && m_others[message.id % m_others.size()] != message.info)
            look(message);
    }
    void processProblem(const StreamProblem&) override {}

    /** Gives texts up of which nothing came for a second: what there is of them is told. For a timer. */
    void refresh();
    /** Tells what there is of all texts. */
    void finish();

private:
    struct Reader;
    /** A text that comes in several messages, up to the next one. */
    struct Piece
    {
        quint64 text; // which one
        quint64 next;
        Event event;
        qint64 came;
    };

    void look(const ReceivedMessage& message);
    void read(const Reader& reader, const ReceivedMessage& message);
    void addPiece(const Event& event, quint64 text, quint64 number, bool isLast);
    void tell(const Event& event);

    EventCauses* m_causes;
    int m_source;
    bool m_isLive;
    Name m_nameSender;
    std::function<void(const Event&, int row)> m_listen;
    QReadWriteLock* m_lock = nullptr;
    QHash<const MessageInfo*, std::shared_ptr<Reader>> m_readers;
    std::array<const MessageInfo*, 1024> m_others = {}; // that say nothing, by their ids
    QHash<QString, Piece> m_pieces;                     // by sender
    QElapsedTimer m_clock;
};

#endif
