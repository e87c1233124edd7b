#ifndef WATCHBAR_H
#define WATCHBAR_H

#include "desk.h"
#include "panel.h"

#include <QWidget>

class QHBoxLayout;
class QLabel;
class Watch;
class WatchEditor;

/** Chooses fields to watch, and shows those that were pinned in large, with one time-out for all. */
class WatchBar : public QWidget, public Panel
{
    Q_OBJECT

public:
    explicit WatchBar(Desk* desk, QWidget* parent = nullptr);

    /** Pins what @p expression names of @p origin, unless it is pinned already; @p name may be empty. */
    void pin(const QString& expression, const QString& name = QString(), const Origin& origin = {QString(), false});
    void removeAll();

    /** The watches in order. */
    const QVector<Watch*>& getWatches() const { return m_watches; }
    WatchEditor* getEditor() const { return m_editor; }

    QWidget* getWidget() override { return this; }
    void saveSettings(QSettings& settings) override;
    void restoreSettings(QSettings& settings) override;
    void followPreferences(const Preferences& preferences) override;
    void tick() override;
    void setViewsPaused(bool) override { tick(); }
    void renew() override;
    bool isFilled() const override { return !m_watches.isEmpty(); }

private:
    void remove(Watch* watch);
    void applyTimeOut();
    int timeOutMilliseconds() const;

    Desk* m_desk;
    WatchEditor* m_editor;
    QHBoxLayout* m_layout;
    double m_timeOut;      // seconds after which a value that no message brought anew goes; 0 keeps it
    bool m_frozen = false; // values are kept however old they become
    QWidget* m_strip;
    QVector<Watch*> m_watches;
};

#endif
