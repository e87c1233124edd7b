#ifndef NATURALORDER_H
#define NATURALORDER_H

#include <QString>

/** The order in which people look for names: numbers in them count as numbers, so that 1:1 stands before 10:1. */
namespace NaturalOrder
{

/** Negative when @p left stands before @p right, positive when behind, 0 for the same text. */
int compare(const QString& left, const QString& right);

inline bool isBefore(const QString& left, const QString& right)
{
    return compare(left, right) < 0;
}

} // namespace NaturalOrder

#endif
