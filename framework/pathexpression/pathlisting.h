#ifndef PATHLISTING_H
#define PATHLISTING_H

#include "pathmatcher.h"

#include <QSet>
#include <QStringList>

/** Writes down some parts of everything that is found, each text once. */
class PathListing : public PathSink
{
public:
    /** @param parts  flags; of PathText::Part */
    PathListing(const PathPattern& pattern, int parts);

    const QStringList& texts() const { return m_texts; }

    Answer found(const PathHit& hit) override;

private:
    bool wants(PathText::Part part) const { return m_parts & (1 << part); }
    QString text(const PathEntry& entry) const;
    void appendFieldText(const PathHit& hit, QString* text) const;
    void appendLevel(int level, const QString& name, bool ambiguous, int occurrence, const FieldInfo* info,
                     QString* text) const;
    QString indexText(const FieldInfo* info) const;
    void addUnseen(const QString& text);
    void addFieldName(const PathField& field);

    const QVector<PathSegment> m_fields;
    const bool m_hasIndexPart;
    const int m_parts;
    const bool m_unique; // no two hits have the same text
    const PathNames& m_names;
    QStringList m_texts;
    QSet<QString> m_seen;
    std::vector<char> m_seenNames; // by number: field names that have been listed as they are
    const PathType* m_type;        // of the last hit
    QString m_leadingText;         // of that type: what stands before the field
};

#endif
