#include "watchbar.h"

#include "desk.h"
#include "pathexpression.h"
#include "watch.h"
#include "watcheditor.h"

#include <QAction>
#include <QHBoxLayout>
#include <QLabel>
#include <QScrollArea>
#include <QSettings>
#include <QVBoxLayout>

// More in a settings file than anybody pins is a fault of the file.
static const int MostRestored = 1000;

WatchBar::WatchBar(Desk* desk, QWidget* parent)
    : QWidget(parent)
    , m_desk(desk)
    , m_editor(new WatchEditor(desk->getLatest()))
    , m_timeOut(Preferences().watchTimeOut)
{
    QVBoxLayout* outer = new QVBoxLayout(this);
    outer->setContentsMargins(6, 4, 6, 4);

    outer->addWidget(m_editor);
    connect(m_editor, &WatchEditor::pinRequested, this, [this](const QStringList& expressions) {
        for (const QString& expression : expressions)
            pin(expression);
    });

    QWidget* content = new QWidget;
    m_layout = new QHBoxLayout(content);
    m_layout->setContentsMargins(0, 0, 0, 0);
    m_layout->addStretch(1);
    QScrollArea* scroller = new QScrollArea;
    scroller->setWidget(content);
    scroller->setWidgetResizable(true);
    scroller->setFrameShape(QFrame::NoFrame);
    scroller->setVerticalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
    scroller->setFixedHeight(5 * fontMetrics().height());
    scroller->setAccessibleName(tr("Watched values"));
    m_strip = scroller;
    m_strip->hide(); // until there is something to show
    outer->addWidget(m_strip);

    connect(desk, &Desk::senderRenamed, this, [this](const QString& before, const QString& now) {
        for (Watch* const watch : std::as_const(m_watches))
            watch->renameSender(before, now);
        m_editor->renameSender(before, now);
    });
    QAction* const use = new QAction(tr("&Watch"), this);
    use->setShortcut(QKeySequence(tr("Ctrl+Shift+W")));
    const auto take = [this](const FieldPath& path, const Origin& origin) {
        pin(path.getExpression(), QString(), origin);
        Q_EMIT m_desk->wanted(this);
    };
    desk->offerUse({QLatin1String("watch"), use, QString(), take, [this](const QString& wish) {
                        pin(wish);
                        Q_EMIT m_desk->wanted(this);
                        PathExpression expression;
                        expression.setString(wish);
                        return expression.errorString();
                    }});
}

int WatchBar::timeOutMilliseconds() const
{
    return m_timeOut > 0 && !m_frozen ? int(m_timeOut * 1000) : -1;
}

void WatchBar::pin(const QString& expression, const QString& name, const Origin& origin)
{
    for (const Watch* watch : std::as_const(m_watches))
        if (watch->getExpression() == expression && watch->getOrigin().sender == origin.sender)
            return;
    Watch* watch = new Watch(expression, name, origin, m_desk);
    watch->setTimeOut(timeOutMilliseconds());
    connect(watch, &Watch::removeRequested, this, [this, watch]() { remove(watch); });
    m_layout->insertWidget(int(m_watches.size()), watch);
    m_watches.append(watch);
    m_strip->show();
}

void WatchBar::remove(Watch* watch)
{
    m_watches.removeOne(watch);
    watch->hide();
    watch->deleteLater(); // it is its own menu that asks for it
    m_strip->setVisible(!m_watches.isEmpty());
}

void WatchBar::removeAll()
{
    while (!m_watches.isEmpty())
        remove(m_watches.last());
}

void WatchBar::renew()
{
    m_editor->renew();
    for (Watch* watch : std::as_const(m_watches))
        watch->renew();
}

void WatchBar::followPreferences(const Preferences& preferences)
{
    m_timeOut = preferences.watchTimeOut;
    applyTimeOut();
}

void WatchBar::tick()
{
    const bool frozen = m_desk->isPaused() || m_desk->getLatest()->isStandingStill();
    if (m_frozen == frozen)
        return;
    m_frozen = frozen;
    applyTimeOut();
}

void WatchBar::applyTimeOut()
{
    for (Watch* watch : std::as_const(m_watches))
        watch->setTimeOut(timeOutMilliseconds());
}

void WatchBar::saveSettings(QSettings& settings)
{
    settings.beginGroup(QLatin1String("watches"));
    settings.setValue(QLatin1String("expression"), m_editor->getExpression());
    settings.remove(QLatin1String("pinned"));
    settings.beginWriteArray(QLatin1String("pinned"), int(m_watches.size()));
    for (int i = 0; i < m_watches.size(); ++i) {
        settings.setArrayIndex(i);
        settings.setValue(QLatin1String("expression"), m_watches.at(i)->getExpression());
        settings.setValue(QLatin1String("name"), m_watches.at(i)->getGivenName());
        const Origin& origin = m_watches.at(i)->getOrigin();
        if (origin.isTold) // else the next run may well have the only sender by another name
            settings.setValue(QLatin1String("sender"), origin.sender);
    }
    settings.endArray();
    settings.endGroup();
}

void WatchBar::restoreSettings(QSettings& settings)
{
    settings.beginGroup(QLatin1String("watches"));
    const QString expression = settings.value(QLatin1String("expression")).toString();
    if (!expression.isEmpty())
        m_editor->setExpression(expression);
    const int count = qMin(settings.beginReadArray(QLatin1String("pinned")), MostRestored);
    for (int i = 0; i < count; ++i) {
        settings.setArrayIndex(i);
        const QString pinned = settings.value(QLatin1String("expression")).toString();
        const QString sender = settings.value(QLatin1String("sender")).toString();
        if (!pinned.isEmpty())
            pin(pinned, settings.value(QLatin1String("name")).toString(), {sender, !sender.isEmpty()});
    }
    settings.endArray();
    settings.endGroup();
}
