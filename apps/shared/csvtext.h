#ifndef CSVTEXT_H
#define CSVTEXT_H

#include <QByteArray>
#include <QStringList>

/** Comma-separated values in UTF-8, as RFC 4180 has them. */
namespace CsvText
{

/** A line with its end. Fields are quoted where they must be. */
QByteArray line(const QStringList& fields);

} // namespace CsvText

#endif
