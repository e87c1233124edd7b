#ifndef FIELDINFO_H
#define FIELDINFO_H

#include "fieldtype.h"
#include "message.h"

#include <QString>
#include <QVector>

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

    /** @param letters  v(irtual), c(onfidential), o(ptional), r(epeated), s(tring), and 2 for a secondary role */
    FieldInfo(const MessageInfo* info, const char* fieldName, const char* letters = "")
        : name(QLatin1String(fieldName))
        , traits(letters)
        , home(info)
    {
    }
    virtual ~FieldInfo() {}

protected:
    virtual void notForWidgets() {}

public:
    virtual unsigned int getValueCount(const Message* message) const
    {
        return static_cast<unsigned int>(message->values.value(this).size());
    }
    virtual FieldValue getValue(const Message* message, unsigned int index) const
    {
        if (index >= getValueCount(message))
            qFatal("%s has no value %u", qPrintable(name), index);
        return message->values.value(this).at(static_cast<int>(index));
    }

protected:
    virtual void notForWidgetsEither() {}

public:
    virtual QString getStringValue(const Message* message) const
    {
        return QString::fromLatin1("%1 letters").arg(message->values.value(this).size());
    }

    QString getName() const { return name; }
    Role getRole() const { return traits.contains('2') ? Marginal : Essential; }
    bool isVirtual() const { return traits.contains('v'); }
    bool isConfidential() const { return traits.contains('c'); }
    bool isOptional() const { return traits.contains('o'); }
    bool isRepeated() const { return traits.contains('r') || isStringField(); }
    bool isStringField() const { return traits.contains('s'); }
    bool occursIn(const MessageInfo* info) const { return info == home; }
    QVector<const FieldInfo*> getSubFieldInfos() const { return parts; }
    const FieldInfo* getParentFieldInfo() const { return nullptr; }
    QVector<const MessageInfo*> getMessageInfos() const { return QVector<const MessageInfo*>(1, home); }
    QString getInterpretedString(const FieldValue& value, bool flag) const
    {
        return (flag ? QLatin1Char('<') : QLatin1Char('?')) + value.text + QLatin1Char('>');
    }
    QString getRawString(const FieldValue& value) const { return QLatin1Char('#') + value.text; }
    const FieldType& getType() const { return type; }

    QString name;
    QByteArray traits;
    QVector<const FieldInfo*> parts;
    const MessageInfo* home;
    FieldType type;
};

#endif
