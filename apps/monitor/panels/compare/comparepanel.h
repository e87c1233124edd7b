#ifndef COMPAREPANEL_H
#define COMPAREPANEL_H

#include "comparedrow.h"
#include "desk.h"
#include "panel.h"

#include <QWidget>

class CellDelegate;
class QCheckBox;
class QLabel;
class QTreeWidget;
class QTreeWidgetItem;

/**
 * Rows of the message tree beside one another: a column for each, a line for each field, and a mark where they differ.
 *
 * It shows the newest message of each, of the sender of its row, as often as lists of figures are brought up to date.
 */
class ComparePanel : public QWidget, public Panel
{
    Q_OBJECT

public:
    explicit ComparePanel(Desk* desk, QWidget* parent = nullptr);

    QWidget* getWidget() override { return this; }
    void tick() override;
    void renew() override { refresh(); }
    void setViewsPaused(bool paused) override;
    bool isFilled() const override { return !m_rows.isEmpty(); }

    /** Shows these, in place of what was shown. */
    void compare(const QVector<FieldUse::Row>& rows);
    QTreeWidget* getView() const { return m_view; }

private:
    struct Line
    {
        QString name;
        QVector<ComparedRow::Value> values; // of each row
        QVector<bool> isThere;
    };

    void refresh();
    void showTitles();
    void fitColumns();
    QVector<Line> readLines(QStringList* times, QVector<bool>* hasMessage) const;
    void showLine(QTreeWidgetItem* item, const Line& line, bool differs);
    void copy();

    Desk* m_desk;
    QVector<FieldUse::Row> m_rows;
    QCheckBox* m_onlyDiffering;
    QLabel* m_summary;
    QTreeWidget* m_view;
    CellDelegate* m_cells;
};

#endif
