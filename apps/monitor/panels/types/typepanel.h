#ifndef TYPEPANEL_H
#define TYPEPANEL_H

#include "panel.h"
#include "subject.h"

#include <QStringList>
#include <QTreeView>

class QSortFilterProxyModel;

/** The list of the message types that came. Those that are ticked are in the tree, those that are chosen are forms. */
class TypePanel : public QTreeView, public ::Panel // and not that of QFrame
{
    Q_OBJECT

public:
    explicit TypePanel(Desk* desk, QWidget* parent = nullptr);

    /** Chooses these types, by their names, as soon as they are received. */
    void chooseWhenSeen(const QStringList& types) { m_wanted += types; }

    QWidget* getWidget() override { return this; }
    void saveSettings(QSettings& settings) override;
    void restoreSettings(QSettings& settings) override;

private:
    void processSeen(const QVector<Subject>& subjects);
    void rememberChosen();
    void tellChosen();

    Desk* m_desk;
    QSortFilterProxyModel* m_sorted;
    QStringList m_wanted; // names of types, and perhaps their senders behind a tab
};

#endif
