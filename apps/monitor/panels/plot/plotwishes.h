#ifndef PLOTWISHES_H
#define PLOTWISHES_H

#include "fieldpath.h"
#include "plotfunction.h"

#include <QHash>
#include <QObject>
#include <QStringList>

class PlotPanel;
class QSettings;

/**
 * Fields that are to be plotted and cannot be yet: their types are not known, as those that a recording brings, or
 * they are confidential and hidden. They are plotted as soon as they can be.
 */
class PlotWishes : public QObject
{
    Q_OBJECT

public:
    /** @param panel  where they are plotted; borrowed */
    explicit PlotWishes(PlotPanel* panel, QObject* parent = nullptr);

    /** As add(), for what can never name a field, too: then it is told what is wrong with it, and where. */
    QString ask(const QString& wish);
    /** Plots what @p wish names, see PlotPanel::plot(), now or later; whether it is plotted now. */
    bool add(const QString& wish, int place = -1, PlotFunction::Kind function = PlotFunction::Values);
    /** What waits, in the order in which it was wished. */
    const QStringList& getWaiting() const { return m_waiting; }
    /** What an empty plot says: how to fill it, and what waits. */
    QString getHint() const;
    /** What waits of what was wished since the program was started, for people; empty where nothing does. */
    QString describeAsked() const;

    /** To be called when confidential fields are to be shown, or not any more. */
    void followConfidentiality();

    /** Keeps what is plotted and what waits over a restart. */
    void saveSettings(QSettings& settings) const;
    void restoreSettings(QSettings& settings);

private:
    void resolve();
    static QVector<FieldPath> fieldsOf(const QString& expression);
    static QString faultOf(const QString& wish);
    static QString describe(const QStringList& wishes);

    PlotPanel* m_panel;
    QStringList m_waiting;
    struct Manner
    {
        int place = 0; // negative where no earlier start has told one
        PlotFunction::Kind function = PlotFunction::Values;
    };

    QHash<QString, Manner> m_manners; // of what waits
};

#endif
