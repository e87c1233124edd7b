#ifndef PLOTBAR_H
#define PLOTBAR_H

#include <QToolBar>

class QComboBox;

/** The buttons above a plot. */
class PlotBar : public QToolBar
{
    Q_OBJECT

public:
    explicit PlotBar(QWidget* parent = nullptr);

    QAction* getPause() const { return m_pause; }
    /** Whether time is that since the start. */
    QAction* getSinceStart() const { return m_sinceStart; }
    /** The seconds that are shown; 0 for all. */
    int getSpan() const;
    /** Shows all, or the last minute, as long as the user did not choose. */
    void suggestAll(bool all);
    /** Whether there is anything to do something with. */
    void setFilled(bool filled);

Q_SIGNALS:
    /** The user chose how much is shown. */
    void spanChosen();
    void zoomWanted(double factor);
    void everythingWanted();
    void removalWanted();
    void removalOfAllWanted();
    void pictureWanted();
    void valuesWanted();

private:
    QAction* add(const QString& text, const QString& toolTip, void (PlotBar::*signal)());
    void addZoom(const QString& text, const QString& sign, const QString& toolTip, double factor,
                 QKeySequence::StandardKey key);

    QComboBox* m_span;
    QAction* m_pause;
    QAction* m_sinceStart;
    bool m_isSpanChosen = false; // by the user
    QList<QAction*> m_needSeries;
};

#endif
