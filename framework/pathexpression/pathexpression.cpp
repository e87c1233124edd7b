#include "pathexpression.h"

#include "fieldinfo.h"
#include "formatinfo.h"
#include "formatregistry.h"
#include "messageinfo.h"
#include "pathlisting.h"
#include "pathmatcher.h"
#include "pathtext.h"

#include <QSet>

const PathExpression::Parts PathExpression::AllParts(QFlag(15));

PathExpression::PathExpression(QObject* parent)
    : QObject(parent)
    , m_typedParts(0)
    , m_considerSubMessages(false)
{
    PathIndex::getInstance(); // which hears of a format before anybody asks for it
    connect(FormatRegistry::getInstance(), SIGNAL(formatsChanged()), this, SIGNAL(matchesMayHaveChanged()));
}

PathExpression::~PathExpression() {}

void PathExpression::replace(const QString* texts, int typedParts)
{
    Parts changed;
    for (int part = 0; part < PartCount; ++part) {
        if (m_texts[part] != texts[part])
            changed |= Part(1 << part);
        m_texts[part] = texts[part];
    }
    const bool matchesChanged = changed || typedParts != m_typedParts;
    m_typedParts = typedParts;
    if (changed) {
        Q_EMIT partsChanged(changed);
        Q_EMIT expressionChanged(getString(AllParts));
    }
    if (matchesChanged)
        Q_EMIT matchesMayHaveChanged();
}

void PathExpression::setString(QString text)
{
    setString(text, AllParts);
}

/** What the texts ask for among the types that there are. */
static PathPattern patternOf(const QString* texts, int typedParts)
{
    return PathMatcher::withWholeTypeName(PathText::parse(texts, typedParts));
}

static bool isPartOf(int part, PathExpression::Parts parts)
{
    return part >= 0 && (int(parts) & (1 << part));
}

void PathExpression::setString(QString text, PathExpression::Parts parts)
{
    QString texts[PartCount];
    for (int part = 0; part < PartCount; ++part)
        texts[part] = m_texts[part];
    PathText::split(text, int(parts), texts);
    replace(texts, m_typedParts & ~int(parts));
}

QString PathExpression::getString(PathExpression::Parts parts) const
{
    return PathText::join(m_texts, int(parts));
}

void PathExpression::setStringPrefix(QString text, PathExpression::Parts parts)
{
    QString texts[PartCount];
    for (int part = 0; part < PartCount; ++part)
        texts[part] = m_texts[part];
    const int last = PathText::split(text, int(parts), texts);
    replace(texts, (m_typedParts & ~int(parts)) | (last < 0 ? 0 : 1 << last));
}

void PathExpression::completeEditing()
{
    QString texts[PartCount];
    for (int part = 0; part < PartCount; ++part)
        texts[part] = m_texts[part];
    replace(texts, 0);
}

void PathExpression::setWildCard(PathExpression::Parts parts)
{
    QString texts[PartCount];
    for (int part = 0; part < PartCount; ++part)
        texts[part] = isPartOf(part, parts) ? QString(QLatin1Char('*')) : m_texts[part];
    replace(texts, m_typedParts & ~int(parts));
}

bool PathExpression::isWildCard(PathExpression::Parts parts) const
{
    bool any = false;
    for (int part = 0; part < PartCount; ++part) {
        if (!isPartOf(part, parts))
            continue;
        if (m_texts[part] != QLatin1String("*"))
            return false;
        any = true;
    }
    return any;
}

QStringList PathExpression::getMatchingExpressionsStringList(PathExpression::Parts parts) const
{
    return getMatchingExpressionsStringList(parts, -1);
}

QStringList PathExpression::getMatchingExpressionsStringList(PathExpression::Parts parts, int maximum) const
{
    const PathPattern pattern = patternOf(m_texts, m_typedParts);
    int wanted = int(parts);
    bool typed = false;
    for (int part = 0; part < PartCount; ++part) {
        if (typed && m_texts[part].isEmpty())
            wanted &= ~(1 << part);
        typed = typed || isPartOf(part, parts & Parts(QFlag(m_typedParts)));
    }
    if (pattern.errorPosition >= 0 || !wanted || !maximum)
        return QStringList();
    int levels = pattern.levels;
    for (int part = PathText::Format; part < PartCount; ++part)
        if (wanted & (1 << part))
            levels = qMax(levels, qMin(part + 1, 3));
    PathListing listing(pattern, wanted, maximum);
    PathMatcher(pattern, m_considerSubMessages).run(levels, &listing);
    return listing.texts();
}

template <typename Info>
static QString nameInPaths(const Info* info)
{
    return info->getName();
}

static QString nameInPaths(const MessageInfo* info)
{
    return PathText::typeName(info->getName());
}

/** The name of @p info with its number among those of @p others that have the same. */
template <typename Info>
static QString uniqueName(const Info* info, const QVector<const Info*>& others)
{
    const QString name = nameInPaths(info);
    int count = 0;
    int number = 0;
    Q_FOREACH (const Info* other, others) {
        if (nameInPaths(other) == name)
            ++count;
        if (other == info)
            number = count;
    }
    const QString text = PathText::escape(name);
    return count > 1 && number > 0 ? text + QLatin1Char('#') + QString::number(number) : text;
}

static void nameType(const MessageInfo* info, QString* texts)
{
    const FormatInfo* format = info->getFormatInfo();
    texts[PathText::Format] =
        format ? uniqueName(format, FormatRegistry::getInstance()->getFormatInfos()) : PathText::escape(QString());
    texts[PathText::Message] =
        format ? uniqueName(info, format->getMessageInfos()) : PathText::escape(nameInPaths(info));
}

