#ifndef FIELDINFO_H
#define FIELDINFO_H

#include "fieldtype.h"
#include "fieldvalue.h"

#include <QString>
#include <QVector>

class Message;
class MessageInfo;

class FieldInfo
{
public:
    enum Role
    {
        Essential,
        Useful,
        Marginal,
        Technical,
        Legendary
    };

    virtual ~FieldInfo();

protected:
    virtual void notForWidgets();

public:
    virtual unsigned int getValueCount(const Message* message) const;
    virtual FieldValue getValue(const Message* message, unsigned int index) const;

protected:
    virtual void notForWidgetsEither();

public:
    virtual QString getStringValue(const Message* message) const;

    QString getName() const;
    Role getRole() const;
    bool isVirtual() const;
    bool isConfidential() const;
    bool isOptional() const;
    bool isRepeated() const;
    bool isStringField() const;
    bool occursIn(const MessageInfo* info) const;
    QVector<const FieldInfo*> getSubFieldInfos() const;
    const FieldInfo* getParentFieldInfo() const;
    QVector<const MessageInfo*> getMessageInfos() const;
    QString getInterpretedString(const FieldValue& value, bool flag) const;
    QString getRawString(const FieldValue& value) const;
    const FieldType& getType() const { return m_type; }

private:
    friend class MiniModel;
    FieldInfo();

    QString m_name;
    QString m_traits; // a letter each: v, c, o, r, s, and 2 for a secondary role
    FieldInfo* m_parent;
    QVector<const FieldInfo*> m_parts;
    const MessageInfo* m_home;
    FieldType m_type;
};

#endif
