#include "csvfile.h"

#include "desk.h"

#include <QCoreApplication>
#include <QFileDialog>
#include <QSaveFile>

static const int SaidMilliseconds = 4000;

QString CsvFile::askPath(QWidget* panel, const QString& title, const QString& name)
{
    const QString filter = QCoreApplication::translate("CsvFile", "Comma-separated values (*.csv);;All files (*)");
    return QFileDialog::getSaveFileName(panel->window(), title, name, filter);
}

void CsvFile::save(QWidget* panel, Desk* desk, const QString& title, const QString& name, const QByteArray& csv)
{
    const QString path = askPath(panel, title, name);
    if (!path.isEmpty())
        write(desk, path, csv);
}

// What waits in a buffer until the end fails without a complaint when the disk is full by then.
bool CsvFile::open(QSaveFile* file)
{
    return file->open(QIODevice::WriteOnly | QIODevice::Unbuffered);
}

// A disk that becomes full takes a part without a complaint. Only of the next byte it says why it does not.
bool CsvFile::write(QSaveFile* file, const QByteArray& bytes)
{
    qint64 done = 0;
    qint64 count = 1;
    while (count > 0 && done < bytes.size()) {
        count = file->write(bytes.constData() + done, bytes.size() - done);
        done += qMax(qint64(0), count);
    }
    return done == bytes.size();
}

void CsvFile::write(Desk* desk, const QString& path, const QByteArray& bytes)
{
    QSaveFile file(path);
    if (!open(&file) || !write(&file, bytes) || !file.commit()) {
        Q_EMIT desk->failed(
            QCoreApplication::translate("CsvFile", "%1 cannot be written: %2").arg(path, file.errorString()));
        return;
    }
    tellSaved(desk, path);
}

void CsvFile::tellSaved(Desk* desk, const QString& path)
{
    Q_EMIT desk->recovered();
    Q_EMIT desk->said(QCoreApplication::translate("CsvFile", "Saved: %1").arg(path), SaidMilliseconds);
}
