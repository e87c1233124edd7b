#ifndef FILESERIES_H
#define FILESERIES_H

#include "messageoutput.h"
#include "outputkind.h"

#include <QFile>

#include <memory>

/**
 * Writes a file or, where that is asked for, one after the other, each of which can be read on its own; the oldest are
 * deleted beyond a limit. A file that is there is not overwritten unless that is allowed: the next number is taken.
 */
class FileSeries : public MessageOutput
{
public:
    struct Settings
    {
        qint64 splitSize = 0; ///< bytes after which the next file begins; 0 for no limit
        qint64 splitTime = 0; ///< microseconds from the first message on after which the next file begins; 0 for none
        qint64 keep = 0;      ///< bytes in all files that are kept; 0 for no limit
        bool isReplaced = false; ///< whether a file of that name is overwritten
        const Definitions* definitions = nullptr;
    };

    /** getErrorString() tells when there can be no file. */
    FileSeries(const OutputAddress& address, const Settings& settings, const StreamDecoder* decoder);

    void setDecoder(const StreamDecoder* decoder) override;
    void processReceived(const ReceivedMessage& message) override;
    void processProblem(const StreamProblem& problem) override;
    void flush() override;
    void close() override;

private:
    bool isSeries() const { return m_settings.splitSize > 0 || m_settings.splitTime > 0; }
    /** The files of the series that are there, the oldest first. */
    QStringList findFiles() const;
    QString nextPath(qint64 time) const;
    bool begin(qint64 time);
    void end();
    void checkFile();
    void deleteOldest();

    const OutputAddress m_address;
    const Settings m_settings;
    QString m_folder;
    QString m_base; // of the names
    std::unique_ptr<QFile> m_file;
    std::unique_ptr<MessageOutput> m_output; // writes to m_file, and goes first
    qint64 m_firstTime = 0;
    qint64 m_unflushed = 0; // bytes of messages
};

#endif
