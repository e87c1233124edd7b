#include "messageinfo.h"
#include "messageneed.h"
#include "messageneedmanager.h"
#include "messagesource.h"
#include "testbase.h"
#include "testformat.h"
#include "textrows.h"

/** Tells what is needed, such as "-AC", behind what came before it: "!" and what was needed for each announcement. */
class NeedWatcher : public QObject
{
    Q_OBJECT

public:
    NeedWatcher()
        : a(text("A"))
        , b(text("B"))
        , c(text("C"))
        , needToDrop(nullptr)
    {
        connect(&manager, SIGNAL(needsChanged()), this, SLOT(noteChange()));
    }

    QString take()
    {
        const QString all = m_changes + QLatin1Char('-') + needed();
        m_changes.clear();
        return all;
    }

    const MessageInfo a;
    const MessageInfo b;
    const MessageInfo c;
    MessageNeedManager manager;
    MessageNeed* needToDrop;

public Q_SLOTS:
    void noteChange() { m_changes += QLatin1Char('!') + needed(); }
    void noteMessage(const Message* message)
    {
        m_changes += message->getInfo()->getName();
        delete needToDrop;
        needToDrop = nullptr;
    }

private:
    QString needed() const
    {
        QString names;
        const MessageInfo* const infos[] = {&a, &b, &c};
        for (const MessageInfo* info : infos)
            if (manager.isNeeded(info))
                names += info->getName();
        return manager.getNeededMessageInfos().size() == names.size() ? names : text("?");
    }

    QString m_changes;
};

class tst_MessageNeed : public TestBase
{
    Q_OBJECT

private Q_SLOTS:
    void typeIsNeededWhileAnyNeedHasIt()
    {
        NeedWatcher watcher;
        {
            MessageNeed first(&watcher.manager);
            QCOMPARE(watcher.take(), text("-"));
            first.setMessageNeeded(&watcher.a);
            QCOMPARE(watcher.take(), text("!A-A"));
            {
                MessageNeed second(&watcher.manager);
                second.setMessagesNeeded(QVector<const MessageInfo*>() << &watcher.a << &watcher.b);
                QCOMPARE(watcher.take(), text("!AB-AB"));
                first.setMessageNeeded(0);
                first.setMessageNeeded(&watcher.a);
                QCOMPARE(watcher.take(), text("-AB"));
            }
            QCOMPARE(watcher.take(), text("!A-A"));
        }
        QCOMPARE(watcher.take(), text("!-"));
        QVERIFY(!watcher.manager.isNeeded(0));
    }

    void replacingKeepsWhatStaysNeeded()
    {
        NeedWatcher watcher;
        MessageNeed need(&watcher.manager);
        need.setMessagesNeeded(QVector<const MessageInfo*>() << &watcher.a << &watcher.b);
        need.setMessagesNeeded(QVector<const MessageInfo*>() << &watcher.b << &watcher.c);
        need.setMessagesNeeded(QVector<const MessageInfo*>() << &watcher.c << &watcher.b); // the order is nothing new
        QCOMPARE(watcher.take(), text("!AB!BC-BC"));
        need.setMessagesNeeded(QVector<const MessageInfo*>() << &watcher.a << &watcher.a);
        need.clearMessagesNeeded(true);
        QCOMPARE(watcher.take(), text("!A-"));
        need.clearMessagesNeeded(false);
        QCOMPARE(watcher.take(), text("-"));
    }

    void sourceDeliversOnlyWhatIsNeeded()
    {
        NeedWatcher watcher;
        MessageSource source;
        connect(&source, SIGNAL(newMessage(const Message*)), &watcher, SLOT(noteMessage(const Message*)));
        const MessageReference ofA = MessageReference::adopt(new TestMessage(&watcher.a));
        const MessageReference ofB = MessageReference::adopt(new TestMessage(&watcher.b));
        QVERIFY(!source.deliver(ofA.get()));
        watcher.needToDrop = new MessageNeed(nullptr); // of the manager of the whole process
        watcher.needToDrop->setMessageNeeded(&watcher.a);
        QVERIFY(!source.deliver(ofB.get()));
        QVERIFY(source.deliver(ofA.get()));
        QVERIFY(!watcher.needToDrop);
        QVERIFY(!source.deliver(ofA.get()));
        QCOMPARE(watcher.take(), text("A-"));
        QCOMPARE(ofA.get()->getReferenceCount(), 1);
        QVERIFY(MessageNeedManager::getInstance()->getNeededMessageInfos().isEmpty());
    }
};

QTEST_APPLESS_MAIN(tst_MessageNeed)

#include "tst_messageneed.moc"
