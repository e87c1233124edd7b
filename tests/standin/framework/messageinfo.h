#ifndef MESSAGEINFO_H
#define MESSAGEINFO_H

#include <QString>
#include <QVector>

class FieldInfo;

class MessageInfo
{
public:
    QString getName() const { return name; }
    QString getShortDescriptiveText() const { return description; }
    bool isMain() const { return !isSub; }
    QVector<const FieldInfo*> getFieldInfos() const { return fields; }

    QString name;
    QString description;
    QVector<const FieldInfo*> fields;
    bool isSub = false;
};

#endif
