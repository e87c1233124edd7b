#include "watchedfield.h"

#include "fieldinfo.h"
#include "fieldvaluelabel.h"
#include "latestmessagesource.h"
#include "message.h"
#include "messageinfo.h"
#include "pathexpression.h"

static const int MostNamesakes = 4;
static const int MostValues = 20; // of a repeated sub-message; more nobody reads at a glance

WatchedField::WatchedField(FieldValueLabel* label, LatestMessageSource* source)
    : m_label(label)
    , m_source(source)
{
    connect(source, SIGNAL(newMessage(const Message*)), this, SLOT(processMessage(const Message*)));
    connect(source, &LatestMessageSource::forgotten, this, &WatchedField::forget);
}

// Of a type that is received on its own and also occurs as a part there are two of one name, but messages of only one.
static QVector<FieldPath> withoutParts(const QVector<FieldPath>& paths)
{
    QVector<FieldPath> received;
    for (const FieldPath& path : paths)
        if (path.getMessageInfo()->isMain())
            received.append(path);
    return received.isEmpty() ? paths : received;
}

const FieldInfo* WatchedField::follow(const PathExpression& expression)
{
    // The ways are only looked at when there are few: an open expression has hundreds of thousands.
    const qsizetype count = expression.getMatchingFieldInfos().size();
    QVector<FieldPath> paths;
    if (count > 0 && count <= MostNamesakes)
        paths = withoutParts(expression.getMatches());
    return setPath(paths.size() == 1 ? paths.first() : FieldPath());
}

void WatchedField::followNothing()
{
    setPath(FieldPath());
}

const FieldInfo* WatchedField::setPath(const FieldPath& path)
{
    const FieldInfo* const field = path.getField();
    if (field && path == m_path)
        return field;
    m_path = path;
    m_label->setFieldInfo(field);
    if (path.getIndex() >= 0)
        m_label->setIndex(uint(path.getIndex()));
    else
        m_label->clearIndex();
    m_label->clearValue();
    m_hidden = true; // nothing timed out yet
    renew();
    return field;
}

void WatchedField::renew()
{
    if (m_path.isNull() || (!m_hidden && m_label->text() == FieldValueLabel::tr("N/A")))
        return;
    const MessageReference latest = m_source->getLatest(m_path.getMessageInfo());
    if (!latest.isNull())
        processMessage(latest.get());
}

void WatchedField::forget(const MessageInfo* info)
{
    if (info && m_path.getMessageInfo() == info)
        m_label->clearValue();
}

void WatchedField::processMessage(const Message* message)
{
    if (message->getInfo() != m_path.getMessageInfo())
        return;
    m_hidden = m_path.isHidden();
    if (m_hidden) {
        m_label->setText(tr("Hidden data"));
        return;
    }
    QStringList texts;
    collectTexts(FieldWalk(m_path, message), &texts);
    if (texts.isEmpty())
        m_label->clearValue();
    else if (texts.size() > 1)
        m_label->setText(texts.join(QLatin1String(", ")));
}

// The label itself writes each value, and begins its time-out with that.
void WatchedField::collectTexts(const FieldWalk& walk, QStringList* texts)
{
    if (walk.getHolder()) {
        m_label->processMessage(walk.getHolder());
        texts->append(m_label->text());
        return;
    }
    const QString more(QChar(0x2026));
    for (unsigned int i = 0; i < walk.getCount() && (texts->isEmpty() || texts->last() != more); ++i) {
        if (texts->size() >= MostValues)
            texts->append(more);
        else
            collectTexts(walk.getBranch(i), texts);
    }
}
