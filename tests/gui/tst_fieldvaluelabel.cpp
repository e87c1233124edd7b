#include "fieldvaluelabel.h"
#include "messagefixtures.h"
#include "messageneedmanager.h"
#include "messagesource.h"
#include "shown.h"
#include "testbase.h"
#include "waitfor.h"

#include <QTimer>
#include <QVBoxLayout>

class tst_FieldValueLabel : public TestBase
{
    Q_OBJECT

private Q_SLOTS:
    void textOfAField_data();
    void textOfAField();
    void matchingMessagesOnly();
    void settingsTakeEffectWithTheNextMessage();
    void needFollowsTheField();
    void valuesGoAfterTheTimeOut();
    void everyMatchingValueRestartsTheTimeOut();

public Q_SLOTS:
    void feed();
    void probe();

private:
    FieldValueLabel* m_untouched;
    FieldValueLabel* m_refreshed;
    const Message* m_message;
    const Message* m_foreign;
    QString m_textsWhenProbed;
};

struct Fixture
{
    Fixture()
    {
        speed->setUnit(text("m/s"));
        channels->setUnit(text("us"));
        message->set(speed, 3.5)->fill(channels, 3, 10)->fill(info.add("single", Repeated), 1, 7);
        message->setText(info.add("name", TestFieldInfo::String), "Armed");
        message->setText(info.add("unnamed", TestFieldInfo::String), "");
        info.add("optional", TestFieldInfo::Optional);
        foreign->set(other.add("speed"), 99);
    }

    enum
    {
        Repeated = TestFieldInfo::Repeated
    };

    TestInfo info{"STATE"};
    TestFieldInfo* speed = info.add("speed");
    TestFieldInfo* channels = info.add("channels", Repeated);
    TestInfo other{"OTHER"};
    OwnedMessage message{&info};
    OwnedMessage foreign{&other};
};

void tst_FieldValueLabel::textOfAField_data()
{
    QTest::addColumn<QString>("field");
    QTest::addColumn<qlonglong>("index");
    QTest::addColumn<bool>("interpreted");
    QTest::addColumn<QString>("shown");
    const qlonglong none = -1;
    QTest::newRow("interpreted") << text("speed") << none << true << text("3.5 m/s");
    QTest::newRow("plain") << text("speed") << none << false << text("3.5");
    QTest::newRow("first of several") << text("channels") << none << true << text("10 us [...]");
    QTest::newRow("first of several, plain") << text("channels") << none << false << text("10 [...]");
    QTest::newRow("chosen first") << text("channels") << Q_INT64_C(0) << true << text("10 us");
    QTest::newRow("chosen last") << text("channels") << Q_INT64_C(2) << true << text("12 us");
    QTest::newRow("too few") << text("channels") << Q_INT64_C(3) << true << text("N/A");
    QTest::newRow("far too few") << text("channels") << Q_INT64_C(4294967295) << true << text("N/A");
    QTest::newRow("not several") << text("single") << none << true << text("7");
    QTest::newRow("text") << text("name") << none << true << text("Armed");
    QTest::newRow("character") << text("name") << Q_INT64_C(1) << true << text("r");
    QTest::newRow("behind the text") << text("name") << Q_INT64_C(5) << true << text("N/A");
    QTest::newRow("empty text") << text("unnamed") << none << true << text("N/A");
    QTest::newRow("missing") << text("optional") << none << true << text("N/A");
}

void tst_FieldValueLabel::textOfAField()
{
    const Fixture f;
    QFETCH(QString, field);
    QFETCH(qlonglong, index);
    QFETCH(bool, interpreted);
    FieldValueLabel label(f.info.getFieldInfo(field), nullptr, interpreted, -1);
    label.setText(text("former"));
    if (index >= 0)
        label.setIndex(static_cast<unsigned int>(index));
    label.processMessage(f.message);
    QTEST(label.text(), "shown");
}

void tst_FieldValueLabel::matchingMessagesOnly()
{
    const Fixture f;
    MessageSource source;
    {
        FieldValueLabel label(f.speed, &source, true, -1);
        FieldValueLabel without(f.speed, nullptr, true, -1);
        QCOMPARE(label.text(), text("N/A"));
        QVERIFY(source.deliver(f.message));
        label.processMessage(f.foreign);
        QCOMPARE(label.text(), text("3.5 m/s"));
        QCOMPARE(without.text(), text("N/A"));
        label.clearValue();
        QCOMPARE(label.text(), text("N/A"));
    }
    QVERIFY(!source.deliver(f.message));
}

