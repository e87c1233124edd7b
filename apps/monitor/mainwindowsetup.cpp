// How the window is put together: its views, docks, actions and status bar.

#include "mainwindow.h"

#include "abstractmessagetreewidgetitem.h"
#include "fieldinfo.h"
#include "formpanel.h"
#include "latestmessagesource.h"
#include "messageinfo.h"
#include "messagetreewidget.h"
#include "messagetreewidgetitem.h"
#include "messagetypemodel.h"
#include "valuebar.h"

#include <QAction>
#include <QComboBox>
#include <QDockWidget>
#include <QFileDialog>
#include <QHeaderView>
#include <QInputDialog>
#include <QLabel>
#include <QMenu>
#include <QMenuBar>
#include <QSortFilterProxyModel>
#include <QStatusBar>
#include <QToolBar>
#include <QTreeView>
#include <QVBoxLayout>

void MainWindow::createTree()
{
    m_tree = new MessageTreeWidget(this);
    m_tree->setAccessibleName(tr("Message tree"));
    m_tree->setAlternatingRowColors(true);
    m_tree->setContextMenuPolicy(Qt::CustomContextMenu);
    m_tree->header()->resizeSection(0, 280);
    connect(m_tree, &QWidget::customContextMenuRequested, this, &MainWindow::showTreeMenu);
    connect(m_latest, SIGNAL(newMessage(const Message*)), m_tree, SLOT(processMessage(const Message*)));

    m_treeHint = new QLabel(m_tree->viewport());
    m_treeHint->setAlignment(Qt::AlignCenter);
    m_treeHint->setWordWrap(true);
    m_treeHint->setEnabled(false);
    m_treeHint->setAttribute(Qt::WA_TransparentForMouseEvents);
    QVBoxLayout* layout = new QVBoxLayout(m_tree->viewport());
    layout->addWidget(m_treeHint);

    m_values = new ValueBar(m_latest);
    QWidget* center = new QWidget;
    QVBoxLayout* centerLayout = new QVBoxLayout(center);
    centerLayout->setContentsMargins(0, 0, 0, 0);
    centerLayout->setSpacing(0);
    centerLayout->addWidget(m_values);
    centerLayout->addWidget(m_tree, 1);
    setCentralWidget(center);
}

void MainWindow::createTypeList()
{
    m_sortedTypes = new QSortFilterProxyModel(this);
    m_sortedTypes->setSourceModel(m_types);
    m_sortedTypes->setSortRole(MessageTypeModel::SortRole);
    m_sortedTypes->setDynamicSortFilter(true);
    m_typeView = new QTreeView;
    m_typeView->setModel(m_sortedTypes);
    m_typeView->setRootIsDecorated(false);
    m_typeView->setUniformRowHeights(true);
    m_typeView->setSortingEnabled(true);
    m_typeView->sortByColumn(MessageTypeModel::TypeColumn, Qt::AscendingOrder);
    m_typeView->setSelectionMode(QAbstractItemView::ExtendedSelection);
    m_typeView->setAccessibleName(tr("Message types"));
    m_typeView->header()->setStretchLastSection(false);
    m_typeView->header()->setSectionResizeMode(MessageTypeModel::TypeColumn, QHeaderView::Stretch);
    m_typeView->header()->resizeSection(MessageTypeModel::SenderColumn, 60);
    m_typeView->header()->resizeSection(MessageTypeModel::CountColumn, 70);
    m_typeView->header()->resizeSection(MessageTypeModel::RateColumn, 70);
    connect(m_typeView->selectionModel(), &QItemSelectionModel::selectionChanged, this, &MainWindow::updateForms);
    connect(m_types, &QAbstractItemModel::modelReset, this, &MainWindow::updateForms);
}

void MainWindow::createDocks()
{
    QDockWidget* typeDock = new QDockWidget(tr("Message Types"), this);
    typeDock->setObjectName(QLatin1String("types"));
    typeDock->setWidget(m_typeView);
    addDockWidget(Qt::LeftDockWidgetArea, typeDock);

    m_forms = new FormPanel(m_latest);
    QDockWidget* formDock = new QDockWidget(tr("Forms"), this);
    formDock->setObjectName(QLatin1String("forms"));
    formDock->setWidget(m_forms);
    addDockWidget(Qt::RightDockWidgetArea, formDock);
    resizeDocks({typeDock, formDock}, {380, 320}, Qt::Horizontal);
}

void MainWindow::createStatusBar()
{
    m_inputStatus = new QLabel;
    m_rateStatus = new QLabel;
    m_problemStatus = new QLabel;
    m_problemStatus->setSizePolicy(QSizePolicy::Ignored, QSizePolicy::Preferred);
    m_problemStatus->setTextInteractionFlags(Qt::TextSelectableByMouse);
    m_problemStatus->setAccessibleName(tr("Last problem"));
    statusBar()->addWidget(m_inputStatus);
    statusBar()->addWidget(m_problemStatus, 1);
    statusBar()->addPermanentWidget(m_rateStatus);
    updateStatus();
}