void PathExpression::setupToMatchUnique(const MessageInfo* info)
{
    if (!info)
        return;
    QString texts[PartCount];
    nameType(info, texts);
    replace(texts, 0);
}

/** Of the types that @p field belongs to, the first that can be found by name. */
static const MessageInfo* typeToNameWith(const FieldInfo* field)
{
    const QVector<const MessageInfo*> infos = field->getMessageInfos();
    const FormatRegistry* registry = FormatRegistry::getInstance();
    Q_FOREACH (const MessageInfo* info, infos)
        if (registry->getRevision(info->getFormatInfo()))
            return info;
    return infos.isEmpty() ? nullptr : infos.first();
}

/** What is matched by name below @p parent: its components and, as if they were more of them, its sub-message's fields.
 */
static QVector<const FieldInfo*> fieldsBelow(const FieldInfo* parent)
{
    QVector<const FieldInfo*> fields = parent->getSubFieldInfos();
    if (parent->getType().getSubMessageInfo())
        fields += parent->getType().getSubMessageInfo()->getFieldInfos();
    return fields;
}

void PathExpression::setupToMatchUnique(const FieldInfo* info)
{
    if (!info)
        return;
    QString texts[PartCount];
    const MessageInfo* type = typeToNameWith(info);
    if (type)
        nameType(type, texts);
    else
        texts[PathText::Format] = texts[PathText::Message] = PathText::escape(QString());
    for (const FieldInfo* field = info; field; field = field->getParentFieldInfo()) {
        const FieldInfo* parent = field->getParentFieldInfo();
        QVector<const FieldInfo*> siblings;
        if (parent)
            siblings = fieldsBelow(parent);
        else if (type)
            siblings = type->getFieldInfos();
        const QString name = uniqueName(field, siblings);
        QString& path = texts[PathText::Field];
        path = field == info ? name : name + QLatin1Char('/') + path;
    }
    replace(texts, 0);
}

void PathExpression::setConsiderSubMessages(bool consider)
{
    if (consider == m_considerSubMessages)
        return;
    m_considerSubMessages = consider;
    Q_EMIT matchesMayHaveChanged();
}

namespace
{

class MessageInfoSink : public PathSink
{
public:
    Answer found(const PathHit& hit) override
    {
        m_infos.append(hit.type->info);
        return NextType;
    }
    const QVector<const MessageInfo*>& infos() const { return m_infos; }

private:
    QVector<const MessageInfo*> m_infos;
};

class FieldInfoSink : public PathSink
{
public:
    Answer found(const PathHit& hit) override
    {
        const FieldInfo* info = hit.lastField()->info;
        if (!hit.steps->empty()) { // else it is reached in one way only
            if (m_seen.contains(info))
                return Next;
            m_seen.insert(info);
        }
        m_infos.append(info);
        return Next;
    }
    bool wantsEveryWay() const override { return false; }
    const QVector<const FieldInfo*>& infos() const { return m_infos; }

private:
    QVector<const FieldInfo*> m_infos;
    QSet<const FieldInfo*> m_seen;
};

class MatchSink : public PathSink
{
public:
    /** @param info  the only type whose matches are wanted; null for all */
    MatchSink(const PathPattern& pattern, const MessageInfo* info)
        : m_segments(pattern.fields)
        , m_info(info)
    {
    }

    Answer found(const PathHit& hit) override
    {
        if (m_info && hit.type->info != m_info)
            return NextType;
        FieldPath path(hit.type->info);
        path.append(hit.field->info, indexAt(0));
        for (size_t i = 0; i < hit.steps->size(); ++i)
            path.append(hit.steps->at(i)->info, indexAt(static_cast<int>(i) + 1));
        m_matches.append(path);
        return Next;
    }
    const QVector<FieldPath>& matches() const { return m_matches; }

private:
    int indexAt(int level) const { return level < m_segments.size() ? m_segments.at(level).index : FieldPath::NoIndex; }

    const QVector<PathSegment> m_segments;
    const MessageInfo* const m_info;
    QVector<FieldPath> m_matches;
};

} // namespace

QVector<const MessageInfo*> PathExpression::getMatchingMessageInfos() const
{
    const PathPattern pattern = patternOf(m_texts, m_typedParts);
    MessageInfoSink sink;
    if (pattern.errorPosition < 0)
        PathMatcher(pattern, m_considerSubMessages).run(qMax(pattern.levels, 2), &sink);
    return sink.infos();
}

QVector<const FieldInfo*> PathExpression::getMatchingFieldInfos() const
{
    const PathPattern pattern = patternOf(m_texts, m_typedParts);
    FieldInfoSink sink;
    if (pattern.errorPosition < 0)
        PathMatcher(pattern, m_considerSubMessages).run(3, &sink);
    return sink.infos();
}

QVector<FieldPath> PathExpression::getMatches() const
{
    return getMatches(nullptr);
}

QVector<FieldPath> PathExpression::getMatches(const MessageInfo* info) const
{
    const PathPattern pattern = patternOf(m_texts, m_typedParts);
    MatchSink sink(pattern, info);
    if (pattern.errorPosition < 0)
        PathMatcher(pattern, m_considerSubMessages).run(3, &sink);
    return sink.matches();
}

QString PathExpression::errorString() const
{
    const PathPattern pattern = PathText::parse(m_texts, m_typedParts);
    if (pattern.errorPosition < 0)
        return QString();
    return tr("character %1: %2").arg(pattern.errorPosition + 1).arg(pattern.error);
}

int PathExpression::errorPosition() const
{
    return PathText::parse(m_texts, m_typedParts).errorPosition;
}

QString PathExpression::escape(const QString& name)
{
    return PathText::escape(name);
}
