#include "treetools.h"

#include "changehighlighter.h"
#include "corvel.h"
#include "findbar.h"
#include "latestmessagesource.h"
#include "messagetap.h"
#include "messagetreewidget.h"
#include "pinnedtypes.h"
#include "plotpanel.h"
#include "plotwishes.h"
#include "preferencesdialog.h"
#include "rowtooltips.h"
#include "silencewatch.h"
#include "treeactions.h"

#include <QEvent>
#include <QMenu>
#include <QSettings>
#include <QVBoxLayout>

TreeTools::TreeTools(MessageTreeWidget* tree, LatestMessageSource* latest, MessageTap* tap, QObject* parent)
    : QObject(parent)
    , m_tree(tree)
    , m_latest(latest)
    , m_findBar(new FindBar(tree, latest))
    , m_pins(new PinnedTypes(tree, this))
    , m_actions(new TreeActions(tree, m_pins, this))
    , m_silence(new SilenceWatch(tree, latest, this))
    , m_toolTips(new RowToolTips(tree, m_silence, this))
    , m_highlighter(new ChangeHighlighter(tree, this))
    , m_plot(new PlotPanel(latest))
    , m_plotWishes(new PlotWishes(m_plot, this))
{
    tree->installEventFilter(this);
    tree->setDragEnabled(true);
    tree->setDragDropMode(QAbstractItemView::DragOnly);
    m_highlighter->setEnabled(m_preferences.highlight);
    connect(m_actions, &TreeActions::plotRequested, m_plot, &PlotPanel::addField);
    connect(m_plot, &PlotPanel::rowDropped, m_actions, &TreeActions::plot);
    connect(m_plot, &PlotPanel::typesChanged, tap, [this, tap]() { tap->setTypes(m_plot->getTypes()); });
    connect(tap, &MessageTap::newMessage, m_plot, &PlotPanel::processMessage);
}

// Rows keep the colours that they were given.
bool TreeTools::eventFilter(QObject* watched, QEvent* event)
{
    if (event->type() == QEvent::PaletteChange) {
        m_highlighter->clear();
        m_silence->followPalette();
        m_pins->followPalette();
    }
    return QObject::eventFilter(watched, event);
}

QWidget* TreeTools::createTreePane()
{
    QWidget* const pane = new QWidget;
    QVBoxLayout* const layout = new QVBoxLayout(pane);
    layout->setContentsMargins(0, 0, 0, 0);
    layout->setSpacing(0);
    layout->addWidget(m_findBar);
    layout->addWidget(m_tree, 1);
    return pane;
}

void TreeTools::plot(const QString& expression)
{
    if (!m_plotWishes->add(expression))
        Q_EMIT m_actions->said(tr("%1 is plotted as soon as a source has it.").arg(expression));
    Q_EMIT plotWished();
}

void TreeTools::renew()
{
    m_tree->reconfigureTopLevelAbstractMessageTreeWidgetItems();
    m_plot->showValues();
    Q_EMIT renewed();
}

void TreeTools::followConfidentiality()
{
    m_plotWishes->followConfidentiality();
    renew();
}

void TreeTools::fillEditMenu(QMenu* menu)
{
    menu->addActions(m_actions->getCopyActions());
    menu->addSeparator();
    m_findBar->addActionsTo(menu);
    menu->addSeparator();
    QAction* const settings = menu->addAction(tr("&Settings..."), this, &TreeTools::showPreferences);
    settings->setShortcut(QKeySequence(tr("Ctrl+,")));
    settings->setMenuRole(QAction::PreferencesRole);
    connect(menu, &QMenu::aboutToShow, m_actions, &TreeActions::update);
}

void TreeTools::fillTreeMenu(QMenu* menu)
{
    menu->addActions(m_actions->getShowActions());
    connect(menu, &QMenu::aboutToShow, m_actions, &TreeActions::update);
}

void TreeTools::setPreferences(const Preferences& preferences)
{
    const Preferences before = m_preferences;
    m_preferences = preferences;
    m_latest->setRate(preferences.tickRate);
    m_plot->setRate(preferences.tickRate);
    m_silence->setIntervals(preferences.silentIntervals);
    if (preferences.highlight != m_highlighter->isEnabled())
        m_highlighter->setEnabled(preferences.highlight);
    if (preferences.theme != before.theme)
        Theme::apply(preferences.theme);
    if (preferences.decimals != Corvel::floatingPointDecimals()) {
        Corvel::setFloatingPointDecimals(preferences.decimals);
        renew(); // also while nothing new is shown
    }
    if (preferences.annotations != before.annotations && !preferences.annotations.isEmpty())
        Q_EMIT annotationsRequested(preferences.annotations);
    Q_EMIT preferencesChanged();
}

void TreeTools::showPreferences()
{
    PreferencesDialog* const dialog =
        new PreferencesDialog(m_preferences, Corvel::confidentialInformationDisplayEnabled(), m_tree->window());
    dialog->setAttribute(Qt::WA_DeleteOnClose);
    connect(dialog, &PreferencesDialog::applied, this, [this, dialog]() {
        setPreferences(dialog->getPreferences());
        if (dialog->isConfidentialShown() != Corvel::confidentialInformationDisplayEnabled())
            Q_EMIT confidentialRequested(dialog->isConfidentialShown());
    });
    dialog->open();
}

void TreeTools::saveSettings(QSettings& settings) const
{
    m_preferences.save(settings);
    settings.beginGroup(QLatin1String("tree"));
    m_pins->saveSettings(settings);
    settings.endGroup();
    settings.beginGroup(QLatin1String("plot"));
    m_plotWishes->saveSettings(settings);
    settings.endGroup();
}

void TreeTools::restoreSettings(QSettings& settings)
{
    Preferences preferences = m_preferences;
    preferences.restore(settings);
    setPreferences(preferences);
    settings.beginGroup(QLatin1String("tree"));
    m_pins->restoreSettings(settings);
    settings.endGroup();
    settings.beginGroup(QLatin1String("plot"));
    m_plotWishes->restoreSettings(settings);
    settings.endGroup();
}
