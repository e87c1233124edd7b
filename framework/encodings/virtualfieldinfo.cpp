#include "virtualfieldinfo.h"

#include "fieldwalk.h"
#include "message.h"

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
            FieldPath input(info);
            if (!findInput(QString::fromStdString(variable.first), &input, error))
                return false;
            m_inputs.push_back(input);
            for (const FieldPath::Step& step : input.getSteps())
                setConfidential(isConfidential() || step.field->isConfidential());
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
    try {
        return FieldValue::fromDouble(m_parser.Eval());
    } catch (const mu::Parser::exception_type&) {
        return FieldValue::fromDouble(std::numeric_limits<double>::quiet_NaN());
    }
}
