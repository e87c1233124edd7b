#include "inputkind.h"

#include "fileinput.h"
#include "foxgloveinput.h"
#include "mqttinput.h"
#include "natskinds.h"
#include "serialinput.h"
#include "tcpinput.h"
#include "udpinput.h"

#include <QCoreApplication>

// The table of inputs: to add one, add its row here.
const QVector<const InputKind*>& InputKind::getAll()
{
    static const QVector<const InputKind*> all{&UdpInputKind,  &TcpInputKind,     &SerialInputKind, &FoxgloveInputKind,
                                               &MqttInputKind, &MqttsInputKind,   &NatsInputKind,   &JetStreamInputKind,
                                               &FileInputKind, &StandardInputKind};
    return all;
}

QString InputKind::getTitle() const
{
    return QCoreApplication::translate("InputKind", title);
}

QVector<InputField> InputKind::getFields() const
{
    QVector<InputField> all;
    for (const InputField* field = fields; field->name; ++field)
        all.append(*field);
    return all;
}

bool InputKind::hasField(const QString& name) const
{
    for (const InputField* field = fields; field->name; ++field)
        if (name == QLatin1String(field->name))
            return true;
    return false;
}

QString InputField::getLabel() const
{
    return QCoreApplication::translate("InputKind", label);
}

QString InputField::getToolTip() const
{
    return *toolTip ? QCoreApplication::translate("InputKind", toolTip) : QString();
}

QVector<InputField::Choice> InputField::getChoices() const
{
    return choices ? choices() : QVector<Choice>();
}

bool InputField::isParameter() const
{
    const QLatin1String text(name);
    return text != QLatin1String("path") && text != QLatin1String("host") && text != QLatin1String("port") &&
           text != QLatin1String("servers") && text != QLatin1String("user") && text != QLatin1String("password");
}
