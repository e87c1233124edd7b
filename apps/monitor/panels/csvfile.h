#ifndef CSVFILE_H
#define CSVFILE_H

#include <QByteArray>
#include <QString>

class Desk;
class QWidget;

/** What a panel shows, as a file of comma-separated values. */
namespace CsvFile
{

/** Asks for a file, with @p name as a suggestion; empty when there is to be none. */
QString askPath(QWidget* panel, const QString& title, const QString& name);

/** Asks for a file, with @p name as a suggestion, and writes @p csv there; the desk is told how that ended. */
void save(QWidget* panel, Desk* desk, const QString& title, const QString& name, const QByteArray& csv);
void write(Desk* desk, const QString& path, const QByteArray& csv);
/** Tells that a file was written, and takes away what was wrong before. */
void tellSaved(Desk* desk, const QString& path);

} // namespace CsvFile

#endif
