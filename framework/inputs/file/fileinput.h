#ifndef FILEINPUT_H
#define FILEINPUT_H

#include "byteinput.h"
#include "inputkind.h"

/** Files, and what else has a path. */
extern const InputKind FileInputKind;
/** What another program writes into this one. */
extern const InputKind StandardInputKind;

/**
 * Reads a file, standard input, or what else a path can name: a named pipe, a serial device.
 *
 * Reads in pieces, so that a file's size does not matter. What is no regular file is live.
 */
class FileInput : public ByteInput
{
public:
    explicit FileInput(const InputAddress& address);
    ~FileInput() override;

    bool open() override;
    Status read(QByteArray* bytes, int timeoutMs) override;
    void cancel() override;
    bool isLive() const override { return !m_regular; }
    bool isDatagram() const override { return false; }
    qint64 getSize() const override { return m_size; }
    QVector<InputFile> getFiles() const override;
    bool isSeekable() const override { return m_size > 0; }
    bool seek(qint64 offset) override;

private:
    Status waitForBytes(int timeoutMs);
    bool fail();

    bool m_standardInput;
    QByteArray m_path;
    int m_descriptor;
    int m_cancelPipe[2]; // readable for good once cancelled
    bool m_regular;
    qint64 m_size;
};

#endif
