#include "relay.h"

#include "commandline.h"
#include "formatinfo.h"
#include "inputkind.h"
#include "relaysource.h"

#include <QCryptographicHash>
#include <QDir>
#include <QFileInfo>
#include <QtEndian>
#include <QUuid>

#include <algorithm>

namespace
{

const int LookMs = 20;
const int LongestLine = 1000; // characters
// What a service manager waits for at least.
const int LongestEndMs = 5000;
const int LongestFinishMs = 2000; // of which inputs with a session need that
const int LongestUnconfirmedMs = 200;
const int OriginBytes = 64 * 1024;

// What servers and clients say of themselves can contain anything.
void tell(QString text)
{
    if (text.size() > LongestLine)
        text = text.left(LongestLine) + QLatin1String("...");
    for (QChar& character : text)
        if (!character.isPrint())
            character = QLatin1Char('?');
    CommandLine::complain(text);
}

/**
 * What is the same whenever a recording is read; 0 for what is none.
 *
 * A file may have grown since. Of a folder every file counts, for one more can come to stand before others: better all
 * of it once more than messages that are taken for others.
 */
quint64 originOf(const InputAddress& address)
{
    const QFileInfo whole(address.path);
    if (!address.kind->isFile() || !(whole.isFile() || whole.isDir()))
        return 0;
    QCryptographicHash hash(QCryptographicHash::Sha256);
    hash.addData(whole.canonicalFilePath().toUtf8() + '\n');
    QFileInfoList parts{whole};
    if (whole.isDir())
        parts = QDir(address.path).entryInfoList(QDir::Files, QDir::Name);
    for (const QFileInfo& part : std::as_const(parts)) {
        if (whole.isDir())
            hash.addData(part.fileName().toUtf8() + '\n' + QByteArray::number(part.size()) + '\n');
        QFile file(part.filePath());
        if (!file.open(QIODevice::ReadOnly))
            return 0;
        hash.addData(file.read(OriginBytes));
    }
    return qFromLittleEndian<quint64>(hash.result().constData());
}

} // namespace

Relay::Relay(const RelayOptions& options)
    : m_options(options)
    , m_publisher(&m_definitions)
{
    connect(&m_timer, &QTimer::timeout, this, &Relay::look);
    connect(&m_statsTimer, &QTimer::timeout, this, &Relay::printCounts);
}

Relay::~Relay() {}

int Relay::start()
{
    if (!loadDefinitions())
        return Unwritable;
    QString error;
    const QVector<const FormatInfo*> formats = m_definitions.getCompleteFormats() + m_definitions.getSchemaFormats();
    if (!m_selection.setUp(m_options.selections, formats, false, &error)) {
        tell(error);
        return WrongUsage;
    }
    if (!openOutlets())
        return Unwritable;
    openSources();
    m_timer.start(LookMs);
    if (m_options.statsMs > 0)
        m_statsTimer.start(int(qMin<qint64>(m_options.statsMs, 1 << 30)));
    m_sinceStats.start();
    return -1;
}

bool Relay::loadDefinitions()
{
    QStringList errors;
    for (const QString& path : m_options.source.definitions)
        m_definitions.load(path, m_options.source.importPaths, &errors);
    if (!m_options.source.annotations.isEmpty())
        m_definitions.annotate(m_options.source.annotations, &errors);
    m_definitions.publish(&errors);
    for (const QString& error : errors)
        tell(error);
    return errors.isEmpty();
}

bool Relay::openBufferFolder(QString* error)
{
    m_bufferFolder = m_options.bufferFolder;
    if (m_bufferFolder.isEmpty()) {
        m_temporary.reset(new QTemporaryDir);
        m_bufferFolder = m_temporary->path();
        *error = m_temporary->errorString();
        return m_temporary->isValid();
    }
    // Two programs would take each other's messages away.
    m_lock.reset(new QLockFile(m_bufferFolder + QLatin1String("/lock")));
    m_lock->setStaleLockTime(0);
    if (QDir().mkpath(m_bufferFolder) && m_lock->tryLock(0))
        return true;
    *error = m_lock->error() == QLockFile::LockFailedError
                 ? QStringLiteral("%1 is in use by another corvel-relay").arg(m_bufferFolder)
                 : QStringLiteral("%1 cannot be written").arg(m_bufferFolder);
    return false;
}

