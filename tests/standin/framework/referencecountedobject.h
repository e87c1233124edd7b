#ifndef REFERENCECOUNTEDOBJECT_H
#define REFERENCECOUNTEDOBJECT_H

/** Counts, and lives as long as whoever made it likes. */
class ReferenceCountedObject
{
public:
    void addReference() const { ++references; }
    void removeReference() const { --references; }

    mutable int references = 1;
};

#endif
