#include "messagespanel.h"

#include "celldelegate.h"
#include "desk.h"
#include "emptyhint.h"
#include "fieldsummary.h"
#include "message.h"
#include "messagehistory.h"
#include "messagejson.h"
#include "messagelist.h"

#include <QAction>
#include <QClipboard>
#include <QContextMenuEvent>
#include <QGuiApplication>
#include <QHBoxLayout>
#include <QHeaderView>
#include <QLabel>
#include <QMenu>
#include <QScrollBar>
#include <QSettings>
#include <QTableView>
#include <QToolButton>
#include <QVBoxLayout>

static const int SaidMilliseconds = 4000;
static const char HeaderKey[] = "messages/header";

MessagesPanel::MessagesPanel(Desk* desk, QWidget* parent)
    : QWidget(parent)
    , m_desk(desk)
    , m_listener(desk->getTap(),
                 [this](const Message* message) {
                     if (isWanted(message->getInfo(), message->getSender()))
                         m_list->add(message);
                 })
    , m_list(new MessageList(this))
    , m_history(new MessageHistory(desk, m_list, this))
    , m_view(new QTableView)
    , m_bar(new QWidget)
    , m_note(new QLabel)
    , m_newest(new QToolButton)
{
    createView();
    createActions();
    m_newest->setText(tr("&Newest"));
    m_newest->setToolTip(tr("Lets the list go on to the newest message"));
    connect(m_newest, &QToolButton::clicked, this, &MessagesPanel::followNewest);
    m_note->setTextFormat(Qt::PlainText);
    QHBoxLayout* const bar = new QHBoxLayout(m_bar);
    bar->setContentsMargins(4, 0, 2, 0);
    bar->addWidget(m_note, 1);
    bar->addWidget(m_newest);
    QVBoxLayout* const layout = new QVBoxLayout(this);
    layout->setContentsMargins(0, 0, 0, 0);
    layout->setSpacing(0);
    layout->addWidget(m_view, 1);
    layout->addWidget(m_bar);

    followPreferences(desk->getPreferences());
    connect(desk, &Desk::chosenTypesChanged, this, &MessagesPanel::followChosen);
    connect(desk, &Desk::senderRenamed, m_list, &MessageList::renameSender);
    connect(desk->getLatest(), &LatestMessageSource::senderChanged, this, &MessagesPanel::followChosen);
    connect(&m_timer, &QTimer::timeout, this, &MessagesPanel::refresh);
    m_timer.start();
    followChosen();
}

