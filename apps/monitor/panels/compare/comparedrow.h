#ifndef COMPAREDROW_H
#define COMPAREDROW_H

#include "fieldpath.h"

#include <QCoreApplication>
#include <QVector>

/** The values below a row of the message tree, in a form in which they can stand beside those of another. */
class ComparedRow
{
    Q_DECLARE_TR_FUNCTIONS(ComparedRow)

public:
    struct Value
    {
        QString name;          ///< of the field, from the row on: "position.x", "voltages"; empty for the row itself
        QString text;          ///< as people read it, and no more of it than that
        QString exact;         ///< all that is compared; of arrays the first thousand values
        bool isHidden = false; ///< confidential, and neither shown nor compared
    };

    /**
     * All values, in the order of the description, those of sub-messages one by one. A confidential one is hidden as
     * everywhere.
     *
     * @param path     a type, a sub-message or a field
     * @param message  of that type
     */
    static QVector<Value> read(const FieldPath& path, const Message* message);
};

#endif
