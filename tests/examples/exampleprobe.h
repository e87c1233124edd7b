#ifndef EXAMPLEPROBE_H
#define EXAMPLEPROBE_H

#include <QApplication>
#include <QTimer>
#include <QWidget>

#include <cstdio>
#include <cstdlib>

/**
 * Looks at a window of the example again and again: the example succeeds once @p isRight says so, and fails when that
 * has not happened within half a minute or when it has warned of anything.
 *
 * @param isRight  gets the first window of the kind; says in its second argument what it sees
 */
template <typename Window>
void probeExample(bool (*isRight)(const Window&, QString*))
{
    qInstallMessageHandler([](QtMsgType, const QMessageLogContext&, const QString& text) {
        if (text.startsWith(QLatin1String("This plugin does not support")))
            return; // a platform without a screen excuses itself
        std::fprintf(stderr, "The example warns: %s\n", qPrintable(text));
        std::exit(1);
    });
    QTimer* const timer = new QTimer(qApp);
    QObject::connect(timer, &QTimer::timeout, timer, [isRight, looks = 0]() mutable {
        QString seen = QStringLiteral("no window");
        for (QWidget* widget : QApplication::topLevelWidgets()) {
            const Window* const window = qobject_cast<Window*>(widget);
            if (window && window->isVisible() && isRight(*window, &seen))
                return QApplication::exit(0);
        }
        if (++looks > 600) {
            std::fprintf(stderr, "The example does not show what it should. It shows:\n%s\n", qPrintable(seen));
            QApplication::exit(1);
        }
    });
    timer->start(50);
}

#endif
