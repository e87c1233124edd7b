#ifndef RATECHOICE_H
#define RATECHOICE_H

#include <QComboBox>

/** How many messages of a recording without times are shown in a second; 0, as data, is as fast as possible. */
class RateChoice : public QComboBox
{
    Q_OBJECT

public:
    explicit RateChoice(QWidget* parent = nullptr);

    double getRate() const { return currentData().toDouble(); }
    /** Chooses @p rate; as fast as possible where it is none of those that are offered. */
    void setRate(double rate);
};

#endif
