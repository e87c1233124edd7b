#ifndef RECORDINGFILE_H
#define RECORDINGFILE_H

#include <QFile>
#include <QIODevice>

#include <condition_variable>
#include <mutex>
#include <thread>

/**
 * A file that is written on a thread of its own, so that a slow disk does not hold up who writes.
 *
 * What was handed over is in the system's hands a moment later, and outlives the program.
 */
class RecordingFile : public QIODevice
{
    Q_OBJECT

public:
    explicit RecordingFile(const QString& path, QObject* parent = nullptr);
    /** Writes what is left. */
    ~RecordingFile() override;

    bool open(OpenMode mode) override;
    void close() override;
    bool isSequential() const override { return true; }

    /** Why writing failed; empty while it did not. After that everything written is dropped. */
    QString getProblem() const;
    /** Bytes that are in the file. */
    qint64 getWrittenSize() const;

protected:
    qint64 readData(char*, qint64) override { return -1; }
    qint64 writeData(const char* bytes, qint64 size) override;

private:
    void run();

    QFile m_file; // the thread's own while it runs
    std::thread m_thread;
    mutable std::mutex m_mutex; // for what follows
    std::condition_variable m_wake;
    QByteArray m_pending;
    QString m_problem;
    qint64 m_written = 0;
    bool m_closing = false;
};

#endif
