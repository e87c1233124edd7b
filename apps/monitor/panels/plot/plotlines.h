#ifndef PLOTLINES_H
#define PLOTLINES_H

#include "computedseries.h"
#include "fieldpath.h"

#include <QHash>
#include <QSet>

class Message;
class MessageInfo;

/** The lines of a plot: which are drawn, which are only read because others are computed from them, and what of
 * messages they take. */
class PlotLines
{
public:
    typedef PlotExpression::Lines Lines;

    /** What of the messages of a type is taken: a field, and what it is in that type. */
    struct Wanted
    {
        FieldPath path;
        FieldPath here;
    };

    /** In the order in which they are listed. */
    const Lines& getDrawn() const { return m_drawn; }
    /** All that are read, drawn or not. */
    const Lines& getRead() const { return m_read; }
    bool isDrawn(const PlotSeries* line) const;

    void append(const std::shared_ptr<PlotSeries>& line);
    /** Draws no longer the line number @p index; it is still read where another one needs it. */
    void remove(std::size_t index);
    void clear();
    /** Puts them in the order that @p isBefore says. */
    void sort(const std::function<bool(const PlotSeries*, const PlotSeries*)>& isBefore);

    /** The numbers of the lines that are drawn, of those of one field that of the first. */
    QHash<const PlotSeries*, int> getRanks() const;
    /** The first that is drawn and has that PlotSeries::getWish(); null for none. */
    const PlotSeries* findDrawn(const QString& wish) const;
    /** All the time that any that is drawn has; false when that is none. */
    bool getTimes(double* from, double* to) const;

    /** The path by which a field is known here that can be reached by others. */
    FieldPath pathOf(const FieldPath& field) const;
    /** The line of a field of a sender that is read; null for none. One that has no sender yet becomes that sender's.
     */
    PlotSeries* find(const FieldPath& path, const QString& sender) const;
    /** A line of @p operand, made where there is none; null where its field is not known. */
    std::shared_ptr<PlotSeries> findOrMake(const PlotExpression::Operand& operand);
    /** One that is read, but not drawn, of a field and of that sender, or of any when that is empty; null for none. */
    std::shared_ptr<PlotSeries> findUndrawn(const FieldPath& path, const QString& sender) const;

    bool isDrawnOfEach(const FieldPath& path) const;
    /** Whether the user removed this sender of a field that is drawn of others. */
    bool isRemoved(const FieldPath& path, const QString& sender) const;
    void setRemoved(const FieldPath& path, const QString& sender) { m_removed.emplace_back(path, sender); }
    /** Takes that back, of one sender or of all when it is empty. */
    void forgetRemoved(const FieldPath& path, const QString& sender);
    void renameSender(const QString& before, const QString& now);

    /** Finds out anew what is taken of messages. */
    void updateTypes();
    QSet<const MessageInfo*> getTypes() const;
    QVector<FieldPath> getPaths() const { return m_paths; }
    QVector<Wanted> getWanted(const MessageInfo* info) const { return m_wanted.value(info); }

    /** Computes what is new, as long as @p goOn says yes; whether there was anything. */
    bool compute(const std::function<bool()>& goOn);
    /** Whether there is more to compute. */
    bool isBehind() const;

private:
    void dropUnused();
    void listRead();

    Lines m_drawn;
    Lines m_read;
    Lines m_undrawn;                                      // that others are computed from
    std::vector<std::pair<FieldPath, QString>> m_removed; // senders of a field that is drawn of others
    QHash<const MessageInfo*, QVector<Wanted>> m_wanted;
    QVector<FieldPath> m_paths;
};

#endif
