#ifndef BORROWED_H
#define BORROWED_H

#include <QHash>
#include <QObject>
#include <QSet>

/**
 * Lets widgets and rows let go of what they borrow when it goes.
 *
 * Only QObjects tell when they go. Which classes of a framework are QObjects is its own affair: what is none is not
 * watched, which costs nothing, and has to outlive whoever shows it. For that to be seen, the class must be defined
 * where it is lent. GUI thread only.
 */
class Borrowed : public QObject
{
    Q_OBJECT

public:
    /**
     * Called twice for each borrower of @p object, of which nothing is left but the QObject: with @p show false to
     * forget it, while nobody may be told of anything, and, when all have forgotten it, to show that there is nothing.
     */
    typedef void (*LetGo)(void* borrower, const QObject* object, bool show);

    /** Calls @p letGo, one for all that a borrower has, when @p object goes; null is ignored. Each call counts. */
    static void watch(const QObject* object, void* borrower, LetGo letGo);
    static void watch(const void* notWatched, void* borrower, LetGo letGo);

    /** Takes one watch() back. @p object may be gone. */
    static void leave(const QObject* object, void* borrower);
    static void leave(const void* notWatched, void* borrower);
    /** Takes all of them back. */
    static void leaveAll(void* borrower);

private Q_SLOTS:
    void processDestroyed(QObject* object);

private:
    Q_DISABLE_COPY(Borrowed)

    struct Loan
    {
        const QObject* object;
        LetGo letGo;
    };

    Borrowed();

    static Borrowed* getInstance();
    LetGo find(void* borrower, const QObject* object) const;
    void remove(void* borrower, const QObject* object);

    QHash<const QObject*, QSet<void*>> m_borrowers; // also of those that nobody borrows any more: they are connected
    QMultiHash<void*, Loan> m_loans;
};

#endif
