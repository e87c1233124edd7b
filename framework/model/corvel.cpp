#include "corvel.h"

static bool s_confidentialInformationDisplayEnabled = false;

bool Corvel::confidentialInformationDisplayEnabled()
{
    return s_confidentialInformationDisplayEnabled;
}

void Corvel::setConfidentialInformationDisplayEnabled(bool enabled)
{
    s_confidentialInformationDisplayEnabled = enabled;
}
