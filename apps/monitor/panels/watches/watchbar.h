#ifndef WATCHBAR_H
#define WATCHBAR_H

#include <QVector>
#include <QWidget>

class FieldInfo;
class LatestMessageSource;
class QHBoxLayout;
class QLabel;
class QSettings;
class Watch;
class WatchEditor;

/** Chooses fields to watch, and shows those that were pinned in large, with one time-out for all. */
class WatchBar : public QWidget
{
    Q_OBJECT

public:
    /** @param source  whose messages to show; borrowed */
    explicit WatchBar(LatestMessageSource* source, QWidget* parent = nullptr);

    /** Pins what @p expression names, unless it is pinned already; @p name may be empty. */
    void pin(const QString& expression, const QString& name = QString());
    /** Keeps values however old they become, while the views or all recordings stand still. */
    void setFrozen(bool frozen);

    /** Pins a field of a message type. */
    void pinField(const FieldInfo* field);
    void removeAll();
    /** Writes all values anew, as they are to be written now. */
    void renew();
    /** Seconds after which a value that no message brought anew goes; 0 keeps it. */
    void setTimeOut(double seconds);
    /** Whether nothing is pinned. */
    bool isEmpty() const { return m_watches.isEmpty(); }

    /** The watches in order. */
    const QVector<Watch*>& getWatches() const { return m_watches; }
    WatchEditor* getEditor() const { return m_editor; }

    void saveSettings(QSettings& settings) const;
    void restoreSettings(QSettings& settings);

private:
    void remove(Watch* watch);
    void applyTimeOut();
    int timeOutMilliseconds() const;

    LatestMessageSource* m_source;
    WatchEditor* m_editor;
    QHBoxLayout* m_layout;
    double m_timeOut; // seconds
    bool m_frozen = false;
    QWidget* m_strip;
    QVector<Watch*> m_watches;
};

#endif
