#include "referencecountedobject.h"

ReferenceCountedObject::ReferenceCountedObject()
    : m_references(1)
{
}

ReferenceCountedObject::~ReferenceCountedObject() {}

void ReferenceCountedObject::addReference() const
{
    m_references.ref();
}

void ReferenceCountedObject::removeReference() const
{
    if (!m_references.deref())
        delete this;
}

int ReferenceCountedObject::getReferenceCount() const
{
    return m_references.fetchAndAddOrdered(0); // the one way to read it that every Qt has
}
