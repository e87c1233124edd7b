#ifndef ICONS_H
#define ICONS_H

#include "theme.h"

#include <QIcon>

/** Small drawings, sharp at any size, in the colours of the palette that is in use when they are painted. */
namespace Icons
{

enum Shape
{
    Open,
    Connect,
    Record,
    Find,
    Pause,
    Play,
    Stopped,
    Dots,      ///< something is under way
    Listening, ///< waves round a point
    Receiving, ///< an arrow that arrives
    Silent,
    Failed,
    Again, ///< another try
    Flask, ///< nothing real
    Recording,
    Severe, ///< worse than what failed
    Warning,
    Notice,
    Minor ///< hardly worth a look
};

/** Disabled ones are fainter and those of chosen rows as their texts, whatever @p accent says. */
QIcon create(Shape shape, Theme::Accent accent = Theme::Plain);

} // namespace Icons

#endif
