#include "corvel.h"
#include "formatinfo.h"
#include "messageinfo.h"
#include "testbase.h"
#include "testformat.h"

#include <QThread>

/** The descriptions and messages themselves: ownership, identity and reference counts. */
class tst_Model : public TestBase
{
    Q_OBJECT

private Q_SLOTS:
    void formatsAndTypesOwnTheirParts();
    void formatFindsTypesByName();
    void fieldsOccurInTheTypeTheyWereAddedTo();
    void fieldTypesSayWhatTheyAre();
    void lastReferenceDeletesTheMessage();
    void referencesHoldMessages();
    void referencesMayBeTakenOnAnyThread();
    void messagesKnowHowTheyCame();
    void confidentialDataIsHiddenUntilSwitchedOn();
};

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

} // namespace

void tst_Model::formatsAndTypesOwnTheirParts()
{
    {
        FormatInfo format(QLatin1String("format"));
        MessageInfo* info = new CountedInfo(QString::fromLatin1("A"));
        CountedField* field = new CountedField(QString::fromLatin1("f"));
        field->addSubField(new CountedField(QString::fromLatin1("part")));
        info->addField(field);
        QVERIFY(!info->getFormatInfo());
        format.addMessageInfo(info);
        QCOMPARE(info->getFormatInfo(), static_cast<const FormatInfo*>(&format));
        QCOMPARE(s_alive, 3);
    }
    QCOMPARE(s_alive, 0);
}

void tst_Model::formatFindsTypesByName()
{
    FormatInfo format(QLatin1String("format"));
    MessageInfo* first = new MessageInfo(QLatin1String("B"));
    format.addMessageInfo(first);
    format.addMessageInfo(new MessageInfo(QLatin1String("A"), false));
    format.addMessageInfo(new MessageInfo(QLatin1String("B")));
    QCOMPARE(format.getName(), QString::fromLatin1("format"));
    QCOMPARE(format.getMessageInfo(QLatin1String("B")), static_cast<const MessageInfo*>(first));
    QVERIFY(!format.getMessageInfo(QLatin1String("C")));
    QCOMPARE(int(format.getMessageInfos().size()), 3);
    QCOMPARE(format.getMessageInfos().at(1)->getName(), QString::fromLatin1("A"));
    QVERIFY(first->isMain() && !format.getMessageInfos().at(1)->isMain());
}

void tst_Model::fieldsOccurInTheTypeTheyWereAddedTo()
{
    MessageInfo a(QLatin1String("A"));
    MessageInfo b(QLatin1String("B"));
    TestFieldInfo* field = new TestFieldInfo(QLatin1String("f"));
    TestFieldInfo* part = new TestFieldInfo(QLatin1String("part"));
    field->addSubField(part);
    a.addField(field);
    b.addField(new TestFieldInfo(QLatin1String("f")));
    QVERIFY(field->occursIn(&a) && !field->occursIn(&b) && !field->occursIn(0));
    QVERIFY(part->occursIn(&a) && !part->occursIn(&b));
    QCOMPARE(part->getMessageInfos(), QVector<const MessageInfo*>(1, &a));
    QCOMPARE(part->getParentFieldInfo(), static_cast<const FieldInfo*>(field));
    QVERIFY(!field->getParentFieldInfo());
    QCOMPARE(a.getFieldInfo(QLatin1String("f")), static_cast<const FieldInfo*>(field));
    QVERIFY(!a.getFieldInfo(QLatin1String("part")));
}

void tst_Model::fieldTypesSayWhatTheyAre()
{
    const MessageInfo point(QLatin1String("POINT"), false);
    const FieldType sub(&point);
    QCOMPARE(sub.getTypeCode(), 6);
    QCOMPARE(sub.toShortString(), QString::fromLatin1("POINT"));
    QCOMPARE(sub.getSubMessageInfo(), &point);
    const FieldType character(FieldType::CharType, 1, QLatin1String("char"));
    QCOMPARE(character.getTypeCode(), 3);
    QCOMPARE(character.toShortString(), QString::fromLatin1("char"));
    QVERIFY(!character.getSubMessageInfo());
    QCOMPARE(int(FieldType::UnsignedCharType), 4);
    QCOMPARE(FieldType().getTypeCode(), 0);

    // Binaries that are built against other frameworks read it there.
    QCOMPARE(*reinterpret_cast<const int*>(&sub), 6);
}

