#include "valuesaver.h"

#include "csvfile.h"

#include <QFileInfo>
#include <QProgressDialog>
#include <QSaveFile>

static const int LongMs = 500; // until it is worth saying

ValueSaver::ValueSaver(std::vector<PlotValues::Column> columns, const QString& path, QWidget* panel)
    : QObject(panel)
    , m_columns(std::move(columns))
    , m_path(path)
    , m_dialog(new QProgressDialog(panel->window()))
{
    m_dialog->setLabelText(tr("Saving %1").arg(QFileInfo(path).fileName()));
    m_dialog->setWindowModality(Qt::NonModal);
    m_dialog->setMinimumDuration(LongMs);
    m_dialog->setAutoClose(false);
    m_dialog->setAutoReset(false);
    connect(m_dialog.get(), &QProgressDialog::canceled, this, &ValueSaver::cancel);
}

ValueSaver::~ValueSaver()
{
    m_isCancelled = true;
    if (m_thread.joinable())
        m_thread.join();
}

void ValueSaver::start()
{
    m_dialog->setValue(0);
    m_thread = std::thread([this]() {
        write();
        QMetaObject::invokeMethod(this, &ValueSaver::end, Qt::QueuedConnection);
    });
}

void ValueSaver::write()
{
    QSaveFile file(m_path);
    bool isGood = CsvFile::open(&file);
    int shown = 0;
    const auto take = [&](const QByteArray& text, int percent) {
        isGood = CsvFile::write(&file, text);
        if (percent > shown)
            QMetaObject::invokeMethod(
                this, [this, percent]() { m_dialog->setValue(percent); }, Qt::QueuedConnection);
        shown = percent;
        return isGood && !m_isCancelled;
    };
    if (isGood)
        PlotValues::write(m_columns, take);
    if (m_isCancelled)
        return;
    if (!isGood || !file.commit())
        m_error = tr("%1 cannot be written: %2").arg(m_path, file.errorString());
}

void ValueSaver::end()
{
    m_thread.join();
    m_dialog->hide();
    if (!m_error.isEmpty())
        Q_EMIT failed(m_error);
    else if (!m_isCancelled)
        Q_EMIT saved();
    Q_EMIT ended();
    deleteLater();
}
