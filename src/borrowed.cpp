#include "borrowed.h"

#include "diagnostics.h"

CORVEL_DIAGNOSTICS("Borrowed");

Borrowed::Borrowed()
{
    CORVEL_DEBUG_HOOK();
}

Borrowed* Borrowed::getInstance()
{
    CORVEL_DEBUG_HOOK();
    // Never destroyed: descriptions with static storage may go when the program has all but ended.
    static Borrowed* const instance = new Borrowed;
    return instance;
}

void Borrowed::watch(const QObject* object, void* borrower, LetGo letGo)
{
    CORVEL_DEBUG_HOOK();
    if (!object)
        return;
    Borrowed* const self = getInstance();
    // Directly, whichever thread the object was made on: a type of messages may come from one that reads a schema.
    if (!self->m_borrowers.contains(object))
        connect(object, SIGNAL(destroyed(QObject*)), self, SLOT(processDestroyed(QObject*)), Qt::DirectConnection);
    self->m_borrowers[object].insert(borrower);
    const Loan loan = {object, letGo};
    self->m_loans.insert(borrower, loan);
}

void Borrowed::watch(const void*, void*, LetGo)
{
    CORVEL_DEBUG_HOOK();
}

void Borrowed::leave(const QObject* object, void* borrower)
{
    CORVEL_DEBUG_HOOK();
    Borrowed* const self = getInstance();
    QMultiHash<void*, Loan>::iterator loan = self->m_loans.find(borrower);
    while (loan != self->m_loans.end() && loan.key() == borrower && loan.value().object != object)
        ++loan;
    if (!object || loan == self->m_loans.end() || loan.key() != borrower)
        return;
    self->m_loans.erase(loan);
    if (!self->find(borrower, object))
        self->m_borrowers[object].remove(borrower);
}

void Borrowed::leave(const void*, void*)
{
    CORVEL_DEBUG_HOOK();
}

void Borrowed::leaveAll(void* borrower)
{
    CORVEL_DEBUG_HOOK();
    Borrowed* const self = getInstance();
    Q_FOREACH (const Loan& loan, self->m_loans.values(borrower))
        self->m_borrowers[loan.object].remove(borrower);
    self->m_loans.remove(borrower);
}

Borrowed::LetGo Borrowed::find(void* borrower, const QObject* object) const
{
    CORVEL_DEBUG_HOOK();
    QMultiHash<void*, Loan>::const_iterator loan = m_loans.constFind(borrower);
    for (; loan != m_loans.constEnd() && loan.key() == borrower; ++loan)
        if (loan.value().object == object)
            return loan.value().letGo;
    return nullptr;
}

void Borrowed::remove(void* borrower, const QObject* object)
{
    CORVEL_DEBUG_HOOK();
    while (find(borrower, object))
        leave(object, borrower);
}

void Borrowed::processDestroyed(QObject* object)
{
    CORVEL_DEBUG_HOOK();
    Q_FOREACH (void* borrower, m_borrowers.value(object))
        find(borrower, object)(borrower, object, false);
    // Who hears of what is shown now may delete other borrowers.
    while (!m_borrowers.value(object).isEmpty()) {
        void* const borrower = *m_borrowers.value(object).constBegin();
        const LetGo letGo = find(borrower, object);
        remove(borrower, object);
        letGo(borrower, object, true);
    }
    m_borrowers.remove(object);
}
