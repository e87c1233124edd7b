// A field by its path, without a window.

#include "fieldinfo.h"
#include "formatregistry.h"
#include "mavlinkdialect.h"
#include "pathexpression.h"

#include <cstdio>
#include <memory>

int main()
{
    const std::unique_ptr<MavlinkDialect> dialect(MavlinkDialect::loadBuiltIn());
    FormatRegistry::getInstance()->addFormat(dialect.get());
    PathExpression expression;
    expression.setString("corvel/ATTITUDE/roll");
    for (const FieldInfo* field : expression.getMatchingFieldInfos())
        std::printf("%s in %s\n", qPrintable(field->getName()), qPrintable(field->getUnit()));
    return 0;
}
