#include "rosopening.h"

#include "roscheck.h"

#include <QCoreApplication>
#include <QtGlobal>

#include <algorithm>

namespace
{

// By number of the layout: ROS 1, XCDR1, and what is met of XCDR2.
const Ros::Rules rules[RosTypes::LayoutCount] = {
    {1, Ros::Rules::NoHeaders, false, false},     {8, Ros::Rules::OfMembers, false, true},
    {4, Ros::Rules::OfEnumerations, false, true}, {4, Ros::Rules::OfCollections, false, true},
    {4, Ros::Rules::OfStructs, false, true},      {4, Ros::Rules::NoHeaders, false, true},
    {4, Ros::Rules::OfEnumerations, true, true},  {4, Ros::Rules::OfCollections, true, true},
    {4, Ros::Rules::OfStructs, true, true},
};

// In the order in which they are tried: what the standard says first.
const int ros1[] = {0};
const int xcdr1[] = {RosTypes::Xcdr1Layout};
const int plainXcdr2[] = {2, 3, 4, 5};
const int delimitedXcdr2[] = {6, 7, 8, 2, 3, 4};

const int HeadSize = 4;
const quint32 MostPadding = 3;

bool isWide(const Ros::Type& type)
{
    return type.kind == Ros::Kind::WideString;
}

} // namespace

RosTypes::RosTypes(std::unique_ptr<Ros::Schema> schema, bool isRos1)
    : m_schema(std::move(schema))
    , m_isRos1(isRos1)
    , m_hasWideText(std::any_of(m_schema->types.begin(), m_schema->types.end(), isWide))
{
}

const Ros::Layout& RosTypes::makeLayout(int number) const
{
    const std::lock_guard<std::mutex> lock(m_mutex);
    if (!m_owned[number])
        m_owned[number] = std::make_unique<const Ros::Layout>(*m_schema, rules[number]);
    m_layouts[number].store(m_owned[number].get(), std::memory_order_release);
    return *m_owned[number];
}

RosOpening::RosOpening(const RosTypes& types, const Ros::Struct* structure, const QByteArray& data)
    : plan(nullptr)
    , start{static_cast<quint32>(qMin<qint64>(data.size(), Ros::Endless - 1)), 0, 0}
    , m_whole(start)
    , m_isPlain(true)
    , m_problem(NoProblem)
    , m_id(0)
{
    const bool isBigMachine = Q_BYTE_ORDER == Q_BIG_ENDIAN;
    if (types.isRos1()) {
        tryAll(types, structure, data, isBigMachine, ros1, 1);
        return;
    }
    const int id = data.size() < HeadSize ? -1 : static_cast<quint8>(data.at(0)) << 8 | static_cast<quint8>(data.at(1));
    const bool isSwapped = (id & 1) == int(isBigMachine);
    m_whole.at = m_whole.origin = HeadSize;
    switch (id & ~1) {
    case 0x00:
    case 0x02:
        tryAll(types, structure, data, isSwapped, xcdr1, 1);
        return;
    case 0x06:
    case 0x10:
        tryAll(types, structure, data, isSwapped, plainXcdr2, 4);
        return;
    case 0x08:
    case 0x0a:
    case 0x12:
    case 0x14:
        m_isPlain = false;
        tryAll(types, structure, data, isSwapped, delimitedXcdr2, 6);
        return;
    default:
        m_problem = id < 0 ? TooShort : UnknownWay;
        m_id = id;
        m_whole = start = Ros::Place{0, 0, 0};
        tryAll(types, structure, QByteArray(), false, xcdr1, 1);
    }
}

void RosOpening::tryAll(const RosTypes& types, const Ros::Struct* structure, const QByteArray& data, bool isSwapped,
                        const int* numbers, int count)
{
    const int wideCount = types.hasWideText() ? 3 : 1;
    const bool isClear = count * wideCount == 1;
    const auto use = [&](int way) {
        const Ros::Layout& layout = types.getLayout(numbers[way / wideCount]);
        wire = Ros::Wire(data.constData(), isSwapped, &layout.getRules(), static_cast<Ros::WideText>(way % wideCount));
        plan = layout.planOf(structure);
        start = m_whole;
        if (!m_isPlain)
            wire.enter(*plan, &start);
    };
    // Senders of other versions are rarer than senders that write in another way.
    for (const bool isStrict : {true, false}) {
        for (int way = 0; way < count * wideCount && !isClear; ++way) {
            use(way);
            RosCheck check(wire);
            if (check.readsTo(*plan, m_whole, m_isPlain) && check.getLeft() <= MostPadding &&
                (check.isExact() || !isStrict))
                return;
        }
    }
    use(0);
    if (types.hasWideText() && m_problem == NoProblem && data.size() > HeadSize)
        m_problem = Undecided;
}

QStringList RosOpening::findProblems() const
{
    if (m_problem == TooShort)
        return {QCoreApplication::translate("RosMessage", "shorter than the 4 bytes that say how it is written")};
    if (m_problem == UnknownWay)
        return {QCoreApplication::translate("RosMessage", "written in a way that is not known: %1 %2")
                    .arg(m_id >> 8, 2, 16, QLatin1Char('0'))
                    .arg(m_id & 0xff, 2, 16, QLatin1Char('0'))};
    QStringList problems;
    if (m_problem == Undecided)
        problems.append(QCoreApplication::translate("RosMessage",
                                                    "nobody can tell how its wide texts are written; they are shown as "
                                                    "if in units of 16 bits"));
    RosCheck check(wire);
    const bool isWhole = check.readsTo(*plan, m_whole, m_isPlain);
    problems += check.getProblems();
    // A message without members may lack the byte that stands for them.
    if (plan->structure->members.empty() && m_whole.getLeft() == 0)
        return QStringList();
    if (isWhole && check.getLeft() > MostPadding)
        problems.append(
            QCoreApplication::translate("RosMessage", "%1 bytes are left over at its end").arg(check.getLeft()));
    return problems;
}
