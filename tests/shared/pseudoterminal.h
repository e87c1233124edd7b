#ifndef PSEUDOTERMINAL_H
#define PSEUDOTERMINAL_H

#include <QByteArray>
#include <QFile>
#include <QString>

#include <cstdlib>
#include <fcntl.h>
#include <termios.h>
#include <unistd.h>

/** A serial device that can be plugged in and out at a path: the other end of a pseudo-terminal. */
class PseudoTerminal
{
public:
    /** @param path  where the port is to be found while the device is plugged in */
    explicit PseudoTerminal(const QString& path)
        : m_path(path)
    {
    }
    ~PseudoTerminal() { unplug(); }

    bool plugIn()
    {
        m_device = posix_openpt(O_RDWR | O_NOCTTY | O_CLOEXEC | O_NONBLOCK);
        return m_device >= 0 && grantpt(m_device) == 0 && unlockpt(m_device) == 0 &&
               QFile::link(QFile::decodeName(ptsname(m_device)), m_path);
    }

    void unplug()
    {
        if (m_device >= 0)
            close(m_device);
        m_device = -1;
        QFile::remove(m_path);
    }

    /** Sends what the port takes of @p bytes, and returns how many these are. */
    int send(const QByteArray& bytes)
    {
        return int(qMax<ssize_t>(0, write(m_device, bytes.constData(), std::size_t(bytes.size()))));
    }

    /** How the port is set. */
    termios settings() const
    {
        termios result = {};
        tcgetattr(m_device, &result);
        return result;
    }

private:
    QString m_path;
    int m_device = -1;
};

#endif
