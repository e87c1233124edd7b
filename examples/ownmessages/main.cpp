// An application's own messages, described in C++: no file format and no decoder. A made-up oven reports its state ten
// times a second.

#include "fieldinfo.h"
#include "formatinfo.h"
#include "message.h"
#include "messageinfo.h"
#include "messagereference.h"
#include "messagesource.h"
#include "messagetreewidget.h"
#include "messagetreewidgetitem.h"

#include <QApplication>
#include <QTimer>

#include <cstring>

/** What the oven reports, as it lies in the bytes of a message. */
struct OvenState
{
    qint16 decidegrees;
    quint16 secondsLeft;
    quint8 mode;
};

/** Describes one member of OvenState. */
template <typename Number>
class OvenFieldInfo : public FieldInfo
{
public:
    OvenFieldInfo(const QString& name, const FieldType& type, Number OvenState::*member)
        : FieldInfo(name, type)
        , m_member(member)
    {
    }

    unsigned int getValueCount(const Message* message) const override { return occursIn(message->getInfo()) ? 1 : 0; }

    FieldValue getValue(const Message* message, unsigned int index) const override
    {
        if (index >= getValueCount(message))
            return FieldValue::invalid();
        OvenState state;
        std::memcpy(&state, message->getData().constData(), sizeof state);
        const Number number = state.*m_member;
        return std::is_signed<Number>::value ? FieldValue::fromSigned(number, sizeof number)
                                             : FieldValue::fromUnsigned(number, sizeof number);
    }

private:
    Number OvenState::*m_member;
};

static MessageInfo* describeOvenState()
{
    FieldInfo* const temperature =
        new OvenFieldInfo<qint16>("temperature", FieldType(FieldType::SignedType, 2, "int16"), &OvenState::decidegrees);
    temperature->setDescription("In the middle of the oven");
    temperature->setScale(0.1, 1);
    temperature->setUnit("\u00B0C");

    FieldInfo* const left = new OvenFieldInfo<quint16>("time_left", FieldType(FieldType::UnsignedType, 2, "uint16"),
                                                       &OvenState::secondsLeft);
    left->setUnit("s");
    left->setInvalidValue(FieldValue::fromUnsigned(0xFFFF, 2));

    FieldInfo* const mode =
        new OvenFieldInfo<quint8>("mode", FieldType(FieldType::UnsignedType, 1, "uint8"), &OvenState::mode);
    mode->setEnumerators({{0, "OFF"}, {1, "HEATING"}, {2, "HOLDING"}}, false);

    MessageInfo* const info = new MessageInfo("OVEN_STATE");
    info->setShortDescriptiveText("What the oven does just now");
    for (FieldInfo* field : {temperature, left, mode})
        info->addField(field);
    return info;
}

/** The oven: heats up to 200 degrees and then keeps them for a minute. */
class Oven : public MessageSource
{
    Q_OBJECT

public:
    explicit Oven(const MessageInfo* stateInfo)
        : m_stateInfo(stateInfo)
    {
        connect(&m_timer, SIGNAL(timeout()), this, SLOT(report()));
        m_timer.start(100);
    }

private Q_SLOTS:
    void report()
    {
        ++m_reports;
        const bool heating = m_reports < 180;
        OvenState state{};
        state.decidegrees = static_cast<qint16>(heating ? 200 + 10 * m_reports : 2000 + m_reports % 7);
        // While it heats, nobody can know; a minute is counted from then on.
        state.secondsLeft = heating ? 0xFFFF : static_cast<quint16>(qMax(0, 60 - (m_reports - 180) / 10));
        state.mode = heating ? 1 : 2;
        const QByteArray bytes(reinterpret_cast<const char*>(&state), sizeof state);
        // The creator has the first reference; whoever shows the message takes one.
        const MessageReference message = MessageReference::adopt(m_stateInfo->newMessage(bytes));
        deliver(message.get());
    }

private:
    const MessageInfo* m_stateInfo;
    QTimer m_timer;
    int m_reports = 0;
};

int main(int argc, char** argv)
{
    const QApplication application(argc, argv);
    FormatInfo kitchen("kitchen"); // owns the descriptions, and outlives all that shows them
    MessageInfo* const stateInfo = describeOvenState();
    kitchen.addMessageInfo(stateInfo);

    Oven oven(stateInfo);
    MessageTreeWidget tree;
    MessageTreeWidgetItem* const row = new MessageTreeWidgetItem(&tree, stateInfo);
    tree.addTopLevelItem(row);
    row->setExpanded(true);
    QObject::connect(&oven, SIGNAL(newMessage(const Message*)), &tree, SLOT(processMessage(const Message*)));
    tree.resize(600, 200);
    tree.show();
    return application.exec();
}

#include "main.moc"
