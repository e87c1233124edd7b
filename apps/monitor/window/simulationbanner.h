#ifndef SIMULATIONBANNER_H
#define SIMULATIONBANNER_H

#include <QWidget>

class Desk;
class QLabel;

/** Tells above the views that what they show is none of a device; there while only simulations are open. */
class SimulationBanner : public QWidget
{
    Q_OBJECT

public:
    /** @param desk  borrowed */
    explicit SimulationBanner(Desk* desk, QWidget* parent = nullptr);

protected:
    void changeEvent(QEvent* event) override;

private:
    void follow();
    void color();
    void close();

    Desk* m_desk;
    QLabel* m_sign;
    QLabel* m_text;
};

#endif
