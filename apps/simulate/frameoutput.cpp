#include "frameoutput.h"

#include "channelsimulation.h"
#include "mcapwriter.h"

#include <QBuffer>
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

/** A recording of a ChannelSimulation, of which bytes get changed in some chunks. */
class McapOutput : public FrameOutput
{
public:
    McapOutput(const Options& options, const ChannelSimulation* channels)
        : m_file(options.path)
        , m_corruptRate(options.settings.corruptRate)
        , m_numbers(options.settings.seed, 1)
        , m_writer(&m_buffer, settings(channels))
    {
        m_buffer.open(QIODevice::WriteOnly);
        m_writer.open();
        m_channels = channels->describe(&m_writer);
    }

    bool open() override
    {
        const bool opened =
            m_file.fileName().isEmpty() ? m_file.open(stdout, QIODevice::WriteOnly) : m_file.open(QIODevice::WriteOnly);
        return opened ? drain() : failWrite();
    }

    bool write(const SimulatedFrame& frame) override
    {
        m_writer.writeMessage(m_channels.at(frame.channel), frame.sequence, quint64(frame.time) * 1000, frame.bytes);
        return drain();
    }

    bool flush() override { return m_file.flush() || failWrite(); }

    bool close() override
    {
        m_writer.flush();
        if (!drain())
            return false;
        m_writer.close();
        return drain() && flush();
    }

private:
    static McapWriter::Settings settings(const ChannelSimulation* channels)
    {
        McapWriter::Settings settings;
        settings.profile = channels->getProfile();
        settings.writerName = "corvel-simulate " CORVEL_VERSION;
        return settings;
    }

    /** Writes to the file what is in the buffer: nothing, definitions, or a chunk with its index. */
    bool drain()
    {
        const int firstRecord = 1 + 8 + 8 + 8 + 8 + 4 + 4 + 4 + 8; // of a chunk with the compression "zstd"
        QByteArray& bytes = m_buffer.buffer();
        if (bytes.startsWith('\x06')) {
            const quint64 length = qFromLittleEndian<quint64>(bytes.constData() + 1) + 9;
            const bool corrupted = m_numbers.uniform() < m_corruptRate;
            const int position = firstRecord + m_numbers.below(int(length) - firstRecord);
            if (corrupted)
                bytes[position] = char(bytes.at(position) ^ (1 + m_numbers.below(255)));
        }
        const bool written = m_file.write(bytes) == bytes.size();
        bytes.clear();
        m_buffer.seek(0);
        return written || failWrite();
    }

    bool failWrite()
    {
        return fail(m_file.fileName().isEmpty() ? QStringLiteral("standard output") : m_file.fileName(),
                    m_file.errorString());
    }

    QFile m_file; // without a name for standard output
    double m_corruptRate;
    RandomNumbers m_numbers;
    QBuffer m_buffer;
    McapWriter m_writer;
    QVector<quint16> m_channels; // there
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

std::unique_ptr<FrameOutput> FrameOutput::create(const Options& options, const ChannelSimulation* channels)
{
    if (!options.host.isEmpty())
        return std::make_unique<UdpOutput>(options.host, options.port);
    if (channels)
        return std::make_unique<McapOutput>(options, channels);
    return std::make_unique<FileOutput>(options.path, options.withTimes);
}

bool FrameOutput::fail(const QString& name, const QString& reason)
{
    m_error = name + QStringLiteral(": ") + reason;
    return false;
}
