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
        : needToDrop(nullptr)
    {
        infos << new MessageInfo(text("A")) << new MessageInfo(text("B")) << new MessageInfo(text("C"));
        connect(&manager, SIGNAL(needsChanged()), this, SLOT(noteChange()));
    }
    ~NeedWatcher() override { qDeleteAll(infos); }

    QString take()
    {
        const QString all = m_changes + QLatin1Char('-') + needed();
        m_changes.clear();
        return all;
    }

    QVector<const MessageInfo*> infos;
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
        Q_FOREACH (const MessageInfo* info, infos)
            if (manager.isNeeded(info))
                names += info->getName();
        return manager.getNeededMessageInfos().size() == names.size() && !manager.isNeeded(0) ? names : text("?");
    }

    QString m_changes;
};

/** "2=AB" says what the second need is from now on, "2" of no type, "2x" and "2o" clear it, "2." is its end. */
static QString needsAfter(const QString& steps)
{
    NeedWatcher watcher;
    MessageNeed* needs[] = {new MessageNeed(&watcher.manager), new MessageNeed(&watcher.manager)};
    QStringList told;
    Q_FOREACH (const QString& step, steps.split(QLatin1Char(' '))) {
        MessageNeed*& need = needs[step.at(0).unicode() - '1'];
        QVector<const MessageInfo*> infos;
        for (int i = 2; i < step.size(); ++i)
            infos << watcher.infos.at(step.at(i).unicode() - 'A');
        if (step.endsWith(QLatin1Char('.'))) {
            delete need;
            need = nullptr;
        } else if (step.endsWith(QLatin1Char('x')) || step.endsWith(QLatin1Char('o'))) {
            need->clearMessagesNeeded(step.endsWith(QLatin1Char('x')));
        } else if (infos.size() < 2) {
            need->setMessageNeeded(infos.value(0));
        } else {
            need->setMessagesNeeded(infos);
        }
        told += watcher.take();
    }
    delete needs[0];
    delete needs[1];
    return told.join(QLatin1String(" "));
}

class tst_MessageNeed : public TestBase
{
    Q_OBJECT

private Q_SLOTS:
    void typeIsNeededWhileAnyNeedHasIt()
    {
        const TextRow rows[] = {{"1 1=A 2=AB 1 1=A 2. 1.", "- !A-A !AB-AB -AB -AB !A-A !-"},
                                // What stays needed is nothing new, in whatever order.
                                {"1=AB 1=BC 1=CB 1=AA 1x 1o", "!AB-AB !BC-BC -BC !A-A - -"}};
        checkRows(rows, needsAfter);
    }

    void sourceDeliversOnlyWhatIsNeeded()
    {
        NeedWatcher watcher;
        MessageSource source;
        connect(&source, SIGNAL(newMessage(const Message*)), &watcher, SLOT(noteMessage(const Message*)));
        const MessageReference ofA = MessageReference::adopt(new TestMessage(watcher.infos.at(0)));
        const MessageReference ofB = MessageReference::adopt(new TestMessage(watcher.infos.at(1)));
        QVERIFY(!source.deliver(ofA.get()));
        watcher.needToDrop = new MessageNeed(nullptr); // of the manager of the whole process
        watcher.needToDrop->setMessageNeeded(watcher.infos.at(0));
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
