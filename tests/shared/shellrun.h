#ifndef SHELLRUN_H
#define SHELLRUN_H

#include "textrows.h"

#include <QJsonDocument>
#include <QJsonObject>
#include <QProcess>
#include <QRegularExpression>
#include <QtTest>

/** Starts a command line, with the programs of this build. */
inline void startInShell(QProcess* process, const QString& command, const QString& folder = QString())
{
    QProcessEnvironment environment = QProcessEnvironment::systemEnvironment();
    environment.insert(text("PATH"), text(CORVEL_PROGRAMS ":") + environment.value(text("PATH")));
    process->setProcessEnvironment(environment);
    process->setWorkingDirectory(folder);
    process->start(text("/bin/sh"), {text("-c"), command});
}

/** A command line as somebody types it, and what came of it. */
struct ShellRun
{
    explicit ShellRun(const QString& command, const QString& folder = QString())
    {
        QProcess process;
        startInShell(&process, command, folder);
        if (process.waitForFinished(60000) && process.exitStatus() == QProcess::NormalExit)
            status = process.exitCode();
        process.kill(); // does nothing at its end
        process.waitForFinished();
        output = process.readAllStandardOutput();
        errors = QString::fromLocal8Bit(process.readAllStandardError());
    }

    /** The lines of its output, with apostrophes for quotation marks, then those of the error stream behind "! ", and
     * then "= STATUS" unless that is 0. */
    QString said() const
    {
        QStringList lines = QString::fromUtf8(output).replace(QLatin1Char('"'), QLatin1Char('\'')).split(text("\n"));
        lines.removeLast();
        for (const QString& line : errors.split(text("\n")))
            lines.append(text("! ") + line);
        lines.removeLast();
        if (status != 0)
            lines.append(text("= %1").arg(status));
        return lines.join(text("\n"));
    }

    QJsonObject object() const { return QJsonDocument::fromJson(output).object(); }

    int status = -1; ///< -1 when it crashed or hung
    QByteArray output;
    QString errors;
};

/** Checks that those command lines, run in @p folder, say what is expected of them. "..." there stands for the rest of
 * a line, or a part of it. */
template <std::size_t Count>
void check(const TextRow (&rows)[Count], const QString& folder)
{
    QStringList wrong;
    for (const TextRow& row : rows) {
        const QString pattern = QRegularExpression::escape(text(row.expected)).replace(text("\\.\\.\\."), text(".*"));
        const QString said = ShellRun(text(row.given), folder).said();
        if (!QRegularExpression(text("\\A%1\\z").arg(pattern)).match(said).hasMatch())
            wrong.append(text("$ %1\n%2").arg(text(row.given), said));
    }
    QVERIFY2(wrong.isEmpty(), qPrintable(wrong.join(text("\n"))));
}

#endif
