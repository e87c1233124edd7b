#ifndef CORVEL_FIELDWALK_H
#define CORVEL_FIELDWALK_H

#include "fieldpath.h"

/**
 * Where a FieldPath leads in a message: to values, or to the reason why there are none.
 *
 * Walked as it is made, without any text. To be used at once: it borrows the path and the message. Where the path leads
 * through a repeated sub-message without saying which, the walk stops, and goes on in each of them as a walk of its
 * own.
 *
 * @code
 * void print(const FieldWalk& walk)
 * {
 *     for (unsigned int i = 0; i < walk.getCount(); ++i)
 *         if (walk.getEnd() == FieldWalk::Branches)
 *             print(walk.getBranch(i));
 *         else
 *             show(walk.getValue(i));
 * }
 * @endcode
 */
class CORVELFRAMEWORK_EXPORT FieldWalk
{
public:
    enum End
    {
        NoSuchField,  ///< there is no path, no message, or it is of another type
        Absent,       ///< the message, or a sub-message, does not have the field
        OutOfRange,   ///< there are values, but not as many as the number says
        Hidden,       ///< there is something, of a confidential field, and these are not shown now
        WholeMessage, ///< the path names the type itself
        OneValue,
        AllValues, ///< of a repeated field as a whole, which may be none at all
        Branches   ///< of a repeated sub-message, none at all as well, in each of which the path goes on
    };

    /** Who looks: a person, who is not to see what is confidential, or something that computes. */
    enum Access
    {
        WhatIsShown,
        Everything
    };

    FieldWalk(const FieldPath& path, const Message* message, Access access = WhatIsShown);

    End getEnd() const { return m_end; }
    /** The field at which the walk ended, with whatever end; null when it was not there to be looked at. */
    const FieldInfo* getField() const { return m_field; }
    /**
     * The message or sub-message that the field at the end of the path lies in; null when the walk did not come so far.
     */
    const Message* getHolder() const;

    /** The number of values, or of branches; 0 at any other end. */
    unsigned int getCount() const { return m_count; }
    /** The value number @p i of getCount(); invalid when there is none. */
    FieldValue getValue(unsigned int i = 0) const;
    /** At the end OneValue, the number of that value among those of its field. */
    unsigned int getIndex() const { return m_first; }
    /** How the walk goes on in the sub-message number @p i of getCount(), at the end Branches only. */
    FieldWalk getBranch(unsigned int i) const;

private:
    FieldWalk(const FieldWalk& trunk, const Message* message);

    void walk(const Message* message);

    const FieldPath* m_path;
    Access m_access;
    End m_end;
    int m_level;          // of the next step
    unsigned int m_first; // the number of the first value
    unsigned int m_count;
    const FieldInfo* m_field;
    const Message* m_message; // in which the field lies
};

#endif
