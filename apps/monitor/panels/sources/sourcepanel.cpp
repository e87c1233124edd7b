#include "sourcepanel.h"

#include "celldelegate.h"
#include "columngrower.h"
#include "sourcemodel.h"

#include <QHBoxLayout>
#include <QHeaderView>
#include <QPushButton>
#include <QTreeView>
#include <QVBoxLayout>

SourcePanel::SourcePanel(SourceModel* model, QWidget* parent)
    : QWidget(parent)
    , m_model(model)
    , m_view(new QTreeView)
    , m_reconnect(new QPushButton(tr("&Reconnect")))
    , m_record(new QPushButton(tr("Recor&d...")))
    , m_close(new QPushButton(tr("C&lose")))
{
    m_view->setModel(model);
    m_view->setRootIsDecorated(false);
    m_view->setUniformRowHeights(true);
    m_view->setAccessibleName(tr("Sources"));
    m_view->setMinimumHeight(3 * fontMetrics().height());
    m_view->header()->setStretchLastSection(false);
    CellDelegate* const cells = new CellDelegate(m_view);
    cells->setName(SourceModel::SourceColumn);
    m_view->setItemDelegate(cells);
    m_view->setIconSize(QSize(fontMetrics().height() - 2, fontMetrics().height() - 2)); // rows stay as high
    new ColumnGrower(m_view, SourceModel::SourceColumn, 34);
    m_view->header()->setSectionResizeMode(SourceModel::StateColumn, QHeaderView::Stretch);
    m_view->header()->resizeSection(SourceModel::RateColumn,
                                    fontMetrics().horizontalAdvance(QLatin1String(" 000,000 /s ")));

    QPushButton* const open = new QPushButton(tr("Co&nnect..."));
    open->setToolTip(tr("Open another source: UDP, TCP, a file, with its definitions"));
    m_reconnect->setToolTip(tr("Open the chosen source anew, now"));
    m_close->setToolTip(tr("Close the chosen source, and forget what it received"));
    connect(open, &QPushButton::clicked, this, &SourcePanel::connectRequested);
    connect(m_reconnect, &QPushButton::clicked, this, [this]() {
        if (SourceSession* const session = getCurrent())
            session->reconnect();
    });
    connect(m_close, &QPushButton::clicked, this, [this]() {
        if (SourceSession* const session = getCurrent())
            m_model->close(session);
    });

    m_record->setCheckable(true);
    connect(m_record, &QPushButton::clicked, this, [this](bool checked) {
        follow(); // it is pressed when there is a recording, and that is still to come
        Q_EMIT recordRequested(checked);
    });

    QHBoxLayout* const buttons = new QHBoxLayout;
    for (QPushButton* const button : {open, m_reconnect, m_record, m_close})
        buttons->addWidget(button);
    QVBoxLayout* const layout = new QVBoxLayout(this);
    layout->setContentsMargins(2, 2, 2, 2);
    layout->addWidget(m_view);
    layout->addLayout(buttons);

    connect(m_view->selectionModel(), &QItemSelectionModel::currentRowChanged, this, [this]() {
        follow();
        Q_EMIT currentChanged();
    });
    connect(model, &QAbstractItemModel::rowsInserted, this, [this](const QModelIndex&, int first) { choose(first); });
    connect(model, &SourceModel::sessionRemoved, this, [this]() {
        follow();
        Q_EMIT currentChanged();
    });
    connect(model, &SourceModel::sessionChanged, this, &SourcePanel::follow);
    follow();
}

SourceSession* SourcePanel::getCurrent() const
{
    if (SourceSession* const session = m_model->getSession(m_view->currentIndex().row()))
        return session;
    return m_model->getSession(0);
}

void SourcePanel::choose(int row)
{
    m_view->setCurrentIndex(m_model->index(row, 0));
}

void SourcePanel::follow()
{
    m_reconnect->setEnabled(getCurrent());
    m_close->setEnabled(getCurrent());
    m_record->setEnabled(getCurrent());
    const bool isRecording = getCurrent() && getCurrent()->getRecorder().isRecording();
    m_record->setChecked(isRecording);
    m_record->setText(isRecording ? tr("Stop Recor&ding") : tr("Recor&d..."));
    m_record->setToolTip(isRecording ? tr("Finish the recording in %1").arg(getCurrent()->getRecorder().getPath())
                                     : tr("Write down what arrives, byte for byte"));
}