void tst_Model::lastReferenceDeletesTheMessage()
{
    const MessageInfo info(QLatin1String("A"));
    const Message* message = new CountedMessage(&info);
    QCOMPARE(message->getReferenceCount(), 1);
    message->addReference();
    message->addReference();
    QCOMPARE(message->getReferenceCount(), 3);
    message->removeReference();
    message->removeReference();
    QCOMPARE(s_alive, 1);
    message->removeReference();
    QCOMPARE(s_alive, 0);
}

void tst_Model::referencesHoldMessages()
{
    const MessageInfo info(QLatin1String("A"));
    {
        const Message* message = new CountedMessage(&info);
        MessageReference first = MessageReference::adopt(message);
        QCOMPARE(message->getReferenceCount(), 1);
        {
            const MessageReference second(first);
            MessageReference third(message);
            QCOMPARE(message->getReferenceCount(), 3);
            third = first;
            MessageReference& alias = third;
            third = alias;
            QCOMPARE(message->getReferenceCount(), 3);
        }
        QCOMPARE(first->getReferenceCount(), 1);
        MessageReference kept;
        QVERIFY(kept.isNull());
        kept = first;
        first = MessageReference();
        QVERIFY(first.isNull());
        QCOMPARE(s_alive, 1);
        kept = MessageReference::adopt(new CountedMessage(&info));
        QCOMPARE(s_alive, 1);
    }
    QCOMPARE(s_alive, 0);
    MessageReference(0);
    MessageReference::adopt(0);
}

namespace
{

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

void tst_Model::referencesMayBeTakenOnAnyThread()
{
    const MessageInfo info(QLatin1String("A"));
    const Message* message = new CountedMessage(&info);
    Holder holders[4];
    for (int i = 0; i < 4; ++i) {
        message->addReference();
        holders[i].message = message;
        holders[i].start();
    }
    for (int i = 0; i < 4; ++i)
        QVERIFY(holders[i].wait(60000));
    QCOMPARE(message->getReferenceCount(), 1);
    message->removeReference();
    QCOMPARE(s_alive, 0);
}

void tst_Model::messagesKnowHowTheyCame()
{
    const MessageInfo info(QLatin1String("A"));
    Message* message = new Message(&info, QByteArray("\0x", 2));
    const MessageReference keep = MessageReference::adopt(message);
    QCOMPARE(message->getInfo(), &info);
    QCOMPARE(message->getData(), QByteArray("\0x", 2));
    QVERIFY(message->getTime() == Message::NoTime);
    QVERIFY(message->getSequence() == Message::NoSequence);
    QVERIFY(message->getSender().isEmpty());
    message->setTime(-1);
    message->setSequence(0);
    message->setSender(QLatin1String("1:1"));
    QVERIFY(message->getTime() == -1 && message->getTime() != Message::NoTime);
    QVERIFY(message->getSequence() == 0);
    QCOMPARE(message->getSender(), QString::fromLatin1("1:1"));
}

void tst_Model::confidentialDataIsHiddenUntilSwitchedOn()
{
    QVERIFY(!Corvel::confidentialInformationDisplayEnabled());
    Corvel::setConfidentialInformationDisplayEnabled(true);
    QVERIFY(Corvel::confidentialInformationDisplayEnabled());
    Corvel::setConfidentialInformationDisplayEnabled(false);
    QVERIFY(!Corvel::confidentialInformationDisplayEnabled());
}

QTEST_APPLESS_MAIN(tst_Model)

#include "tst_model.moc"
