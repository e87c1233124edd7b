#ifndef SOURCEPANEL_H
#define SOURCEPANEL_H

#include "panel.h"

#include <QWidget>

class QPushButton;
class QTreeView;

/** The list of open sources, and what can be done with the one that is chosen. */
class SourcePanel : public QWidget, public Panel
{
    Q_OBJECT

public:
    explicit SourcePanel(Desk* desk, QWidget* parent = nullptr);

    QWidget* getWidget() override { return this; }

private:
    void createButtons();
    void follow();

    Desk* m_desk;
    QTreeView* m_view;
    QPushButton* m_reconnect;
    QPushButton* m_close;
};

#endif
