#ifndef PATHFIELDFOLLOWER_H
#define PATHFIELDFOLLOWER_H

#include "messageneed.h"
#include "pathexpression.h"

class PathFieldInfo;

/** Keeps a PathFieldInfo up to date with what is known, and takes it along when it goes. */
class PathFieldFollower : public QObject
{
    Q_OBJECT

public:
    PathFieldFollower(PathFieldInfo* field, const QString& expression, QObject* owner);
    ~PathFieldFollower() override;

    /** Goes without the field, which is going itself. */
    void leave();

    const PathExpression& getExpression() const { return m_expression; }

public Q_SLOTS:
    void follow();

private:
    PathFieldInfo* m_field; // null when it has gone
    PathExpression m_expression;
    MessageNeed m_need;
};

#endif
