// An application's own messages, described in C++: no file of definitions. A made-up oven sends its state ten times a
// second, as bytes.

#include "formatinfo.h"
#include "functionfieldinfo.h"
#include "messageinfo.h"
#include "messagesource.h"
#include "messagetreewidget.h"
#include "messagetreewidgetitem.h"

#include <QApplication>
#include <QDataStream>
#include <QIODevice>
#include <QTimer>

/** Air moves through the oven. */
struct Fan
{
    quint16 rpm;
    bool isReversed;
};

/** What the oven reports. */
struct OvenState
{
    enum Mode : quint8
    {
        Off,
        Heating,
        Holding
    };

    qint16 decidegrees;
    Mode mode;
    quint16 secondsLeft;     // while it holds the temperature
    QVector<quint8> shelves; // in per cent of what they bear
    QVector<Fan> fans;
};

static MessageInfo* describeFan()
{
    MessageInfo* const info = new MessageInfo("FAN", false); // comes as a part of others only
    FunctionFieldInfo* const speed = FunctionFieldInfo::ofMember("speed", &Fan::rpm);
    speed->setUnit("rpm");
    info->addField(speed);
    info->addField(FunctionFieldInfo::ofMember("reversed", &Fan::isReversed));
    return info;
}

static MessageInfo* describeOvenState(const MessageInfo* fanInfo)
{
    FunctionFieldInfo* const temperature = FunctionFieldInfo::ofMember("temperature", &OvenState::decidegrees);
    temperature->setDescription("In the middle of the oven");
    temperature->setScale(0.1, 1);
    temperature->setUnit("\u00B0C");

    FunctionFieldInfo* const mode = FunctionFieldInfo::ofMember("mode", &OvenState::mode);
    mode->setEnumerators({{OvenState::Off, "OFF"}, {OvenState::Heating, "HEATING"}, {OvenState::Holding, "HOLDING"}},
                         false);

    FunctionFieldInfo* const left = FunctionFieldInfo::ofMember("time_left", &OvenState::secondsLeft);
    left->setUnit("s");
    left->setOptional([](const Message* message) {
        return RecordMessage<OvenState>::of(message)->mode == OvenState::Holding; // nobody can know before
    });

    FunctionFieldInfo* const shelves = FunctionFieldInfo::ofMember("shelves", &OvenState::shelves);
    shelves->setUnit("%");

    // Any function will do; this one computes what no oven reports.
    FunctionFieldInfo* const total =
        new FunctionFieldInfo("total", FieldTypeOf<int>::type(), [](const Message* message, unsigned int) {
            int sum = 0;
            for (const quint8 load : RecordMessage<OvenState>::of(message)->shelves)
                sum += load;
            return FieldTypeOf<int>::value(sum);
        });
    total->setUnit("%");
    total->setVirtual(true);

    MessageInfo* const info = new MessageInfo("OVEN_STATE");
    info->setShortDescriptiveText("What the oven does just now");
    for (FieldInfo* field :
         {temperature, mode, left, shelves, FunctionFieldInfo::ofMember("fans", &OvenState::fans, fanInfo), total})
        info->addField(field);
    return info;
}

/** What stands in the bytes of a fan. */
static QDataStream& operator>>(QDataStream& bytes, Fan& fan)
{
    return bytes >> fan.rpm >> fan.isReversed;
}

/** What the oven's bytes say; false where they end too early. */
static bool readState(const QByteArray& bytes, OvenState* state)
{
    QDataStream stream(bytes);
    quint8 mode = OvenState::Off;
    stream >> state->decidegrees >> mode >> state->secondsLeft >> state->shelves >> state->fans;
    state->mode = OvenState::Mode(mode);
    return stream.status() == QDataStream::Ok;
}

/** Heats up to 200 degrees and then keeps them for a minute. @return the state number @p n as it comes over the wire */
static QByteArray sendState(int n)
{
    const bool heating = n < 180;
    QByteArray bytes;
    QDataStream stream(&bytes, QIODevice::WriteOnly);
    stream << qint16(heating ? 200 + 10 * n : 2000 + n % 7);
    stream << quint8(heating ? OvenState::Heating : OvenState::Holding);
    stream << quint16(qBound(0, 60 - (n - 180) / 10, 60));
    stream << QVector<quint8>{40, 0, 15};
    stream << quint32(2) << quint16(1450 + n % 20) << false << quint16(1390) << true; // fans
    return bytes;
}

/** Makes a message of each state that the oven sends. */
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

public Q_SLOTS:
    void report()
    {
        OvenState state{};
        if (!readState(sendState(++m_reports), &state))
            return qWarning("The oven sent too little");
        // The creator has the first reference; whoever shows the message takes one.
        deliver(MessageReference::adopt(new RecordMessage<OvenState>(m_stateInfo, state)).get());
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
    MessageInfo* const fanInfo = describeFan();
    MessageInfo* const stateInfo = describeOvenState(fanInfo);
    kitchen.addMessageInfo(fanInfo);
    kitchen.addMessageInfo(stateInfo);

    Oven oven(stateInfo);
    MessageTreeWidget tree;
    tree.addTopLevelItem(new MessageTreeWidgetItem(&tree, stateInfo));
    tree.reconfigureTopLevelAbstractMessageTreeWidgetItems();
    QObject::connect(&oven, SIGNAL(newMessage(const Message*)), &tree, SLOT(processMessage(const Message*)));
    oven.report(); // with a message there is all that can be unfolded, and that columns have to be as wide as
    tree.expandAll();
    tree.resizeColumns();
    tree.resize(600, 400);
    tree.show();
    return application.exec();
}

#include "main.moc"
