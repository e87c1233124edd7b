#ifndef ROSENCODING_H
#define ROSENCODING_H

#include "encoding.h"
#include "formatinfo.h"

#include <QHash>

#include <mutex>

class RosTypes;

/** What both encodings of ROS have in common: types that are made from schemas, all in one format. */
class RosEncoding : public Encoding
{
public:
    ~RosEncoding() override;

    FormatInfo* getFormat(const QString& path) override;
    QVector<FormatInfo*> getFormats() const override;
    const MessageInfo* makeType(const TypeSchema& schema, QString* error) override;
    TypeSchema schemaOf(const MessageInfo* info) const override;
    QVector<const MessageInfo*> publish() override;

protected:
    RosEncoding(const Traits& traits, bool isRos1);

private:
    /** What became of a schema. */
    struct Made
    {
        const MessageInfo* info;
        QString error;
    };

    Made make(const TypeSchema& schema);

    const bool m_isRos1;
    mutable FormatInfo m_format;
    mutable std::mutex m_mutex; // for what follows
    QHash<QByteArray, Made> m_bySchema;
    QHash<const MessageInfo*, TypeSchema> m_schemas;
    QVector<MessageInfo*> m_made; // not published yet; owned
    qint64 m_size;                // of the schemas
};

/** ROS 2 and what else DDS carries. */
class CdrEncoding : public RosEncoding
{
public:
    static const char* name() { return "cdr"; }

    CdrEncoding();
};

/** ROS 1. */
class Ros1Encoding : public RosEncoding
{
public:
    static const char* name() { return "ros1"; }

    Ros1Encoding();
};

#endif
