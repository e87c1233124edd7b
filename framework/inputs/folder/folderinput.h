#ifndef FOLDERINPUT_H
#define FOLDERINPUT_H

#include "byteinput.h"

#include <QFile>
#include <QStringList>

#include <atomic>
#include <memory>
#include <vector>

/**
 * Reads the files of a recording one after the other, as if they were one, and files that are compressed as a whole.
 *
 * These are decompressed into temporary files when the input is opened, which takes its time.
 */
class FolderInput : public ByteInput
{
public:
    explicit FolderInput(const InputAddress& address);
    ~FolderInput() override;

    /** Whether what is there at @p path is for this and not for a FileInput. */
    static bool isFor(const QString& path);

    bool open() override;
    Status read(QByteArray* bytes, int timeoutMs) override;
    void cancel() override { m_cancelled = true; }
    bool isLive() const override { return false; }
    bool isDatagram() const override { return false; }
    qint64 getSize() const override { return m_size; }
    bool isSeekable() const override { return true; }
    bool seek(qint64 offset) override;
    QVector<InputFile> getFiles() const override;
    QVector<StreamProblem> takeNotices() override;

private:
    struct Part
    {
        std::unique_ptr<QFile> file;
        qint64 size;
        QString name;
    };

    void add(const QString& path);
    std::unique_ptr<QFile> decompress(QFile* packed, const QString& name);
    void sortByTime();

    const QString m_path;
    std::atomic<bool> m_cancelled;
    std::vector<Part> m_parts;
    QStringList m_notices;
    qint64 m_size;
    std::size_t m_part;  // that is being read
    qint64 m_partOffset; // in it
};

#endif
