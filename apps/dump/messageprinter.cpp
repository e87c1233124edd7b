#include "messageprinter.h"

#include "fieldinfo.h"
#include "formatinfo.h"
#include "jsontext.h"
#include "messageinfo.h"
#include "messagereference.h"

using namespace JsonText;

MessagePrinter::MessagePrinter(const QString& inputName, const StreamDecoder* decoder, bool interpreted,
                               const Selection& selection)
    : DumpSink(inputName, decoder)
    , m_json(interpreted)
    , m_selection(selection)
{
}

const std::string& MessagePrinter::senderOf(quint32 sender)
{
    std::string& text = m_senders[sender];
    if (text.empty()) {
        const QString name = getDecoder()->getSenderName(sender);
        text = name.isEmpty() ? "null" : toString(name);
    }
    return text;
}

const Selection::Choice& MessagePrinter::choiceOf(const ReceivedMessage& received)
{
    const std::pair<const MessageInfo*, quint32> key(received.info, received.sender);
    auto found = m_choices.find(key);
    if (found == m_choices.end())
        found = m_choices.emplace(key, m_selection.choose(key.first, getDecoder()->getSenderName(key.second))).first;
    return found->second;
}

void MessagePrinter::consume(const ReceivedMessage& received)
{
    if (!received.info)
        return;
    const Selection::Choice& choice = choiceOf(received);
    if (!choice.isPrinted)
        return;
    Names& names = m_names[received.info];
    if (names.type.empty())
        names = {toString(received.info->getName()), toString(received.info->getFormatInfo()->getName())};
    m_line.clear();
    MessageJson::appendHead({received.time, &names.format, &senderOf(received.sender), &names.type, received.sequence,
                             received.timeRest, received.publishTime, received.publishTimeRest},
                            &m_line);
    const MessageReference message = MessageReference::adopt(received.createMessage(QString()));
    if (choice.fields.isEmpty())
        m_json.appendFields(message.get(), &m_line);
    else
        appendSelected(message.get(), choice.fields);
    m_line.append("}\n");
    print(m_line);
}

void MessagePrinter::count(const StreamProblem&) {}

void MessagePrinter::finish() {}

void MessagePrinter::appendSelected(const Message* message, const QVector<Selection::Field>& fields)
{
    m_line.push_back('{');
    const std::size_t begin = m_line.size();
    for (const Selection::Field& selected : fields) {
        const std::size_t end = m_line.size();
        if (end > begin)
            m_line.push_back(',');
        appendString(&m_line, selected.key);
        m_line.push_back(':');
        if (!m_json.appendWalk(FieldWalk(selected.path, message), &m_line))
            m_line.resize(end);
    }
    m_line.push_back('}');
}
