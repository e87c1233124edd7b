#ifndef TESTFOLDER_H
#define TESTFOLDER_H

#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QTemporaryDir>

/** A folder for the files of a test. */
class TestFolder : public QTemporaryDir
{
public:
    /** The path of a new file of that content; @p name may begin with folders. */
    QString write(const QString& name, const QByteArray& content) const
    {
        QFile file(filePath(name));
        if (!QFileInfo(file).dir().mkpath(QLatin1String(".")) || !file.open(QIODevice::WriteOnly) ||
            file.write(content) != content.size())
            qWarning("%s cannot be written", qPrintable(name));
        return file.fileName();
    }

    /** The path of a new file of another name than all others. */
    QString write(const QByteArray& content) { return write(QString::number(++m_files), content); }

    /** @p text without the folder before the names of files. */
    QString relative(QString text) const { return text.remove(path() + QLatin1Char('/')); }

private:
    int m_files = 0;
};

#endif
