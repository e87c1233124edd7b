#ifndef VIRTUALFIELDINFO_H
#define VIRTUALFIELDINFO_H

#include "fieldinfo.h"
#include "fieldpath.h"
#include "formula.h"

#include <mutex>
#include <vector>

/**
 * A field that is computed from other fields of its message.
 *
 * Its inputs are the numbers that a person reads: scaled as FieldInfo::setScale() says. The field is absent from a
 * message when an input is absent or means "not available". May be read on several threads.
 */
class VirtualFieldInfo : public FieldInfo
{
public:
    /**
     * A field of messages of the type @p info, owned by the caller. It is confidential when an input is.
     *
     * @param expression  names fields of @p info; elements of a repeated field as NAME_0, NAME_1 and so on; fields of a
     *                    sub-message as NAME.FIELD
     * @param error       why null is returned; must not be null
     */
    static VirtualFieldInfo* create(const QString& name, const QString& expression, const MessageInfo* info,
                                    QString* error);

    unsigned int getValueCount(const Message* message) const override;
    FieldValue getValue(const Message* message, unsigned int index) const override;

private:
    explicit VirtualFieldInfo(const QString& name);

    bool compile(const QString& expression, const MessageInfo* info, QString* error);
    static bool appendElement(const QString& name, FieldPath* path, QString* error);
    static bool findInput(const QString& name, FieldPath* path, QString* error);
    bool takeInputs(const Message* message) const;

    std::vector<FieldPath> m_inputs;
    mutable std::mutex m_mutex;           // for what follows
    mutable std::vector<double> m_values; // of the inputs
    Formula m_formula;
};

#endif
