#include "ratechoice.h"

#include <QLocale>

static const double Rates[] = {1, 2, 5, 10, 20, 50, 100, 1000};

RateChoice::RateChoice(QWidget* parent)
    : QComboBox(parent)
{
    for (const double rate : Rates)
        addItem(rate == 1 ? tr("1 message/s") : tr("%1 messages/s").arg(QLocale().toString(rate, 'f', 0)), rate);
    addItem(tr("As fast as possible"), 0.0);
    setCurrentIndex(count() - 1);
    setAccessibleName(tr("Rate of playback"));
    setToolTip(tr("The recording has no times: how many of its messages are shown in a second"));
}

void RateChoice::setRate(double rate)
{
    const int index = findData(rate);
    setCurrentIndex(index < 0 ? count() - 1 : index);
}
