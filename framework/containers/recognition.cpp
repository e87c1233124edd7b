#include "container.h"

#include <QCoreApplication>

// Further in, a recording would have to be mostly noise.
static const int GreatestHead = 64 * 1024;

static const int ShownBytes = 16;

// With a container that was told only that one is asked: it may have to look how messages lie.
static QVector<const Container*> candidates(const StreamOptions& options)
{
    const Container* const told = Container::find(options.container);
    return told ? QVector<const Container*>{told} : Container::getAll();
}

Recognition Recognition::recognize(const StreamHead& head, const StreamOptions& options)
{
    const Container* possible = nullptr;
    for (const Container* container : candidates(options)) {
        const Container::Answer answer = container->recognize(head, options);
        if (answer == Container::Yes)
            return {answer, container};
        if (answer == Container::More)
            possible = container;
    }
    if (!possible || head.isAll || head.bytes.size() >= GreatestHead)
        return {Container::No, nullptr};
    return {Container::More, possible};
}

QString Recognition::describeFailure(const StreamHead& head, const StreamOptions& options)
{
    if (head.bytes.isEmpty())
        return QCoreApplication::translate("Container", "the input is empty");
    QStringList known;
    for (const Container* container : candidates(options))
        known.append(container->getTitle() + QLatin1String(" (") + QLatin1String(container->name) + QLatin1Char(')'));
    return QCoreApplication::translate("Container", "not recognised: it begins with %1; what can be read: %2")
        .arg(QString::fromLatin1(head.bytes.left(ShownBytes).toHex(' ').toUpper()), known.join(QLatin1String(", ")));
}
