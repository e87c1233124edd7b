#include "outputkind.h"

#include "foxgloveoutput.h"
#include "mcapoutput.h"
#include "mqttoutput.h"
#include "natsoutput.h"
#include "streamdecoder.h"
#include "tlogoutput.h"
#include "udpoutput.h"

#include <QCoreApplication>

// The table of outputs: to add one, add its row here.
const QVector<const OutputKind*>& OutputKind::getAll()
{
    static const QVector<const OutputKind*> all{&TlogOutputKind, &McapOutputKind,  &UdpOutputKind, &FoxgloveOutputKind,
                                                &MqttOutputKind, &MqttsOutputKind, &NatsOutputKind};
    return all;
}

const OutputKind& OutputKind::findFor(const StreamDecoder* decoder)
{
    const QLatin1String name(decoder->getRecordingName());
    for (const OutputKind* kind : getAll())
        if (kind->isFile() && QLatin1String(kind->name) == name)
            return *kind;
    return McapOutputKind;
}

QStringList OutputKind::getParameters() const
{
    const QString names = QString::fromLatin1(parameters);
    return names.isEmpty() ? QStringList() : names.split(QLatin1Char(' '));
}

QString OutputKind::getTitle() const
{
    return QCoreApplication::translate("OutputKind", title);
}

QString OutputKind::getFileFilter() const
{
    return QStringLiteral("%1 (*.%2)").arg(getTitle(), QLatin1String(fileEnding));
}
