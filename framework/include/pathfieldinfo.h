#ifndef CORVEL_PATHFIELDINFO_H
#define CORVEL_PATHFIELDINFO_H

#include "fieldinfo.h"
#include "fieldpath.h"

class FieldWalk;
class PathExpression;
class PathFieldFollower;
class QObject;

/**
 * A field that stands for what a path expression leads to, as if that stood directly in the message that is received.
 *
 * So what shows a field also shows one of a sub-message, which a FieldInfo alone does not tell from the same field of
 * another sub-message of that type:
 *
 * @code
 * FieldValueLabel* latitude = new FieldValueLabel(0, source, true, 2000);
 * latitude->setFieldInfo(new PathFieldInfo("plant/PUMP/position/lat", latitude));
 * @endcode
 *
 * It may be made before the type is known, and goes on when that is gone and comes back: it follows the formats in the
 * FormatRegistry. While the expression matches one field of one type, it occurs in that type and is described as that
 * field is, with unit, enumerators and the like; else it occurs nowhere. It states the need of the type itself, and
 * getMessageInfos() names none.
 *
 * Through a repeated sub-message without a number, its values are those of all of them, one after the other. What is
 * absent, out of range or hidden has no value. GUI thread only.
 */
class CORVELFRAMEWORK_EXPORT PathFieldInfo : public FieldInfo
{
public:
    /**
     * @param expression  the path, also through sub-messages; it is the name as well
     * @param owner       what this is deleted with, such as the label that shows it; null leaves that to the caller
     */
    explicit PathFieldInfo(const QString& expression, QObject* owner = 0);
    virtual ~PathFieldInfo();

    /** What it leads to; null while the expression names nothing, or several things, that are known. */
    const FieldPath& getPath() const { return m_path; }
    /** The expression: says what is wrong with it, and what it matches. */
    const PathExpression* getExpression() const;

    unsigned int getValueCount(const Message* message) const override;
    FieldValue getValue(const Message* message, unsigned int index) const override;
    QString getStringValue(const Message* message) const override;

private:
    friend class PathFieldFollower;

    void setPath(const FieldPath& path);

    FieldPath m_path;
    PathFieldFollower* m_follower;
};

#endif
