#ifndef EXAMPLEWORLD_H
#define EXAMPLEWORLD_H

#include <QFile>
#include <QHeaderView>
#include <QLayout>
#include <QMenu>
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

/** As in the example of an application's own messages. */
struct Fan
{
    quint16 rpm;
    bool isReversed;
};

struct OvenState
{
    enum Mode : quint8
    {
        Off,
        Heating,
        Holding
    };

    qint16 decidegrees;
    Mode mode;
    quint16 secondsLeft;
    QVector<quint8> shelves;
    QVector<Fan> fans;
};

/** As in the example of rows of one's own. */
class CountedRow : public MessageTreeWidgetItem
{
public:
    CountedRow(MessageTreeWidget* tree, const MessageInfo* info);
};

/** What examples in headers and documents take for granted. Nothing of it is ever run. */
struct Example : QObject
{
    void show(const QString& text);
    void show(double number);
    void show(const FieldValue& value);
    void complain(const QString& text, int position = 0);

    QWidget* parent;
    QWidget* form;
    QLayout* layout;
    QTimer* timer;
    QFile file;
    InputAddress address;
    MavlinkDialect* dialect;
    FormatInfo* format;
    const MessageInfo* info;
    MessageInfo* fanInfo;
    MessageInfo* stateInfo;
    FunctionFieldInfo* mode;
    FunctionFieldInfo* left;
    OvenState state;
    MessageSource* oven;
    const Message* message;
    ReceivedMessage received;
    qint64 nanoseconds;
    QByteArray bytes;
    QByteArray fileDescriptorSet;
    StreamSource* source;
    ByteInput* input;
    StreamSink* sink;
    StreamDecoder* decoder;
    ReceptionCounters counters;
    MessageStatisticsCoordinator* coordinator;
    MessageStatisticsCoordinator statistics;
    EventLog* eventLog;
    EventLog log;
    const MessageInfo* weighing;
    MessageStatisticsWidget* view;
    MessageTreeWidget* tree;
    MessageTreeWidget* widget;
    QMenu* menu;
    PathExpression* expression;
};

#endif
