#ifndef MAVLINKENCODING_H
#define MAVLINKENCODING_H

#include "encoding.h"

#include <mutex>

class MavlinkDialect;

/** MAVLink payloads: dialects from XML files, or the one that is built in. There may be several at once. */
class MavlinkEncoding : public Encoding
{
public:
    static const char* name() { return "mavlink"; }

    MavlinkEncoding();
    ~MavlinkEncoding() override;

    /**
     * The dialect of sources that name @p path, as it was loaded last; of those that name none, or nothing that was
     * loaded, the one in use, which is at first the built-in one. Never null; any thread.
     */
    MavlinkDialect* getDialect(const QString& path = QString());

    bool recognizes(const QByteArray& head) const override;
    FormatInfo* load(const QString& path, const QStringList& importPaths, Definitions::Scope scope,
                     QStringList* errors) override;
    FormatInfo* getFormat(const QString& path) override;
    QVector<FormatInfo*> getFormats() const override;

private:
    struct Loaded
    {
        std::unique_ptr<MavlinkDialect> dialect;
        QString path;
        bool isNamed; // by single sources
    };

    Loaded* find(const QString& path);

    mutable std::mutex m_mutex;   // for what follows
    std::vector<Loaded> m_loaded; // all that ever were, in the order of loading
    MavlinkDialect* m_common;     // of sources that name none; null until it is needed
};

#endif
