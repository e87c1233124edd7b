#ifndef TESTBASE_H
#define TESTBASE_H

#include "memleaktracer.h"

#include <QObject>
#include <QStringList>
#include <QtTest>

/**
 * Base of the test classes: an unexpected warning and an object account that is not level fail the test function.
 *
 * A test that provokes warnings takes them with takeWarnings() and compares them.
 */
class TestBase : public QObject
{
    Q_OBJECT

protected:
    /** The warnings and critical messages since the last call or the start of the test function. */
    static QStringList takeWarnings()
    {
        const QStringList warnings = warningList();
        warningList().clear();
        return warnings;
    }

private Q_SLOTS:
    void init()
    {
        installHandler();
        takeWarnings();
    }

    void cleanup()
    {
        QCOMPARE(takeWarnings(), QStringList());
        QCOMPARE(MemLeakTracer::getInstance()->getUnlevelReport(), QStringList());
    }

private:
    static QStringList& warningList()
    {
        static QStringList list;
        return list;
    }

    static void note(QtMsgType type, const QString& text)
    {
        // What a platform without a screen says of itself is nobody's fault.
        if (text.startsWith(QLatin1String("This plugin does not support")))
            return;
        if (type == QtWarningMsg || type == QtCriticalMsg)
            warningList().append(text);
    }

#if QT_VERSION >= 0x050000
    // A template, so that the handler's context type need not be named.
    template <typename Context>
    static void handler(QtMsgType type, const Context& context, const QString& text)
    {
        note(type, text);
        if (type == QtFatalMsg)
            previousHandler()(type, context, text);
    }

    static QtMessageHandler& previousHandler()
    {
        static QtMessageHandler previous = 0;
        return previous;
    }

    // The test library sets a handler of its own when it starts: this one goes on top of it, for each function anew.
    static void installHandler()
    {
        const QtMessageHandler previous = qInstallMessageHandler(handler);
        if (!previousHandler())
            previousHandler() = previous;
    }
#else
    static void handler(QtMsgType type, const char* text)
    {
        note(type, QString::fromLocal8Bit(text));
        if (type == QtFatalMsg)
            abort();
    }

    static void installHandler()
    {
        qInstallMsgHandler(handler);
    }
#endif
};

#endif
