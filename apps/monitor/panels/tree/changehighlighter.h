#ifndef CHANGEHIGHLIGHTER_H
#define CHANGEHIGHLIGHTER_H

#include <QHash>
#include <QObject>
#include <QTimer>

#include <functional>

class QTreeWidgetItem;
class ReadingTree;

/**
 * Shades values in the message tree for a moment when they change.
 *
 * Only rows on the screen are looked at, a few times a second, so it costs the same however many messages come; while
 * it is off it costs nothing. Values that change all the time get a faint shade, so that those that rarely change stand
 * out. The shade differs from the background in lightness, not in hue alone.
 */
class ChangeHighlighter : public QObject
{
    Q_OBJECT

public:
    typedef std::function<qint64()> Clock;

    /** @param tree  borrowed */
    ChangeHighlighter(ReadingTree* tree, QObject* parent = nullptr);

    /** Milliseconds that never run backwards; for tests. */
    void setClock(const Clock& clock) { m_clock = clock; }

    bool isEnabled() const { return m_enabled; }
    void setEnabled(bool enabled);

    /** Looks what changed on the screen, and lets shades fade; called by a timer. */
    void update();
    /** Takes all shades away. */
    void clear();

private:
    struct Cell
    {
        QString text;
        qint64 changed = 0; // 0 for never
        int strength = 0;   // per cent, when it changed
        int shown = 0;      // per cent, now
    };

    void shade(QTreeWidgetItem* item, int column, int percent);
    void forget(const QModelIndex& parent, int first, int last);

    ReadingTree* m_tree;
    Clock m_clock;
    QTimer m_timer;
    bool m_enabled = false;
    int m_column = -1;
    QHash<QTreeWidgetItem*, Cell> m_cells; // of rows that were on the screen at the last look
};

#endif
