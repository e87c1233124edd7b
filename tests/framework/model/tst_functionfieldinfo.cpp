#include "formatinfo.h"
#include "functionfieldinfo.h"
#include "messageinfo.h"
#include "testbase.h"
#include "textrows.h"

namespace
{

int s_wheels = 0;

struct Wheel
{
    explicit Wheel(double revolutions = 0)
        : rpm(revolutions)
    {
        ++s_wheels;
    }
    Wheel(const Wheel& other)
        : rpm(other.rpm)
    {
        ++s_wheels;
    }
    Wheel& operator=(const Wheel& other) = default;
    ~Wheel() { --s_wheels; }

    double rpm;
};

enum Gear
{
    Neutral,
    Forward
};

struct Cart
{
    Cart()
        : load(-3)
        , mode(Forward)
        , locked(true)
        , weight(1.5f)
        , fuel(0)
    {
    }

    qint16 load;
    Gear mode;
    bool locked;
    float weight;
    quint64 fuel;
    QString driver;
    QByteArray badge;
    QVector<quint8> seats;
    Wheel spare;
    QVector<Wheel> wheels;
};

/** The types of a cart and its wheels, and a cart. */
struct Yard
{
    Yard()
        : format(text("yard"))
        , wheel(new MessageInfo(text("WHEEL"), false))
        , type(new MessageInfo(text("CART")))
    {
        format.addMessageInfo(wheel);
        format.addMessageInfo(type);
        wheel->addField(FunctionFieldInfo::ofMember(text("rpm"), &Wheel::rpm));
        add("load", &Cart::load);
        add("mode", &Cart::mode)
            ->setEnumerators(QVector<FieldInfo::Enumerator>() << FieldInfo::Enumerator(1, text("FORWARD")), false);
        add("locked", &Cart::locked);
        add("weight", &Cart::weight)->setUnit(text("t"));
        add("fuel", &Cart::fuel)->setOptional([](const Message* message) {
            return RecordMessage<Cart>::of(message)->fuel > 0;
        });
        add("driver", &Cart::driver);
        add("badge", &Cart::badge);
        add("seats", &Cart::seats);
        type->addField(FunctionFieldInfo::ofMember(text("spare"), &Cart::spare, wheel));
        type->addField(FunctionFieldInfo::ofMember(text("wheels"), &Cart::wheels, wheel));
        cart.driver = text("Ada");
        cart.badge = "\x01\xFF";
        cart.seats << 7 << 8;
        cart.spare = Wheel(2.5);
        cart.wheels << Wheel(10) << Wheel(20);
    }

    template <class Member>
    FunctionFieldInfo* add(const char* name, Member member)
    {
        FunctionFieldInfo* field = FunctionFieldInfo::ofMember(text(name), member);
        type->addField(field);
        return field;
    }

    FormatInfo format;
    MessageInfo* wheel;
    MessageInfo* type;
    Cart cart;
};

/** "qint16 -3", "uint8 7, 8"; values of sub-messages in brackets. */
QString told(const Message* message, const FieldInfo* field)
{
    QStringList values;
    for (unsigned int i = 0; i < field->getValueCount(message); ++i) {
        const FieldValue value = field->getValue(message, i);
        const Message* sub = value.getSubMessage();
        values << (sub ? QLatin1Char('[') + told(sub, sub->getInfo()->getFieldInfos().first()) + QLatin1Char(']')
                       : field->getInterpretedString(value, true));
    }
    return field->getType().toShortString() + QLatin1Char(' ') + values.join(text(", "));
}

} // namespace

/** Messages that are made of structures, by fields that are made of their members. */
class tst_FunctionFieldInfo : public TestBase
{
    Q_OBJECT

private Q_SLOTS:
    void membersBecomeFields()
    {
        static const TextRow rows[] = {
            {"load", "int16 -3"},
            {"mode", "uint32 FORWARD (1)"},
            {"locked", "bool true"},
            {"weight", "float32 1.5 t"},
            {"fuel", "uint64 "},
            {"driver", "string Ada"},
            {"badge", "bytes 01ff (2 bytes)"},
            {"seats", "uint8 7, 8"},
            {"spare", "WHEEL [float64 2.5]"},
            {"wheels", "WHEEL [float64 10], [float64 20]"},
        };
        Yard yard;
        const MessageReference message = MessageReference::adopt(new RecordMessage<Cart>(yard.type, yard.cart));
        checkRows(rows, [&](const QString& name) { return told(message.get(), yard.type->getFieldInfo(name)); });
        QVERIFY(yard.type->getFieldInfo(text("fuel"))->isOptional());
        QVERIFY(yard.type->getFieldInfo(text("seats"))->isRepeated());
        QVERIFY(!yard.type->getFieldInfo(text("spare"))->isRepeated());
        QVERIFY(yard.type->getFieldInfo(text("wheels"))->isRepeated());
        QVERIFY(!yard.type->getFieldInfo(text("seats"))->getValue(message.get(), 2).isValid());
    }

    void subMessagesLiveAsLongAsTheirMessage()
    {
        Yard yard;
        const int wheels = s_wheels;
        const FieldInfo* const field = yard.type->getFieldInfo(text("wheels"));
        {
            const MessageReference message = MessageReference::adopt(new RecordMessage<Cart>(yard.type, yard.cart));
            const Message* const second = field->getValue(message.get(), 1).getSubMessage();
            const int made = s_wheels;
            QCOMPARE(field->getValue(message.get(), 1).getSubMessage(), second);
            QCOMPARE(s_wheels, made);
            QVERIFY(field->getValue(message.get(), 0).getSubMessage() != second);
        }
        QCOMPARE(s_wheels, wheels);
    }

    void otherMessagesHaveNoValues()
    {
        Yard yard;
        const MessageReference bytes = MessageReference::adopt(new Message(yard.type, "abc"));
        const FieldInfo* const load = yard.type->getFieldInfo(text("load"));
        QVERIFY(!load->getValue(bytes.get(), 0).isValid());
        QCOMPARE(yard.type->getFieldInfo(text("wheels"))->getValueCount(bytes.get()), 0U);
        QVERIFY(!yard.type->getFieldInfo(text("spare"))->getValue(bytes.get(), 0).isValid());
        const MessageReference wheel = MessageReference::adopt(new RecordMessage<Wheel>(yard.wheel, Wheel(1)));
        QCOMPARE(load->getValueCount(wheel.get()), 0U);
    }
};

QTEST_MAIN(tst_FunctionFieldInfo)
#include "tst_functionfieldinfo.moc"
