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
 * The parser stops at the first of these, and what it has read until then can come from beyond the end of a part. So
 * there is a repaired copy for it: without the fields, and the numbers in a
 * packed field, that break off, and with a question mark for each wrong byte of a
 * text. What follows a part that is broken inside is in it again.
 */
class ProtobufWireCheck
{
public:
    ProtobufWireCheck(const google::protobuf::Descriptor* type, const QByteArray& message);

    /** What is wrong, as "a.b at byte 12: text". Of very many only the first. */
    const QStringList& getProblems() const { return m_problems; }

    const QByteArray& getRepaired() const { return m_repaired; }

private:
    typedef google::protobuf::Descriptor Descriptor;
    typedef google::protobuf::FieldDescriptor FieldDescriptor;

    bool copyFields(const Descriptor* type, qint64* place, qint64 end, std::uint32_t group, int depth,
                    QByteArray* copy);
    bool copyField(const Descriptor* type, qint64* place, qint64 end, int depth, QByteArray* copy);
    bool copyGroup(const Descriptor* type, const QString& name, std::uint32_t number, qint64* place, qint64 end,
                   int depth, QByteArray* copy);
    void copyPacked(const FieldDescriptor* field, qint64 place, qint64 end, QByteArray* copy);
    void copyText(const FieldDescriptor* field, qint64 place, qint64 end, QByteArray* copy);
    void copyBytes(qint64 begin, qint64 end, QByteArray* copy) const;
    bool readVarint(qint64* place, qint64 end, std::uint64_t* value) const;
    bool fail(const FieldDescriptor* field, qint64 place, const QString& text);

    const QByteArray& m_bytes;
    QByteArray m_repaired;
    QStringList m_path;
    QStringList m_problems;
};

#endif
