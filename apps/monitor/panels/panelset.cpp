#include "panelset.h"

#include "desk.h"

PanelSet::PanelSet(Desk* desk, const QVector<PanelRow>& table)
{
    for (const PanelRow& row : table)
        m_entries.push_back({row, std::unique_ptr<Panel>(row.create(desk))});
    connect(desk, &Desk::preferencesChanged, this, [this, desk]() {
        for (const Entry& entry : m_entries)
            entry.panel->followPreferences(desk->getPreferences());
    });
    connect(desk, &Desk::pausedChanged, this, [this](bool paused) {
        for (const Entry& entry : m_entries)
            entry.panel->setViewsPaused(paused);
    });
    connect(desk, &Desk::renewed, this, [this]() {
        for (const Entry& entry : m_entries)
            entry.panel->renew();
    });
    connect(desk->getLatest(), &LatestMessageSource::forgotten, this, [this](const MessageInfo* info) {
        for (const Entry& entry : m_entries)
            entry.panel->forget(info);
    });
}

PanelSet::~PanelSet() = default;

Panel* PanelSet::getPanel(PanelPlace::Area area) const
{
    for (const Entry& entry : m_entries)
        if (entry.row.place.area == area)
            return entry.panel.get();
    return nullptr;
}

void PanelSet::addActionsTo(const PanelMenus& menus)
{
    for (const Entry& entry : m_entries)
        entry.panel->addActionsTo(menus);
}

void PanelSet::saveSettings(QSettings& settings)
{
    for (const Entry& entry : m_entries)
        entry.panel->saveSettings(settings);
}

void PanelSet::restoreSettings(QSettings& settings)
{
    for (const Entry& entry : m_entries)
        entry.panel->restoreSettings(settings);
}

void PanelSet::tick()
{
    for (const Entry& entry : m_entries)
        entry.panel->tick();
}
