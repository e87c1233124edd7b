#ifndef CORVEL_SELECTIVEDECODER_H
#define CORVEL_SELECTIVEDECODER_H

#include "corvelframework_export.h"

#include <functional>

class MessageInfo;

/** What a StreamDecoder is as well that saves time where only some types are wanted. */
class CORVELFRAMEWORK_EXPORT SelectiveDecoder
{
public:
    /** Whether messages of a type are wanted; null is one that is not known. */
    typedef std::function<bool(const MessageInfo*)> TypeFilter;

    virtual ~SelectiveDecoder();

    /**
     * Leaves out messages of other types, and checks nothing that is only about these, from the next byte on.
     *
     * @param isWanted  asked while bytes are fed, once or more often for each type
     */
    virtual void setTypeFilter(const TypeFilter& isWanted) = 0;
};

#endif
