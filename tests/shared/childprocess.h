#ifndef CHILDPROCESS_H
#define CHILDPROCESS_H

#include <QCoreApplication>
#include <QProcess>
#include <QProcessEnvironment>
#include <QStringList>

/** What became of a run of a program in a process of its own. */
struct ChildResult
{
    ChildResult()
        : crashed(true)
        , exitCode(-1)
    {
    }

    bool crashed; ///< ended by a signal, or never started, or not done within half a minute
    int exitCode;
    QByteArray output;
    QByteArray errors;
};

/**
 * Runs the test program itself once more with @p arguments, for what a process does only once: read its environment,
 * abort, exit.
 *
 * @param environment  "NAME=value" texts that are added to the environment
 */
inline ChildResult runChild(const QStringList& arguments, const QStringList& environment)
{
    QProcessEnvironment variables = QProcessEnvironment::systemEnvironment();
    for (int i = 0; i < environment.size(); ++i)
        variables.insert(environment.at(i).section(QLatin1Char('='), 0, 0),
                         environment.at(i).section(QLatin1Char('='), 1));
    QProcess process;
    process.setProcessEnvironment(variables);
    process.start(QCoreApplication::applicationFilePath(), arguments);
    ChildResult result;
    if (!process.waitForFinished(30000)) {
        process.kill();
        process.waitForFinished();
        return result;
    }
    result.crashed = process.exitStatus() != QProcess::NormalExit;
    result.exitCode = process.exitCode();
    result.output = process.readAllStandardOutput();
    result.errors = process.readAllStandardError();
    return result;
}

#endif
