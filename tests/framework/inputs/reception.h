#ifndef RECEPTION_H
#define RECEPTION_H

#include "definitions.h"
#include "streamopener.h"
#include "streamsource.h"
#include "textrows.h"
#include "transcript.h"
#include "waitfor.h"

/** What a source at an address brings, or why it brings nothing. */
class Reception
{
public:
    explicit Reception(const QString& text, const QString& password = QString())
    {
        InputAddress address;
        QString error;
        if (!InputAddress::parse(text, &address, &error))
            qWarning("%s", qPrintable(error));
        address.password = password;
        StreamOptions options;
        options.definitions = &m_definitions;
        source.reset(new StreamSource(ByteInput::create(address), new StreamOpener(address, options)));
        found.reset(new Transcript(source->getDecoder(), false));
        source->addObserver(found.get());
        source->start();
        waitFor([this]() { return source->getState() > StreamSource::Opening; }, 20000);
    }

    /** The lines so far, sorted, when there are that many. */
    QString take(int count)
    {
        waitFor([&]() { return found->lines.size() >= count || source->getState() == StreamSource::Failed; });
        QStringList lines = found->lines;
        lines.sort();
        found->lines.clear();
        return lines.join(text("; ")).remove(QRegularExpression(text(" @\\d+(\\+\\d+)?")));
    }

    /** What is told of the connection: the error behind the address, or "running" and what the server says. */
    QString getState()
    {
        if (source->getState() == StreamSource::Failed)
            return source->getErrorString().section(text(": "), 1);
        return text("running; ") + take(0);
    }

    Definitions m_definitions;
    std::unique_ptr<StreamSource> source;
    std::unique_ptr<Transcript> found;
};

#endif
