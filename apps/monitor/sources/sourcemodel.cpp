#include "sourcemodel.h"

#include "icons.h"
#include "playbacktime.h"

#include <QFileInfo>
#include <QLocale>

SourceModel::SourceModel(SourceFactory* factory, const SourceSession::Receivers& receivers, QObject* parent)
    : QAbstractTableModel(parent)
    , m_factory(factory)
    , m_receivers(receivers)
{
}

SourceModel::~SourceModel() = default;

QString SourceModel::uniqueName(const QString& name) const
{
    QString unique = name;
    for (int i = 0, number = 1; i < getCount(); ++i) {
        if (m_sessions[std::size_t(i)]->getName() == unique) {
            unique = tr("%1 (%2)").arg(name).arg(++number);
            i = -1;
        }
    }
    return unique;
}

SourceSession* SourceModel::open(const SourceOptions& options, const StreamSource::Playback& playback, QString* error)
{
    SourceParts parts;
    if (!m_factory->create(options, &parts, error))
        return nullptr;
    SourceSession* const session = new SourceSession(options, m_factory, m_receivers);
    const QString name = uniqueName(parts.name);
    beginInsertRows(QModelIndex(), getCount(), getCount());
    m_sessions.emplace_back(session);
    session->open(name, std::move(parts), playback);
    endInsertRows();
    connect(session, &SourceSession::changed, this, [this, session]() {
        const int row = rowOf(session);
        if (row >= 0)
            Q_EMIT dataChanged(index(row, 0), index(row, ColumnCount - 1));
        Q_EMIT sessionChanged(session);
    });
    followNumber();
    Q_EMIT sessionAdded(session);
    return session;
}

void SourceModel::close(SourceSession* session)
{
    const int row = rowOf(session);
    if (row < 0)
        return;
    Q_EMIT sessionAboutToBeRemoved(session);
    beginRemoveRows(QModelIndex(), row, row);
    const std::unique_ptr<SourceSession> removed = std::move(m_sessions[std::size_t(row)]);
    m_sessions.erase(m_sessions.begin() + row);
    endRemoveRows();
    removed->disconnect(this);
    followNumber();
    Q_EMIT sessionRemoved();
}

bool SourceModel::startRecording(SourceSession* session, const QString& path, QString* error)
{
    const QString file = QFileInfo(path).canonicalFilePath(); // empty for one that is not there
    for (const std::unique_ptr<SourceSession>& other : m_sessions) {
        const bool isRead = QFileInfo(other->getPath()).canonicalFilePath() == file;
        const bool isWritten =
            other->getRecorder().isRecording() && QFileInfo(other->getRecorder().getPath()).canonicalFilePath() == file;
        if (file.isEmpty() || (!isRead && !isWritten))
            continue;
        *error = isRead ? tr("%1 is being read; a recording needs another name.").arg(path)
                        : tr("%1 is being recorded already.").arg(path);
        return false;
    }
    return session->startRecording(path, error);
}

void SourceModel::closeAll()
{
    while (!m_sessions.empty())
        close(m_sessions.back().get());
}

QVector<const FormatInfo*> SourceModel::knownFormats() const
{
    QVector<const FormatInfo*> formats;
    for (const std::unique_ptr<SourceSession>& session : m_sessions)
        for (const FormatInfo* format : session->getFormats())
            if (!formats.contains(format))
                formats.append(format);
    return formats;
}

void SourceModel::followNumber()
{
    for (const std::unique_ptr<SourceSession>& session : m_sessions)
        session->setQualified(m_sessions.size() > 1);
    followFormats();
}

void SourceModel::followFormats()
{
    m_factory->setKnownFormats(knownFormats());
}

SourceSession* SourceModel::getSession(int row) const
{
    return row >= 0 && row < getCount() ? m_sessions[std::size_t(row)].get() : nullptr;
}

int SourceModel::rowOf(const SourceSession* session) const
{
    for (int row = 0; row < getCount(); ++row)
        if (m_sessions[std::size_t(row)].get() == session)
            return row;
    return -1;
}

void SourceModel::refresh()
{
    for (const std::unique_ptr<SourceSession>& session : m_sessions)
        session->refresh();
    if (!m_sessions.empty())
        Q_EMIT dataChanged(index(0, StateColumn), index(getCount() - 1, RateColumn));
}

