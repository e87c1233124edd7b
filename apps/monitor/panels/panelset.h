#ifndef PANELSET_H
#define PANELSET_H

#include "panel.h"

#include <QObject>

#include <memory>
#include <vector>

/** The panels of a table, made for one desk, and told what happens there. */
class PanelSet : public QObject
{
    Q_OBJECT

public:
    struct Entry
    {
        PanelRow row;
        std::unique_ptr<Panel> panel;
    };

    /** @param desk  borrowed, and has to outlive this */
    explicit PanelSet(Desk* desk, const QVector<PanelRow>& table = getPanelTable());
    ~PanelSet() override;

    const std::vector<Entry>& getEntries() const { return m_entries; }
    /** The panel in a place that has only one; null when nothing stands there. */
    Panel* getPanel(PanelPlace::Area area) const;
    /** The panel that is a @p Kind; null when there is none. */
    template <typename Kind>
    Kind* find() const
    {
        for (const Entry& entry : m_entries)
            if (Kind* const panel = dynamic_cast<Kind*>(entry.panel.get()))
                return panel;
        return nullptr;
    }

    void addActionsTo(const PanelMenus& menus);
    void saveSettings(QSettings& settings);
    void restoreSettings(QSettings& settings);
    /** To be called four times a second while anything can be seen. */
    void tick();

private:
    std::vector<Entry> m_entries;
};

#endif
