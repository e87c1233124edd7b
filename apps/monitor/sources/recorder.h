#ifndef RECORDER_H
#define RECORDER_H

#include "streamdecoder.h"

#include <QElapsedTimer>
#include <QObject>
#include <QTimer>

#include <memory>

class Definitions;
class MessageOutput;
class RecordingFile;
struct OutputKind;

/**
 * Writes down what a stream brings, as the kind of output that fits it.
 *
 * The file can be read at any time, also when the program was killed. When writing fails, failed() says so, and
 * reception goes on.
 */
class Recorder : public QObject, public StreamSink
{
    Q_OBJECT

public:
    /** @param definitions  have the schemas of the types that come; must outlive this object */
    explicit Recorder(const Definitions* definitions, QObject* parent = nullptr);
    /** Finishes the recording. */
    ~Recorder() override;

    /** Begins a recording in @p path, which is overwritten; false with the reason in @p error. */
    bool start(const QString& path, const StreamDecoder* decoder, QString* error);
    /** Finishes the recording, so that everything is in the file; why that was not possible, or nothing. */
    QString stop();
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
    void begin();
    void fail(const QString& reason);

    const Definitions* m_definitions;
    const StreamDecoder* m_decoder = nullptr;
    QString m_path;
    const OutputKind* m_kind = nullptr; // of m_output
    bool m_isChecked = false;           // whether m_kind fits what the decoder finds
    std::unique_ptr<RecordingFile> m_file;
    std::unique_ptr<MessageOutput> m_output; // writes to m_file, and goes first; null until there is something to write
    QTimer m_flushTimer;
    QElapsedTimer m_since;
};

#endif
