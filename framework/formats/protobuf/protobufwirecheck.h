#ifndef PROTOBUFWIRECHECK_H
#define PROTOBUFWIRECHECK_H

#include <QByteArray>
#include <QStringList>

#include <google/protobuf/descriptor.h>

#include <cstdint>

/**
 * Finds out why a message cannot be parsed: where its bytes break off or contradict themselves, and which texts are no
 * UTF-8.
 *
 * The parser stops at a text that is no UTF-8 although everything behind it can be read. For such messages there is a
 * repaired copy, in which each wrong byte of such texts is a question mark.
 */
class ProtobufWireCheck
{
public:
    ProtobufWireCheck(const google::protobuf::Descriptor* type, const QByteArray& message);

    /** What is wrong, as "field a.b at byte 12: text". Of very many only the first. */
    const QStringList& getProblems() const { return m_problems; }

    bool isRepaired() const { return m_isRepaired; }
    const QByteArray& getRepaired() const { return m_bytes; }

private:
    typedef google::protobuf::Descriptor Descriptor;
    typedef google::protobuf::FieldDescriptor FieldDescriptor;

    bool checkMessage(const Descriptor* type, qint64* place, qint64 end, std::uint32_t group, int depth);
    bool checkText(const FieldDescriptor* field, qint64 place, qint64 end);
    bool readVarint(qint64* place, qint64 end, std::uint64_t* value) const;
    bool fail(const FieldDescriptor* field, qint64 place, const QString& text);

    QByteArray m_bytes;
    QStringList m_path;
    QStringList m_problems;
    bool m_isRepaired;
};

#endif
