#include "fieldvaluelabel.h"
#include "formatinfo.h"
#include "messageinfo.h"
#include "messageneedmanager.h"
#include "messagesource.h"
#include "testbase.h"
#include "testformat.h"
#include "waitfor.h"

#include <QApplication>
#include <QTimer>
#include <QVBoxLayout>

#include <memory>

class tst_FieldValueLabel : public TestBase
{
    Q_OBJECT

private Q_SLOTS:
    void initTestCase();
    void showsTheValueOfMatchingMessagesOnly();
    void missingValuesAreNotAvailable();
    void repeatedFieldsShowTheFirstOrTheChosenValue();
    void stringFieldsShowTheWholeTextOrOneCharacter();
    void plainOrInterpretedText();
    void settingsTakeEffectWithTheNextMessage();
    void needFollowsTheField();
    void listensToItsSource();
    void valuesGoAfterTheTimeOut();
    void everyMatchingValueRestartsTheTimeOut();
    void timeOutOfTheConstructorMustBePositive();
    void layoutTakesItOver();

public Q_SLOTS:
    void feed();
    void probe();

private:
    MessageReference message(const MessageInfo* info) { return MessageReference::adopt(new TestMessage(info)); }
    TestMessage* edit(const MessageReference& message)
    {
        return const_cast<TestMessage*>(static_cast<const TestMessage*>(message.get()));
    }

    FormatInfo m_format{QLatin1String("test")};
    MessageInfo* m_info;
    MessageInfo* m_otherInfo;
    TestFieldInfo* m_speed;
    TestFieldInfo* m_optional;
    TestFieldInfo* m_channels;
    TestFieldInfo* m_text;
    FieldValueLabel* m_untouched;
    FieldValueLabel* m_refreshed;
    MessageReference m_state;
    MessageReference m_other;
    QString m_textsWhenProbed;
};

static QString shown(const FieldValueLabel& label)
{
    return label.text();
}

static QString text(const char* latin1)
{
    return QString::fromLatin1(latin1);
}

void tst_FieldValueLabel::initTestCase()
{
    m_info = new MessageInfo(text("STATE"));
    m_otherInfo = new MessageInfo(text("OTHER"));
    m_speed = new TestFieldInfo(text("speed"));
    m_speed->setUnit(text("m/s"));
    m_optional = new TestFieldInfo(text("optional"), TestFieldInfo::Optional);
    m_channels = new TestFieldInfo(text("channels"), TestFieldInfo::Repeated);
    m_text = new TestFieldInfo(text("text"), TestFieldInfo::String);
    m_info->addField(m_speed);
    m_info->addField(m_optional);
    m_info->addField(m_channels);
    m_info->addField(m_text);
    m_otherInfo->addField(new TestFieldInfo(text("speed")));
    m_format.addMessageInfo(m_info);
    m_format.addMessageInfo(m_otherInfo);
}

void tst_FieldValueLabel::showsTheValueOfMatchingMessagesOnly()
{
    FieldValueLabel label(m_speed, nullptr, true, -1);
    QCOMPARE(shown(label), text("N/A"));
    QCOMPARE(label.getFieldInfo(), static_cast<const FieldInfo*>(m_speed));
    const MessageReference state = message(m_info);
    edit(state)->set(m_speed, 3.5);
    label.processMessage(state.get());
    QCOMPARE(shown(label), text("3.5 m/s"));

    const MessageReference other = message(m_otherInfo);
    edit(other)->set(m_otherInfo->getFieldInfos().at(0), 99);
    label.processMessage(other.get());
    QCOMPARE(shown(label), text("3.5 m/s"));

    label.clearValue();
    QCOMPARE(shown(label), text("N/A"));

    FieldValueLabel inert(nullptr, nullptr, true, -1);
    inert.processMessage(state.get());
    QCOMPARE(shown(inert), text("N/A"));
}

void tst_FieldValueLabel::missingValuesAreNotAvailable()
{
    FieldValueLabel label(m_optional, nullptr, true, -1);
    const MessageReference state = message(m_info);
    edit(state)->set(m_optional, 1);
    label.processMessage(state.get());
    QCOMPARE(shown(label), text("1"));
    edit(state)->set(m_optional, QVector<FieldValue>());
    label.processMessage(state.get());
    QCOMPARE(shown(label), text("N/A"));
}

