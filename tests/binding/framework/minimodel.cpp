#include "minimodel.h"

#include "corvel.h"
#include "fieldinfo.h"
#include "formatinfo.h"
#include "message.h"
#include "messageinfo.h"
#include "messageneed.h"

Q_DECLARE_METATYPE(const Message*)

QVector<MessageInfo*> MiniModel::infos;
int MiniModel::messagesAlive = 0;
bool MiniModel::showConfidential = false;
QMap<const void*, QVector<const MessageInfo*>> MiniModel::needs;

// Making objects

MessageInfo* MiniModel::newInfo(const char* name, const QStringList& fields)
{
    MessageInfo* info = new MessageInfo;
    info->m_name = QLatin1String(name);
    info->m_isSub = false;
    for (const QString& text : fields) {
        FieldInfo* field = new FieldInfo;
        field->m_name = text.section(QLatin1Char(':'), 0, 0);
        field->m_traits = text.section(QLatin1Char(':'), 1);
        field->m_home = info;
        if (field->isStringField())
            field->m_type.m_code = FieldType::UnsignedCharType;
        info->m_fields.append(field);
    }
    infos.append(info);
    return info;
}

void MiniModel::setSubType(const MessageInfo* info, int field, const MessageInfo* subType)
{
    const_cast<MessageInfo*>(subType)->m_isSub = true;
    info->m_fields.at(field)->m_type.m_code = FieldType::SubMessageType;
    info->m_fields.at(field)->m_type.m_subMessageInfo = subType;
}

Message* MiniModel::newMessage(const MessageInfo* info, const QList<QVariantList>& valuesOfFields)
{
    Message* message = new Message(info);
    for (int i = 0; i < valuesOfFields.size(); ++i)
        message->m_contents.insert(info->m_fields.at(i), valuesOfFields.at(i));
    return message;
}

QVariant MiniModel::fromMessage(const Message* message)
{
    return QVariant::fromValue(message);
}

void MiniModel::deleteAllInfos()
{
    for (MessageInfo* info : infos) {
        qDeleteAll(info->m_fields);
        delete info;
    }
    infos.clear();
}

// The operations of the widgets

Message::Message(const MessageInfo* type)
    : m_type(type)
{
    ++MiniModel::messagesAlive;
}

Message::~Message()
{
    --MiniModel::messagesAlive;
}

QString MessageInfo::getName() const
{
    return m_name;
}

QString MessageInfo::getShortDescriptiveText() const
{
    return m_name + QLatin1String(" in short");
}

bool MessageInfo::isMain() const
{
    return !m_isSub;
}

QVector<const FieldInfo*> MessageInfo::getFieldInfos() const
{
    QVector<const FieldInfo*> fields;
    for (const FieldInfo* field : m_fields)
        fields.append(field);
    return fields;
}

QString FieldType::toShortString() const
{
    return m_subMessageInfo ? m_subMessageInfo->getName() : QString::fromLatin1("T%1").arg(m_code);
}

const MessageInfo* FieldType::getSubMessageInfo() const
{
    return m_subMessageInfo;
}

FieldValue::FieldValue() {}

FieldValue::~FieldValue() {}

FieldValue FieldValue::invalid()
{
    return FieldValue();
}

QString FieldValue::toString(bool, signed char, RepresentationMode mode, bool) const
{
    return mode == AsItIs ? m_content.toString() : QLatin1String("MDCLXVI");
}

const Message* FieldValue::getSubMessage() const
{
    return m_content.value<const Message*>();
}

FieldInfo::FieldInfo()
    : m_parent(nullptr)
    , m_home(nullptr)
{
}

FieldInfo::~FieldInfo() {}

void FieldInfo::notForWidgets() {}

void FieldInfo::notForWidgetsEither() {}

unsigned int FieldInfo::getValueCount(const Message* message) const
{
    return static_cast<unsigned int>(message->m_contents.value(this).size());
}

FieldValue FieldInfo::getValue(const Message* message, unsigned int index) const
{
    const QVariantList values = message->m_contents.value(this);
    if (index >= static_cast<unsigned int>(values.size()))
        qFatal("%s has no value %u", qPrintable(m_name), index);
    FieldValue value;
    value.m_content = values.at(static_cast<int>(index));
    return value;
}

QString FieldInfo::getStringValue(const Message* message) const
{
    QString text;
    for (const QVariant& value : message->m_contents.value(this))
        text += value.toString();
    return text;
}

QString FieldInfo::getName() const
{
    return m_name;
}

FieldInfo::Role FieldInfo::getRole() const
{
    return m_traits.contains(QLatin1Char('2')) ? Marginal : Essential;
}

bool FieldInfo::isVirtual() const
{
    return m_traits.contains(QLatin1Char('v'));
}

bool FieldInfo::isConfidential() const
{
    return m_traits.contains(QLatin1Char('c'));
}

bool FieldInfo::isOptional() const
{
    return m_traits.contains(QLatin1Char('o'));
}

bool FieldInfo::isRepeated() const
{
    return m_traits.contains(QLatin1Char('r')) || isStringField();
}

bool FieldInfo::isStringField() const
{
    return m_traits.contains(QLatin1Char('s'));
}

bool FieldInfo::occursIn(const MessageInfo* info) const
{
    return info == m_home;
}

QVector<const FieldInfo*> FieldInfo::getSubFieldInfos() const
{
    return m_parts;
}

const FieldInfo* FieldInfo::getParentFieldInfo() const
{
    return m_parent;
}

QVector<const MessageInfo*> FieldInfo::getMessageInfos() const
{
    return QVector<const MessageInfo*>(1, m_home);
}

QString FieldInfo::getInterpretedString(const FieldValue& value, bool flag) const
{
    return (flag ? QLatin1Char('<') : QLatin1Char('?')) + value.m_content.toString() + QLatin1Char('>');
}

QString FieldInfo::getRawString(const FieldValue& value) const
{
    return QLatin1Char('#') + value.m_content.toString();
}

QString FormatInfo::getName() const
{
    return QLatin1String("mini");
}

MessageNeed::MessageNeed(MessageNeedManager*) {}

MessageNeed::~MessageNeed()
{
    MiniModel::needs.remove(this);
}

void MessageNeed::setMessageNeeded(const MessageInfo* info)
{
    MiniModel::needs[this] = QVector<const MessageInfo*>(info ? 1 : 0, info);
}

void MessageNeed::setMessagesNeeded(QVector<const MessageInfo*> infos)
{
    MiniModel::needs[this] = infos;
}

void MessageNeed::clearMessagesNeeded(bool)
{
    MiniModel::needs.remove(this);
}

bool Corvel::confidentialInformationDisplayEnabled()
{
    return MiniModel::showConfidential;
}
