#ifndef QTCOMPAT_H
#define QTCOMPAT_H

#include <QHeaderView>

/** What the majors of Qt name differently; one helper for each difference. */
namespace QtCompat
{

/** Whether a click on a section of @p header does anything. */
inline bool sectionsClickable(const QHeaderView* header)
{
#if QT_VERSION >= 0x050000
    return header->sectionsClickable();
#else
    return header->isClickable();
#endif
}

inline void setSectionsClickable(QHeaderView* header, bool clickable)
{
#if QT_VERSION >= 0x050000
    header->setSectionsClickable(clickable);
#else
    header->setClickable(clickable);
#endif
}

} // namespace QtCompat

#endif
