#ifndef MESSAGEPRINTER_H
#define MESSAGEPRINTER_H

#include "dumpsink.h"
#include "messagejson.h"
#include "selection.h"

#include <map>
#include <unordered_map>
#include <utility>

/** Prints each message of a known type as one line of JSON. */
class MessagePrinter : public DumpSink
{
public:
    /**
     * @param interpreted  prints values as people read them instead of as they were transmitted
     * @param selection    what to print of it all
     */
    MessagePrinter(const QString& inputName, const StreamDecoder* decoder, bool interpreted,
                   const Selection& selection);

    void finish() override;
    QString getComplaint() const override { return m_selection.getComplaint(); }
    void count(const StreamProblem& problem) override;

protected:
    void consume(const ReceivedMessage& message) override;

private:
    /** What a type and its format are called, as JSON. */
    struct Names
    {
        std::string type;
        std::string format;
    };

    const std::string& senderOf(quint32 sender);
    const Selection::Choice& choiceOf(const ReceivedMessage& received);
    void appendSelected(const Message* message, const QVector<Selection::Field>& fields);

    MessageJson m_json;
    Selection m_selection;
    std::unordered_map<const MessageInfo*, Names> m_names;
    std::unordered_map<quint32, std::string> m_senders;
    std::map<std::pair<const MessageInfo*, quint32>, Selection::Choice> m_choices;
    std::string m_line;
};

#endif