void MessagesPanel::createView()
{
    // Told before the view knows of it, which would choose another row in the place of one that goes.
    connect(m_list, &QAbstractItemModel::rowsAboutToBeRemoved, this, [this](const QModelIndex&, int, int last) {
        if (getCurrentRow() > last) // they are the first ones
            return;
        m_isMoving = true;
        m_view->selectionModel()->clear();
        m_isMoving = false;
    });
    m_view->setModel(m_list);
    m_view->setAccessibleName(tr("Messages"));
    m_view->setSelectionBehavior(QAbstractItemView::SelectRows);
    m_view->setSelectionMode(QAbstractItemView::SingleSelection);
    m_view->setEditTriggers(QAbstractItemView::NoEditTriggers);
    m_view->setTabKeyNavigation(false);
    m_view->setShowGrid(false);
    m_view->setWordWrap(false);
    m_view->setAlternatingRowColors(true);
    m_view->setHorizontalScrollMode(QAbstractItemView::ScrollPerPixel);
    m_view->verticalHeader()->hide();
    m_view->verticalHeader()->setSectionResizeMode(QHeaderView::Fixed);
    m_view->verticalHeader()->setDefaultSectionSize(m_view->fontMetrics().height() + 4);
    m_view->setMinimumHeight(3 * m_view->fontMetrics().lineSpacing());
    CellDelegate* const cells = new CellDelegate(m_view);
    cells->setName(MessageList::TypeColumn);
    cells->setName(MessageList::SenderColumn);
    m_view->setItemDelegate(cells);
    QHeaderView* const header = m_view->horizontalHeader();
    header->setDefaultAlignment(Qt::AlignLeft | Qt::AlignVCenter);
    header->setHighlightSections(false);
    header->setStretchLastSection(true);
    const QFontMetrics metrics = m_view->fontMetrics();
    static const char* const widest[] = {" 00:00:00.000000 ",     " 000.000 ms ", " 00:00 @ flight ",
                                         " GLOBAL_POSITION_INT ", " Number 0 ",   " 0,000,000 "};
    for (int column = 0; column < MessageList::SummaryColumn; ++column)
        header->resizeSection(column, metrics.horizontalAdvance(QLatin1String(widest[column])));
    m_hint = new EmptyHint(m_view, tr("Choose types under Message Types: their messages are listed here, one by one."));
    m_view->installEventFilter(this);

    connect(m_list, &QAbstractItemModel::modelReset, this, [this]() {
        const Message* const chosen = m_desk->getChosenMessage().get();
        if (chosen && !isWanted(chosen->getInfo(), chosen->getSender()))
            m_desk->chooseMessage(MessageReference());
        m_isHeld = false;
    });
    connect(m_view->selectionModel(), &QItemSelectionModel::selectionChanged, this, &MessagesPanel::chooseCurrent);
    connect(m_view, &QAbstractItemView::doubleClicked, this, &MessagesPanel::goThere);
    // Where the user scrolls to, not where rows that come move the view.
    QScrollBar* const bar = m_view->verticalScrollBar();
    connect(bar, &QAbstractSlider::actionTriggered, this, [this, bar]() {
        const bool isHeld = bar->sliderPosition() < bar->maximum();
        if (!isHeld || m_isHeld) {
            setHeld(isHeld);
            return;
        }
        m_isHeld = true;
        // Later: what comes below takes room, and with a new range the bar forgets where it was about to go.
        QMetaObject::invokeMethod(this, &MessagesPanel::refresh, Qt::QueuedConnection);
    });
}

QAction* MessagesPanel::addAction(const QString& text, const QKeySequence& key, void (MessagesPanel::*slot)())
{
    QAction* const action = new QAction(text, this);
    action->setShortcut(key);
    action->setShortcutContext(Qt::WidgetShortcut);
    connect(action, &QAction::triggered, this, slot);
    m_view->addAction(action);
    return action;
}

void MessagesPanel::createActions()
{
    m_goThere = addAction(tr("&Go to Its Time"), QKeySequence(Qt::Key_Return), &MessagesPanel::goThere);
    m_showBytes = addAction(tr("Show &Bytes"), QKeySequence(tr("Ctrl+B")), &MessagesPanel::showBytes);
    m_copyJson = addAction(tr("Copy as &JSON"), QKeySequence(tr("Ctrl+J")), &MessagesPanel::copyJson);
    m_copyBytes = addAction(tr("&Copy Bytes"), QKeySequence(tr("Ctrl+Shift+C")), &MessagesPanel::copyBytes);
}

bool MessagesPanel::isWanted(const MessageInfo* info, const QString& sender) const
{
    const QString only = m_desk->getLatest()->getSender();
    if (!only.isEmpty() && only != sender)
        return false;
    for (const Subject& subject : m_desk->getChosenTypes())
        if (subject.covers(info, sender))
            return true;
    return false;
}

void MessagesPanel::followChosen()
{
    m_list->keep([this](const MessageInfo* info, const QString& sender) { return isWanted(info, sender); });
    listen();
    const QVector<Subject>& types = m_desk->getChosenTypes();
    const QSet<Subject> chosen(types.begin(), types.end());
    const bool isOther = chosen != m_chosen || m_chosenSender != m_desk->getLatest()->getSender();
    m_chosen = chosen;
    m_chosenSender = m_desk->getLatest()->getSender();
    m_mustRead = m_mustRead || isOther;
    if (isOther)
        m_history->cancel();
    if (isOther && m_isHeld && m_history->isWorthIt(types, m_chosenSender)) {
        m_isMoving = true;
        m_view->selectionModel()->clear();
        m_isMoving = false;
        m_isHeld = false;
    }
    refresh();
}

