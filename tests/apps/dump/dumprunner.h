#ifndef DUMPRUNNER_H
#define DUMPRUNNER_H

#include <QFileInfo>
#include <QJsonDocument>
#include <QJsonObject>
#include <QProcess>
#include <QStringList>

/** A run of corvel-dump and what came of it. */
struct DumpRun
{
    explicit DumpRun(const QStringList& arguments, const QByteArray& standardInput = QByteArray())
        : status(-1)
    {
        QProcess process;
        process.start(QStringLiteral(CORVEL_DUMP_PROGRAM), arguments);
        process.write(standardInput);
        process.closeWriteChannel();
        if (process.waitForFinished(60000) && process.exitStatus() == QProcess::NormalExit)
            status = process.exitCode();
        output = process.readAllStandardOutput();
        errors = QString::fromLocal8Bit(process.readAllStandardError()).split('\n');
        errors.removeLast();
    }

    QList<QByteArray> lines() const
    {
        QList<QByteArray> result = output.split('\n');
        result.removeLast();
        return result;
    }
    QJsonObject object() const { return QJsonDocument::fromJson(output).object(); }

    int status; ///< exit status; -1 when it crashed or hung
    QByteArray output;
    QStringList errors; ///< lines of the error stream
};

#endif
