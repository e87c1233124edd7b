#ifndef CORVELEVENT_H
#define CORVELEVENT_H

#include "corvelframework_export.h"

#include <QMetaType>
#include <QString>

/** Something that happened to the reception and that a user may want to know of. A plain value. */
class CORVELFRAMEWORK_EXPORT CorvelEvent
{
public:
    /** What kind of event it is. The numbers are part of the binary interface. */
    enum Type
    {
        OtherEvent = 0,
        SourceEvent = 1,        ///< a source was connected, ended, was lost
        CrcError = 2,           ///< a message whose checksum is wrong
        UnknownMessage = 3,     ///< a message of a type that the loaded definitions do not know
        TruncatedMessage = 4,   ///< the input ended inside a message
        Resynchronisation = 5,  ///< bytes that belong to no message were skipped
        UnsupportedMessage = 6, ///< a message with a feature that is not understood, or of an impossible length
        ClockJump = 7,          ///< the times of messages went backwards or leapt
        DefinitionProblem = 8   ///< a fault in a definition or annotation file
    };

    CorvelEvent();
    CorvelEvent(Type type, const QString& message);
    CorvelEvent(const CorvelEvent& other);
    CorvelEvent& operator=(const CorvelEvent& other);
    ~CorvelEvent();

    Type getType() const { return m_type; }

    /** What such events are called, translated: "CRC error". */
    static QString getTypeName(Type type);
    /** The same in English, whatever is shown: for files, and to be translated later in the context "CorvelEvent". */
    static const char* getEnglishTypeName(Type type);

    /** The event in words. */
    QString getMessage() const { return m_message; }

private:
    Type m_type;
    QString m_message;
};

#endif
