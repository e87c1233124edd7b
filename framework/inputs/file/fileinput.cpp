#include "fileinput.h"

#include "folderinput.h"

#include <QCoreApplication>
#include <QFile>

#include <cerrno>
#include <cstddef>
#include <cstring>
#include <fcntl.h>
#include <poll.h>
#include <sys/stat.h>
#include <unistd.h>

namespace
{

const int PieceSize = 64 * 1024;

QString nameOf(const InputAddress& address)
{
    if (address.kind == &StandardInputKind)
        return QCoreApplication::translate("ByteInput", "standard input");
    return address.path;
}

ByteInput* create(const InputAddress& address)
{
    if (address.kind == &FileInputKind && FolderInput::isFor(address.path))
        return new FolderInput(address);
    return new FileInput(address);
}

const InputField NoFields[] = {{}};

const InputField FileFields[] = {{"path", QT_TRANSLATE_NOOP("InputKind", "Fil&e:"),
                                  QT_TRANSLATE_NOOP("InputKind", "The path of the file"), "", InputField::FileEditor,
                                  nullptr, false},
                                 {}};

} // namespace

const InputKind FileInputKind = {
    "",      QT_TRANSLATE_NOOP("InputKind", "A recording, a folder of one, or a device file"),
    "FILE",  "flight.tlog",
    0,       InputKind::FileProperty,
    "",      FileFields,
    nullptr, create};

const InputKind StandardInputKind = {
    "-", QT_TRANSLATE_NOOP("InputKind", "Standard input"), "-", "-", 0, 0, "", NoFields, nullptr, create};

FileInput::FileInput(const InputAddress& address)
    : ByteInput(nameOf(address))
    , m_standardInput(address.kind == &StandardInputKind)
    , m_path(QFile::encodeName(address.path))
    , m_descriptor(-1)
    , m_cancelPipe{-1, -1}
    , m_regular(true)
    , m_size(-1)
{
    // Here and not in open(), because cancel() may come before it. Without a pipe (no descriptors left) open() fails.
    if (pipe(m_cancelPipe) == 0) {
        fcntl(m_cancelPipe[0], F_SETFD, FD_CLOEXEC);
        fcntl(m_cancelPipe[1], F_SETFD, FD_CLOEXEC);
    }
}

FileInput::~FileInput()
{
    if (m_descriptor >= 0 && !m_standardInput)
        close(m_descriptor);
    for (const int end : m_cancelPipe)
        if (end >= 0)
            close(end);
}

bool FileInput::fail()
{
    setError(QString::fromLocal8Bit(std::strerror(errno)));
    return false;
}

bool FileInput::open()
{
    if (m_cancelPipe[0] < 0) {
        errno = EMFILE;
        return fail();
    }
    // A named pipe without a writer must not make this wait, hence O_NONBLOCK; reading waits with poll().
    m_descriptor =
        m_standardInput ? STDIN_FILENO : ::open(m_path.constData(), O_RDONLY | O_CLOEXEC | O_NOCTTY | O_NONBLOCK);
    struct stat status;
    if (m_descriptor < 0 || fstat(m_descriptor, &status) != 0)
        return fail();
    if (S_ISDIR(status.st_mode)) {
        errno = EISDIR;
        return fail();
    }
    m_regular = S_ISREG(status.st_mode);
    // The pseudo-files of the system say that they have 0 bytes.
    m_size = m_regular && status.st_size > 0 ? status.st_size : -1;
    return true;
}

ByteInput::Status FileInput::waitForBytes(int timeoutMs)
{
    pollfd waits[2] = {{m_cancelPipe[0], POLLIN, 0}, {m_descriptor, POLLIN, 0}};
    const int ready = poll(waits, 2, timeoutMs);
    if (ready > 0)
        return waits[0].revents ? Nothing : Data;
    // After a signal too: a caller that ends on one shall get the chance to.
    if (ready == 0 || errno == EINTR)
        return Nothing;
    fail();
    return Failed;
}

ByteInput::Status FileInput::read(QByteArray* bytes, int timeoutMs)
{
    const Status status = waitForBytes(timeoutMs);
    bytes->resize(status == Data ? PieceSize : 0);
    if (status != Data)
        return status;
    const ssize_t count = ::read(m_descriptor, bytes->data(), static_cast<std::size_t>(bytes->size()));
    const int error = errno;
    bytes->resize(static_cast<int>(qMax<ssize_t>(count, 0)));
    if (count > 0)
        return Data;
    if (count == 0)
        return End;
    if (error == EINTR || error == EAGAIN)
        return Nothing;
    errno = error;
    fail();
    return Failed;
}

QVector<InputFile> FileInput::getFiles() const
{
    if (m_standardInput || m_size <= 0)
        return QVector<InputFile>();
    return {{QFile::decodeName(m_path), m_size}};
}

bool FileInput::seek(qint64 offset)
{
    return lseek(m_descriptor, offset, SEEK_SET) == offset || fail();
}

void FileInput::cancel()
{
    const char byte = 0;
    // A pipe that is full has been written to before.
    const ssize_t written = m_cancelPipe[1] >= 0 ? write(m_cancelPipe[1], &byte, 1) : 0;
    Q_UNUSED(written);
}
