#include "exampleprobe.h"

#include "fieldvaluelabel.h"

#include <QRegularExpression>

static bool showsAngle(const FieldValueLabel& label, QString* seen)
{
    *seen = label.text();
    return QRegularExpression(QStringLiteral("^-?\\d+\\.\\d+\\s?rad$")).match(*seen).hasMatch();
}

static void probe()
{
    probeExample<FieldValueLabel>(showsAngle);
}
Q_COREAPP_STARTUP_FUNCTION(probe)
