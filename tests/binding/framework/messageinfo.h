#ifndef MESSAGEINFO_H
#define MESSAGEINFO_H

#include <QString>
#include <QVector>

class FieldInfo;

class MessageInfo
{
public:
    QString getName() const;
    QString getShortDescriptiveText() const;
    bool isMain() const;
    QVector<const FieldInfo*> getFieldInfos() const;

private:
    friend class MiniModel;
    MessageInfo() {}

    QVector<FieldInfo*> m_fields;
    bool m_isSub;
    QString m_name;
};

#endif
