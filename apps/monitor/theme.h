#ifndef THEME_H
#define THEME_H

#include <QString>

/** The colours of all windows. */
namespace Theme
{

enum Kind
{
    System,
    Light,
    Dark
};

/** To be called once, before there are windows: what apply() does to widgets, without colours. */
void initialize();
/** Uses these colours from now on, in every window. */
void apply(Kind kind);
/** The kind of that name, "system", "light" or "dark"; false when there is none. */
bool find(const QString& name, Kind* kind);
QString nameOf(Kind kind);

} // namespace Theme

#endif
