#include "referencecountedobject.h"

#include <atomic>

ReferenceCountedObject::ReferenceCountedObject()
    : m_references(1)
{
}

ReferenceCountedObject::~ReferenceCountedObject() {}

static int valueOf(const QAtomicInt& references)
{
    const int count = references;                        // the one way to read it that every Qt has
    std::atomic_thread_fence(std::memory_order_acquire); // which Qt 4 leaves out
    return count;
}

void ReferenceCountedObject::addReference() const
{
    m_references.ref();
}

void ReferenceCountedObject::removeReference() const
{
    // Nobody else can take or give back the last one, and to read costs less than to count.
    if (valueOf(m_references) == 1 || !m_references.deref())
        delete this;
}

int ReferenceCountedObject::getReferenceCount() const
{
    return valueOf(m_references);
}
