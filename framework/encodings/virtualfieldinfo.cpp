#include "virtualfieldinfo.h"

#include "message.h"
#include "messageinfo.h"

#include <QCoreApplication>
#include <QRegularExpression>

#include <cmath>
#include <limits>
#include <memory>

namespace
{

// bit(value, number): 1 or 0.
double bitOf(double value, double number)
{
    return std::fmod(std::floor(std::ldexp(value, -static_cast<int>(number))), 2.0) != 0 ? 1 : 0;
}

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
    // The parser would take it as an assignment to the input.
    static const QRegularExpression assignment(QStringLiteral("(?<![=<>!])=(?!=)"));
    if (expression.contains(assignment)) {
        *error = QCoreApplication::translate("Annotations", "\"=\" in the expression: a comparison is written \"==\"");
        return false;
    }
    try {
        m_parser.DefineFun("bit", bitOf);
        // The parser's own constants can lack the last digits.
        m_parser.ClearConst();
        m_parser.DefineConst("_pi", 3.14159265358979323846);
        m_parser.DefineConst("_e", 2.71828182845904523536);
        // With the point, for fields of sub-messages.
        m_parser.DefineNameChars("0123456789_abcdefghijklmnopqrstuvwxyzABCDEFGHIJKLMNOPQRSTUVWXYZ.");
        m_parser.SetExpr(expression.toStdString());
        const mu::varmap_type used = m_parser.GetUsedVar();
        for (const auto& variable : used) {
            Input input{};
            if (!findInput(QString::fromStdString(variable.first), info, &input, error))
                return false;
            m_inputs.push_back(input);
            setConfidential(isConfidential() || input.value.field->isConfidential());
            for (const Element& part : input.way)
                setConfidential(isConfidential() || part.field->isConfidential());
        }
        m_values.resize(m_inputs.size());
        std::size_t i = 0;
        for (const auto& variable : used)
            m_parser.DefineVar(variable.first, &m_values[i++]);
        m_parser.Eval();
    } catch (const mu::Parser::exception_type& exception) {
        *error = QCoreApplication::translate("Annotations", "the expression cannot be understood: %1")
                     .arg(QString::fromStdString(exception.GetMsg()));
        return false;
    }
    if (m_parser.GetNumResults() != 1) {
        *error = QCoreApplication::translate("Annotations", "the expression has several results");
        return false;
    }
    return true;
}

bool VirtualFieldInfo::findElement(const QString& name, const MessageInfo* info, Element* element, QString* error)
{
    element->index = 0;
    element->field = info->getFieldInfo(name);
    bool isElement = false;
    if (!element->field) {
        const int mark = static_cast<int>(name.lastIndexOf(QLatin1Char('_')));
        element->index = name.mid(mark + 1).toUInt(&isElement);
        element->field = isElement ? info->getFieldInfo(name.left(mark)) : nullptr;
        if (element->field && !element->field->isRepeated())
            element->field = nullptr;
    }
    if (!element->field)
        *error = QCoreApplication::translate("Annotations", "the expression names \"%1\", which is no field").arg(name);
    else if (element->field->isRepeated() && !isElement && !element->field->isStringField())
        *error = QCoreApplication::translate(
                     "Annotations", "the expression names \"%1\", which has several values: name one as in \"%1_0\"")
                     .arg(name);
    else
        return true;
    return false;
}

bool VirtualFieldInfo::findInput(const QString& name, const MessageInfo* info, Input* input, QString* error)
{
    const QStringList levels = name.split(QLatin1Char('.'));
    for (const QString& level : levels.mid(0, levels.size() - 1)) {
        Element part{};
        if (!findElement(level, info, &part, error))
            return false;
        info = part.field->getType().getSubMessageInfo();
        if (!info) {
            *error = QCoreApplication::translate("Annotations", "the expression names \"%1\", which is no sub-message")
                         .arg(level);
            return false;
        }
        input->way.push_back(part);
    }
    if (!findElement(levels.last(), info, &input->value, error))
        return false;
    if (!isNumberType(input->value.field)) {
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
        const Input& input = m_inputs[i];
        const Message* holder = message;
        for (const Element& part : input.way)
            if (holder)
                holder = part.field->getValue(holder, part.index).getSubMessage();
        if (!holder)
            return false;
        const FieldInfo* const field = input.value.field;
        const FieldValue value = field->getValue(holder, input.value.index);
        if (!value.isNumber() || field->isNotAvailable(value))
            return false;
        m_values[i] = value.toDouble() * field->getScaleFactor();
    }
    return true;
}

unsigned int VirtualFieldInfo::getValueCount(const Message* message) const
{
    return takeInputs(message) ? 1 : 0;
}

FieldValue VirtualFieldInfo::getValue(const Message* message, unsigned int index) const
{
    if (index != 0 || !takeInputs(message))
        return FieldValue::invalid();
    try {
        return FieldValue::fromDouble(m_parser.Eval());
    } catch (const mu::Parser::exception_type&) {
        return FieldValue::fromDouble(std::numeric_limits<double>::quiet_NaN());
    }
}
