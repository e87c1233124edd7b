#ifndef CSVFILE_H
#define CSVFILE_H

#include <QByteArray>
#include <QString>

class Desk;
class QSaveFile;
class QWidget;

/** What a panel shows, as a file, mostly of comma-separated values. It is complete, or what was there before. */
namespace CsvFile
{

/** Asks for a file, with @p name as a suggestion; empty when there is to be none. */
QString askPath(QWidget* panel, const QString& title, const QString& name);

/** Asks for a file, with @p name as a suggestion, and writes @p csv there; the desk is told how that ended. */
void save(QWidget* panel, Desk* desk, const QString& title, const QString& name, const QByteArray& csv);
/** Writes @p bytes; the desk is told how that ended. */
void write(Desk* desk, const QString& path, const QByteArray& bytes);

/** Opens a file for the operation that follows. */
bool open(QSaveFile* file);
/** Whether all of @p bytes was taken; else the file says why not. */
bool write(QSaveFile* file, const QByteArray& bytes);
/** Tells that a file was written, and takes away what was wrong before. */
void tellSaved(Desk* desk, const QString& path);

} // namespace CsvFile

#endif