void tst_FieldValueLabel::settingsTakeEffectWithTheNextMessage()
{
    const Fixture f;
    FieldValueLabel label(f.channels, nullptr, true, -1);
    label.processMessage(f.message);
    label.setShowInterpretedString(false);
    label.setIndex(1);
    QCOMPARE(label.text(), text("10 us [...]"));
    label.processMessage(f.message);
    QCOMPARE(label.text(), text("11"));
    label.clearIndex();
    label.processMessage(f.message);
    QCOMPARE(label.text(), text("10 [...]"));
    label.setFieldInfo(nullptr);
    label.processMessage(f.message);
    QCOMPARE(label.text(), text("10 [...]"));
}

void tst_FieldValueLabel::needFollowsTheField()
{
    const Fixture f;
    const MessageNeedManager* const manager = MessageNeedManager::getInstance();
    QWidget* window = new QWidget;
    FieldValueLabel* const label = new FieldValueLabel(f.speed, nullptr, true, -1);
    QVERIFY(manager->isNeeded(&f.info) && !manager->isNeeded(&f.other));
    label->setFieldInfo(f.other.getFieldInfos().at(0));
    QVERIFY(!manager->isNeeded(&f.info) && manager->isNeeded(&f.other));
    label->setFieldInfo(nullptr);
    QVERIFY(manager->getNeededMessageInfos().isEmpty());
    label->setFieldInfo(f.speed);
    QVERIFY(manager->isNeeded(&f.info));
    (new QVBoxLayout(window))->addWidget(label);
    delete window; // with the label, which the layout gave it
    QVERIFY(manager->getNeededMessageInfos().isEmpty());
}

void tst_FieldValueLabel::valuesGoAfterTheTimeOut()
{
    const Fixture f;
    FieldValueLabel never(f.speed, nullptr, true, 0); // only a positive one counts here
    FieldValueLabel label(f.speed, nullptr, true, 1);
    never.processMessage(f.message);
    label.processMessage(f.message);
    QVERIFY(waitFor([&] { return label.text() == text("N/A"); }));
    label.processMessage(f.message);
    label.setTimeOut(0); // runs from now on, for the value that is already there
    QCOMPARE(label.text(), text("3.5 m/s"));
    QVERIFY(waitFor([&] { return label.text() == text("N/A"); }));
    label.processMessage(f.message); // single-shot: only this starts it again
    QVERIFY(waitFor([&] { return label.text() == text("N/A"); }));

    label.setTimeOut(-1);
    label.setTimeOut(-1);
    label.processMessage(f.message);
    // A label whose time-out starts later has lost its value: the others' would be gone as well.
    FieldValueLabel later(f.speed, nullptr, true, -1);
    later.processMessage(f.message);
    later.setTimeOut(0);
    QVERIFY(waitFor([&] { return later.text() == text("N/A"); }));
    QCOMPARE(label.text() + never.text(), text("3.5 m/s3.5 m/s"));
    later.setTimeOut(-1);
}

// Timers of one thread fire in the order of their times, however late: so the order below holds on a busy machine, too.
void tst_FieldValueLabel::everyMatchingValueRestartsTheTimeOut()
{
    const Fixture f;
    const int timeOut = 120;
    FieldValueLabel untouched(f.speed, nullptr, true, -1);
    FieldValueLabel refreshed(f.speed, nullptr, true, -1);
    m_untouched = &untouched;
    m_refreshed = &refreshed;
    m_message = f.message;
    m_foreign = f.foreign;
    m_textsWhenProbed.clear();
    untouched.processMessage(f.message);
    refreshed.processMessage(f.message);
    untouched.setTimeOut(timeOut);
    refreshed.setTimeOut(timeOut);
    QTimer::singleShot(timeOut / 2, this, SLOT(feed()));
    QTimer::singleShot(timeOut + timeOut / 4, this, SLOT(probe()));
    QVERIFY(waitFor([&] { return !m_textsWhenProbed.isEmpty(); }));
    QCOMPARE(m_textsWhenProbed, text("N/A, 3.5 m/s"));
    QVERIFY(waitFor([&] { return refreshed.text() == text("N/A"); }));
    untouched.setTimeOut(-1);
    refreshed.setTimeOut(-1);
}

void tst_FieldValueLabel::feed()
{
    m_untouched->processMessage(m_foreign);
    m_refreshed->processMessage(m_message);
}

void tst_FieldValueLabel::probe()
{
    m_textsWhenProbed = m_untouched->text() + text(", ") + m_refreshed->text();
}

QTEST_MAIN(tst_FieldValueLabel)

#include "tst_fieldvaluelabel.moc"
