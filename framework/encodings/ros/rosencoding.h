#ifndef ROSENCODING_H
#define ROSENCODING_H

#include "schemaencoding.h"

namespace Ros
{
struct Fault;
struct Schema;
struct Struct;
} // namespace Ros

/** What both encodings of ROS have in common. */
class RosEncoding : public SchemaEncoding
{
public:
    const MessageInfo* makeType(const TypeSchema& schema, QString* error) override;

protected:
    RosEncoding(const Traits& traits, bool isRos1);

    QVector<TypeSchema> readFile(const QString& path, const QStringList& importPaths,
                                 QStringList* errors) const override;

private:
    /** What became of a schema. */
    struct Made
    {
        const MessageInfo* info;
        QString error;
    };

    Ros::Struct* parse(const TypeSchema& schema, Ros::Schema* read, Ros::Fault* fault) const;
    Made make(const TypeSchema& schema);

    const bool m_isRos1;
    QHash<QByteArray, Made> m_bySchema;
    qint64 m_size; // of the schemas
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
