#ifndef EXAMPLEWORLD_H
#define EXAMPLEWORLD_H

#include <QFile>
#include <QHeaderView>
#include <QLayout>
#include <QTimer>

/** As in the example of a decoder of one's own. */
class ScaleDecoder : public StreamDecoder
{
public:
    explicit ScaleDecoder(const MessageInfo* info);
    void feed(const char* bytes, int size, qint64 arrivalTime, StreamSink* sink) override;
    void finish(StreamSink* sink) override;
    void restart(quint64 offset) override;
    bool hasTimes() const override;
    QString getSenderName(quint32 sender) const override;
};

/** What examples in headers and documents take for granted. Nothing of it is ever run. */
struct Example : QObject
{
    void show(const QString& text);
    void show(double number);
    void show(const FieldValue& value);
    void complain(const QString& text, int position = 0);

    QWidget* parent;
    QLayout* layout;
    QTimer* timer;
    QFile file;
    InputAddress address;
    MavlinkDialect* dialect;
    FormatInfo* format;
    const MessageInfo* info;
    const Message* message;
    ReceivedMessage received;
    qint64 nanoseconds;
    QByteArray bytes;
    QByteArray fileDescriptorSet;
    StreamSource* source;
    StreamDecoder* decoder;
    ReceptionCounters counters;
    MessageStatisticsCoordinator* coordinator;
    MessageStatisticsCoordinator statistics;
    EventLog* eventLog;
    EventLog log;
    const MessageInfo* weighing;
    MessageStatisticsWidget* view;
    MessageTreeWidget* widget;
    PathExpression* expression;
};

#endif
