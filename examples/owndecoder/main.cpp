// A device with a language of its own: a scale that writes lines such as "W 12.50 T 3.10" (weight and tare), by default
// to its first serial port. The decoder finds messages in what comes; all else, from the port to the views, is there.

#include "eventlog.h"
#include "eventlogtablewidget.h"
#include "fieldinfo.h"
#include "formatinfo.h"
#include "message.h"
#include "messageinfo.h"
#include "messagetreewidget.h"
#include "messagetreewidgetitem.h"
#include "receptionmonitor.h"
#include "streamdecoder.h"
#include "streamsource.h"

#include <QApplication>
#include <QHeaderView>
#include <QSplitter>

/** A number in the line, which is the message as it came: nothing is parsed before somebody asks for a value. */
class ScaleFieldInfo : public FieldInfo
{
public:
    ScaleFieldInfo(const QString& name, int word)
        : FieldInfo(name, FieldType(FieldType::FloatType, 8, "decimal"))
        , m_word(word)
    {
        setUnit("kg");
    }

    unsigned int getValueCount(const Message* message) const override { return occursIn(message->getInfo()) ? 1 : 0; }

    FieldValue getValue(const Message* message, unsigned int index) const override
    {
        if (index >= getValueCount(message))
            return FieldValue::invalid();
        return FieldValue::fromDouble(message->getData().split(' ').value(m_word).toDouble());
    }

private:
    int m_word;
};

/** Takes the stream apart into lines. What comes is in pieces of any size, and can be anything. */
class ScaleDecoder : public StreamDecoder
{
public:
    explicit ScaleDecoder(const MessageInfo* info)
        : m_info(info)
    {
    }

    void feed(const char* bytes, int size, qint64 arrivalTime, StreamSink* sink) override
    {
        for (int i = 0; i < size; ++i) {
            ++m_length;
            if (bytes[i] == '\n')
                endLine(arrivalTime, sink);
            else if (m_line.size() < LongestLine) // however long it is, no more is kept of it
                m_line.append(bytes[i]);
        }
    }

    void finish(StreamSink* sink) override
    {
        if (m_length > 0)
            report(StreamProblem::TruncatedFrame, sink);
        restart(m_offset + m_length);
    }

    void restart(quint64 offset) override
    {
        m_offset = offset;
        m_length = 0;
        m_line.clear();
    }

    bool hasTimes() const override { return false; } // those of arrival it is, then
    QString getSenderName(quint32) const override { return "scale"; }

private:
    static const int LongestLine = 80;

    void endLine(qint64 arrivalTime, StreamSink* sink)
    {
        const QList<QByteArray> words = m_line.split(' ');
        bool hasWeight = false;
        bool hasTare = false;
        words.value(1).toDouble(&hasWeight);
        words.value(3).toDouble(&hasTare);
        if (words.size() == 4 && words[0] == "W" && words[2] == "T" && hasWeight && hasTare) {
            ReceivedMessage message;
            message.info = m_info;
            message.id = 0;
            message.sender = 0;
            message.data = m_line.constData();
            message.size = static_cast<int>(m_line.size());
            message.time = arrivalTime;
            message.offset = m_offset;
            sink->processReceived(message);
        } else {
            report(StreamProblem::SkippedBytes, sink);
        }
        restart(m_offset + m_length);
    }

    void report(StreamProblem::Kind kind, StreamSink* sink) const
    {
        StreamProblem problem;
        problem.kind = kind;
        problem.offset = m_offset;
        problem.length = m_length;
        sink->processProblem(problem);
    }

    const MessageInfo* m_info;
    QByteArray m_line;
    quint64 m_offset = 0; // of the line in the stream
    quint64 m_length = 0; // of what came of it
};

int main(int argc, char** argv)
{
    const QApplication application(argc, argv);
    InputAddress address;
    QString error;
    if (!InputAddress::parse(application.arguments().value(1, "serial:/dev/ttyS0"), &address, &error))
        return qCritical("%s", qPrintable(error)), 1;

    FormatInfo scale("scale"); // owns the descriptions, and outlives all that shows them
    MessageInfo* const weighing = new MessageInfo("WEIGHING");
    weighing->addField(new ScaleFieldInfo("weight", 1));
    weighing->addField(new ScaleFieldInfo("tare", 3));
    scale.addMessageInfo(weighing);

    StreamSource source(ByteInput::create(address), new ScaleDecoder(weighing));
    MessageStatisticsCoordinator statistics;
    EventLog log;
    ReceptionMonitor monitor(&statistics, &log); // has an entry for whatever the decoder reports
    monitor.follow(&source, address.toString());

    QSplitter window(Qt::Vertical);
    MessageTreeWidget* const tree = new MessageTreeWidget(&window);
    MessageTreeWidgetItem* const row = new MessageTreeWidgetItem(tree, weighing);
    tree->addTopLevelItem(row);
    row->setExpanded(true);
    QObject::connect(&source, SIGNAL(newMessage(const Message*)), tree, SLOT(processMessage(const Message*)));
    for (int column = 0; column < 2; ++column) // the names are there from the beginning
        tree->resizeColumnToContents(column);
    EventLogTableWidget* const events = new EventLogTableWidget(&log, &window);
    events->horizontalHeader()->setSectionResizeMode(QHeaderView::ResizeToContents);
    window.resize(600, 400);
    window.show();
    source.start();
    return application.exec();
}
