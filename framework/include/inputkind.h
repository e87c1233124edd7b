#ifndef CORVEL_INPUTKIND_H
#define CORVEL_INPUTKIND_H

#include "corvelframework_export.h"

#include <QString>
#include <QVector>

class ByteInput;
struct InputAddress;

/** Something that a user says about an input: what a form asks for, and where in an InputAddress it stands. */
struct CORVELFRAMEWORK_EXPORT InputField
{
    enum Editor
    {
        TextEditor,
        FileEditor,    ///< the path of a file that is there
        PortEditor,    ///< a number from 1 to 65535
        ChoiceEditor,  ///< one of getChoices()
        ListEditor,    ///< one of getChoices(), or what else is typed
        PasswordEditor ///< what nobody is to see, and what is not kept
    };

    /** A value that can be chosen, and how people call it. */
    struct Choice
    {
        QString value;
        QString text;
    };

    /** What stands before the field, in the user's language, with a letter to reach it by: "&Host:". */
    QString getLabel() const;
    /** What the field is about, in the user's language; may be empty. */
    QString getToolTip() const;
    /** What is there to be chosen now; empty when nothing is, or the editor is no list. */
    QVector<Choice> getChoices() const;
    /** Whether it stands behind the address, as in "?name=value". */
    bool isParameter() const;

    const char* name;             ///< "path", "host", "port", "servers", "user", "password", or that of a parameter
    const char* label;            ///< as getLabel(), in English
    const char* toolTip;          ///< as getToolTip(), in English
    const char* value;            ///< what it is unless told; empty where it has to be told
    Editor editor;                ///< how it is asked for
    QVector<Choice> (*choices)(); ///< see getChoices(); null where the editor is no list
    bool choicesChange;           ///< whether other choices can be there a moment later
};

/**
 * One way in which bytes come: what its addresses look like, what is to be known of it, and what reads it.
 *
 * There is one constant for each, and getAll() is the table of them. Command lines, dialogs and documents name what is
 * in the table, so that whoever adds to it adds to them.
 */
struct CORVELFRAMEWORK_EXPORT InputKind
{
    enum Property
    {
        FileProperty = 1,     ///< a path names it, and it can be a file that is looked into beforehand
        LiveProperty = 2,     ///< bytes come in their own time, and what was lost can come back
        DatagramProperty = 4, ///< it brings datagrams, which no frame crosses
        WholeUrlProperty = 8, ///< its path is the whole address, with the scheme
        SessionProperty = 16  ///< its server can keep what comes while nobody reads, see InputAddress::session
    };

    /** All kinds, in the order in which people are offered them. */
    static const QVector<const InputKind*>& getAll();

    bool isFile() const { return properties & FileProperty; }
    bool isLive() const { return properties & LiveProperty; }
    bool isDatagram() const { return properties & DatagramProperty; }

    /** What it is, in the user's language. */
    QString getTitle() const;
    QVector<InputField> getFields() const;
    /** Whether a field has that name. */
    bool hasField(const QString& name) const;

    /** What addresses begin with, divided by blanks. What does not end with ":" or "/" is the whole address; empty is
     * what begins with no other kind's. */
    const char* schemes;
    const char* title;        ///< as getTitle(), in English: "TCP: connect to a server"
    const char* usage;        ///< what addresses look like: "tcp:HOST[:PORT]"
    const char* example;      ///< an address: "tcp:192.168.1.10:5760"
    quint16 defaultPort;      ///< that of an address without one; 0 where there are no ports
    int properties;           ///< of Property
    const char* container;    ///< what the bytes always are, as "mcap"; empty where that is to be found out
    const InputField* fields; ///< ends with one whose name is null

    /** Fills in and checks what was read from an address; false with @p reason, without the address. Null for nothing
     * to check. */
    bool (*check)(InputAddress* address, QString* reason);
    /** A new input for an address of this kind, the caller's. */
    ByteInput* (*create)(const InputAddress& address);
};

#endif
