#ifndef RECORDER_H
#define RECORDER_H

#include "streamdecoder.h"

#include <QElapsedTimer>
#include <QHash>
#include <QObject>
#include <QTimer>

#include <memory>

class McapWriter;
class RecordingFile;

/**
 * Writes down what a stream brings, byte for byte: MAVLink as a .tlog, with damaged frames and stray bytes where they
 * came, and everything else as MCAP.
 *
 * What stands in a stream that carries no times gets the time at which it was written down. The file can be read at any
 * time, also when the program was killed. When writing fails, failed() says so, and reception goes on.
 */
class Recorder : public QObject, public StreamSink
{
    Q_OBJECT

public:
    enum Kind
    {
        TlogKind,
        McapKind
    };

    explicit Recorder(QObject* parent = nullptr);
    /** Finishes the recording. */
    ~Recorder() override;

    /** Which kind of recording fits what @p decoder finds. */
    static Kind kindFor(const StreamDecoder* decoder);

    /** Begins a recording in @p path, which is overwritten; false with the reason in @p error. */
    bool start(const QString& path, const StreamDecoder* decoder, QString* error);
    /** Finishes the recording, so that everything is in the file; false when something could not be written. */
    bool stop();
    bool isRecording() const { return m_file != nullptr; }

    const QString& getPath() const { return m_path; }
    /** Bytes in the file. */
    qint64 getSize() const;
    /** Milliseconds since the beginning. */
    qint64 getDuration() const { return isRecording() ? m_since.elapsed() : 0; }

    /** The stream is decoded by @p decoder from now on. */
    void setDecoder(const StreamDecoder* decoder);

    void processReceived(const ReceivedMessage& message) override;
    void processProblem(const StreamProblem& problem) override;

Q_SIGNALS:
    /** Writing failed, and the recording ended there. */
    void failed(const QString& text);

private:
    void flush();
    void handOver();
    void writeTime(qint64 time);
    int channelOf(const ReceivedMessage& message);

    const StreamDecoder* m_decoder = nullptr;
    QString m_path;
    Kind m_kind = TlogKind;
    std::unique_ptr<RecordingFile> m_file;
    std::unique_ptr<McapWriter> m_mcap; // writes to m_file, and goes first
    QByteArray m_buffer;                // of a tlog, what is not handed to the file yet
    qint64 m_lastTime;
    QHash<const MessageInfo*, int> m_schemas;
    QHash<quint64, int> m_channels; // key: id in the high half, sender in the low
    QTimer m_flushTimer;
    QElapsedTimer m_since;
};

#endif
