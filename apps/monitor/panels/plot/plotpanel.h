#ifndef PLOTPANEL_H
#define PLOTPANEL_H

#include "desk.h"
#include "fieldpath.h"
#include "messagetap.h"
#include "panel.h"
#include "plotfunction.h"
#include "plotlines.h"
#include "plotstack.h"
#include "plotvalues.h"

#include <QTimer>
#include <QWidget>

#include <memory>
#include <vector>

class ExpressionLine;
class LineActions;
class PlotBar;
class PlotLegend;
class PlotSeries;
class PlotWishes;
class QAction;
class QLabel;
class QSplitter;
class RecordedLines;

/** Draws the last minutes of some fields, live, or all that recordings have of them, with a list that tells their
 * values now. */
class PlotPanel : public QWidget, public Panel
{
    Q_OBJECT

public:
    /** The picture stays while the newest messages of @p desk are suspended. */
    explicit PlotPanel(Desk* desk, QWidget* parent = nullptr);
    ~PlotPanel() override;

    QWidget* getWidget() override { return this; }
    void saveSettings(QSettings& settings) override;
    void restoreSettings(QSettings& settings) override;
    /** Draws as many times a second as the other views, at most. */
    void followPreferences(const Preferences& preferences) override;
    /** Writes the values in the list anew. Fields that are hidden now go, and come back when they are shown again. */
    void renew() override;
    bool isFilled() const override { return !getSeries().empty(); }

    /** Draws the field that @p expression names, of the sender behind a tab in it if there is one, as soon as it is
     * known. Where it has paths in quotation marks, what is computed from these. What is wrong with it, or an empty
     * text. */
    QString plot(const QString& expression);
    /** Draws a field from now on, of one sender or of each when @p origin has none: in the plot @p place, from 0, or in
     * a new one below when there are not as many; a negative one is that of the series that is chosen. */
    void addField(const FieldPath& field, const Origin& origin = {QString(), false}, int place = -1,
                  PlotFunction::Kind function = PlotFunction::Values);
    /** Draws what is computed from others; false when one of them is not known or hidden. See addField(). */
    bool addComputed(const PlotExpression& expression, int place = -1,
                     PlotFunction::Kind function = PlotFunction::Values);
    /** Draws the first of the two series that are chosen in the list, less the second. */
    void addDifference();
    /** Lets somebody write an expression. */
    ExpressionLine* getExpressionLine() const { return m_expressionLine; }
    /** Says in the list which letter stands for which series. */
    void setLettersShown(bool shown);

    /** Removes the series that are chosen in the list, or all. Those that others are computed from are still read. */
    void removeChosen();
    void removeAll();

    /** Draws the series that is chosen in the plot so many below; a new one when there is none. */
    void moveCurrent(int plots);
    /** Draws that of the chosen series in place of their values. */
    void setFunction(PlotFunction::Kind function);

    /** Draws everything by the time since its start, such as recordings of several days over one another. */
    void setSinceStart(bool sinceStart);

    /** The user's pause: what comes is kept, and the picture stays. */
    bool isPaused() const;
    void setPaused(bool paused);

    /** The series of a field of a sender; null when it is not to be drawn. */
    PlotSeries* findOrAdd(const FieldPath& path, const QString& sender);
    /** Lists and colours a series that was just added as if it had been before those of @p others in its plot. */
    void putBefore(const PlotSeries* series, const QSet<const PlotSeries*>& others);
    /** The series that is chosen in the list; null for none. */
    PlotSeries* getCurrentSeries() const;
    const PlotLines::Lines& getSeries() const { return m_lines.getDrawn(); }
    /** All that are read, drawn or not. */
    const PlotLines::Lines& getRead() const { return m_lines.getRead(); }
    /** The first of the plots. */
    PlotView* getView() const { return m_plots->getView(); }
    PlotStack* getPlots() const { return m_plots; }
    PlotLegend* getLegend() const { return m_legend; }

    /** What is kept of all series. */
    std::vector<PlotValues::Column> getColumns() const;

    /** Draws what came since the last time; called by a timer. */
    void refresh();
    /** Removes all series of fields that are not to be shown now; returns the expressions that name them. */
    QStringList removeHidden();
    /** The expressions that name the fields, each once, with senders as plot() takes them. */
    QStringList getExpressions() const;
    /** The first series that an expression of getExpressions() names, or null; and in which plot it is. */
    const PlotSeries* findSeries(const QString& expression) const { return m_lines.findDrawn(expression); }
    int getPlace(const QString& expression) const;

Q_SIGNALS:
    /** All series were removed by the user. */
    void cleared();

protected:
    void dragEnterEvent(QDragEnterEvent* event) override;
    void dropEvent(QDropEvent* event) override;
    void resizeEvent(QResizeEvent* event) override;

private:
    void createActions();
    void createLegend();
    void offerUse();
    void processMessage(const Message* message);
    void renameSender(const QString& before, const QString& now);
    bool draw(const std::shared_ptr<PlotSeries>& series, int place, PlotFunction::Kind function);
    void compute();
    void sortByPlots();
    void sort(const std::function<bool(const PlotSeries*, const PlotSeries*)>& isBefore);
    bool isOfRecordings() const;
    void followTime();
    void followStarts();
    void followMouse();
    void showEverything();
    void removeSeries(std::size_t index);
    void updateNames();
    void updateEmptiness();
    void updateTypes();
    void showValues();
    void savePicture();
    void saveValues();
    void arrangeLegend();

    Desk* m_desk;
    LatestMessageSource* m_latest;
    PlotWishes* m_wishes;
    RecordedLines* m_recorded;
    QAction* m_use; // of the field that is current elsewhere
    TapListener m_listener;
    PlotLines m_lines;
    PlotStack* m_plots;
    PlotLegend* m_legend;
    QSplitter* m_splitter;
    QLabel* m_hint;
    PlotBar* m_bar;
    ExpressionLine* m_expressionLine;
    LineActions* m_lineActions;
    int m_dropPlace = -1; // where what is dropped goes
    QTimer m_timer;
    QVector<double> m_positions; // in recordings, as they are shown
    double m_cursor;             // where the mouse points; NaN when it does not
    bool m_changed = false;
    bool m_areLettersShown = false;
    bool m_legendIsSized = false; // by the user
};

#endif
