#ifndef CORVELEVENT_H
#define CORVELEVENT_H

#include <QString>

class CorvelEvent
{
public:
    enum Type
    {
        Fanfare = 1,
        CrcError = 2
    };

    CorvelEvent(const CorvelEvent& other);
    CorvelEvent& operator=(const CorvelEvent& other);
    ~CorvelEvent();
    QString getMessage() const;

private:
    friend class MiniModel;
    explicit CorvelEvent(const QString& message);

    QString m_message;
};

#endif
