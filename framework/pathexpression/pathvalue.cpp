#include "pathvalue.h"

#include "fieldinfo.h"
#include "message.h"
#include "pathexpression.h"

namespace
{

/** Follows a path into all of its branches. */
class PathValues
{
public:
    explicit PathValues(const FieldPath& path)
        : m_path(path)
    {
    }

    void follow(const FieldWalk& walk, QVector<PathValue>* values)
    {
        switch (walk.getEnd()) {
        case FieldWalk::NoSuchField:
        case FieldWalk::WholeMessage:
            return;
        case FieldWalk::Branches:
            m_branches.append(0);
            for (unsigned int i = 0; i < walk.getCount(); ++i) {
                m_branches.last() = static_cast<int>(i);
                follow(walk.getBranch(i), values);
            }
            m_branches.remove(m_branches.size() - 1);
            break;
        case FieldWalk::AllValues:
            if (walk.getField()->isStringField()) {
                add(FieldPath::NoIndex, FieldValue::fromText(walk.getField()->getStringValue(walk.getHolder())),
                    FieldWalk::OneValue, values);
                return;
            }
            for (unsigned int i = 0; i < walk.getCount(); ++i)
                add(static_cast<int>(i), walk.getValue(i), FieldWalk::OneValue, values);
            break;
        default:
            add(FieldPath::NoIndex, walk.getValue(), walk.getEnd(), values);
            return;
        }
        if (walk.getCount() == 0)
            add(FieldPath::NoIndex, FieldValue(), walk.getEnd(), values);
    }

private:
    void add(int index, const FieldValue& value, FieldWalk::End end, QVector<PathValue>* values) const
    {
        const PathValue found = {pathTo(index), value, end};
        values->append(found);
    }

    /** The path with the numbers of the branches, and of the value unless that is negative. */
    FieldPath pathTo(int index) const
    {
        if (m_branches.isEmpty() && index < 0)
            return m_path;
        const QVector<FieldPath::Step>& steps = m_path.getSteps();
        int numbered = static_cast<int>(steps.size()) - 1;
        // A component has the number of the field that it is a part of.
        while (numbered > 0 && !steps.at(numbered).field->isRepeated() &&
               steps.at(numbered).field->getParentFieldInfo())
            --numbered;
        FieldPath path(m_path.getMessageInfo());
        int branch = 0;
        for (int i = 0; i < steps.size(); ++i) {
            const FieldPath::Step& step = steps.at(i);
            const bool leadsOn =
                i + 1 < steps.size() && step.field->getType().getTypeCode() == FieldType::SubMessageType;
            int number = step.index;
            if (number < 0 && leadsOn && branch < m_branches.size())
                number = m_branches.at(branch++);
            else if (i == numbered && index >= 0)
                number = index;
            path.append(step.field, number);
        }
        return path;
    }

    const FieldPath& m_path;
    QVector<int> m_branches; // that were taken so far
};

} // namespace

QString PathValue::getText() const
{
    return isValid() ? path.getField()->getInterpretedString(value, true) : QString();
}

QVector<PathValue> FieldPath::getValues(const Message* message) const
{
    QVector<PathValue> values;
    PathValues(*this).follow(FieldWalk(*this, message), &values);
    return values;
}

QVector<PathValue> PathExpression::getValues(const Message* message) const
{
    QVector<PathValue> values;
    Q_FOREACH (const FieldPath& path, message ? getMatches(message->getInfo()) : QVector<FieldPath>())
        PathValues(path).follow(FieldWalk(path, message), &values);
    return values;
}
