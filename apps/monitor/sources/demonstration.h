#ifndef DEMONSTRATION_H
#define DEMONSTRATION_H

#include <QString>
#include <QVector>

class ByteInput;

/** A simulation that the program brings along, so that there is something to see without a device. */
struct Demonstration
{
    const char* name;       ///< on the command line
    const char* sourceName; ///< what people call it; to be translated as one of Demonstration
    const char* menuText;   ///< likewise
    const char* help;       ///< what is shown, for command lines; not translated
    const char* container;  ///< what it brings
    ByteInput* (*create)(); ///< the caller's

    /** All of them; the first one is shown when nothing else is asked for. */
    static const QVector<Demonstration>& getAll();
    /** The one of that name; null for an unknown name. */
    static const Demonstration* find(const QString& name);
};

#endif
