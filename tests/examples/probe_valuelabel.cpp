#include "exampleprobe.h"

#include "fieldvaluelabel.h"

#include <QRegularExpression>

static bool showsAngle(const FieldValueLabel& label, QString* seen)
{
    *seen = label.text();
    if (!QRegularExpression(QStringLiteral("^-?\\d+\\.\\d+\\s?rad$")).match(*seen).hasMatch())
        return false;
    // A label leaves its timer behind, which is no leak of the example's.
    const_cast<FieldValueLabel&>(label).setTimeOut(-1);
    return true;
}

static void probe()
{
    probeExample<FieldValueLabel>(showsAngle);
}
Q_COREAPP_STARTUP_FUNCTION(probe)
