#ifndef MAINWINDOW_H
#define MAINWINDOW_H

#include "desk.h"
#include "docklayout.h"
#include "opener.h"
#include "panelset.h"

#include <QMainWindow>
#include <QTimer>

#include <memory>

class FileMenu;
class LayoutMenu;
class QStackedWidget;
class SenderChoice;
class StatusLine;

/** The monitor's window: the panels of the table round a desk, with menus, a status line and settings. */
class MainWindow : public QMainWindow
{
    Q_OBJECT

public:
    explicit MainWindow(QWidget* parent = nullptr);
    ~MainWindow() override;

    /** What the panels work on. */
    Desk* getDesk() { return &m_desk; }
    const Desk* getDesk() const { return &m_desk; }
    const PanelSet& getPanels() const { return m_panels; }
    SourceModel* getSources() { return m_desk.getSources(); }

    /** Uses the definition file @p path from the next input on; @p annotations may be empty. False after showing why
     * not. */
    bool loadDialect(const QString& path, const QString& annotations)
    {
        return m_opener.loadDialect(path, annotations);
    }
    /** Adds the annotations in @p path to the definitions in use. False after showing what is wrong with them. */
    bool loadAnnotations(const QString& path) { return m_opener.loadAnnotations(path); }

    void setPlayback(const StreamSource::Playback& playback) { m_opener.setPlayback(playback); }
    /** What addresses are opened with that come without any of it: the schema, type and framing of @p definitions. */
    void setSourceDefinitions(const SourceOptions& definitions) { m_opener.setDefinitions(definitions); }

    /** Opens @p address beside what is open. False after showing why not. */
    bool openAddress(const QString& address) { return openAll(QStringList(address)); }
    /** Opens all of them, definitions among them too. False after showing in one box what could not be opened. */
    bool openAll(const QStringList& addresses) { return m_opener.openAll(addresses); }
    /** Shows a simulation. @p untilAnother closes it as soon as another source is opened. */
    void openSimulation(bool untilAnother = false,
                        const Demonstration* demonstration = &Demonstration::getAll().first())
    {
        m_opener.openSimulation(untilAnother, demonstration);
    }

    /** Shows the panel with this id, in front of those that share its place; false when there is none. */
    bool showPanel(const QString& id);

    /** Writes what should survive a restart. */
    void saveSettings(QSettings& settings);
    /** Takes over what was written; anything that is missing or makes no sense stays as it is. */
    void restoreSettings(QSettings& settings);
    /** Saves to @p settings when the window is closed; null does not. Owned from now on. */
    void setSettings(std::unique_ptr<QSettings> settings);

    /** Lets all views stand still, or catch up; what arrives is counted and recorded all the same. */
    void setViewsPaused(bool paused);

    /** Shows the dialog of preferences, which does not block. */
    void showPreferences();
    /** What the program is, its version, and the licence of the whole of it. */
    QString getAboutText() const;
    /** Says something that went wrong in a box that does not block, and in the status bar. */
    void showError(const QString& text);
    /** What the status bar says of the last problem; empty when there was none. */
    QString getLastProblem() const;

    /** Takes no more room than it is given when it is shown for the first time. */
    void setVisible(bool visible) override;

protected:
    void changeEvent(QEvent* event) override;
    void closeEvent(QCloseEvent* event) override;
    bool focusNextPrevChild(bool next) override;
    void hideEvent(QHideEvent* event) override;
    void showEvent(QShowEvent* event) override;
    void dragEnterEvent(QDragEnterEvent* event) override;
    void dropEvent(QDropEvent* event) override;

private:
    void createActions();
    void createMenus();
    void showAbout();
    void refresh();
    void arrange();
    QString getStateKey() const;
    void focusMiddle();
    void followVisibility();

    Desk m_desk;
    PanelSet m_panels;
    Opener m_opener;
    DockLayout* m_docks;
    LayoutMenu* m_layouts;
    StatusLine* m_status;
    FileMenu* m_fileMenu;
    SenderChoice* m_senders;
    QStackedWidget* m_middle; // the start page, and the panel of the middle
    QAction* m_confidential;
    QAction* m_pauseViews;
    QTimer m_refreshTimer;
    std::unique_ptr<QSettings> m_settings;
    QByteArray m_state;      // of the docks, as restored
    bool m_arranged = false; // docks have sizes, their first or restored ones
};

#endif
