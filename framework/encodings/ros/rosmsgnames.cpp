#include "rosmsgparser.h"

#include <QCoreApplication>

using namespace Ros;

namespace
{

QString lastPart(const QString& name)
{
    return name.section(QLatin1Char('/'), -1);
}

} // namespace

QString RosMsgParser::keyOf(const QString& name)
{
    const QStringList parts = name.split(QLatin1Char('/'));
    return parts.constFirst() + QLatin1Char('/') + parts.constLast();
}

bool RosMsgParser::resolve()
{
    // Types that are looked up on the way bring no members that are not known.
    for (std::size_t i = 0; i < m_schema->structs.size(); ++i) {
        Struct& structure = m_schema->structs[i];
        for (Member& member : structure.members) {
            const Type* type = member.type->element ? member.type->element : member.type;
            m_number = member.place.line;
            m_at = member.place.column - 1;
            // It was made here and belongs to this schema.
            if (type->kind == Kind::Struct && !type->structure && !resolve(const_cast<Type*>(type), structure.name))
                return false;
            member.unit = member.unit.isEmpty() ? unitIn(member.description) : member.unit;
            member.description = paragraphs(member.description.split(QLatin1Char('\n')));
        }
        for (Constant& constant : structure.constants)
            constant.description = paragraphs(constant.description.split(QLatin1Char('\n')));
    }
    return true;
}

bool RosMsgParser::resolve(Type* type, const QString& holder)
{
    type->structure = find(type->name, holder);
    return type->structure ||
           fail(QCoreApplication::translate("RosSchema", "the type %1 is not defined").arg(type->name));
}

Struct* RosMsgParser::find(const QString& name, const QString& holder)
{
    const bool isBare = !name.contains(QLatin1Char('/'));
    const QString package = holder.section(QLatin1Char('/'), 0, 0);
    QString key = isBare ? package + QLatin1Char('/') + name : keyOf(name);
    if (m_dialect == Ros1 && name == QLatin1String("Header"))
        key = QStringLiteral("std_msgs/Header");
    Struct* found = m_byKey.value(key);
    if (!found)
        found = builtIn(isBare ? name : key);
    if (found || !isBare)
        return found;
    for (auto other = m_byKey.constBegin(); other != m_byKey.constEnd(); ++other) {
        if (lastPart(other.key()) != name)
            continue;
        if (found)
            return nullptr;
        found = *other;
    }
    return found;
}

/** A time or a duration, which schemas can leave out. */
Struct* RosMsgParser::builtIn(const QString& key)
{
    const QString last = lastPart(key).toLower();
    const bool isTime = last == QLatin1String("time");
    if (!isTime && last != QLatin1String("duration"))
        return nullptr;
    const bool isWord = key == last; // the words "time" and "duration"
    if (!isWord && (m_dialect == Ros1 || !key.startsWith(QLatin1String("builtin_interfaces/"))))
        return nullptr;
    const Struct::Meaning meaning = isTime ? Struct::Time : Struct::Duration;
    const QString type = QLatin1String(isTime ? "Time" : "Duration");
    Struct*& known = m_byKey[m_dialect == Ros1 ? last : QStringLiteral("builtin_interfaces/") + type];
    const Kind ros1 = isTime ? Kind::UInt32 : Kind::Int32;
    if (!known && m_dialect == Ros1)
        known = m_schema->addTime(last, meaning, ros1, ros1, true);
    else if (!known)
        known = m_schema->addTime(QStringLiteral("builtin_interfaces/msg/") + type, meaning, Kind::Int32, Kind::UInt32,
                                  false);
    return known;
}

/** The type of the messages that tell of a service's calls; it is nowhere written down. */
void RosMsgParser::addServiceEvent(const QString& key)
{
    static const QString suffix = QStringLiteral("_Event");
    const QString base = key.endsWith(suffix) ? key.left(key.size() - suffix.size()) : QString();
    if (!m_byKey.contains(base + QStringLiteral("_Request")) || !m_byKey.contains(base + QStringLiteral("_Response")))
        return;
    begin(m_name.contains(QLatin1Char('/')) ? m_byKey.value(base + QStringLiteral("_Request"))->name : key);
    m_struct->name.replace(QStringLiteral("_Request"), suffix);
    const QString request = lastPart(base) + QStringLiteral("_Request[<=1] request");
    const QString response = lastPart(base) + QStringLiteral("_Response[<=1] response");
    for (const QString& line : {QStringLiteral("service_msgs/ServiceEventInfo info"), request, response})
        readLine(line);
    m_byKey.insert(key, m_struct);
}