Outlet::Settings Relay::settingsFor(const OutputAddress& address, const QString& run) const
{
    Outlet::Settings settings;
    settings.files = m_options.files;
    settings.files.definitions = &m_definitions;
    const QByteArray name = QCryptographicHash::hash(address.getName().toUtf8(), QCryptographicHash::Sha256).toHex();
    settings.queue.folder =
        QStringLiteral("%1/%2-%3")
            .arg(m_bufferFolder, QLatin1String(address.kind->name), QString::fromLatin1(name.left(12)));
    settings.queue.run = run;
    settings.queue.isKept = !m_options.bufferFolder.isEmpty();
    settings.queue.isAcknowledged = address.kind->isAcknowledged();
    settings.queue.limit = m_options.buffer;
    return settings;
}

bool Relay::openOutlets()
{
    // A recording that was made is not lost for a command line that is repeated; live the next one goes on.
    const bool isLive = std::any_of(m_options.inputs.begin(), m_options.inputs.end(), [](const InputAddress& address) {
        return address.kind->isLive() || !address.session.isEmpty();
    });
    const bool isSeries = m_options.files.splitSize > 0 || m_options.files.splitTime > 0;
    for (const OutputAddress& address : m_options.outputs) {
        if (address.kind->isFile() && !isLive && !isSeries && !m_options.files.isReplaced &&
            QFileInfo::exists(address.path)) {
            tell(QStringLiteral("%1 is there already; --overwrite replaces it").arg(address.path));
            return false;
        }
    }
    QString error;
    if (!openBufferFolder(&error)) {
        tell(error);
        return false;
    }
    const QString run = QString::fromLatin1(QUuid::createUuid().toRfc4122().toHex().left(16));
    for (const OutputAddress& address : m_options.outputs) {
        m_outlets.emplace_back(new Outlet(address, settingsFor(address, run)));
        const OutputQueue::Counts counts = m_outlets.back()->getCounts().queue;
        if (!m_outlets.back()->start(&error)) {
            tell(error);
            return false;
        }
        const quint64 waiting = m_outlets.back()->getCounts().queue.waitingMessages;
        if (waiting > counts.waitingMessages)
            tell(QStringLiteral("%1: goes on with %2 messages that an earlier run left")
                     .arg(address.getName())
                     .arg(waiting));
    }
    m_lastCounts.resize(int(m_outlets.size()));
    m_isFailureTold.resize(int(m_outlets.size()));
    return true;
}

void Relay::openSources()
{
    StreamOptions options = m_options.source.stream;
    options.definitions = &m_definitions;
    m_sources.resize(std::size_t(m_options.inputs.size()));
    for (std::size_t i = 0; i < m_sources.size(); ++i) {
        Source& source = m_sources[i];
        source.origin = originOf(m_options.inputs.at(int(i)));
        source.tap.reset(new Tap(this, int(i)));
        source.source.reset(new RelaySource(m_options.inputs.at(int(i)), options, m_options.speed, source.tap.get()));
        connect(source.source.get(), &RelaySource::recognized, this, [this, i] { findTakers(&m_sources[i]); });
        connect(source.source.get(), &RelaySource::received, this, [this, i] {
            for (const std::unique_ptr<Outlet>& outlet : m_outlets)
                outlet->seal();
            mark(&m_sources[i]);
            confirm();
            hold();
        });
        connect(source.source.get(), &RelaySource::told, this, [](const QString& text) { tell(text); });
    }
    const bool isAnyKept = std::any_of(m_options.inputs.begin(), m_options.inputs.end(),
                                       [](const InputAddress& address) { return !address.session.isEmpty(); });
    for (const Source& source : m_sources) {
        if (isAnyKept && source.source->getAddress().session.isEmpty())
            tell(QStringLiteral("%1 has no session: nobody keeps what comes of it while this does not run")
                     .arg(source.source->getAddress().toString()));
        source.source->start();
    }
}

/** Finds the outputs that can take what the source brings, and tells of the others. */
void Relay::findTakers(Source* source)
{
    const StreamDecoder* const decoder = source->source->getDecoder();
    source->decoder = decoder;
    source->takers.fill(true, int(m_outlets.size()));
    for (std::size_t i = 0; i < m_outlets.size(); ++i) {
        if (m_outlets[i]->takes(decoder))
            continue;
        source->takers[int(i)] = false;
        tell(QStringLiteral(
                 "%1 does not take what %2 brings: only MAVLink has frames that can be passed on as they came")
                 .arg(m_outlets[i]->getAddress().getName(), source->source->getAddress().toString()));
        m_hasFailed = true;
    }
}

