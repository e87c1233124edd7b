#ifndef LAYOUTMENU_H
#define LAYOUTMENU_H

#include <QMap>
#include <QMenu>

class DockLayout;
class QSettings;

/** Arrangements of the window that have names, and the one that it begins with. */
class LayoutMenu : public QMenu
{
    Q_OBJECT

public:
    /** @param docks  borrowed */
    explicit LayoutMenu(DockLayout* docks, QWidget* parent = nullptr);

    /** Keeps how the window is arranged now under a name; nothing without one. */
    void save(const QString& name);

    void saveSettings(QSettings& settings) const;
    void restoreSettings(QSettings& settings);

private:
    void askName();
    void fill();

    DockLayout* m_docks;
    QMenu* m_remove;
    QMap<QString, QByteArray> m_states; // by name
    QList<QAction*> m_entries;          // of these
};

#endif
