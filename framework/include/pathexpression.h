#ifndef CORVEL_PATHEXPRESSION_H
#define CORVEL_PATHEXPRESSION_H

#include "corvelframework_export.h"
#include "pathvalue.h"

#include <QObject>
#include <QStringList>
#include <QVector>

class FieldInfo;
class MessageInfo;

/**
 * A text that names message types and fields, "corvel/ATTITUDE/roll", and finds them among the known formats.
 *
 * The text has parts: the format, the message type, the field with everything it lies in, and an index into a repeated
 * field. A part can name exactly, be the wildcard "*", be the beginning of a name while it is being typed, or be open
 * (empty), which narrows nothing. docs/path-expressions.md has the grammar. What there is to match are the formats in
 * the FormatRegistry. All operations are for the GUI thread, and none throws or fails: a malformed text matches nothing
 * and errorString() tells why.
 *
 * @code
 * PathExpression expression;
 * expression.setString("corvel/ATTITUDE/roll");
 * const QVector<const FieldInfo*> fields = expression.getMatchingFieldInfos();
 * @endcode
 */
class CORVELFRAMEWORK_EXPORT PathExpression : public QObject
{
    Q_OBJECT

public:
    /** The parts of an expression, as flags. The two lowest name a message type without a field. */
    enum Part
    {
        FormatPart = 1,
        MessagePart = 2,
        FieldPart = 4,
        IndexPart = 8
    };
    Q_DECLARE_FLAGS(Parts, Part)

    /** The whole expression. */
    static const Parts AllParts;

    /** An expression without text, all open. */
    explicit PathExpression(QObject* parent = 0);
    virtual ~PathExpression();

    /** Replaces the whole expression; parts that @p text does not reach become open. */
    void setString(QString text);
    /** Replaces @p parts by @p text, which is divided among them in order; they then count as typed to their end. */
    void setString(QString text, PathExpression::Parts parts);
    /**
     * The text of @p parts alone, as it was set: of several, with separators between them and without any behind the
     * last that has text. Setting it again for the same parts gives the same expression. Open parts have no text.
     */
    QString getString(PathExpression::Parts parts) const;
    /**
     * Like setString(), but what stands last in @p text is only the beginning of a name, in any case of letters, until
     * completeEditing() is called or its part is set anew.
     */
    void setStringPrefix(QString text, PathExpression::Parts parts);
    /** What was set as a prefix is from now on a name. */
    void completeEditing();
    /** Makes each of @p parts the wildcard. */
    void setWildCard(PathExpression::Parts parts);
    /** Whether each of @p parts is the wildcard; false for no parts. */
    bool isWildCard(PathExpression::Parts parts) const;

    /**
     * The texts of @p parts of everything that matches, unambiguous and without duplicates, in the order in which the
     * formats were added and their types and fields are described.
     *
     * What matches is looked for as deep as the expression or @p parts go; when one of @p parts is being typed, those
     * behind it that are open are left out, as the user is not there yet. A sub-message's or a structured field's own
     * fields are listed where the field part goes into it.
     */
    QStringList getMatchingExpressionsStringList(PathExpression::Parts parts) const;
    /** The first @p maximum of them, which is soon done however many there are; negative for all. */
    QStringList getMatchingExpressionsStringList(PathExpression::Parts parts, int maximum) const;

    /**
     * Makes the expression name exactly this type. Its text, set again with sub-messages considered, finds this type
     * and no other, in spite of others of the same name, as long as the same formats are known.
     *
     * Null is ignored. A type that no known format has is named as well as can be.
     */
    void setupToMatchUnique(const MessageInfo* info);
    /** The same for a field, which is named within the type that it belongs to, also when that is a sub-message's. */
    void setupToMatchUnique(const FieldInfo* info);

    /**
     * Whether field paths lead into sub-messages, and whether types that only occur as sub-messages are matched. Off at
     * first. Components of a field, such as the flags of a bit mask, are matched in any case.
     */
    void setConsiderSubMessages(bool consider);

    /** Every matched type once, in order. With a field or index part, only types in which it matches a field. */
    QVector<const MessageInfo*> getMatchingMessageInfos() const;
    /** Every matched field once, in order. Without a field part, all that stand directly in the matched types. */
    QVector<const FieldInfo*> getMatchingFieldInfos() const;
    /** Every way in which a field is matched, in the order of getMatchingExpressionsStringList(AllParts). */
    QVector<FieldPath> getMatches() const;
    /**
     * The values in @p message of all matches in its type, in their order, and for each that has none the reason; empty
     * for null. Where many messages are read, getMatches() once and FieldPath::getValues() spare the search.
     */
    QVector<PathValue> getValues(const Message* message) const;

    /** What is wrong with the text, with the place, "character 9: ...", or empty when it is well formed. */
    QString errorString() const;
    /** The place of the error in getString(AllParts), from 0; -1 without error. */
    int errorPosition() const;

    /** @p name written as a part of an expression that means exactly this name, whatever characters it has. */
    static QString escape(const QString& name);

Q_SIGNALS:
    /** The texts of exactly these parts changed. */
    void partsChanged(PathExpression::Parts parts);
    /** The expression changed to @p text; once for each change, behind partsChanged(). */
    void expressionChanged(const QString& text);
    /**
     * What matches may be different now: the text changed, or is not a prefix any more or sub-messages are considered
     * or not, or the known formats changed.
     */
    void matchesMayHaveChanged();

private:
    Q_DISABLE_COPY(PathExpression)

    enum
    {
        PartCount = 4
    };

    void replace(const QString* texts, int typedParts);
    QVector<FieldPath> getMatches(const MessageInfo* info) const;

    QString m_texts[PartCount]; // by part
    int m_typedParts;           // the flags of the parts whose end is a prefix
    bool m_considerSubMessages;
};

Q_DECLARE_OPERATORS_FOR_FLAGS(PathExpression::Parts)

#endif
