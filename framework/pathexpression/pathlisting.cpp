#include "pathlisting.h"

#include "fieldinfo.h"

static const int namingParts = 1 << PathText::Format | 1 << PathText::Message | 1 << PathText::Field;

PathListing::PathListing(const PathPattern& pattern, int parts)
    : m_fields(pattern.fields.isEmpty() ? QVector<PathSegment>(1) : pattern.fields)
    , m_hasIndexPart(pattern.hasIndexPart)
    , m_parts(parts)
    , m_unique((parts & namingParts) == namingParts)
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

static QString textOfIndex(int index, const FieldInfo* info)
{
    if (index == PathSegment::AllIndexes)
        return info->isRepeated() ? QString(QLatin1Char('*')) : QString(); // the only value needs no index
    return index == PathSegment::NoIndex ? QString() : QString::number(index);
}

QString PathListing::indexText(const FieldInfo* info) const
{
    return m_hasIndexPart ? textOfIndex(m_fields.last().index, info) : QString();
}

void PathListing::appendLevel(int level, const QString& name, bool ambiguous, int occurrence, const FieldInfo* info,
                              QString* text) const
{
    if (level > 0)
        *text += QLatin1Char('/');
    *text += name;
    appendOccurrence(ambiguous, occurrence, text);
    if (level + 1 == m_fields.size() && m_hasIndexPart)
        return;
    const QString index = textOfIndex(m_fields.at(level).index, info);
    if (!index.isEmpty())
        *text += QLatin1Char('[') + index + QLatin1Char(']');
}

void PathListing::appendFieldText(const PathHit& hit, QString* text) const
{
    appendLevel(0, m_names.text(hit.field->name), hit.field->ambiguous, hit.field->occurrence, hit.field->info, text);
    for (size_t i = 0; i < hit.steps->size(); ++i) {
        const PathStep& step = hit.steps->at(i);
        appendLevel(static_cast<int>(i) + 1, PathText::escape(step.info->getName()), step.ambiguous, step.occurrence,
                    step.info, text);
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

PathSink::Answer PathListing::found(const PathHit& hit)
{
    if (m_parts == (1 << PathText::Field) && m_fields.size() == 1 && !hit.field->ambiguous &&
        (m_hasIndexPart || m_fields.first().index == PathSegment::NoIndex)) {
        addFieldName(*hit.field);
        return Next;
    }
    if (m_unique && hit.field) {
        if (hit.type != m_type) {
            m_type = hit.type;
            m_leadingText = text(*hit.format) + QLatin1Char('/') + text(*hit.type) + QLatin1Char('/');
        }
        QString whole;
        whole.reserve(m_leadingText.size() + m_names.text(hit.field->name).size());
        whole += m_leadingText;
        appendFieldText(hit, &whole);
        const QString index = wants(PathText::Index) ? indexText(hit.lastField()) : QString();
        if (!index.isEmpty())
            whole += QLatin1Char('[') + index + QLatin1Char(']');
        m_texts.append(whole);
        return Next;
    }
    QString texts[PathText::PartCount];
    texts[PathText::Format] = text(*hit.format);
    if (hit.type)
        texts[PathText::Message] = text(*hit.type);
    if (hit.field) {
        appendFieldText(hit, &texts[PathText::Field]);
        texts[PathText::Index] = indexText(hit.lastField());
    }
    addUnseen(PathText::join(texts, m_parts));
    if (wants(PathText::Field) || wants(PathText::Index))
        return Next;
    return wants(PathText::Message) ? NextType : NextFormat;
}
