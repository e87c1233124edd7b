#ifndef VALUETEXT_H
#define VALUETEXT_H

#include <QString>

/** The text of a number, taken apart for reading. */
struct ValueText
{
    QString number; ///< empty where the text does not begin with a number that stands for itself
    QString unit;   ///< what stands behind it, without the space between; the whole text where there is no number

    /** Takes a text apart as fields write it, with a point and without separators of thousands. */
    static ValueText split(const QString& text);

    /** How many characters stand before the point. */
    int getIntegerSize() const;

    /** What of a long text is read at a glance: as many characters and lines at most, and a mark where it goes on. */
    static QString bounded(const QString& text, int characters, int lines);

    /**
     * The number with as many significant digits where it has a fraction, and never without digits before its point:
     * 123456.789 is 123457 in five. A number that is shorter stays as it is.
     *
     * @param digits    0 for all of them
     * @param decimals  digits behind the point that stay at least
     */
    static QString rounded(const QString& number, int digits, int decimals = 0);
};

#endif
