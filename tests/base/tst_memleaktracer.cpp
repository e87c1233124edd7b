#include "childprocess.h"
#include "memleaktracer.h"
#include "testbase.h"
#include "textrows.h"

#include <QCoreApplication>
#include <QThread>

class tst_MemLeakTracer : public TestBase
{
    Q_OBJECT

private Q_SLOTS:
    void accountsFollowEveryObject();
    void threadsLoseNothing();
    void exitReport();
};

static MemLeakTracer* tracer()
{
    return MemLeakTracer::getInstance();
}

static void allocate(const char* className, int count)
{
    for (int i = 0; i < count; ++i)
        tracer()->doAllocateObject(QLatin1String(className));
}

static void deallocate(const char* className, int count)
{
    for (int i = 0; i < count; ++i)
        tracer()->doDeallocateObject(QLatin1String(className));
}

/** The accounts after some steps, those that are level behind a bar: "+3R" allocates three of the class R. */
static QString accountsAfter(const QString& steps)
{
    Q_FOREACH (const QString& step, steps.split(QLatin1Char(' '))) {
        const QByteArray className = step.mid(2).toLatin1();
        (step.startsWith(QLatin1Char('+')) ? allocate : deallocate)(className.constData(), step.mid(1, 1).toInt());
    }
    QStringList lines = tracer()->getUnlevelReport();
    Q_FOREACH (const QString& name, tracer()->getClassNames()) {
        const MemLeakTracer::Account account = tracer()->getAccount(name);
        const qint64 live = tracer()->getLiveCount(name);
        if (live != qint64(account.allocated - account.deallocated))
            lines += text("%1 of %2?").arg(live).arg(name);
        if (live == 0)
            lines += text("| %1 %2 peak %3").arg(name).arg(account.allocated).arg(account.peak);
    }
    return lines.join(QLatin1String("; "));
}

void tst_MemLeakTracer::accountsFollowEveryObject()
{
    QCOMPARE(tracer(), MemLeakTracer::getInstance());
    const TextRow rows[] = {
        {"+3R -2R +1R +1L", "L: 1 allocated, 0 deallocated, peak 1; R: 4 allocated, 2 deallocated, peak 3"},
        {"-2R -1L", "| L 1 peak 1; | R 4 peak 3"},
        // More destroyed than constructed.
        {"-1T", "T: 0 allocated, 1 deallocated, peak 0; | L 1 peak 1; | R 4 peak 3"},
        {"+1T", "| L 1 peak 1; | R 4 peak 3; | T 1 peak 0"}};
    checkRows(rows, accountsAfter);
}

class Worker : public QThread
{
public:
    void run() override
    {
        for (int i = 0; i < 2000; ++i) {
            allocate("Shared", 2);
            tracer()->getUnlevelReport();
            deallocate("Shared", 2);
        }
    }
};

void tst_MemLeakTracer::threadsLoseNothing()
{
    Worker workers[4];
    for (int i = 0; i < 4; ++i)
        workers[i].start();
    for (int i = 0; i < 4; ++i)
        QVERIFY(workers[i].wait(60000));
    const MemLeakTracer::Account account = tracer()->getAccount(QLatin1String("Shared"));
    QCOMPARE(account.allocated, quint64(16000));
    QCOMPARE(account.deallocated, quint64(16000));
    QVERIFY(account.peak >= 2 && account.peak <= 8);
}

static int leakOne()
{
    static const struct LateObject // ends after main(), and is no leak
    {
        LateObject() { allocate("Late", 1); }
        ~LateObject() { deallocate("Late", 1); }
    } late;
    Q_UNUSED(late);
    allocate("Leaked", 2);
    deallocate("Leaked", 1);
    allocate("Level", 1);
    deallocate("Level", 1);
    return 0;
}

static QString exitReportWith(const QString& setting)
{
    const ChildResult child =
        runChild(QStringList(QLatin1String("leakOne")), QStringList(QLatin1String("CORVEL_LEAK_REPORT=") + setting));
    return QString::fromLocal8Bit(child.errors.constData()) + (child.crashed ? text("crashed") : QString());
}

void tst_MemLeakTracer::exitReport()
{
    const TextRow rows[] = {{"", ""},
                            {"0", ""},
                            {"1", "corvel: objects: Leaked: 2 allocated, 1 deallocated, peak 2\n"},
                            {"all", "corvel: objects: Late: 1 allocated, 1 deallocated, peak 1\n"
                                    "corvel: objects: Leaked: 2 allocated, 1 deallocated, peak 2\n"
                                    "corvel: objects: Level: 1 allocated, 1 deallocated, peak 1\n"}};
    checkRows(rows, exitReportWith);
}

int main(int argc, char** argv)
{
    QCoreApplication application(argc, argv);
    if (application.arguments().value(1) == QLatin1String("leakOne"))
        return leakOne();
    tst_MemLeakTracer test;
    return QTest::qExec(&test, argc, argv);
}

#include "tst_memleaktracer.moc"
