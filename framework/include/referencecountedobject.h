#ifndef CORVEL_REFERENCECOUNTEDOBJECT_H
#define CORVEL_REFERENCECOUNTEDOBJECT_H

#include "corvelframework_export.h"

#include <QAtomicInt>

/**
 * Base of objects that several owners share.
 *
 * A new object has one reference, its creator's. The object deletes itself when the last reference is removed. Counting
 * is atomic: references may be taken and removed on any thread.
 */
class CORVELFRAMEWORK_EXPORT ReferenceCountedObject
{
public:
    /** Takes a reference. */
    void addReference() const;

    /** Gives a reference back; the last one deletes the object. */
    void removeReference() const;

    /** The number of references now, for tests and diagnostics. */
    int getReferenceCount() const;

protected:
    ReferenceCountedObject();
    virtual ~ReferenceCountedObject();

private:
    Q_DISABLE_COPY(ReferenceCountedObject)

    mutable QAtomicInt m_references;
};

#endif
