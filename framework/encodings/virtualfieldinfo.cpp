#include "virtualfieldinfo.h"

#include "fieldwalk.h"
#include "message.h"

#include <QCoreApplication>

#include <memory>

namespace
{

bool isNumberType(const FieldInfo* field)
{
    switch (field->getType().getTypeCode()) {
    case FieldType::SignedType:
    case FieldType::UnsignedType:
    case FieldType::FloatType:
    case FieldType::BoolType:
        return true;
    case FieldType::CharType:
    case FieldType::UnsignedCharType:
        return !field->isStringField();
    default:
        return false;
    }
}

} // namespace

VirtualFieldInfo::VirtualFieldInfo(const QString& name)
    : FieldInfo(name, FieldType(FieldType::FloatType, 8, QStringLiteral("double")))
{
    setVirtual(true);
    setOptional(true);
}

VirtualFieldInfo* VirtualFieldInfo::create(const QString& name, const QString& expression, const MessageInfo* info,
                                           QString* error)
{
    std::unique_ptr<VirtualFieldInfo> field(new VirtualFieldInfo(name));
    return field->compile(expression, info, error) ? field.release() : nullptr;
}

bool VirtualFieldInfo::compile(const QString& expression, const MessageInfo* info, QString* error)
{
    Formula::Fault fault;
    if (!m_formula.parse(expression, &fault)) {
        *error = QCoreApplication::translate("Annotations", "the expression cannot be understood: %1").arg(fault.text);
        if (fault.position >= 0)
            *error += QCoreApplication::translate("Annotations", " (character %1)").arg(fault.position + 1);
        return false;
    }
    for (const QString& name : m_formula.getNames()) {
        FieldPath input(info);
        if (!findInput(name, &input, error))
            return false;
        m_inputs.push_back(input);
        for (const FieldPath::Step& step : input.getSteps())
            setConfidential(isConfidential() || step.field->isConfidential());
    }
    m_values.resize(m_inputs.size());
    return true;
}

/** Goes on to the field, or the element of a repeated one, that @p name is. */
bool VirtualFieldInfo::appendElement(const QString& name, FieldPath* path, QString* error)
{
    bool isElement = false;
    if (!path->append(name)) {
        const int mark = static_cast<int>(name.lastIndexOf(QLatin1Char('_')));
        const int index = name.mid(mark + 1).toInt(&isElement);
        FieldPath element = *path;
        isElement = isElement && index >= 0 && element.append(name.left(mark), index);
        if (!isElement || !element.getField()->isRepeated()) {
            *error =
                QCoreApplication::translate("Annotations", "the expression names \"%1\", which is no field").arg(name);
            return false;
        }
        *path = element;
    }
    const FieldInfo* const field = path->getField();
    if (!field->isRepeated() || isElement || field->isStringField())
        return true;
    *error = QCoreApplication::translate(
                 "Annotations", "the expression names \"%1\", which has several values: name one as in \"%1_0\"")
                 .arg(name);
    return false;
}

bool VirtualFieldInfo::findInput(const QString& name, FieldPath* path, QString* error)
{
    const QStringList levels = name.split(QLatin1Char('.'));
    for (int i = 0; i < levels.size(); ++i) {
        if (!appendElement(levels.at(i), path, error))
            return false;
        if (i + 1 < levels.size() && !path->getField()->getType().getSubMessageInfo()) {
            *error = QCoreApplication::translate("Annotations", "the expression names \"%1\", which is no sub-message")
                         .arg(levels.at(i));
            return false;
        }
    }
    if (!isNumberType(path->getField())) {
        *error =
            QCoreApplication::translate("Annotations", "the expression names \"%1\", which is no number").arg(name);
        return false;
    }
    return true;
}

bool VirtualFieldInfo::takeInputs(const Message* message) const
{
    if (!occursIn(message->getInfo()))
        return false;
    for (std::size_t i = 0; i < m_inputs.size(); ++i) {
        const FieldInfo* const field = m_inputs[i].getField();
        const FieldValue value = FieldWalk(m_inputs[i], message, FieldWalk::Everything).getValue();
        if (!value.isNumber() || field->isNotAvailable(value))
            return false;
        m_values[i] = value.toDouble() * field->getScaleFactor();
    }
    return true;
}

unsigned int VirtualFieldInfo::getValueCount(const Message* message) const
{
    const std::lock_guard<std::mutex> lock(m_mutex);
    return takeInputs(message) ? 1 : 0;
}

FieldValue VirtualFieldInfo::getValue(const Message* message, unsigned int index) const
{
    const std::lock_guard<std::mutex> lock(m_mutex);
    if (index != 0 || !takeInputs(message))
        return FieldValue::invalid();
    return FieldValue::fromDouble(m_formula.compute(m_values.data()));
}
