#include "filefilters.h"

#include "container.h"
#include "definitions.h"

#include <QCoreApplication>
#include <QDir>
#include <QFileInfo>

namespace
{

QStringList patternsOf(const Container& container)
{
    return QString::fromLatin1(container.filePatterns).split(QLatin1Char(' '));
}

QString filter(const QString& title, const QStringList& patterns)
{
    return QStringLiteral("%1 (%2)").arg(title, patterns.join(QLatin1Char(' ')));
}

QString allOf(const QString& title, const QVector<Definitions::FileKind>& kinds)
{
    QStringList patterns;
    QStringList filters;
    for (const Definitions::FileKind& kind : kinds) {
        if (kind.patterns.isEmpty() || kind.patterns.constFirst().isEmpty())
            continue;
        patterns += kind.patterns;
        filters.append(filter(kind.title, kind.patterns));
    }
    patterns.removeDuplicates();
    filters.prepend(filter(title, patterns));
    filters.append(filter(QCoreApplication::translate("FileFilters", "All files"), {QStringLiteral("*")}));
    return filters.join(QLatin1String(";;"));
}

} // namespace

QString FileFilters::recordings()
{
    QVector<Definitions::FileKind> kinds;
    for (const Container* container : Container::getAll())
        kinds.append({container->getTitle(), patternsOf(*container)});
    return allOf(QCoreApplication::translate("FileFilters", "Recordings"), kinds);
}

QString FileFilters::definitions(const Definitions& definitions)
{
    return allOf(QCoreApplication::translate("FileFilters", "Definitions"), definitions.getFileKinds());
}

bool FileFilters::isDefinitions(const Definitions& definitions, const QString& path)
{
    const QString name = QFileInfo(path).fileName();
    for (const Container* container : Container::getAll())
        if (QDir::match(patternsOf(*container), name))
            return false;
    for (const Definitions::FileKind& kind : definitions.getFileKinds())
        if (QDir::match(kind.patterns, name))
            return true;
    return false;
}
