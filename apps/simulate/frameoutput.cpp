#include "frameoutput.h"

#include <QFile>
#include <QHostInfo>
#include <QtEndian>
#include <QUdpSocket>

#include <cstdio>

namespace
{

class FileOutput : public FrameOutput
{
public:
    FileOutput(const QString& path, bool withTimes)
        : m_file(path)
        , m_withTimes(withTimes)
    {
    }

    bool open() override
    {
        if (m_file.fileName().isEmpty())
            return m_file.open(stdout, QIODevice::WriteOnly) || failWrite();
        return m_file.open(QIODevice::WriteOnly) || failWrite();
    }

    bool write(const SimulatedFrame& frame) override
    {
        if (m_withTimes) {
            char time[8];
            qToBigEndian(frame.time, time);
            if (m_file.write(time, sizeof time) != qint64(sizeof time))
                return failWrite();
        }
        return m_file.write(frame.bytes) == frame.bytes.size() || failWrite();
    }

    bool flush() override { return m_file.flush() || failWrite(); }

private:
    bool failWrite()
    {
        return fail(m_file.fileName().isEmpty() ? QStringLiteral("standard output") : m_file.fileName(),
                    m_file.errorString());
    }

    QFile m_file; // without a name for standard output
    bool m_withTimes;
};

/** A datagram for each frame. */
class UdpOutput : public FrameOutput
{
public:
    UdpOutput(const QString& host, quint16 port)
        : m_host(host)
        , m_port(port)
    {
    }

    bool open() override
    {
        if (m_address.setAddress(m_host))
            return true;
        const QHostInfo info = QHostInfo::fromName(m_host);
        if (info.addresses().isEmpty())
            return fail(m_host, info.errorString());
        m_address = info.addresses().first();
        return true;
    }

    bool write(const SimulatedFrame& frame) override
    {
        if (m_socket.writeDatagram(frame.bytes, m_address, m_port) == frame.bytes.size())
            return true;
        return fail(QStringLiteral("udp:%1:%2").arg(m_host).arg(m_port), m_socket.errorString());
    }

    bool flush() override { return true; }

private:
    QString m_host;
    quint16 m_port;
    QHostAddress m_address;
    QUdpSocket m_socket;
};

} // namespace

FrameOutput::~FrameOutput() {}

std::unique_ptr<FrameOutput> FrameOutput::create(const Options& options)
{
    if (!options.host.isEmpty())
        return std::make_unique<UdpOutput>(options.host, options.port);
    return std::make_unique<FileOutput>(options.path, options.withTimes);
}

bool FrameOutput::fail(const QString& name, const QString& reason)
{
    m_error = name + QStringLiteral(": ") + reason;
    return false;
}
