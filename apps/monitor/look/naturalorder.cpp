#include "naturalorder.h"

static bool isDigit(QChar letter)
{
    return letter >= QLatin1Char('0') && letter <= QLatin1Char('9');
}

static int endOfNumber(const QString& text, int place)
{
    while (place < text.size() && isDigit(text.at(place)))
        ++place;
    return place;
}

int NaturalOrder::compare(const QString& left, const QString& right)
{
    int i = 0;
    int j = 0;
    while (i < left.size() && j < right.size()) {
        if (!isDigit(left.at(i)) || !isDigit(right.at(j))) {
            if (left.at(i) != right.at(j))
                return left.at(i) < right.at(j) ? -1 : 1;
            ++i;
            ++j;
            continue;
        }
        while (i + 1 < left.size() && left.at(i) == QLatin1Char('0') && isDigit(left.at(i + 1)))
            ++i;
        while (j + 1 < right.size() && right.at(j) == QLatin1Char('0') && isDigit(right.at(j + 1)))
            ++j;
        const int leftEnd = endOfNumber(left, i);
        const int rightEnd = endOfNumber(right, j);
        if (leftEnd - i != rightEnd - j)
            return leftEnd - i < rightEnd - j ? -1 : 1;
        for (; i < leftEnd; ++i, ++j)
            if (left.at(i) != right.at(j))
                return left.at(i) < right.at(j) ? -1 : 1;
    }
    const int rest = int(left.size() - i) - int(right.size() - j);
    return rest != 0 ? rest : left.compare(right); // "01" and "1" are two names all the same
}
