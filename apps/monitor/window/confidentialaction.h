#ifndef CONFIDENTIALACTION_H
#define CONFIDENTIALACTION_H

#include <QAction>

class Desk;

/** Shows confidential data in all views, with a word of warning, or hides it. */
class ConfidentialAction : public QAction
{
    Q_OBJECT

public:
    /** @param desk  borrowed */
    ConfidentialAction(Desk* desk, QWidget* window);

private:
    void warn(bool shown);

    QWidget* m_window;
};

#endif
