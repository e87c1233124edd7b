#ifndef PLAYBACKTIME_H
#define PLAYBACKTIME_H

#include <QString>
#include <QtGlobal>

/** Times of a recording as people read and type them. Times are microseconds since 1970 (UTC). */
namespace PlaybackTime
{

/** "2015-07-05 00:26:43.120". */
QString clockText(qint64 time);

/** A length of time: "12:34", "1:02:03". */
QString lengthText(qint64 microseconds);

/**
 * Reads a time that was typed: "+90", "+1:30" or "+1:02:03.5" since the start, "14:05" or "14:05:30.5" of the first day
 * (or the next, where that is before the start), or a date and time as clockText() writes it.
 *
 * @return false when it is none of these; @p time is then left alone
 */
bool parse(const QString& text, qint64 start, qint64* time);

} // namespace PlaybackTime

#endif
