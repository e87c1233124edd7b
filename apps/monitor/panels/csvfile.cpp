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

void CsvFile::write(Desk* desk, const QString& path, const QByteArray& csv)
{
    QSaveFile file(path);
    if (!file.open(QIODevice::WriteOnly) || file.write(csv) < 0 || !file.commit()) {
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
