#include "messageinfo.h"
#include "messageneed.h"
#include "messageneedmanager.h"
#include "messagesource.h"
#include "testbase.h"
#include "testformat.h"

#include <QSignalSpy>

Q_DECLARE_METATYPE(const Message*)

class tst_MessageNeed : public TestBase
{
    Q_OBJECT

private Q_SLOTS:
    void initTestCase() { qRegisterMetaType<const Message*>("const Message*"); }
    void typeIsNeededWhileAnyNeedHasIt();
    void replacingKeepsWhatStaysNeeded();
    void aTypeGivenTwiceIsOneNeed();
    void clearingQuietlyIsNotAnnounced();
    void nullManagerIsTheProcessWideOne();
    void sourceDeliversOnlyWhatIsNeeded();
    void receiverMayDropItsNeedDuringDelivery();

public Q_SLOTS:
    void noteWhetherNeeded();
    void dropNeed();

private:
    MessageNeedManager* m_watched;
    const MessageInfo* m_watchedInfo;
    QList<bool> m_notes;
    MessageNeed* m_needToDrop;
};

static QVector<const MessageInfo*> infos(const MessageInfo* first, const MessageInfo* second)
{
    return QVector<const MessageInfo*>() << first << second;
}

void tst_MessageNeed::noteWhetherNeeded()
{
    m_notes.append(m_watched->isNeeded(m_watchedInfo));
}

void tst_MessageNeed::dropNeed()
{
    delete m_needToDrop;
    m_needToDrop = nullptr;
}

void tst_MessageNeed::typeIsNeededWhileAnyNeedHasIt()
{
    const MessageInfo a(QLatin1String("A"));
    const MessageInfo b(QLatin1String("B"));
    MessageNeedManager manager;
    QSignalSpy changes(&manager, SIGNAL(needsChanged()));
    {
        MessageNeed first(&manager);
        QCOMPARE(int(changes.count()), 0);
        first.setMessageNeeded(&a);
        QVERIFY(manager.isNeeded(&a) && !manager.isNeeded(&b) && !manager.isNeeded(0));
        QCOMPARE(int(changes.count()), 1);
        {
            MessageNeed second(&manager);
            second.setMessagesNeeded(infos(&a, &b));
            QCOMPARE(int(changes.count()), 2);
            QCOMPARE(int(manager.getNeededMessageInfos().size()), 2);
            first.setMessageNeeded(0);
            QVERIFY(manager.isNeeded(&a));
            QCOMPARE(int(changes.count()), 2);
            first.setMessageNeeded(&a);
        }
        QVERIFY(manager.isNeeded(&a) && !manager.isNeeded(&b));
        QCOMPARE(int(changes.count()), 3);
    }
    QVERIFY(manager.getNeededMessageInfos().isEmpty());
    QCOMPARE(int(changes.count()), 4);
}

void tst_MessageNeed::replacingKeepsWhatStaysNeeded()
{
    const MessageInfo a(QLatin1String("A"));
    const MessageInfo b(QLatin1String("B"));
    const MessageInfo c(QLatin1String("C"));
    MessageNeedManager manager;
    MessageNeed need(&manager);
    need.setMessagesNeeded(infos(&a, &b));

    m_watched = &manager;
    m_watchedInfo = &b;
    m_notes.clear();
    connect(&manager, SIGNAL(needsChanged()), this, SLOT(noteWhetherNeeded()));
    need.setMessagesNeeded(infos(&b, &c));
    need.setMessagesNeeded(infos(&c, &b));
    QCOMPARE(m_notes, QList<bool>() << true); // once, and the type that stays was needed then; the order is nothing new
    QVERIFY(!manager.isNeeded(&a) && manager.isNeeded(&b) && manager.isNeeded(&c));
    need.setMessageNeeded(&a);
    QCOMPARE(m_notes, QList<bool>() << true << false);
}

void tst_MessageNeed::aTypeGivenTwiceIsOneNeed()
{
    const MessageInfo a(QLatin1String("A"));
    MessageNeedManager manager;
    MessageNeed need(&manager);
    need.setMessagesNeeded(infos(&a, &a));
    QVERIFY(manager.isNeeded(&a));
    need.clearMessagesNeeded(false);
    QVERIFY(!manager.isNeeded(&a));
    need.clearMessagesNeeded(false);
    QVERIFY(manager.getNeededMessageInfos().isEmpty());
}

void tst_MessageNeed::clearingQuietlyIsNotAnnounced()
{
    const MessageInfo a(QLatin1String("A"));
    MessageNeedManager manager;
    MessageNeed need(&manager);
    need.setMessageNeeded(&a);
    QSignalSpy changes(&manager, SIGNAL(needsChanged()));
    need.clearMessagesNeeded(true);
    QVERIFY(!manager.isNeeded(&a));
    QCOMPARE(int(changes.count()), 0);
    need.setMessageNeeded(&a);
    QCOMPARE(int(changes.count()), 1);
    need.clearMessagesNeeded(false);
    QCOMPARE(int(changes.count()), 2);
}

void tst_MessageNeed::nullManagerIsTheProcessWideOne()
{
    const MessageInfo a(QLatin1String("A"));
    MessageNeedManager* const global = MessageNeedManager::getInstance();
    QVERIFY(global && global == MessageNeedManager::getInstance());
    {
        MessageNeed need(nullptr);
        need.setMessageNeeded(&a);
        QVERIFY(global->isNeeded(&a));
    }
    QVERIFY(!global->isNeeded(&a));
}

void tst_MessageNeed::sourceDeliversOnlyWhatIsNeeded()
{
    const MessageInfo a(QLatin1String("A"));
    const MessageInfo b(QLatin1String("B"));
    MessageSource source;
    QSignalSpy delivered(&source, SIGNAL(newMessage(const Message*)));
    const MessageReference ofA = MessageReference::adopt(new TestMessage(&a));
    const MessageReference ofB = MessageReference::adopt(new TestMessage(&b));
    QVERIFY(!source.deliver(ofA.get()));
    MessageNeed need(nullptr);
    need.setMessageNeeded(&a);
    QVERIFY(source.deliver(ofA.get()));
    QVERIFY(!source.deliver(ofB.get()));
    QCOMPARE(int(delivered.count()), 1);
    QCOMPARE(ofA.get()->getReferenceCount(), 1);
    need.clearMessagesNeeded(false);
    QVERIFY(!source.deliver(ofA.get()));
    QCOMPARE(int(delivered.count()), 1);
}

void tst_MessageNeed::receiverMayDropItsNeedDuringDelivery()
{
    const MessageInfo a(QLatin1String("A"));
    MessageSource source;
    connect(&source, SIGNAL(newMessage(const Message*)), this, SLOT(dropNeed()));
    const MessageReference message = MessageReference::adopt(new TestMessage(&a));
    m_needToDrop = new MessageNeed(nullptr);
    m_needToDrop->setMessageNeeded(&a);
    QVERIFY(source.deliver(message.get()));
    QVERIFY(!m_needToDrop);
    QVERIFY(!source.deliver(message.get()));
}

QTEST_APPLESS_MAIN(tst_MessageNeed)

#include "tst_messageneed.moc"
