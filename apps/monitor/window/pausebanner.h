#ifndef PAUSEBANNER_H
#define PAUSEBANNER_H

#include <QWidget>

class QAction;

/** Tells above the views that they are paused, with a button that lets them go on; hidden while they are not. */
class PauseBanner : public QWidget
{
    Q_OBJECT

public:
    /** @param pause  is checked while the views are paused; borrowed */
    explicit PauseBanner(QAction* pause, QWidget* parent = nullptr);
};

#endif