void MainWindow::createActions()
{
    QMenu* file = menuBar()->addMenu(tr("&File"));
    file->addAction(tr("&Open Recording..."), this, &MainWindow::openFile)->setShortcut(QKeySequence::Open);
    file->addAction(tr("Listen on &UDP..."), this, [this]() {
        askAddress(tr("Listen on UDP"), tr("Address and port to listen on:"), QLatin1String("udp:0.0.0.0:14550"));
    });
    file->addAction(tr("Connect to &TCP..."), this, [this]() {
        askAddress(tr("Connect to TCP"), tr("Host and port to connect to:"), QLatin1String("tcp:localhost:5760"));
    });
    file->addAction(tr("&Simulated Vehicle"), this, &MainWindow::openSimulation);
    file->addSeparator();
    file->addAction(tr("Load &Definitions..."), this, &MainWindow::askDialect);
    file->addSeparator();
    file->addAction(tr("&Quit"), this, &QWidget::close)->setShortcut(QKeySequence::Quit);

    QAction* addAll = new QAction(tr("&Add All Types"), this);
    addAll->setShortcut(QKeySequence(tr("Ctrl+Shift+A")));
    connect(addAll, &QAction::triggered, this, &MainWindow::addAllTypes);
    QAction* removeAll = new QAction(tr("&Remove All Types"), this);
    connect(removeAll, &QAction::triggered, this, &MainWindow::removeAllTypes);
    m_addAutomatically = new QAction(tr("Add &New Types Automatically"), this);
    m_addAutomatically->setCheckable(true);
    m_addAutomatically->setChecked(true);
    QAction* collapse = new QAction(tr("&Collapse All"), this);
    connect(collapse, &QAction::triggered, m_tree, &QTreeView::collapseAll);
    QAction* expand = new QAction(tr("&Expand All"), this);
    connect(expand, &QAction::triggered, m_tree, &QTreeView::expandAll);

    QAction* virtualFields = new QAction(tr("&Virtual Fields"), this);
    virtualFields->setCheckable(true);
    virtualFields->setChecked(m_tree->mustShowVirtualFields());
    connect(virtualFields, SIGNAL(toggled(bool)), m_tree, SLOT(setShowVirtualFields(bool)));
    QAction* primaryOnly = new QAction(tr("&Primary Fields Only"), this);
    primaryOnly->setCheckable(true);
    connect(primaryOnly, SIGNAL(toggled(bool)), m_tree, SLOT(setShowPrimaryFieldsOnly(bool)));
    QAction* confidential = new QAction(tr("Con&fidential Data"), this);
    confidential->setCheckable(true);
    confidential->setToolTip(tr("Show fields that are marked as confidential"));
    connect(confidential, &QAction::toggled, this, &MainWindow::setShowConfidential);

    QMenu* tree = menuBar()->addMenu(tr("&Tree"));
    tree->addActions({addAll, removeAll, m_addAutomatically});
    tree->addSeparator();
    tree->addActions({expand, collapse});

    QMenu* view = menuBar()->addMenu(tr("&View"));
    QMenu* columns = view->addMenu(tr("&Columns"));
    for (QAction* action : m_tree->getToggleColumnActions())
        columns->addAction(action);
    view->addSeparator();
    view->addActions({virtualFields, primaryOnly, confidential});
    view->addSeparator();
    for (QDockWidget* dock : findChildren<QDockWidget*>())
        view->addAction(dock->toggleViewAction());

    QToolBar* bar = addToolBar(tr("Tree"));
    bar->setObjectName(QLatin1String("tree"));
    bar->setMovable(false);
    bar->addAction(addAll);
    bar->addAction(collapse);
    bar->addAction(expand);
    bar->addSeparator();
    for (QAction* action : m_tree->getToggleColumnActions())
        bar->addAction(action);
    bar->addSeparator();
    bar->addActions({virtualFields, primaryOnly, confidential});
    bar->addSeparator();
    m_senders = new QComboBox;
    m_senders->addItem(tr("All senders"), QString());
    m_senders->setAccessibleName(tr("Sender shown"));
    m_senders->setToolTip(tr("Whose messages the tree, the forms and the values show"));
    connect(m_senders, QOverload<int>::of(&QComboBox::currentIndexChanged), this,
            [this]() { m_latest->setSender(m_senders->currentData().toString()); });
    bar->addWidget(m_senders);
}

void MainWindow::openFile()
{
    const QString path = QFileDialog::getOpenFileName(this, tr("Open Recording"), QString(),
                                                      tr("Recordings (*.tlog *.mavlink *.bin *.raw);;All files (*)"));
    if (!path.isEmpty())
        openAddress(path);
}

void MainWindow::askAddress(const QString& title, const QString& label, const QString& suggestion)
{
    bool accepted = false;
    const QString address = QInputDialog::getText(this, title, label, QLineEdit::Normal, suggestion, &accepted);
    if (accepted && !address.trimmed().isEmpty())
        openAddress(address.trimmed());
}

void MainWindow::askDialect()
{
    const QString path = QFileDialog::getOpenFileName(this, tr("Load Definitions"), QString(),
                                                      tr("MAVLink dialects (*.xml);;All files (*)"));
    if (!path.isEmpty() && loadDialect(path, QString()))
        statusBar()->showMessage(tr("The definitions are used from the next input on."), 5000);
}

const FieldInfo* MainWindow::currentField() const
{
    const AbstractMessageTreeWidgetItem* row = dynamic_cast<AbstractMessageTreeWidgetItem*>(m_tree->currentItem());
    const QTreeWidgetItem* item = m_tree->currentItem();
    // Rows below a message row stand for its fields, in name and order; only those directly below it are offered.
    if (!row || !item->parent() || item->parent()->parent())
        return nullptr;
    const MessageTreeWidgetItem* message = dynamic_cast<const MessageTreeWidgetItem*>(item->parent());
    return message && message->getMessageInfo() ? message->getMessageInfo()->getFieldInfo(item->text(0)) : nullptr;
}

void MainWindow::showTreeMenu(const QPoint& position)
{
    m_tree->setCurrentItem(m_tree->itemAt(position));
    if (const FieldInfo* field = currentField()) {
        QMenu menu(this);
        menu.addAction(tr("Show as &Large Value"), this, [this, field]() { m_values->addField(field); });
        menu.exec(m_tree->viewport()->mapToGlobal(position));
    }
}
