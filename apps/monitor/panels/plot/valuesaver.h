#ifndef VALUESAVER_H
#define VALUESAVER_H

#include "plotvalues.h"

#include <QObject>

#include <atomic>
#include <thread>

class QProgressDialog;
class QWidget;

/**
 * Writes what is plotted to a file, on a thread of its own. Says how far it is where that takes longer, and can be
 * cancelled there. The file is complete or not there. Deletes itself when it is over.
 */
class ValueSaver : public QObject
{
    Q_OBJECT

public:
    /** @param panel  over whose window it says how far it is; it goes with that */
    ValueSaver(std::vector<PlotValues::Column> columns, const QString& path, QWidget* panel);
    /** Cancels, and waits for the thread. */
    ~ValueSaver() override;

    void start();
    void cancel() { m_isCancelled = true; }

Q_SIGNALS:
    void saved();
    /** It could not be written; why. */
    void failed(const QString& text);
    /** Written, failed or cancelled. */
    void ended();

private:
    void write();
    void end();

    const std::vector<PlotValues::Column> m_columns;
    const QString m_path;
    std::unique_ptr<QProgressDialog> m_dialog;
    std::thread m_thread;
    std::atomic<bool> m_isCancelled{false};
    QString m_error; // of the thread, until it is over
};

#endif
