#include "watchedfield.h"

#include "fieldinfo.h"
#include "fieldvaluelabel.h"
#include "latestmessagesource.h"
#include "message.h"
#include "messageinfo.h"
#include "pathexpression.h"
#include "valuetext.h"

#include <QSet>

#include <algorithm>

static const int MostNamesakes = 4;
static const int MostOfOne = 60; // characters that are shown
static const int MostOfSeveral = 300;
static const int MostValues = 20; // of a repeated sub-message; more nobody reads at a glance

WatchedField::WatchedField(FieldValueLabel* label, LatestMessageSource* source)
    : m_label(label)
    , m_source(source)
{
    label->setTextFormat(Qt::PlainText); // a value says what it says
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

// Types that sources bring can come again with another schema.
static bool areOfOneType(const QVector<FieldPath>& paths)
{
    const MessageInfo* const first = paths.first().getMessageInfo();
    QSet<const MessageInfo*> infos;
    for (const FieldPath& path : paths) {
        const MessageInfo* const info = path.getMessageInfo();
        if (info->getName() != first->getName() || info->getFormatInfo() != first->getFormatInfo())
            return false;
        infos.insert(info);
    }
    return infos.size() == paths.size();
}

const FieldInfo* WatchedField::follow(const PathExpression& expression, const QString& sender)
{
    m_sender = sender;
    // The ways are only looked at when there are few: an open expression has hundreds of thousands.
    const qsizetype count = expression.getMatchingFieldInfos().size();
    QVector<FieldPath> paths;
    if (count > 0 && count <= MostNamesakes)
        paths = withoutParts(expression.getMatches());
    m_schemas.clear();
    if (paths.size() > 1 && areOfOneType(paths)) {
        m_schemas = paths;
        const auto isReceived = [this](const FieldPath& path) {
            return !m_source->getLatest(path.getMessageInfo(), m_sender).isNull();
        };
        // Those that came first are at the front.
        const auto received = std::find_if(paths.rbegin(), paths.rend(), isReceived);
        return setPath(received == paths.rend() ? paths.last() : *received);
    }
    return setPath(paths.size() == 1 ? paths.first() : FieldPath());
}

void WatchedField::followNothing()
{
    m_schemas.clear();
    setPath(FieldPath());
}

const FieldInfo* WatchedField::setPath(const FieldPath& path)
{
    const FieldInfo* const field = path.getField();
    if (field && path == m_path)
        return field;
    if (path.getMessageInfo() != m_path.getMessageInfo())
        m_followed = m_sender;
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

void WatchedField::setTimeOut(int milliseconds)
{
    m_timeOut = milliseconds;
    m_label->setTimeOut(milliseconds);
}

void WatchedField::renew()
{
    if (m_path.isNull() || (!m_hidden && m_label->text() == FieldValueLabel::tr("N/A")))
        return;
    const MessageReference latest = m_source->getLatest(m_path.getMessageInfo(), m_followed);
    if (!latest.isNull())
        processMessage(latest.get());
}

void WatchedField::forget(const MessageInfo* info)
{
    if (!info || m_path.getMessageInfo() != info)
        return;
    m_followed = m_sender;
    m_label->clearValue();
}

void WatchedField::renameSender(const QString& before, const QString& now)
{
    if (before.isEmpty())
        return;
    for (QString* const sender : {&m_sender, &m_followed})
        if (*sender == before)
            *sender = now;
}

void WatchedField::processMessage(const Message* message)
{
    if (!m_sender.isEmpty() && message->getSender() != m_sender)
        return;
    if (message->getInfo() != m_path.getMessageInfo()) {
        for (const FieldPath& path : std::as_const(m_schemas)) {
            if (path.getMessageInfo() == message->getInfo()) {
                setPath(path); // with the message, which is the newest
                return;
            }
        }
        return;
    }
    if (!m_followed.isEmpty() && message->getSender() != m_followed)
        return; // two in turn would be neither's value
    if (m_followed != message->getSender()) {
        m_followed = message->getSender();
        Q_EMIT senderChanged();
    }
    m_hidden = m_path.isHidden();
    if (m_hidden) {
        m_label->setText(tr("Hidden data"));
        m_label->setTimeOut(m_timeOut); // begins anew, which the label does itself for values that it writes
        return;
    }
    QStringList texts;
    collectTexts(FieldWalk(m_path, message), &texts);
    if (texts.isEmpty()) {
        m_label->clearValue();
        return;
    }
    const int most = texts.size() > 1 ? MostOfSeveral : MostOfOne;
    QString text = ValueText::bounded(texts.join(QLatin1String(", ")), most, most);
    text.replace(QLatin1Char('\n'), QChar(0x21b5));
    if (text != m_label->text())
        m_label->setText(text);
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
