#ifndef EXAMPLEWORLD_H
#define EXAMPLEWORLD_H

#include <QFile>
#include <QHeaderView>
#include <QLayout>
#include <QTimer>

/** What examples in headers and documents take for granted. Nothing of it is ever run. */
struct Example : QObject
{
    void show(const QString& text);
    void complain(const QString& text);
    void show(const FieldValue& value);

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
    EventLog* eventLog;
    MessageTreeWidget* widget;
    PathExpression* expression;
};

#endif
