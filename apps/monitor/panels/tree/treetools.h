#ifndef TREETOOLS_H
#define TREETOOLS_H

#include "preferences.h"

#include <QObject>

class ChangeHighlighter;
class FindBar;
class LatestMessageSource;
class MessageTap;
class MessageTreeWidget;
class PinnedTypes;
class PlotPanel;
class PlotWishes;
class PreferencesDialog;
class QMenu;
class QSettings;
class RowToolTips;
class SilenceWatch;
class TreeActions;

/** Everything that helps to read the message tree, put together: find, pins, copies, tool tips, shades and plots. */
class TreeTools : public QObject
{
    Q_OBJECT

public:
    /** All borrowed. The tree has to be connected to @p latest before. */
    TreeTools(MessageTreeWidget* tree, LatestMessageSource* latest, MessageTap* tap, QObject* parent = nullptr);

    /** A widget with the find bar above the tree, for the window. */
    QWidget* createTreePane();
    FindBar* getFindBar() const { return m_findBar; }
    PinnedTypes* getPins() const { return m_pins; }
    TreeActions* getActions() const { return m_actions; }
    PlotPanel* getPlot() const { return m_plot; }
    SilenceWatch* getSilence() const { return m_silence; }
    ChangeHighlighter* getHighlighter() const { return m_highlighter; }
    const RowToolTips* getToolTips() const { return m_toolTips; }

    /** Plots the field that @p expression names, as soon as it is known. */
    void plot(const QString& expression);
    /** Writes all values anew: what is shown of them, or how, is another now. */
    void renew();
    /** To be called when confidential fields are to be shown, or not any more. */
    void followConfidentiality();

    void fillEditMenu(QMenu* menu);
    void fillTreeMenu(QMenu* menu);

    const Preferences& getPreferences() const { return m_preferences; }
    void setPreferences(const Preferences& preferences);
    /** Shows the dialog, which does not block. */
    void showPreferences();

    void saveSettings(QSettings& settings) const;
    void restoreSettings(QSettings& settings);

protected:
    bool eventFilter(QObject* watched, QEvent* event) override;

Q_SIGNALS:
    /** The user wants this shown or not from now on. */
    void confidentialRequested(bool shown);
    /** Something is to be plotted by plot(). */
    void plotWished();
    /** getPreferences() has others. */
    void preferencesChanged();
    /** Views beside the tree and the plot are to write their values anew, too. */
    void renewed();
    /** The user wants this file added to the definitions. */
    void annotationsRequested(const QString& path);

private:
    MessageTreeWidget* m_tree;
    LatestMessageSource* m_latest;
    FindBar* m_findBar;
    PinnedTypes* m_pins;
    TreeActions* m_actions;
    SilenceWatch* m_silence;
    RowToolTips* m_toolTips;
    ChangeHighlighter* m_highlighter;
    PlotPanel* m_plot;
    PlotWishes* m_plotWishes;
    Preferences m_preferences;
};

#endif
