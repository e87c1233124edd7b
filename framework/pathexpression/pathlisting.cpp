#include "pathlisting.h"

#include <QStringBuilder>

static const int namingParts = 1 << PathText::Format | 1 << PathText::Message | 1 << PathText::Field;

PathListing::PathListing(const PathPattern& pattern, int parts, int maximum)
    : m_fields(pattern.fields.isEmpty() ? QVector<PathSegment>(1) : pattern.fields)
    , m_hasIndexPart(pattern.hasIndexPart)
    , m_parts(parts)
    , m_maximum(maximum)
    , m_unique((parts & namingParts) == namingParts)
    , m_namesOnly(parts == 1 << PathText::Field && m_fields.size() == 1 &&
                  (m_hasIndexPart ? m_fields.first().index < 0 : m_fields.first().index == PathSegment::NoIndex))
    , m_plain(m_fields.size() == 1 && m_fields.first().index == PathSegment::NoIndex)
    , m_names(PathIndex::getInstance()->names())
    , m_type(nullptr)
{
}

static void appendOccurrence(bool ambiguous, int occurrence, QString* text)
{
    if (ambiguous)
        *text += QLatin1Char('#') + QString::number(occurrence);
}

QString PathListing::text(const PathEntry& entry) const
{
    QString text = m_names.text(entry.name);
    appendOccurrence(entry.ambiguous, entry.occurrence, &text);
    return text;
}

static QString textOfIndex(int index, bool repeated)
{
    if (index == PathSegment::AllIndexes)
        return repeated ? QString(QLatin1Char('*')) : QString(); // the only value needs no index
    return index == PathSegment::NoIndex ? QString() : QString::number(index);
}

QString PathListing::indexText(const PathField& field) const
{
    return m_hasIndexPart ? textOfIndex(m_fields.last().index, field.repeated) : QString();
}

void PathListing::appendLevel(size_t level, const PathField& field, QString* text) const
{
    *text += m_names.text(field.name);
    appendOccurrence(field.ambiguous, field.occurrence, text);
    const int index = m_fields.at(static_cast<int>(level)).index;
    if (index == PathSegment::NoIndex || (static_cast<int>(level) + 1 == m_fields.size() && m_hasIndexPart))
        return;
    const QString number = textOfIndex(index, field.repeated);
    if (!number.isEmpty())
        *text += QLatin1Char('[') + number + QLatin1Char(']');
}

void PathListing::appendFieldText(const PathHit& hit, QString* text) const
{
    appendLevel(0, *hit.field, text);
    for (size_t i = 0; i < hit.steps->size(); ++i) {
        *text += QLatin1Char('/');
        appendLevel(i + 1, *(*hit.steps)[i], text);
    }
}

void PathListing::addUnseen(const QString& text)
{
    if (text.isEmpty() || m_seen.contains(text))
        return;
    m_seen.insert(text);
    m_texts.append(text);
}

/** For the commonest of long lists, that of plain names, which need no search for duplicates. */
void PathListing::addFieldName(const PathField& field)
{
    const size_t name = static_cast<size_t>(field.name);
    if (name >= m_seenNames.size())
        m_seenNames.resize(static_cast<size_t>(m_names.count()), 0);
    if (m_seenNames[name])
        return;
    m_seenNames[name] = 1;
    m_texts.append(m_names.text(field.name));
}

PathSink::Answer PathListing::addField(const PathHit& hit)
{
    if (hit.type != m_type) {
        m_type = hit.type;
        m_leadingText = text(*hit.format) + QLatin1Char('/') + text(*hit.type) + QLatin1Char('/');
    }
    const QString& name = m_names.text(hit.field->name);
    if (m_plain && !hit.field->ambiguous) { // as nearly all of the longest lists are
        m_texts.append(m_leadingText % name);
        return Next;
    }
    QString whole = m_leadingText;
    appendFieldText(hit, &whole);
    const QString index = wants(PathText::Index) ? indexText(*hit.lastField()) : QString();
    if (!index.isEmpty())
        whole += QLatin1Char('[') + index + QLatin1Char(']');
    m_texts.append(whole);
    return Next;
}

PathSink::Answer PathListing::add(const PathHit& hit)
{
    if (m_namesOnly && !hit.field->ambiguous) {
        addFieldName(*hit.field);
        return Next;
    }
    if (m_unique && hit.field)
        return addField(hit);
    QString texts[PathText::PartCount];
    texts[PathText::Format] = text(*hit.format);
    if (hit.type)
        texts[PathText::Message] = text(*hit.type);
    if (hit.field) {
        appendFieldText(hit, &texts[PathText::Field]);
        texts[PathText::Index] = indexText(*hit.lastField());
    }
    addUnseen(PathText::join(texts, m_parts));
    if (wants(PathText::Field) || wants(PathText::Index))
        return Next;
    return wants(PathText::Message) ? NextType : NextFormat;
}

PathSink::Answer PathListing::found(const PathHit& hit)
{
    const Answer answer = add(hit);
    return m_texts.size() == m_maximum ? Stop : answer;
}
