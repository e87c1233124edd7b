#include "desk.h"
#include "memleaktracer.h"
#include "messageneedmanager.h"
#include "messagetreewidget.h"

#include <QApplication>
#include <QElapsedTimer>
#include <QTimer>

#include <csignal>
#include <cstdio>
#include <cstdlib>

#ifdef __linux__
#include <sys/personality.h>
#include <unistd.h>
#endif

// Drives every widget with random operations; see Desk. What a sequence of them does depends on its seed alone.
//
//     stress_widgets [SECONDS [SEED]]     or CORVEL_STRESS_SECONDS and CORVEL_STRESS_SEED
//
// With 0 seconds only the sequence of that seed, with every operation printed.

extern "C" void __sanitizer_set_death_callback(void (*callback)()) __attribute__((weak));

namespace
{

Desk* s_desk = nullptr;
quint64 s_seed = 0;
QStringList s_warnings;
bool s_verbose = false; // prints every operation and warning

void printSequence()
{
    std::fprintf(stderr, "stress_widgets: in the sequence with the seed %llu", static_cast<unsigned long long>(s_seed));
    if (s_desk) {
        std::fprintf(stderr, ", after %d operations, the last being\n", s_desk->getOperationCount());
        const QStringList history = s_desk->getHistory();
        Q_FOREACH (const QString& line, history.mid(qMax(0, static_cast<int>(history.size()) - 25)))
            std::fprintf(stderr, "  %s\n", line.toLocal8Bit().constData());
    }
    std::fprintf(stderr, "\nAgain: stress_widgets 0 %llu\n", static_cast<unsigned long long>(s_seed));
    std::fflush(stderr);
}

void crash(int number)
{
    std::signal(number, SIG_DFL);
    printSequence();
    std::raise(number);
}

void note(QtMsgType type, const QString& text)
{
    if (text.startsWith(QLatin1String("This plugin does not support")))
        return;
    if (type == QtDebugMsg)
        return;
    // Qt's item model keeps track of cells in columns that are gone, and complains when they move.
    if (text.startsWith(QLatin1String("QAbstractItemModel::end")) && text.contains(QLatin1String("Invalid index")))
        return;
    s_warnings.append(text);
    if (s_verbose)
        std::fprintf(stderr, "%s\n", text.toLocal8Bit().constData());
}

#if QT_VERSION >= 0x050000
template <typename Context>
void handle(QtMsgType type, const Context&, const QString& text)
{
    note(type, text);
}
#else
void handle(QtMsgType type, const char* text)
{
    note(type, QString::fromLocal8Bit(text));
}
#endif

// What trees remember of types is theirs alone, and the types of a sequence are gone with it.
template <typename Map, Map* PrivateMap>
struct Forget
{
    friend void forget(Map*) { PrivateMap->clear(); }
};
typedef QHash<const MessageInfo*, bool> InfoMap;
typedef QHash<const FieldInfo*, bool> FieldMap;
void forget(InfoMap*);
void forget(FieldMap*);
template struct Forget<InfoMap, &MessageTreeWidget::sMessageInfoExpandedCollapsedMap>;
template struct Forget<FieldMap, &MessageTreeWidget::sFieldInfoExpandedCollapsedMap>;

} // namespace

