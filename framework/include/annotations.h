#ifndef CORVEL_ANNOTATIONS_H
#define CORVEL_ANNOTATIONS_H

#include "corvelframework_export.h"

#include <QString>
#include <QStringList>

class FormatInfo;

/**
 * Adds what a definition does not say to the descriptions of a format: role and confidentiality of fields, and virtual
 * fields that are computed from others. The file format is described in docs/annotations.md.
 */
class CORVELFRAMEWORK_EXPORT Annotations
{
public:
    /**
     * Reads the JSON file @p path and applies it to @p format. Before messages of the format are shown.
     *
     * What is right is applied even when something else is wrong, unless the file cannot be read or is no JSON.
     *
     * @param errors  what was wrong, each as "file:line: message.field: text"; must not be null
     * @return whether there was no error
     */
    static bool apply(const QString& path, FormatInfo* format, QStringList* errors);

    /** The annotation file that belongs beside a definition: "NAME.annotations.json" for "NAME.xml". */
    static QString pathBeside(const QString& definitionPath);

private:
    Annotations();
};

#endif
