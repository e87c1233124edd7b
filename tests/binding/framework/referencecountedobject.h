#ifndef REFERENCECOUNTEDOBJECT_H
#define REFERENCECOUNTEDOBJECT_H

class ReferenceCountedObject
{
public:
    void addReference() const { ++m_users; }
    void removeReference() const
    {
        if (--m_users == 0)
            delete this;
    }

protected:
    ReferenceCountedObject()
        : m_users(1)
    {
    }
    virtual ~ReferenceCountedObject() {}

private:
    mutable unsigned short m_users;
};

#endif
