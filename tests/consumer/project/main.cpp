// A format of its own, shown by a value label.

#include "corvelversion.h"
#include "fieldinfo.h"
#include "fieldvaluelabel.h"
#include "message.h"
#include "messageinfo.h"
#include "messagereference.h"
#include "messagesource.h"

#include "messagetreewidget.h"
#include "translations.h"

#include <QApplication>

#include <cstdio>

class SizeFieldInfo : public FieldInfo
{
public:
    SizeFieldInfo()
        : FieldInfo("size", FieldType(FieldType::UnsignedType, 0, "bytes"))
    {
        setUnit("m/s");
    }

    unsigned int getValueCount(const Message*) const override { return 1; }
    FieldValue getValue(const Message* message, unsigned int) const override
    {
        return FieldValue::fromUnsigned(static_cast<quint64>(message->getData().size()));
    }
};

int main(int argc, char** argv)
{
    const QApplication application(argc, argv);
    MessageInfo info("SPEED");
    info.addField(new SizeFieldInfo);
    MessageSource source;
    FieldValueLabel label(info.getFieldInfo("size"), &source);
    const QString before = label.text();
    const MessageReference message = MessageReference::adopt(new Message(&info, QByteArray(42, 'x')));
    source.deliver(message.get());
    std::printf("%s: %s, %s\n", CORVEL_VERSION_STR, qPrintable(before), qPrintable(label.text()));
    Translations::install(QLocale("de"));
    std::printf("%s\n", qPrintable(MessageTreeWidget(nullptr).headerItem()->text(1)));
    return CORVEL_VERSION == CORVEL_VERSION_CHECK(15, 0, 0) ? 0 : 1;
}
