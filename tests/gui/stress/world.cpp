#include "world.h"

#include "formatregistry.h"
#include "messageinfo.h"

static const int MaxTypes = 5;
static const int MaxDepth = 3;

static QString numbered(const char* name, int number)
{
    return QString::fromLatin1("%1%2").arg(QLatin1String(name)).arg(number);
}

World::World(Chance* chance)
    : m_chance(chance)
    , m_format(QLatin1String("world"))
    , m_tame(chance->percent(60))
    , m_budget(0)
{
    QVector<MessageInfo*> infos;
    const int types = 2 + m_chance->below(MaxTypes - 1);
    for (int i = 0; i < types; ++i) {
        // The first is always received, the last of several never is: there is one of each kind.
        const bool main = i == 0 || (i < types - 1 && m_chance->percent(60));
        infos.append(new MessageInfo(numbered(m_chance->percent(10) ? "TYPE" : "TYPE_", i), main));
        infos.last()->setShortDescriptiveText(numbered("about ", i));
        m_infos.append(infos.last());
    }
    for (int i = 0; i < types; ++i) {
        addFields(infos.at(i), i);
        m_format.addMessageInfo(infos.at(i));
        m_fields += infos.at(i)->getFieldInfos();
    }
    FormatRegistry::getInstance()->addFormat(&m_format);
}

World::~World()
{
    FormatRegistry::getInstance()->removeFormat(&m_format);
}

const MessageInfo* World::pickInfo()
{
    return m_chance->percent(5) ? nullptr : m_chance->pick(m_infos);
}

const MessageInfo* World::pickMainInfo()
{
    const MessageInfo* info = m_chance->pick(m_infos);
    return info->isMain() ? info : m_infos.first();
}

int World::pickFlags(std::initializer_list<std::pair<int, int>> percentages)
{
    int flags = 0;
    for (const std::pair<int, int>& percentage : percentages)
        flags |= m_chance->percent(percentage.first) ? percentage.second : 0;
    return flags;
}

void World::addFields(MessageInfo* info, int number)
{
    const int count = m_chance->below(7);
    int subMessages = 0;
    for (int i = 0; i < count; ++i) {
        // Tame types contain only those behind them; others may contain themselves.
        const int first = m_tame ? number + 1 : 0;
        const int choice = first + m_chance->below(static_cast<int>(m_infos.size()) - first);
        if (subMessages < 2 && choice < m_infos.size() && m_chance->percent(25)) {
            ++subMessages;
            int flags = m_tame ? m_chance->below(2) * TestFieldInfo::Repeated : m_chance->below(4);
            flags |= pickFlags({{10, TestFieldInfo::Secondary}, {10, TestFieldInfo::Confidential}});
            info->addField(new TestFieldInfo(numbered("sub", i), flags, FieldType(m_infos.at(choice))));
        } else {
            info->addField(createField(numbered("field", i), i));
        }
    }
}

TestFieldInfo* World::createField(const QString& name, int number)
{
    const int flags = pickFlags({{30, TestFieldInfo::Optional},
                                 {25, TestFieldInfo::Repeated},
                                 {15, TestFieldInfo::String},
                                 {15, TestFieldInfo::Virtual},
                                 {15, TestFieldInfo::Confidential},
                                 {25, TestFieldInfo::Secondary}});
    const FieldType types[] = {FieldType(FieldType::FloatType, 8, QLatin1String("double")),
                               FieldType(FieldType::SignedType, 4, QLatin1String("int32")),
                               FieldType(FieldType::TextType, 0, QLatin1String("text")),
                               FieldType(FieldType::BytesType, 0, QLatin1String("bytes"))};
    TestFieldInfo* field = new TestFieldInfo(name, flags, types[m_chance->below(4)]);
    if (m_chance->coin())
        field->setUnit(numbered("unit", number));
    if (m_chance->percent(15))
        addComponents(field, 0);
    return field;
}

void World::addComponents(TestFieldInfo* field, int depth)
{
    const int count = 1 + m_chance->below(3);
    for (int i = 0; i < count; ++i) {
        const int flags =
            (field->isRepeated() ? TestFieldInfo::Repeated : 0) |
            pickFlags(
                {{30, TestFieldInfo::Secondary}, {20, TestFieldInfo::Virtual}, {10, TestFieldInfo::Confidential}});
        TestFieldInfo* component = new TestFieldInfo(numbered("part", i), flags);
        if (depth < 1 && m_chance->percent(20))
            addComponents(component, depth + 1);
        field->addSubField(component);
    }
}

MessageReference World::createMessage(const MessageInfo* info)
{
    m_budget = 120;
    TestMessage* message = new TestMessage(info);
    Q_FOREACH (const FieldInfo* field, info->getFieldInfos())
        fill(message, field, 0);
    return MessageReference::adopt(message);
}

int World::countFor(const FieldInfo* field, int depth)
{
    if (field->isRepeated()) {
        const int most = depth > 0 || m_budget < 60 ? 3 : m_chance->percent(10) ? 40 : 5;
        return m_chance->below(qMin(most, m_budget) + 1);
    }
    if (field->isOptional())
        return m_chance->percent(60);
    return m_tame || m_chance->percent(90);
}

void World::fill(TestMessage* message, const FieldInfo* field, int depth)
{
    const MessageInfo* subInfo = field->getType().getSubMessageInfo();
    int count = countFor(field, depth);
    // However deep, a message ends; plain fields of tame types do not nest any deeper than there are types.
    if (subInfo && !m_tame && depth >= MaxDepth)
        count = 0;
    m_budget -= count;
    if (subInfo) {
        QList<Message*> messages;
        for (int i = 0; i < count; ++i) {
            const bool other = !m_tame && m_chance->percent(5);
            TestMessage* subMessage = new TestMessage(other ? m_chance->pick(m_infos) : subInfo);
            Q_FOREACH (const FieldInfo* subField, subMessage->getInfo()->getFieldInfos())
                fill(subMessage, subField, depth + 1);
            messages.append(subMessage);
        }
        message->set(field, messages);
        if (!m_tame && count > 0 && m_chance->percent(3))
            message->set(field, FieldValue::invalid());
        return;
    }
    QVector<const FieldInfo*> fields(1, field);
    for (int i = 0; i < fields.size(); ++i) {
        QVector<FieldValue> values;
        for (int j = 0; j < count; ++j)
            values.append(createValue(fields.at(i)));
        message->set(fields.at(i), values);
        fields += fields.at(i)->getSubFieldInfos();
    }
}

FieldValue World::createValue(const FieldInfo* field)
{
    const int number = m_chance->below(1000);
    switch (field->getType().getTypeCode()) {
    case FieldType::CharType:
        return FieldValue::fromChar(static_cast<unsigned char>('a' + number % 26));
    case FieldType::SignedType:
        return FieldValue::fromSigned(number - 500, 4);
    case FieldType::TextType: {
        // Lines of other heights, too.
        const char* const texts[] = {"one", "two\nlines", "", "\xe6\xbc\xa2"};
        return FieldValue::fromText(QString::fromUtf8(texts[number % 4]) + QString::number(number));
    }
    case FieldType::BytesType:
        return FieldValue::fromBytes(QByteArray(number % 9, 'x'));
    default:
        return FieldValue::fromDouble(number / 8.0);
    }
}