/** What came before these types were chosen, or nobody could see the list, is in a recording. */
void MessagesPanel::read()
{
    m_mustRead = false;
    m_history->begin(m_desk->getChosenTypes(), m_desk->getLatest()->getSender());
    m_hint->setText(m_desk->getChosenTypes().isEmpty()
                        ? tr("Choose types under Message Types: their messages are listed here, one by one.")
                    : m_history->isReading() ? tr("Looking for messages in the recording...")
                                             : tr("Nothing came of these types yet."));
}

/** Shows what was read of that. Whoever looks back sees the same rows as before. */
void MessagesPanel::takeRead()
{
    if (!m_history->isReading() || (m_isHeld && m_history->isReadingSeveral()))
        return;
    const QPersistentModelIndex top = m_isHeld ? m_view->indexAt(QPoint(0, 0)) : QModelIndex();
    m_history->work();
    if (top.isValid())
        m_view->scrollTo(top, QAbstractItemView::PositionAtTop);
    if (!m_history->isReading())
        m_hint->setText(tr("Nothing came of these types yet."));
}

void MessagesPanel::listen()
{
    QSet<const MessageInfo*> types;
    for (const Subject& subject : m_desk->getChosenTypes())
        if (m_isListening)
            types.insert(subject.info);
    m_listener.setTypes(types);
}

// Who chooses a type of a recording that stands still wants to see something, too.
void MessagesPanel::startWithNewest()
{
    for (const Subject& subject : m_desk->getChosenTypes()) {
        if (m_list->rowCount() == MessageList::MostMessages || m_list->isFull() || m_list->has(subject))
            continue; // or it was there, and went
        const MessageReference newest = m_desk->getLatest()->getLatest(subject.info, subject.sender);
        if (!newest.isNull() && isWanted(newest->getInfo(), newest->getSender()))
            m_list->addEarlier(newest.get());
    }
}

void MessagesPanel::refresh()
{
    // Docks behind a tab are not hidden, but nobody sees them.
    const bool canBeSeen = isVisible() && !visibleRegion().isEmpty();
    if (canBeSeen != m_isListening) {
        m_isListening = canBeSeen;
        m_list->addGap();
        listen();
        m_history->cancel();
        m_mustRead = canBeSeen;
    }
    const bool isShowing = canBeSeen && !m_desk->isPaused();
    m_mustRead = m_mustRead || (isShowing && m_history->hasLeapt());
    if (isShowing && !m_isHeld && m_mustRead)
        read();
    if (isShowing)
        takeRead();
    if (isShowing && !m_isHeld) {
        m_list->take();
        if (!m_history->hasCome())
            startWithNewest();
        if (m_list->rowCount() > 0)
            m_view->scrollToBottom();
    }
    m_newest->setVisible(m_isHeld);
    const QString note = getNote();
    if (note != m_note->text())
        m_note->setText(note);
    m_bar->setVisible(m_isHeld || !note.isEmpty());
}

QString MessagesPanel::getNote() const
{
    QStringList texts;
    const int waiting = m_list->getWaitingCount();
    if (waiting == MessageList::MostMessages)
        texts.append(tr("Newer: %1 and more").arg(QLocale().toString(waiting)));
    else if (waiting > 0 && (m_isHeld || m_desk->isPaused()))
        texts.append(tr("Newer: %1").arg(QLocale().toString(waiting)));
    if (!m_history->getNote().isEmpty())
        texts.append(m_history->getNote());
    if (m_list->isFull() || m_history->isFull())
        texts.append(tr("No more than the last %1 MB are kept").arg(MessageList::MostBytes >> 20));
    else if (m_list->rowCount() == MessageList::MostMessages)
        texts.append(tr("The last %1").arg(QLocale().toString(m_list->rowCount())));
    return texts.join(QStringLiteral(" \u00b7 "));
}