/** Runs sequences in an event loop, as widgets are used to. */
class Runner : public QObject
{
    Q_OBJECT

public:
    Runner(int seconds, quint64 seed)
        : m_seconds(seconds)
        , m_seed(seed)
    {
        m_timer.start();
        QTimer::singleShot(0, this, SLOT(run()));
    }

private Q_SLOTS:
    void run()
    {
        const QStringList complaints = runSequence(m_seed + static_cast<quint64>(m_sequences));
        ++m_sequences;
        if (!complaints.isEmpty()) {
            std::fprintf(stderr, "%s\nIn the sequence with the seed %llu\n",
                         complaints.join(QLatin1String("\n")).toLocal8Bit().constData(),
                         static_cast<unsigned long long>(s_seed));
            QCoreApplication::exit(1);
            return;
        }
        const qint64 elapsed = m_timer.elapsed() / 1000;
        if (elapsed >= m_seconds || elapsed >= m_reported + 60) {
            m_reported = elapsed;
            std::printf("%lld operations in %lld sequences from the seed %llu on, %lld s\n",
                        static_cast<long long>(m_operations), static_cast<long long>(m_sequences),
                        static_cast<unsigned long long>(m_seed), static_cast<long long>(elapsed));
            std::fflush(stdout);
        }
        if (elapsed >= m_seconds)
            QCoreApplication::exit(0);
        else
            QTimer::singleShot(0, this, SLOT(run()));
    }

private:
    QStringList runSequence(quint64 seed)
    {
        s_seed = seed;
        QStringList complaints;
        {
            Desk desk(seed, s_verbose);
            s_desk = &desk;
            desk.operate(150);
            complaints = desk.check();
            m_operations += desk.getOperationCount();
            if (!complaints.isEmpty() || !s_warnings.isEmpty())
                printSequence(); // while there is something to tell of it
            s_desk = nullptr;
        }
        forget(static_cast<InfoMap*>(nullptr));
        forget(static_cast<FieldMap*>(nullptr));
        complaints += s_warnings;
        s_warnings.clear();
        complaints += MemLeakTracer::getInstance()->getUnlevelReport();
        if (!MessageNeedManager::getInstance()->getNeededMessageInfos().isEmpty())
            complaints.append(QLatin1String("Types are still needed when all widgets are gone"));
        return complaints;
    }

    const int m_seconds;
    const quint64 m_seed;
    qint64 m_sequences = 0;
    qint64 m_operations = 0;
    qint64 m_reported = 0;
    QElapsedTimer m_timer;
};

/**
 * What comes out of the tables of pointers depends on where memory lies: it is to lie where it lay before. And a
 * sanitizer is to end the program so that it can still say where it was, and to let Qt, which it does not watch,
 * stumble over memory that was freed.
 */
static void startAnew(char** argv)
{
#ifdef __linux__
    qputenv("UBSAN_OPTIONS", qgetenv("UBSAN_OPTIONS") + ":abort_on_error=1");
    qputenv("ASAN_OPTIONS", qgetenv("ASAN_OPTIONS") + ":max_free_fill_size=1048576");
    const int current = personality(0xffffffff);
    if (current != -1 && !(current & ADDR_NO_RANDOMIZE) &&
        personality(static_cast<unsigned long>(current | ADDR_NO_RANDOMIZE)) != -1)
        execv("/proc/self/exe", argv); // or, where that cannot be, go on
#else
    Q_UNUSED(argv);
#endif
}

int main(int argc, char** argv)
{
    startAnew(argv);
    qputenv("QT_HASH_SEED", "0");
    QApplication app(argc, argv);
    app.setQuitOnLastWindowClosed(false);
    const QStringList arguments = app.arguments();
    const QByteArray seconds = arguments.size() > 1 ? arguments.at(1).toLatin1() : qgetenv("CORVEL_STRESS_SECONDS");
    const QByteArray seed = arguments.size() > 2 ? arguments.at(2).toLatin1() : qgetenv("CORVEL_STRESS_SEED");
    if (__sanitizer_set_death_callback)
        __sanitizer_set_death_callback(printSequence);
    else
        std::signal(SIGSEGV, crash);
    std::signal(SIGABRT, crash);
#if QT_VERSION >= 0x050000
    qInstallMessageHandler(handle);
#else
    qInstallMsgHandler(handle);
#endif
    s_verbose = seconds == "0";
    Runner runner(seconds.isEmpty() ? 10 : seconds.toInt(), seed.isEmpty() ? 1 : seed.toULongLong());
    return app.exec();
}

#include "main.moc"