double SourceModel::getMessageRate() const
{
    double rate = 0;
    for (const std::unique_ptr<SourceSession>& session : m_sessions)
        rate += session->getMessageRate();
    return rate;
}

double SourceModel::getByteRate() const
{
    double rate = 0;
    for (const std::unique_ptr<SourceSession>& session : m_sessions)
        rate += session->getByteRate();
    return rate;
}

int SourceModel::rowCount(const QModelIndex& parent) const
{
    return parent.isValid() ? 0 : getCount();
}

int SourceModel::columnCount(const QModelIndex& parent) const
{
    return parent.isValid() ? 0 : int(ColumnCount);
}

QString SourceModel::stateText(const SourceSession* session)
{
    const Recorder& recorder = session->getRecorder();
    if (!recorder.isRecording())
        return session->getStateText();
    const QString size = QLocale().formattedDataSize(recorder.getSize(), 1, QLocale::DataSizeSIFormat);
    const QString length = PlaybackTime::lengthText(recorder.getDuration() * 1000);
    const SourceSession::Standing standing = session->getStanding();
    if (standing == SourceSession::Coming || standing == SourceSession::Playing)
        return tr("recording, %1 in %2", "size, duration").arg(size, length);
    return tr("recorded %1 in %2, %3", "size, duration, state").arg(size, length, session->getStateText());
}

// What needs an eye is seen without reading.
static QIcon stateIcon(const SourceSession* session)
{
    struct Sign
    {
        Icons::Shape shape;
        Theme::Accent accent;
    };
    static const Sign signs[] = {
        {Icons::Dots, Theme::Waiting},   {Icons::Listening, Theme::Waiting}, {Icons::Listening, Theme::Waiting},
        {Icons::Receiving, Theme::Good}, {Icons::Silent, Theme::Warning},    {Icons::Play, Theme::Good},
        {Icons::Pause, Theme::Waiting},  {Icons::Stopped, Theme::Plain},     {Icons::Stopped, Theme::Plain},
        {Icons::Failed, Theme::Bad},     {Icons::Again, Theme::Warning},
    };
    const SourceSession::Standing standing = session->getStanding();
    const bool isWell = standing != SourceSession::Lost && standing != SourceSession::Retrying;
    if (isWell && session->getRecorder().isRecording())
        return Icons::create(Icons::Recording, Theme::Bad);
    return Icons::create(signs[standing].shape, signs[standing].accent);
}

QVariant SourceModel::data(const QModelIndex& index, int role) const
{
    const SourceSession* const session = index.isValid() ? getSession(index.row()) : nullptr;
    if (!session)
        return QVariant();
    if (role == Qt::TextAlignmentRole && index.column() == RateColumn)
        return int(Qt::AlignRight | Qt::AlignVCenter);
    if (role == Qt::ToolTipRole)
        return session->getName() + QLatin1String(": ") + stateText(session) +
               (session->getRecorder().isRecording() ? QLatin1Char('\n') + session->getRecorder().getPath()
                                                     : QString());
    if (role == Qt::DecorationRole && index.column() == StateColumn)
        return stateIcon(session);
    if (role == Qt::DecorationRole && index.column() == SourceColumn && session->getOptions().isSimulation())
        return Icons::create(Icons::Flask, Theme::Simulated);
    if (role != Qt::DisplayRole)
        return QVariant();
    switch (index.column()) {
    case SourceColumn:
        return session->getName();
    case StateColumn:
        return stateText(session);
    default:
        return tr("%1 /s").arg(QLocale().toString(session->getMessageRate(), 'f', 0));
    }
}

QVariant SourceModel::headerData(int section, Qt::Orientation orientation, int role) const
{
    if (orientation == Qt::Horizontal && role == Qt::TextAlignmentRole && section == RateColumn)
        return int(Qt::AlignRight | Qt::AlignVCenter);
    if (orientation != Qt::Horizontal || role != Qt::DisplayRole)
        return QVariant();
    switch (section) {
    case SourceColumn:
        return tr("Source");
    case StateColumn:
        return tr("State");
    default:
        return tr("Rate");
    }
}
