#ifndef SOURCEPANEL_H
#define SOURCEPANEL_H

#include <QWidget>

class QTreeView;
class QPushButton;
class SourceModel;
class SourceSession;

/** The list of open sources, and what can be done with the one that is chosen. */
class SourcePanel : public QWidget
{
    Q_OBJECT

public:
    /** @param model  borrowed */
    explicit SourcePanel(SourceModel* model, QWidget* parent = nullptr);

    /** The source that is chosen; the only one, when there is one; or null. */
    SourceSession* getCurrent() const;

Q_SIGNALS:
    /** Another source was chosen, or none. */
    void currentChanged();
    /** The user wants to open something. */
    void connectRequested();
    /** The user wants the source recorded, or not any more. */
    void recordRequested(bool record);

public Q_SLOTS:
    /** Brings the buttons up to date. */
    void follow();

private:
    void choose(int row);

    SourceModel* m_model;
    QTreeView* m_view;
    QPushButton* m_reconnect;
    QPushButton* m_record;
    QPushButton* m_close;
};

#endif
