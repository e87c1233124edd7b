#ifndef SELECTION_H
#define SELECTION_H

#include "fieldpath.h"

#include <QHash>
#include <QRegularExpression>
#include <QSet>
#include <QStringList>
#include <QVector>

class FormatInfo;

/**
 * What expressions name of what comes: path expressions, each with " @ " and a sender behind it where only messages
 * from that are meant, in which a star stands for any characters. Everything when there are none.
 */
class Selection
{
public:
    /** A field to print: the way to it, and the key to print it under. */
    struct Field
    {
        FieldPath path;
        QString key;
    };
    /** What to print of the messages of a type from a sender. */
    struct Choice
    {
        bool isPrinted = false;
        QVector<Field> fields; ///< in the order of the expressions; empty means all
    };

    /**
     * Finds what @p expressions name in @p formats, and later in the formats of messages that come.
     *
     * @param complete  whether no other types will come; else what names nothing may do so later
     * @param error     set when false is returned: an expression is malformed or names nothing
     */
    bool setUp(const QStringList& expressions, const QVector<const FormatInfo*>& formats, bool complete,
               QString* error);

    /** What to print of messages of @p info from @p sender. A type that was not asked for before is looked up anew. */
    Choice choose(const MessageInfo* info, const QString& sender);

    /** What is wrong when nothing more comes: an expression that names nothing that came; else empty. */
    QString getComplaint() const;

private:
    struct Expression
    {
        QString given;
        QString path;
        QRegularExpression sender; // whose pattern is empty for everybody
        bool isMet = false;        // whether anything came from such a sender
    };
    /** What an expression names of a type. */
    struct Named
    {
        int expression;
        QVector<Field> fields; // empty for all
    };

    bool resolve(QString* error);

    QVector<Expression> m_expressions;
    QSet<const MessageInfo*> m_seen;
    QString m_complaint; // about the first expression that names no type
    QHash<const MessageInfo*, QVector<Named>> m_named;
};

#endif
