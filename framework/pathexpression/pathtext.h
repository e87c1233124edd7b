#ifndef PATHTEXT_H
#define PATHTEXT_H

#include <QString>
#include <QVector>

/** What one level of a path asks for. */
struct PathSegment
{
    enum Kind
    {
        Open,   ///< nothing: everything matches
        Wild,   ///< "*": everything matches
        Name,   ///< exactly this name
        Prefix, ///< names that begin so, in any case of letters
    };
    enum
    {
        NoIndex = -1,
        AllIndexes = -2
    };

    PathSegment();

    Kind kind;
    QString name; ///< of Name; of Prefix with the case of letters folded
    int ordinal;  ///< which of several of the name, from 1; 0 for all of them
    int index;
};

/** An expression taken apart. */
struct PathPattern
{
    PathPattern();

    PathSegment format;
    PathSegment message;
    QVector<PathSegment> fields; ///< one for each level of the field path; the last one's index may be the index part
    bool hasIndexPart;           ///< whether the index of the last field stands in the index part
    int levels;                  ///< how deep the text goes: 0, 1 with a format, 2 with a type, 3 with a field
    int errorPosition;           ///< -1 when the text is well formed
    QString error;
};

/** The grammar of path expressions. Parts are numbered from 0, and sets of them are given as flags. */
namespace PathText
{

enum Part
{
    Format,
    Message,
    Field,
    Index,
    PartCount
};

/** A path with more levels of fields is an error. */
const int maximumFieldLevels = 64;

/** @p name as it is written in a path. */
QString escape(const QString& name);

/** The name of a type as paths write it: with dots for the separators in it, which nobody has to escape then. */
QString typeName(const QString& name);

/** @p name with what makes letters upper or lower case taken out. */
inline QString fold(const QString& name)
{
    return name.toCaseFolded();
}

/** Divides @p text among @p parts of @p texts, and returns the number of the part that its end went to, or -1. */
int split(const QString& text, int parts, QString* texts);

/** Puts @p parts of @p texts together. */
QString join(const QString* texts, int parts);

/**
 * Takes an expression apart.
 *
 * @param texts      by part
 * @param typedParts  the flags of the parts whose last name may be unfinished
 */
PathPattern parse(const QString* texts, int typedParts);

} // namespace PathText

#endif
