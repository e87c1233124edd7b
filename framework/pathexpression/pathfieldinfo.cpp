#include "pathfieldinfo.h"

#include "fieldwalk.h"
#include "messageinfo.h"
#include "pathfieldfollower.h"

/** How many values there are at the ends of @p walk. */
static unsigned int countOf(const FieldWalk& walk)
{
    if (walk.getEnd() != FieldWalk::Branches)
        return walk.getCount();
    unsigned int count = 0;
    for (unsigned int i = 0; i < walk.getCount(); ++i)
        count += countOf(walk.getBranch(i));
    return count;
}

/** The value number @p index of these; else @p index is counted down by their number. */
static FieldValue valueAt(const FieldWalk& walk, unsigned int* index)
{
    if (walk.getEnd() == FieldWalk::Branches) {
        for (unsigned int i = 0; i < walk.getCount(); ++i) {
            const FieldValue value = valueAt(walk.getBranch(i), index);
            if (value.isValid())
                return value;
        }
        return FieldValue::invalid();
    }
    if (*index < walk.getCount())
        return walk.getValue(*index);
    *index -= walk.getCount();
    return FieldValue::invalid();
}

/** The text at the first end of @p walk where there is one. */
static QString textAt(const FieldWalk& walk)
{
    if (walk.getEnd() == FieldWalk::AllValues)
        return walk.getField()->getStringValue(walk.getHolder());
    QString text;
    for (unsigned int i = 0; walk.getEnd() == FieldWalk::Branches && text.isEmpty() && i < walk.getCount(); ++i)
        text = textAt(walk.getBranch(i));
    return text;
}

PathFieldInfo::PathFieldInfo(const QString& expression, QObject* owner)
    : FieldInfo(expression, FieldType())
    , m_follower(new PathFieldFollower(this, expression, owner))
{
    m_follower->follow();
}

PathFieldInfo::~PathFieldInfo()
{
    if (m_follower)
        m_follower->leave();
}

const PathExpression* PathFieldInfo::getExpression() const
{
    return &m_follower->getExpression();
}

void PathFieldInfo::setPath(const FieldPath& path)
{
    m_path = path;
    bool hasSeveral = false;
    Q_FOREACH (const FieldPath::Step& step, path.getSteps())
        hasSeveral = hasSeveral || (step.field->isRepeated() && step.number < 0);
    if (const FieldInfo* field = path.getField())
        describeAs(*field);
    setOptional(true);
    setRepeated(hasSeveral);
    setStringField(path.isWholeRepeatedField() && path.getField()->isStringField());
    setOuterMessageInfo(path.getMessageInfo());
}

unsigned int PathFieldInfo::getValueCount(const Message* message) const
{
    return countOf(FieldWalk(m_path, message));
}

FieldValue PathFieldInfo::getValue(const Message* message, unsigned int index) const
{
    return valueAt(FieldWalk(m_path, message), &index);
}

QString PathFieldInfo::getStringValue(const Message* message) const
{
    return textAt(FieldWalk(m_path, message));
}

PathFieldFollower::PathFieldFollower(PathFieldInfo* field, const QString& expression, QObject* owner)
    : QObject(owner)
    , m_field(field)
    , m_need(nullptr)
{
    m_expression.setConsiderSubMessages(true);
    m_expression.setString(expression);
    connect(&m_expression, SIGNAL(matchesMayHaveChanged()), this, SLOT(follow()));
}

PathFieldFollower::~PathFieldFollower()
{
    PathFieldInfo* const field = m_field;
    m_field = nullptr;
    if (!field)
        return;
    field->m_follower = nullptr;
    delete field;
}

void PathFieldFollower::leave()
{
    m_field = nullptr;
    delete this;
}

void PathFieldFollower::follow()
{
    const QVector<FieldPath> matches = m_expression.getMatches();
    const FieldPath path = matches.size() == 1 ? matches.first() : FieldPath();
    m_field->setPath(path);
    m_need.setMessageNeeded(path.getMessageInfo());
}
