#include "sourcepanel.h"

#include "celldelegate.h"
#include "columngrower.h"
#include "desk.h"
#include "emptyhint.h"

#include <QHBoxLayout>
#include <QHeaderView>
#include <QPushButton>
#include <QTreeView>
#include <QVBoxLayout>

SourcePanel::SourcePanel(Desk* desk, QWidget* parent)
    : QWidget(parent)
    , m_desk(desk)
    , m_view(new QTreeView)
    , m_reconnect(new QPushButton(tr("&Reconnect")))
    , m_close(new QPushButton(tr("C&lose")))
{
    SourceModel* const sources = desk->getSources();
    m_view->setModel(sources);
    m_view->setRootIsDecorated(false);
    m_view->setUniformRowHeights(true);
    m_view->setAccessibleName(tr("Sources"));
    m_view->setMinimumHeight(3 * fontMetrics().height());
    m_view->header()->setStretchLastSection(false);
    CellDelegate* const cells = new CellDelegate(m_view);
    cells->setName(SourceModel::SourceColumn);
    m_view->setItemDelegate(cells);
    m_view->setIconSize(QSize(fontMetrics().height() - 2, fontMetrics().height() - 2)); // rows stay as high
    new ColumnGrower(m_view, SourceModel::SourceColumn, 45);
    new ColumnGrower(m_view, SourceModel::RateColumn, 30);
    m_view->header()->setSectionResizeMode(SourceModel::StateColumn, QHeaderView::Stretch);
    m_view->header()->resizeSection(SourceModel::RateColumn,
                                    fontMetrics().horizontalAdvance(QLatin1String(" 000,000 /s ")));
    new EmptyHint(m_view, tr("Open or connect something."));
    createButtons();

    connect(m_view->selectionModel(), &QItemSelectionModel::currentRowChanged, desk,
            [desk](const QModelIndex& row) { desk->chooseSource(desk->getSources()->getSession(row.row())); });
    connect(sources, &QAbstractItemModel::rowsInserted, this,
            [this, sources](const QModelIndex&, int first) { m_view->setCurrentIndex(sources->index(first, 0)); });
    connect(desk, &Desk::chosenSourceChanged, this, &SourcePanel::follow);
    connect(sources, &SourceModel::sessionChanged, this, &SourcePanel::follow);
    follow();
}

void SourcePanel::createButtons()
{
    m_reconnect->setToolTip(tr("Open the chosen source anew, now"));
    m_close->setToolTip(tr("Close the chosen source, and forget what it received"));
    connect(m_reconnect, &QPushButton::clicked, this, [this]() {
        if (SourceSession* const session = m_desk->getChosenSource())
            session->reconnect();
    });
    connect(m_close, &QPushButton::clicked, this, [this]() {
        if (SourceSession* const session = m_desk->getChosenSource())
            m_desk->getSources()->close(session);
    });

    QHBoxLayout* const buttons = new QHBoxLayout;
    for (QPushButton* const button : {m_reconnect, m_close})
        buttons->addWidget(button);
    QVBoxLayout* const layout = new QVBoxLayout(this);
    layout->setContentsMargins(2, 2, 2, 2);
    layout->addWidget(m_view);
    layout->addLayout(buttons);
}

void SourcePanel::follow()
{
    const SourceSession* const session = m_desk->getChosenSource();
    m_reconnect->setEnabled(session);
    m_close->setEnabled(session);
}
