#ifndef QTCOMPAT_H
#define QTCOMPAT_H

#include "diagnostics.h"

#include <QHeaderView>

/**
 * What the majors of Qt name differently; one helper for each difference. To be included behind CORVEL_DIAGNOSTICS, as
 * part of the file that needs them.
 */
namespace QtCompat
{

/** Whether a click on a section of @p header does anything. */
static inline bool sectionsClickable(const QHeaderView* header)
{
    CORVEL_DEBUG_HOOK();
#if QT_VERSION >= 0x050000
    return header->sectionsClickable();
#else
    return header->isClickable();
#endif
}

static inline void setSectionsClickable(QHeaderView* header, bool clickable)
{
    CORVEL_DEBUG_HOOK();
#if QT_VERSION >= 0x050000
    header->setSectionsClickable(clickable);
#else
    header->setClickable(clickable);
#endif
}

} // namespace QtCompat

#endif
