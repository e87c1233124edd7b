#include "corvel.h"
#include "formatinfo.h"
#include "messageinfo.h"
#include "testbase.h"
#include "testformat.h"
#include "textrows.h"

#include <QThread>

static int s_alive = 0;

namespace
{

template <typename Base>
class Counted : public Base
{
public:
    template <typename Argument>
    explicit Counted(const Argument& argument)
        : Base(argument)
    {
        ++s_alive;
    }
    ~Counted() override { --s_alive; }
};

typedef Counted<TestFieldInfo> CountedField;
typedef Counted<MessageInfo> CountedInfo;
typedef Counted<TestMessage> CountedMessage;

class Holder : public QThread
{
public:
    const Message* message;

    void run() override
    {
        for (int i = 0; i < 20000; ++i) {
            message->addReference();
            message->addReference();
            message->removeReference();
            message->removeReference();
        }
        message->removeReference();
    }
};

} // namespace

/** The descriptions and messages themselves: ownership, identity and reference counts. */
class tst_Model : public TestBase
{
    Q_OBJECT

private Q_SLOTS:
    void formatsAndTypesOwnAndFindTheirParts()
    {
        {
            FormatInfo format(text("format"));
            MessageInfo* first = new CountedInfo(text("B"));
            CountedField* field = new CountedField(text("f"));
            CountedField* part = new CountedField(text("part"));
            field->addSubField(part);
            first->addField(field);
            QVERIFY(!first->getFormatInfo());
            format.addMessageInfo(first);
            MessageInfo* second = new MessageInfo(text("A"), false);
            format.addMessageInfo(second);
            format.addMessageInfo(new MessageInfo(text("B")));
            QCOMPARE(s_alive, 3);
            QVERIFY(first->getFormatInfo() == &format && format.getMessageInfos().size() == 3);
            QVERIFY(format.getMessageInfo(text("B")) == first && format.getMessageInfo(text("A")) == second);
            QVERIFY(!format.getMessageInfo(text("C")) && first->isMain() && !second->isMain());
            QVERIFY(first->getFieldInfo(text("f")) == field && !first->getFieldInfo(text("part")));
            QVERIFY(field->occursIn(first) && !field->occursIn(second) && !field->occursIn(0));
            QCOMPARE(part->getMessageInfos(), QVector<const MessageInfo*>(1, first));
            QVERIFY(part->getParentFieldInfo() == field && !field->getParentFieldInfo());
        }
        QCOMPARE(s_alive, 0);
    }

    void fieldTypesSayWhatTheyAre()
    {
        const MessageInfo point(text("POINT"), false);
        const FieldType sub(&point);
        const FieldType character(FieldType::CharType, 1, text("char"));
        QCOMPARE(sub.toShortString() + character.toShortString(), text("POINTchar"));
        QVERIFY(sub.getSubMessageInfo() == &point && !character.getSubMessageInfo());
        // Binaries that are built against other frameworks read these numbers, and in this place.
        QVERIFY(FieldType().getTypeCode() == 0 && character.getTypeCode() == 3 && FieldType::UnsignedCharType == 4);
        QCOMPARE(*reinterpret_cast<const int*>(&sub), 6);
    }

    void referencesHoldMessages()
    {
        const MessageInfo info(text("A"));
        {
            const Message* message = new CountedMessage(&info);
            MessageReference first = MessageReference::adopt(message);
            MessageReference& alias = first;
            {
                const MessageReference second(first);
                MessageReference third(message);
                third = first;
                MessageReference& same = third;
                third = same;
                QCOMPARE(message->getReferenceCount(), 3);
            }
            QCOMPARE(first->getReferenceCount(), 1);
            first = alias; // the only one
            MessageReference kept;
            QVERIFY(kept.isNull());
            kept = first;
            first = MessageReference();
            QVERIFY(first.isNull() && s_alive == 1);
            kept = MessageReference::adopt(new CountedMessage(&info));
            QCOMPARE(s_alive, 1);
        }
        QCOMPARE(s_alive, 0);
        MessageReference(0);
        MessageReference::adopt(0);
    }

    void referencesMayBeTakenOnAnyThread()
    {
        const MessageInfo info(text("A"));
        const Message* message = new CountedMessage(&info);
        Holder holders[4];
        for (Holder& holder : holders) {
            message->addReference();
            holder.message = message;
            holder.start();
        }
        for (Holder& holder : holders)
            QVERIFY(holder.wait(60000));
        QCOMPARE(message->getReferenceCount(), 1);
        message->removeReference();
        QCOMPARE(s_alive, 0);
    }

    void messagesKnowHowTheyCame()
    {
        const MessageInfo info(text("A"));
        Message* message = new Message(&info, QByteArray("\0x", 2));
        const MessageReference keep = MessageReference::adopt(message);
        QCOMPARE(message->getData(), QByteArray("\0x", 2));
        QVERIFY(message->getTime() == Message::NoTime && message->getSequence() == Message::NoSequence);
        message->setTime(-1); // a time like any other
        QVERIFY(message->getTime() != Message::NoTime);
    }

    void confidentialDataIsHiddenUntilSwitchedOn() { QVERIFY(!Corvel::confidentialInformationDisplayEnabled()); }
};

QTEST_APPLESS_MAIN(tst_Model)

#include "tst_model.moc"