void tst_FieldValueLabel::repeatedFieldsShowTheFirstOrTheChosenValue()
{
    FieldValueLabel label(m_channels, nullptr, true, -1);
    const MessageReference state = message(m_info);
    edit(state)->setNumbers(m_channels, 3, 10);
    label.processMessage(state.get());
    QCOMPARE(shown(label), text("10 [...]"));
    QVERIFY(!label.hasIndex());
    QCOMPARE(label.getIndex(), 0u);

    label.setIndex(0);
    label.processMessage(state.get());
    QCOMPARE(shown(label), text("10"));
    label.setIndex(2);
    QVERIFY(label.hasIndex());
    label.processMessage(state.get());
    QCOMPARE(shown(label), text("12"));
    label.setIndex(3);
    label.processMessage(state.get());
    QCOMPARE(shown(label), text("N/A"));
    label.setIndex(~0u);
    label.processMessage(state.get());
    QCOMPARE(shown(label), text("N/A"));

    label.clearIndex();
    QVERIFY(!label.hasIndex());
    QCOMPARE(label.getIndex(), 0u);
    edit(state)->setNumbers(m_channels, 1, 7);
    label.processMessage(state.get());
    QCOMPARE(shown(label), text("7"));
}

void tst_FieldValueLabel::stringFieldsShowTheWholeTextOrOneCharacter()
{
    FieldValueLabel label(m_text, nullptr, true, -1);
    const MessageReference state = message(m_info);
    edit(state)->setText(m_text, "Armed");
    label.processMessage(state.get());
    QCOMPARE(shown(label), text("Armed"));
    label.setIndex(1);
    label.processMessage(state.get());
    QCOMPARE(shown(label), text("r"));
    label.setIndex(5);
    label.processMessage(state.get());
    QCOMPARE(shown(label), text("N/A"));
    label.clearIndex();
    edit(state)->setText(m_text, "");
    label.processMessage(state.get());
    QCOMPARE(shown(label), text("N/A"));
}

void tst_FieldValueLabel::plainOrInterpretedText()
{
    FieldValueLabel label(m_speed, nullptr, false, -1);
    QVERIFY(!label.getShowInterpretedString());
    const MessageReference state = message(m_info);
    edit(state)->set(m_speed, 3.5);
    label.processMessage(state.get());
    QCOMPARE(shown(label), text("3.5"));

    FieldValueLabel several(m_channels, nullptr, false, -1);
    edit(state)->setNumbers(m_channels, 2, -4);
    several.processMessage(state.get());
    QCOMPARE(shown(several), text("-4 [...]"));
}

void tst_FieldValueLabel::settingsTakeEffectWithTheNextMessage()
{
    FieldValueLabel label(m_channels, nullptr, true, -1);
    m_channels->setUnit(text("us"));
    const MessageReference state = message(m_info);
    edit(state)->setNumbers(m_channels, 2, 1);
    label.processMessage(state.get());
    QCOMPARE(shown(label), text("1 us [...]"));
    label.setShowInterpretedString(false);
    QVERIFY(!label.getShowInterpretedString());
    label.setIndex(1);
    QCOMPARE(shown(label), text("1 us [...]"));
    label.processMessage(state.get());
    QCOMPARE(shown(label), text("2"));
    label.clearIndex();
    label.setFieldInfo(m_speed);
    QCOMPARE(shown(label), text("2"));
    label.setFieldInfo(nullptr);
    label.processMessage(state.get());
    QCOMPARE(shown(label), text("2"));
    m_channels->setUnit(QString());
}

void tst_FieldValueLabel::needFollowsTheField()
{
    const MessageNeedManager* const manager = MessageNeedManager::getInstance();
    const FieldInfo* const other = m_otherInfo->getFieldInfos().at(0);
    {
        FieldValueLabel label(m_speed, nullptr, true, -1);
        QVERIFY(manager->isNeeded(m_info) && !manager->isNeeded(m_otherInfo));
        label.setFieldInfo(other);
        QVERIFY(!manager->isNeeded(m_info) && manager->isNeeded(m_otherInfo));
        label.setFieldInfo(nullptr);
        QVERIFY(manager->getNeededMessageInfos().isEmpty());
        label.setFieldInfo(m_speed);
        QVERIFY(manager->isNeeded(m_info));
    }
    QVERIFY(manager->getNeededMessageInfos().isEmpty());
}

void tst_FieldValueLabel::listensToItsSource()
{
    MessageSource source;
    const MessageReference state = message(m_info);
    edit(state)->set(m_speed, 8);
    {
        FieldValueLabel label(m_speed, &source, true, -1);
        FieldValueLabel without(m_speed, nullptr, true, -1);
        QVERIFY(source.deliver(state.get()));
        QCOMPARE(shown(label), text("8 m/s"));
        QCOMPARE(shown(without), text("N/A"));
    }
    QVERIFY(!source.deliver(state.get()));
}

