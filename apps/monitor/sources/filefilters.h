#ifndef FILEFILTERS_H
#define FILEFILTERS_H

#include <QString>

class Definitions;

/** What dialogs offer to choose among files: those of all kinds that can be read, then each kind, then all files. */
namespace FileFilters
{

/** The recordings of every container. */
QString recordings();
/** The files of definitions of every encoding. */
QString definitions(const Definitions& definitions);

/** Whether a file is one of definitions, as far as its name tells; one that can be a recording as well is none. */
bool isDefinitions(const Definitions& definitions, const QString& path);

} // namespace FileFilters

#endif
