#ifndef PANEL_H
#define PANEL_H

#include <QVector>

class Desk;
class MessageInfo;
class QMenu;
class QSettings;
class QToolBar;
class QWidget;
struct Preferences;

/** The menus and the tool bar of the window, to which panels add what can be done with them. Borrowed. */
struct PanelMenus
{
    QMenu* file;
    QMenu* edit;
    QMenu* tree;
    QMenu* view;
    QMenu* playback;
    QToolBar* bar;
};

/**
 * A part of the window: one of its views, with everything that is only about this one.
 *
 * What a panel needs of the others and of the program is on the Desk that it is made for. Of the operations here it
 * has those that mean something to it. Two more things are not for many, and are found on the desk: seeing every
 * message of some types (TapListener), and a sender that has another name (Desk::senderRenamed()).
 */
class Panel
{
public:
    Panel() = default;
    virtual ~Panel() = default;
    Panel(const Panel&) = delete;
    Panel& operator=(const Panel&) = delete;

    /** What is shown; the panel's own, never null, and gone with it. */
    virtual QWidget* getWidget() = 0;

    /** Adds what can be done with it; called once, when all panels are there. */
    virtual void addActionsTo(const PanelMenus& menus) { Q_UNUSED(menus) }

    /** Writes what should survive a restart, each panel under keys of its own. */
    virtual void saveSettings(QSettings& settings) { Q_UNUSED(settings) }
    /** Takes over what was written; anything that is missing or makes no sense stays as it is. */
    virtual void restoreSettings(QSettings& settings) { Q_UNUSED(settings) }
    /** Uses what the user set now. */
    virtual void followPreferences(const Preferences& preferences) { Q_UNUSED(preferences) }

    /** Called four times a second while the window can be seen, and when a source changed. */
    virtual void tick() {}
    /** The views are to stand still, or to catch up; what arrives is counted and recorded all the same. */
    virtual void setViewsPaused(bool paused) { Q_UNUSED(paused) }
    /** Writes all values anew: what is shown of them, or how, is another now. */
    virtual void renew() {}
    /** What was shown of this type holds no more. */
    virtual void forget(const MessageInfo* info) { Q_UNUSED(info) }

    /** Whether it waits for the user to put something into it, and the user has. */
    virtual bool isFilled() const { return false; }
};

/** Where a panel stands while the user has not moved it. */
struct PanelPlace
{
    enum Area
    {
        Center,
        Bar, ///< a tool bar at the bottom
        Left,
        Top,
        Right,
        Bottom
    };

    Area area;
    int width;                     ///< thousandths of the window's; 0 is as it comes
    int height;                    ///< likewise
    const char* tabbedWith;        ///< id of a panel further up in the table, in front of it; null for room of its own
    const char* whenNarrow;        ///< likewise in a window without room for all
    bool waits = false;            ///< hidden until it is filled
    int lines = 0;                 ///< of text that it is high at least, in a window that is low for its letters
    const char* whenLow = nullptr; ///< as tabbedWith, in a window without height for all
    bool waitsWhenLow = false;     ///< hidden in such a window until it is wanted
};

/** What the window has to know of a panel to have it. */
struct PanelRow
{
    const char* id;    ///< also of its dock in the settings
    const char* title; ///< to be translated as one of Panel
    PanelPlace place;
    Panel* (*create)(Desk* desk); ///< the caller's
    /** The licence, as SPDX names it, of a whole program that has this panel; null for the project's own. */
    const char* licence = nullptr;
};

/** All panels, in the order of the menu that shows and hides them. */
const QVector<PanelRow>& getPanelTable();

#endif
