#include "corvel.h"
#include "messageneed.h"
#include "pathexpression.h"

bool Corvel::showConfidential = false;
QMap<const MessageNeed*, QVector<const MessageInfo*>> MessageNeed::needs;
const PathExpression::Parts PathExpression::AllParts = PathExpression::Parts(7);
