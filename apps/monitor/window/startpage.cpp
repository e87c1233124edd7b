#include "startpage.h"

#include "filemenu.h"
#include "recents.h"
#include "theme.h"

#include <QAction>
#include <QHBoxLayout>
#include <QLabel>
#include <QPainter>
#include <QToolButton>
#include <QVBoxLayout>

static const int MostShown = 6;           // of each kind; the menu has the others
static const int WidestEntryLetters = 34; // of a name that is longer the middle is left out

namespace
{

/** A frame that things can be dropped into; the window takes them, wherever they fall. */
class DropZone : public QLabel
{
public:
    explicit DropZone(const QString& text)
        : QLabel(text)
    {
        Theme::makeHint(this);
        setMinimumHeight(5 * fontMetrics().height());
        setMargin(fontMetrics().height());
    }

protected:
    void paintEvent(QPaintEvent* event) override
    {
        QPainter painter(this);
        painter.setRenderHint(QPainter::Antialiasing);
        painter.setPen(QPen(palette().color(QPalette::PlaceholderText), 1.5, Qt::DashLine));
        painter.drawRoundedRect(QRectF(rect()).adjusted(1, 1, -1, -1), 8, 8);
        painter.end();
        QLabel::paintEvent(event);
    }
};

QLabel* createHeading(const QString& text)
{
    QLabel* const label = new QLabel(text);
    QFont font = label->font();
    font.setBold(true);
    label->setFont(font);
    return label;
}

} // namespace

StartPage::StartPage(FileMenu* menu, QWidget* parent)
    : QScrollArea(parent)
    , m_menu(menu)
    , m_recent(new QVBoxLayout)
{
    const int gap = fontMetrics().height();
    QVBoxLayout* const open = new QVBoxLayout;
    for (QVBoxLayout* const column : {open, m_recent})
        column->setSpacing(2);
    open->addWidget(createHeading(tr("Open")));
    QWidget* const first = createEntry(menu->getOpenAction());
    open->addWidget(first);
    open->addWidget(createEntry(menu->getConnectAction()));
    open->addSpacing(gap);
    open->addWidget(createHeading(tr("Try without a device")));
    for (QAction* const action : menu->getDemonstrationActions())
        open->addWidget(createEntry(action));
    open->addStretch(1);

    QHBoxLayout* const columns = new QHBoxLayout;
    columns->setSpacing(2 * gap);
    columns->addLayout(open);
    columns->addLayout(m_recent, 1);
    QWidget* const page = new QWidget;
    QVBoxLayout* const layout = new QVBoxLayout(page);
    layout->setContentsMargins(2 * gap, gap, 2 * gap, gap);
    layout->addStretch(1);
    layout->addLayout(columns);
    layout->addSpacing(gap);
    layout->addWidget(new DropZone(tr("Drop recordings, folders of recordings or definitions here")));
    layout->addStretch(2);
    page->setBackgroundRole(QPalette::Base);
    setWidget(page);
    setWidgetResizable(true);
    setFrameShape(QFrame::NoFrame);
    setAccessibleName(tr("Start page"));
    setFocusProxy(first);
    connect(menu->getRecents(), &Recents::changed, this, &StartPage::fillRecent);
    fillRecent();
}

QWidget* StartPage::createEntry(QAction* action)
{
    QToolButton* const button = new QToolButton;
    button->setDefaultAction(action);
    button->setAutoRaise(true);
    button->setToolButtonStyle(Qt::ToolButtonTextBesideIcon);
    button->setIconSize(QSize(fontMetrics().height(), fontMetrics().height()));
    button->setFocusPolicy(Qt::StrongFocus);
    const auto write = [this, action, button]() {
        QString text = action->text(); // in which && stands for itself
        text.replace(QLatin1String("&&"), QLatin1String("\n")).remove(QLatin1Char('&'));
        text.replace(QLatin1Char('\n'), QLatin1Char('&'));
        button->setAccessibleName(text);
        const int widest = fontMetrics().averageCharWidth() * WidestEntryLetters;
        button->setText(
            fontMetrics().elidedText(text, Qt::ElideMiddle, widest).replace(QLatin1Char('&'), QLatin1String("&&")));
    };
    write();
    connect(action, &QAction::changed, button, write); // when the button has taken it over
    return button;
}

void StartPage::fillRecent()
{
    while (QLayoutItem* const item = m_recent->takeAt(0)) {
        if (item->widget())
            item->widget()->deleteLater(); // one of them may be what opens something now
        delete item;
    }
    const auto add = [this](const QString& heading, const QList<QAction*>& actions) {
        if (actions.isEmpty())
            return;
        if (m_recent->count() > 0)
            m_recent->addSpacing(fontMetrics().height());
        m_recent->addWidget(createHeading(heading));
        for (QAction* const action : actions.mid(0, MostShown))
            m_recent->addWidget(createEntry(action));
    };
    add(tr("Recent recordings"), m_menu->getRecordingActions());
    add(tr("Recent connections"), m_menu->getConnectionActions());
    if (m_recent->count() == 0) {
        m_recent->addWidget(createHeading(tr("Recent")));
        QLabel* const hint = new QLabel(tr("What you open is found here again."));
        hint->setForegroundRole(QPalette::PlaceholderText);
        hint->setWordWrap(true);
        m_recent->addWidget(hint);
    }
    m_recent->addStretch(1);
}