void tst_FieldValueLabel::valuesGoAfterTheTimeOut()
{
    FieldValueLabel label(m_speed, nullptr, true, -1);
    const MessageReference state = message(m_info);
    edit(state)->set(m_speed, 3);
    label.processMessage(state.get());
    label.setTimeOut(0); // runs from now on, for the value that is already there
    QCOMPARE(shown(label), text("3 m/s"));
    QVERIFY(waitFor([&] { return shown(label) == text("N/A"); }));

    label.processMessage(state.get()); // single-shot: only this starts it again
    QCOMPARE(shown(label), text("3 m/s"));
    QVERIFY(waitFor([&] { return shown(label) == text("N/A"); }));

    label.setTimeOut(-1);
    label.setTimeOut(-1);
    label.processMessage(state.get());
    // A label whose time-out starts later has lost its value: this one's would be gone as well.
    FieldValueLabel later(m_speed, nullptr, true, -1);
    later.processMessage(state.get());
    later.setTimeOut(0);
    QVERIFY(waitFor([&] { return shown(later) == text("N/A"); }));
    QCOMPARE(shown(label), text("3 m/s"));
    later.setTimeOut(-1);
}

// Timers of one thread fire in the order of their times, however late: so the order below holds on a busy machine, too.
void tst_FieldValueLabel::everyMatchingValueRestartsTheTimeOut()
{
    const int timeOut = 120;
    FieldValueLabel untouched(m_speed, nullptr, true, -1);
    FieldValueLabel refreshed(m_speed, nullptr, true, -1);
    const MessageReference state = message(m_info);
    const MessageReference other = message(m_otherInfo);
    edit(state)->set(m_speed, 5);
    m_untouched = &untouched;
    m_refreshed = &refreshed;
    m_state = state;
    m_other = other;
    m_textsWhenProbed.clear();
    untouched.processMessage(state.get());
    refreshed.processMessage(state.get());
    untouched.setTimeOut(timeOut);
    refreshed.setTimeOut(timeOut);
    QTimer::singleShot(timeOut / 2, this, SLOT(feed()));
    QTimer::singleShot(timeOut + timeOut / 4, this, SLOT(probe()));
    QVERIFY(waitFor([&] { return !m_textsWhenProbed.isEmpty(); }));
    QCOMPARE(m_textsWhenProbed, text("N/A, 5 m/s"));
    QVERIFY(waitFor([&] { return shown(refreshed) == text("N/A"); }));
    untouched.setTimeOut(-1);
    refreshed.setTimeOut(-1);
    m_state = m_other = MessageReference();
}

void tst_FieldValueLabel::feed()
{
    m_untouched->processMessage(m_other.get());
    m_refreshed->processMessage(m_state.get());
}

void tst_FieldValueLabel::probe()
{
    m_textsWhenProbed = shown(*m_untouched) + text(", ") + shown(*m_refreshed);
}

void tst_FieldValueLabel::timeOutOfTheConstructorMustBePositive()
{
    const MessageReference state = message(m_info);
    edit(state)->set(m_speed, 1);
    FieldValueLabel never(m_speed, nullptr, true, 0);
    FieldValueLabel soon(m_speed, nullptr, true, 1);
    never.processMessage(state.get());
    soon.processMessage(state.get());
    QVERIFY(waitFor([&] { return shown(soon) == text("N/A"); }));
    QCOMPARE(shown(never), text("1 m/s"));
    soon.setTimeOut(-1);
}

void tst_FieldValueLabel::layoutTakesItOver()
{
    std::unique_ptr<QWidget> window(new QWidget);
    FieldValueLabel* const label = new FieldValueLabel(m_speed, nullptr, true, -1);
    QVERIFY(!label->parent());
    (new QVBoxLayout(window.get()))->addWidget(label);
    QCOMPARE(label->parentWidget(), window.get());
    QCOMPARE(MemLeakTracer::getInstance()->getLiveCount(text("FieldValueLabel")), qint64(1));
    window.reset();
    QCOMPARE(MemLeakTracer::getInstance()->getLiveCount(text("FieldValueLabel")), qint64(0));
}

QTEST_MAIN(tst_FieldValueLabel)

#include "tst_fieldvaluelabel.moc"
