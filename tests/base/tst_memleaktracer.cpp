#include "childprocess.h"
#include "memleaktracer.h"
#include "testbase.h"

#include <QCoreApplication>
#include <QThread>

class tst_MemLeakTracer : public TestBase
{
    Q_OBJECT

private Q_SLOTS:
    void accountsFollowEveryObject();
    void moreDestroyedThanConstructedShows();
    void threadsLoseNothing();
    void exitReport_data();
    void exitReport();
};

static MemLeakTracer* tracer()
{
    return MemLeakTracer::getInstance();
}

static QString accountText(const char* className)
{
    const MemLeakTracer::Account account = tracer()->getAccount(QLatin1String(className));
    return QString::fromLatin1("%1 - %2, peak %3").arg(account.allocated).arg(account.deallocated).arg(account.peak);
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

void tst_MemLeakTracer::accountsFollowEveryObject()
{
    QCOMPARE(tracer(), MemLeakTracer::getInstance());
    QCOMPARE(accountText("Row"), QString::fromLatin1("0 - 0, peak 0"));
    QVERIFY(!tracer()->getClassNames().contains(QLatin1String("Row")));

    allocate("Row", 3);
    deallocate("Row", 2);
    allocate("Row", 1);
    allocate("Label", 1);
    QCOMPARE(accountText("Row"), QString::fromLatin1("4 - 2, peak 3"));
    QCOMPARE(tracer()->getLiveCount(QLatin1String("Row")), qint64(2));
    QCOMPARE(tracer()->getUnlevelReport(), QStringList() << QLatin1String("Label: 1 allocated, 0 deallocated, peak 1")
                                                         << QLatin1String("Row: 4 allocated, 2 deallocated, peak 3"));

    deallocate("Row", 2);
    deallocate("Label", 1);
    QCOMPARE(tracer()->getLiveCount(QLatin1String("Row")), qint64(0));
    QCOMPARE(tracer()->getUnlevelReport(), QStringList());
    QCOMPARE(tracer()->getClassNames(), QStringList() << QLatin1String("Label") << QLatin1String("Row"));
}

void tst_MemLeakTracer::moreDestroyedThanConstructedShows()
{
    deallocate("Twice", 1);
    QCOMPARE(tracer()->getLiveCount(QLatin1String("Twice")), qint64(-1));
    QCOMPARE(tracer()->getUnlevelReport(), QStringList(QLatin1String("Twice: 0 allocated, 1 deallocated, peak 0")));
    allocate("Twice", 1);
    QCOMPARE(accountText("Twice"), QString::fromLatin1("1 - 1, peak 0"));
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

void tst_MemLeakTracer::exitReport_data()
{
    QTest::addColumn<QString>("setting");
    QTest::addColumn<QString>("report");
    const QString line = QString::fromLatin1("corvel: objects: %1: %2 allocated, 1 deallocated, peak %2\n");
    const QString leaked = line.arg(QLatin1String("Leaked")).arg(2);
    QTest::newRow("not set") << QString() << QString();
    QTest::newRow("switched off") << QString::fromLatin1("0") << QString();
    QTest::newRow("switched on") << QString::fromLatin1("1") << leaked;
    QTest::newRow("all classes") << QString::fromLatin1("all")
                                 << line.arg(QLatin1String("Late")).arg(1) + leaked +
                                        line.arg(QLatin1String("Level")).arg(1);
}

void tst_MemLeakTracer::exitReport()
{
    QFETCH(QString, setting);
    QFETCH(QString, report);
    const ChildResult child =
        runChild(QStringList(QLatin1String("leakOne")), QStringList(QLatin1String("CORVEL_LEAK_REPORT=") + setting));
    QVERIFY(!child.crashed);
    QCOMPARE(QString::fromLocal8Bit(child.errors.constData()), report);
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
