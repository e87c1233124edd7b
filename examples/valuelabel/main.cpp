// Shows the yaw angle of whatever vehicle sends MAVLink to UDP port 14550, or to the address given as argument.

#include "fieldvaluelabel.h"
#include "mavlinkdialect.h"
#include "mavlinkstreamdecoder.h"
#include "streamsource.h"

#include <QApplication>

#include <memory>

int main(int argc, char** argv)
{
    const QApplication application(argc, argv);
    InputAddress address;
    QString error;
    if (!InputAddress::parse(application.arguments().value(1, "udp:"), &address, &error))
        return qCritical("%s", qPrintable(error)), 1;
    const std::unique_ptr<MavlinkDialect> dialect(MavlinkDialect::loadBuiltIn());
    StreamSource source(ByteInput::create(address),
                        new MavlinkStreamDecoder(dialect.get(), MavlinkStreamDecoder::RawLayout));
    FieldValueLabel label(dialect->getMessageInfo("ATTITUDE")->getFieldInfo("yaw"), &source, true, 2000);
    label.show();
    source.start();
    return application.exec();
}
