#ifndef LIVESTREAM_H
#define LIVESTREAM_H

#include <QString>

/** What is to be known of a source by those who show what comes from it. */
class LiveStream
{
public:
    virtual ~LiveStream() = default;

    /** How the sender of a row of the source's identities is written. */
    virtual QString getSenderName(int row) const = 0;
    /** Whether nothing comes because it was paused or is at its end. */
    virtual bool isStandingStill() const = 0;
};

#endif
