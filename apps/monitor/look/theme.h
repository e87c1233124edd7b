#ifndef THEME_H
#define THEME_H

#include <QString>

class QColor;
class QLabel;
class QPalette;

/** The colours of all windows. */
namespace Theme
{

enum Kind
{
    System,
    Light,
    Dark
};

/** What a colour says. None of them says it alone: beside it stand a word and a shape. */
enum Accent
{
    Plain,
    Good,
    Waiting, ///< nothing is wrong, and nothing comes
    Warning,
    Bad,
    Simulated
};

/** To be called once, before there are windows: what apply() does to widgets, without colours. */
void initialize();
/** Uses these colours from now on, in every window. */
void apply(Kind kind);
/** The kind of that name, "system", "light" or "dark"; false when there is none. */
bool find(const QString& name, Kind* kind);
QString nameOf(Kind kind);

/** A colour that can be seen on the grounds of @p palette. */
QColor accent(const QPalette& palette, Accent accent);
/** What shades a value that changed, @p percent strong; translucent. */
QColor changeShade(const QPalette& palette, int percent);
/** Text that stands back, such as what is old: fainter than other text, and still easy to read. */
QColor faintText(const QPalette& palette);
/** Gives what a label says to do next the look of a hint. */
void makeHint(QLabel* label);

} // namespace Theme

#endif
