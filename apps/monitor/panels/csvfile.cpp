#include "csvfile.h"

#include "desk.h"

#include <QCoreApplication>
#include <QFileDialog>
#include <QSaveFile>

void CsvFile::save(QWidget* panel, Desk* desk, const QString& title, const QString& name, const QByteArray& csv)
{
    const QString filter = QCoreApplication::translate("CsvFile", "Comma-separated values (*.csv);;All files (*)");
    const QString path = QFileDialog::getSaveFileName(panel->window(), title, name, filter);
    if (path.isEmpty())
        return;
    QSaveFile file(path);
    if (!file.open(QIODevice::WriteOnly) || file.write(csv) < 0 || !file.commit())
        Q_EMIT desk->failed(
            QCoreApplication::translate("CsvFile", "%1 cannot be written: %2").arg(path, file.errorString()));
}