void MessagesPanel::setHeld(bool held)
{
    if (held == m_isHeld)
        return;
    m_isHeld = held;
    refresh();
}

void MessagesPanel::followNewest()
{
    m_view->selectionModel()->clear();
    setHeld(false);
}

int MessagesPanel::getCurrentRow() const
{
    const QModelIndexList rows = m_view->selectionModel()->selectedRows();
    return rows.isEmpty() ? -1 : rows.first().row();
}

void MessagesPanel::chooseCurrent()
{
    if (m_isMoving)
        return; // a message that goes from the list stays chosen
    const int row = getCurrentRow();
    m_desk->chooseMessage(row < 0 ? MessageReference() : m_list->getMessage(row));
    setHeld(row >= 0);
    if (row >= 0)
        m_view->scrollTo(m_view->currentIndex()); // above the bar that may have come
}

bool MessagesPanel::eventFilter(QObject* watched, QEvent* event)
{
    if (event->type() == QEvent::KeyPress && static_cast<QKeyEvent*>(event)->key() == Qt::Key_Escape && m_isHeld) {
        followNewest();
        return true;
    }
    return QWidget::eventFilter(watched, event);
}

void MessagesPanel::contextMenuEvent(QContextMenuEvent* event)
{
    const int row = getCurrentRow();
    if (row < 0 || !m_list->getMessageInfo(row))
        return;
    QMenu* const menu = new QMenu(this);
    menu->setAttribute(Qt::WA_DeleteOnClose);
    menu->addActions({m_goThere, m_showBytes, m_copyJson, m_copyBytes});
    const bool isOfMouse = event->reason() == QContextMenuEvent::Mouse;
    const QRect place = m_view->visualRect(m_view->currentIndex());
    menu->popup(isOfMouse ? event->globalPos() : m_view->viewport()->mapToGlobal(place.bottomLeft()));
}

void MessagesPanel::copy(const QString& text)
{
    QGuiApplication::clipboard()->setText(text);
    const int most = 60;
    Q_EMIT m_desk->said(tr("Copied: %1").arg(text.size() > most ? text.left(most) + QChar(0x2026) : text),
                        SaidMilliseconds);
}

void MessagesPanel::copyJson()
{
    const MessageReference message = getCurrentRow() < 0 ? MessageReference() : m_list->getMessage(getCurrentRow());
    if (!message.isNull())
        copy(MessageJson::toText(message.get()));
}

void MessagesPanel::copyBytes()
{
    const MessageReference message = getCurrentRow() < 0 ? MessageReference() : m_list->getMessage(getCurrentRow());
    if (message.isNull())
        return;
    if (FieldSummary::hasHidden(message->getInfo()))
        Q_EMIT m_desk->said(tr("Not copied: some of it is hidden."), SaidMilliseconds);
    else
        copy(QString::fromLatin1(message->getData().toHex(' ')));
}

void MessagesPanel::showBytes()
{
    if (getCurrentRow() >= 0)
        Q_EMIT m_desk->bytesWanted();
}

void MessagesPanel::goThere()
{
    if (getCurrentRow() >= 0)
        m_desk->jumpTo(m_list->getTime(getCurrentRow()));
}

void MessagesPanel::saveSettings(QSettings& settings)
{
    settings.setValue(QLatin1String(HeaderKey), m_view->horizontalHeader()->saveState());
}

void MessagesPanel::restoreSettings(QSettings& settings)
{
    m_view->horizontalHeader()->restoreState(settings.value(QLatin1String(HeaderKey)).toByteArray());
}

void MessagesPanel::followPreferences(const Preferences& preferences)
{
    m_timer.setInterval(1000 / preferences.tickRate);
    m_list->setDigits(preferences.digits);
}

void MessagesPanel::setViewsPaused(bool)
{
    refresh();
}

void MessagesPanel::renew()
{
    m_list->renew();
}