bool Relay::isSelected(Source* source, const ReceivedMessage& message)
{
    if (m_options.selections.isEmpty())
        return true;
    while (source->isSelected.size() <= message.row)
        source->isSelected.append(-1);
    signed char& known = source->isSelected[message.row];
    if (known < 0) {
        const StreamIdentities& identities = source->source->getIdentities();
        const QString sender = identities.getSenderName(identities.getRows().at(message.row).sender);
        known = message.info && m_selection.choose(message.info, sender).isPrinted;
    }
    return known > 0;
}

void Relay::pass(int number, const ReceivedMessage& message)
{
    Source& source = m_sources[std::size_t(number)];
    const StreamDecoder* const decoder = source.source->getDecoder();
    if (decoder != source.decoder)
        findTakers(&source);
    ++source.messages;
    if (m_isEnding || !isSelected(&source, message))
        return;
    ReceivedMessage known = message;
    if (source.origin)
        known.origin = source.origin + source.messages;
    MessagePublisher::Published& published =
        m_publisher.publish(number, known, source.source->getIdentities(), decoder);
    for (std::size_t i = 0; i < m_outlets.size(); ++i)
        if (source.takers.at(int(i)))
            m_outlets[i]->processMessage(&m_publisher, &published);
}

void Relay::passDamage(int number, const StreamProblem& problem)
{
    const Source& source = m_sources[std::size_t(number)];
    if (!problem.data || m_isEnding || !source.decoder || !m_options.selections.isEmpty())
        return;
    for (std::size_t i = 0; i < m_outlets.size(); ++i)
        if (source.takers.at(int(i)) && m_outlets[i]->getAddress().kind->takesBytesAsTheyCame())
            m_outlets[i]->processDamage(problem);
}

/** Notes which messages every output has to have before the source need not give again what it has handed out. */
void Relay::mark(Source* source)
{
    if (m_isEnding || source->source->getAddress().session.isEmpty())
        return;
    Mark mark{source->source->getRun(), source->source->getHandedOut(), {}};
    if (!source->marks.empty() && source->marks.back().run == mark.run && source->marks.back().offset == mark.offset)
        return;
    for (const std::unique_ptr<Outlet>& outlet : m_outlets)
        mark.sealed.append(outlet->getSealed());
    source->marks.push_back(mark);
}

/** Confirms to the sources what the outputs have. One that has failed is not waited for, unless all have. */
void Relay::confirm()
{
    QVector<quint64> safe;
    bool isAnyThere = false;
    for (const std::unique_ptr<Outlet>& outlet : m_outlets) {
        const bool isThere = outlet->getError().isEmpty();
        isAnyThere = isAnyThere || isThere;
        safe.append(isThere ? outlet->getSafe() : ~Q_UINT64_C(0));
    }
    bool isAnyWaiting = false;
    for (Source& source : m_sources) {
        const Mark* last = nullptr;
        Mark current;
        while (isAnyThere && !source.marks.empty() &&
               std::equal(safe.begin(), safe.end(), source.marks.front().sealed.begin(),
                          [](quint64 has, quint64 needed) { return has >= needed; })) {
            current = source.marks.front();
            last = &current;
            source.marks.pop_front();
        }
        isAnyWaiting = isAnyWaiting || !source.marks.empty();
        if (last && last->run == source.source->getRun())
            source.source->confirm(last->offset);
        if (last)
            m_sinceConfirm.start();
    }
    // A server hands out no more than some messages until it hears of them.
    if (!isAnyWaiting || (m_sinceConfirm.isValid() && !m_sinceConfirm.hasExpired(LongestUnconfirmedMs)))
        return;
    m_sinceConfirm.start();
    for (const std::unique_ptr<Outlet>& outlet : m_outlets)
        outlet->flush();
}

/** Lets recordings wait for outputs that are behind. */
void Relay::hold()
{
    const bool isHeld = std::any_of(m_outlets.begin(), m_outlets.end(),
                                    [](const std::unique_ptr<Outlet>& outlet) { return outlet->isHolding(); });
    for (const Source& source : m_sources)
        if (!source.source->isEnded())
            source.source->setPaused(isHeld);
}

