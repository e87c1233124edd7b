// Prints every value of one field of a recording, whatever its format: readfield drive.mcap '*/demo.Car/speed'. Needs
// no window, and of Qt no more than its core.

#include "byteinput.h"
#include "container.h"
#include "definitions.h"
#include "formatregistry.h"
#include "message.h"
#include "messageinfo.h"
#include "messagereference.h"
#include "pathexpression.h"
#include "recordingindex.h"
#include "streamdecoder.h"
#include "streamopener.h"

#include <QCoreApplication>
#include <QHash>

#include <cstdio>

/** Gets every message of the recording, and prints the field of those that have it. */
class FieldPrinter : public StreamSink
{
public:
    FieldPrinter(const StreamDecoder* decoder, const QString& path)
        : m_decoder(decoder)
    {
        m_expression.setString(path);
        m_expression.setConsiderSubMessages(true);
    }

    /** What is wrong with the path; empty when nothing is. */
    QString getError() const { return m_expression.errorString(); }
    /** Whether any type that came has the field. */
    bool hasFound() const { return m_hasFound; }

    void processReceived(const ReceivedMessage& received) override
    {
        if (!received.info)
            return; // of a type that nobody described
        const QVector<FieldPath> paths = getPaths(received.info);
        if (paths.isEmpty())
            return;
        // What comes is bytes; only of what somebody looks at a message is made.
        const MessageReference message = MessageReference::adopt(received.createMessage(QString()));
        for (const FieldPath& path : paths)
            for (const PathValue& found : path.getValues(message.get()))
                if (found.isValid())
                    std::printf("%lld\t%s\n", static_cast<long long>(message->getTime()), qPrintable(found.getText()));
    }

    void processProblem(const StreamProblem& problem) override
    {
        std::fprintf(stderr, "at byte %llu: %s\n", static_cast<unsigned long long>(problem.offset),
                     qPrintable(problem.describe(QString())));
    }

private:
    /** Where the expression leads in messages of a type: found once, and then walked without any text. */
    const QVector<FieldPath>& getPaths(const MessageInfo* info)
    {
        const auto known = m_paths.constFind(info);
        if (known != m_paths.constEnd())
            return *known;
        // A recording can bring its types along. They are added to their format here, and are found from then on.
        QStringList problems;
        m_decoder->publishTypes(&problems);
        for (const QString& problem : problems)
            std::fprintf(stderr, "%s\n", qPrintable(problem));
        FormatRegistry::getInstance()->addFormat(info->getFormatInfo());
        QVector<FieldPath> paths;
        for (const FieldPath& path : m_expression.getMatches())
            if (path.getMessageInfo() == info && path.getField())
                paths.append(path);
        m_hasFound |= !paths.isEmpty();
        return *m_paths.insert(info, paths);
    }

    const StreamDecoder* m_decoder;
    PathExpression m_expression;
    QHash<const MessageInfo*, QVector<FieldPath>> m_paths;
    bool m_hasFound = false;
};

int main(int argc, char** argv)
{
    const QCoreApplication application(argc, argv);
    const QStringList arguments = QCoreApplication::arguments();
    if (arguments.size() != 3)
        return std::fprintf(stderr, "usage: readfield RECORDING PATH\n"), 1;

    Definitions definitions; // outlives all that names its types
    StreamOptions options;
    options.definitions = &definitions;
    const OpenedInput opened = openStream(InputAddress::ofFile(arguments[1]), options);
    if (!opened.input)
        return std::fprintf(stderr, "%s\n", qPrintable(opened.error)), 1;
    if (opened.stream.needsIndex && opened.stream.index)
        opened.stream.index->prepare([](int) { return true; });

    StreamDecoder* const decoder = opened.stream.decoder.get();
    FieldPrinter printer(decoder, arguments[2]);
    if (!printer.getError().isEmpty())
        return std::fprintf(stderr, "%s: %s\n", qPrintable(arguments[2]), qPrintable(printer.getError())), 1;
    ByteInput::Status status = ByteInput::Nothing;
    while (status != ByteInput::End && status != ByteInput::Failed) {
        QByteArray bytes;
        status = opened.input->read(&bytes, 100);
        decoder->feed(bytes.constData(), static_cast<int>(bytes.size()), Message::NoTime, &printer);
    }
    decoder->finish(&printer);
    if (status == ByteInput::Failed)
        return std::fprintf(stderr, "%s\n", qPrintable(opened.input->getErrorString())), 1;
    if (!printer.hasFound())
        return std::fprintf(stderr, "%s: no message that came has such a field\n", qPrintable(arguments[2])), 1;
    return 0;
}
