#ifndef COLUMNCHOICE_H
#define COLUMNCHOICE_H

class QHeaderView;
class QSettings;
class QString;

/** Which columns of a view are shown, chosen in the menu of its header. */
namespace ColumnChoice
{

/** Adds an action for each column from @p first on to @p header, which has them as a menu then. */
void offer(QHeaderView* header, int first);
/** Writes which of these are shown. */
void save(const QHeaderView* header, int first, QSettings& settings, const QString& key);
/** Shows what was written, if anything was. */
void restore(QHeaderView* header, int first, QSettings& settings, const QString& key);

} // namespace ColumnChoice

#endif