void Relay::look()
{
    confirm();
    hold();
    for (std::size_t i = 0; i < m_outlets.size(); ++i) {
        const QString name = m_outlets[i]->getAddress().getName();
        for (const QString& notice : m_outlets[i]->takeNotices())
            tell(QStringLiteral("%1: %2").arg(name, notice));
        const QString error = m_outlets[i]->getError();
        if (error.isEmpty() || m_isFailureTold.at(int(i)))
            continue;
        tell(QStringLiteral("%1; the other outputs go on").arg(error));
        m_isFailureTold[int(i)] = true;
        m_hasFailed = true;
    }
    const bool isAnyLeft = m_isFailureTold.contains(false);
    const bool isLate = m_sinceInterrupt.isValid() && m_sinceInterrupt.hasExpired(LongestFinishMs);
    if (!m_isEnding && (!isAnyLeft || isLate ||
                        std::all_of(m_sources.begin(), m_sources.end(),
                                    [](const Source& source) { return source.source->isEnded(); })))
        endOutlets();
    if (!m_isEnding)
        return;
    if (m_sinceInterrupt.isValid() && m_sinceInterrupt.hasExpired(LongestEndMs)) {
        m_sinceInterrupt.invalidate();
        for (const std::unique_ptr<Outlet>& outlet : m_outlets)
            if (!outlet->isEnded())
                outlet->abandon();
    }
    if (std::all_of(m_outlets.begin(), m_outlets.end(),
                    [](const std::unique_ptr<Outlet>& outlet) { return outlet->isEnded(); }))
        finish();
}

void Relay::interrupt()
{
    if (m_sinceInterrupt.isValid())
        return;
    m_sinceInterrupt.start();
    for (const Source& source : m_sources)
        if (!source.source->isEnded())
            source.source->finish();
    look();
}

void Relay::endOutlets()
{
    m_isEnding = true;
    for (const Source& source : m_sources) {
        m_hasFailed = m_hasFailed || source.source->hasFailed();
        if (!source.source->isEnded())
            source.source->stop();
    }
    for (const std::unique_ptr<Outlet>& outlet : m_outlets)
        outlet->end();
}

void Relay::finish()
{
    m_timer.stop();
    m_statsTimer.stop();
    for (const std::unique_ptr<Outlet>& outlet : m_outlets) {
        const QString name = outlet->getAddress().getName();
        for (const QString& notice : outlet->takeNotices())
            tell(QStringLiteral("%1: %2").arg(name, notice));
        const Outlet::Counts counts = outlet->getCounts();
        if (counts.dropped > 0)
            tell(QStringLiteral("%1: %2 messages were dropped").arg(name).arg(counts.dropped));
        if (counts.queue.waitingMessages == 0)
            continue;
        const bool isKept = !m_options.bufferFolder.isEmpty();
        m_hasFailed = m_hasFailed || !isKept;
        const QString waiting = QStringLiteral("%1: %2 messages").arg(name).arg(counts.queue.waitingMessages);
        tell(isKept ? QStringLiteral("%1 wait in %2 for the next run").arg(waiting, m_options.bufferFolder)
                    : waiting + QStringLiteral(" are lost; with --buffer-folder they would wait for the next run"));
    }
    if (m_options.statsMs > 0)
        printCounts();
    Q_EMIT ended(m_hasFailed ? Unwritable : Success);
}

void Relay::printCounts()
{
    const double seconds = qMax<qint64>(1, m_sinceStats.restart()) / 1000.;
    for (std::size_t i = 0; i < m_outlets.size(); ++i) {
        const Outlet::Counts counts = m_outlets[i]->getCounts();
        const double rate = double(counts.messages - m_lastCounts.at(int(i))) / seconds;
        m_lastCounts[int(i)] = counts.messages;
        tell(QStringLiteral("%1: %2 messages, %3 bytes, %4/s, %5 waiting (%6 bytes, %7 on disk), %8 dropped")
                 .arg(m_outlets[i]->getAddress().getName())
                 .arg(counts.messages)
                 .arg(counts.bytes)
                 .arg(rate, 0, 'f', 1)
                 .arg(counts.queue.waitingMessages)
                 .arg(counts.queue.waitingBytes)
                 .arg(counts.queue.bytesOnDisk)
                 .arg(counts.dropped));
    }
}
