#include "corvel.h"

#include "fieldinfo.h"

#include <QtGlobal>

static bool s_confidentialInformationDisplayEnabled = false;
static int s_floatingPointDecimals = -1;

bool Corvel::confidentialInformationDisplayEnabled()
{
    return s_confidentialInformationDisplayEnabled;
}

void Corvel::setConfidentialInformationDisplayEnabled(bool enabled)
{
    s_confidentialInformationDisplayEnabled = enabled;
}

bool Corvel::isHidden(const FieldInfo* field)
{
    if (s_confidentialInformationDisplayEnabled)
        return false;
    while (field && !field->isConfidential())
        field = field->getParentFieldInfo();
    return field;
}

int Corvel::floatingPointDecimals()
{
    return s_floatingPointDecimals;
}

void Corvel::setFloatingPointDecimals(int decimals)
{
    s_floatingPointDecimals = decimals < 0 ? -1 : qMin(decimals, 17);
}
