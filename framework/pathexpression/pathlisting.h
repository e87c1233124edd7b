#ifndef PATHLISTING_H
#define PATHLISTING_H

#include "pathmatcher.h"

#include <QSet>
#include <QStringList>

/** Writes down some parts of what is found, each text once. */
class PathListing : public PathSink
{
public:
    /**
     * @param parts    flags; of PathText::Part
     * @param maximum  how many texts are enough; negative for all
     */
    PathListing(const PathPattern& pattern, int parts, int maximum);

    const QStringList& texts() const { return m_texts; }

    Answer found(const PathHit& hit) override;
    bool wantsDistinctFields() const override { return m_namesOnly; }

private:
    Answer add(const PathHit& hit);
    Answer addField(const PathHit& hit);
    bool wants(PathText::Part part) const { return m_parts & (1 << part); }
    QString text(const PathEntry& entry) const;
    void appendFieldText(const PathHit& hit, QString* text) const;
    void appendLevel(size_t level, const PathField& field, QString* text) const;
    QString indexText(const PathField& field) const;
    void addUnseen(const QString& text);
    void addFieldName(const PathField& field);

    const QVector<PathSegment> m_fields;
    const bool m_hasIndexPart;
    const int m_parts;
    const int m_maximum;
    const bool m_unique;    // no two hits have the same text
    const bool m_namesOnly; // the text of a field on the first level is its name
    const bool m_plain;     // the field part is one level without an index
    const PathNames& m_names;
    QStringList m_texts;
    QSet<QString> m_seen;
    std::vector<char> m_seenNames; // by number: field names that have been listed as they are
    const PathType* m_type;        // of the last hit
    QString m_leadingText;         // of that type: what stands before the field
};

#endif
