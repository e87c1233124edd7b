#ifndef PROTOBUFIMPORTER_H
#define PROTOBUFIMPORTER_H

#include <QByteArray>
#include <QStringList>

/** Reads .proto texts. */
namespace ProtobufImporter
{

/**
 * The serialized FileDescriptorSet of a .proto text and all that it imports, comments included; the text itself last.
 *
 * @param errors  each as "file:line:column: text"; must not be null
 * @return empty when there was an error
 */
QByteArray read(const QString& path, const QStringList& importPaths, QStringList* errors);

} // namespace ProtobufImporter

#endif
