#include "mavlinkunits.h"

#include <QChar>
#include <QStringList>

#include <cmath>
#include <iterator>

namespace
{

struct Rule
{
    const char* units; // as in the definition
    const char* text;  // Latin-1
    double factor;
    int decimals;
};

// Units that hide a scale or are known better in another spelling. What is not here is shown as it stands; "cm", "mV"
// and the like are what engineers of the field read and stay.
const Rule rules[] = {
    {"degE7", "\xb0", 1e-7, 7},
    {"degE5", "\xb0", 1e-5, 5},
    {"cdeg", "\xb0", 1e-2, 2},
    {"ddeg", "\xb0", 1e-1, 1},
    {"deg/2", "\xb0", 2, 0}, // the transmitted number counts steps of two degrees
    {"deg", "\xb0", 1, -1},
    {"cdeg/s", "\xb0/s", 1e-2, 2},
    {"ddeg/s", "\xb0/s", 1e-1, 1},
    {"deg/s", "\xb0/s", 1, -1},
    {"cdegC",
     "\xb0"
     "C",
     1e-2, 2},
    {"degC",
     "\xb0"
     "C",
     1, -1},
    {"d%", "%", 1e-1, 1},
    {"c%", "%", 1e-2, 2},
    {"cA", "A", 1e-2, 2},
    {"cV", "V", 1e-2, 2},
    {"dm", "m", 1e-1, 1},
    {"dm/s", "m/s", 1e-1, 1},
    {"ds", "s", 1e-1, 1},
    {"dpix", "pix", 1e-1, 1},
    {"hJ", "J", 100, 0},
    {"m/s*5", "m/s", 0.2, 1}, // the transmitted number is five times the speed
};

// A number such as "1E-2" or a quotient such as "360/255"; 1 for anything else.
double multiplierValue(const QString& text)
{
    double value = 1;
    const QStringList parts = text.split(QLatin1Char('/'));
    for (int i = 0; i < parts.size(); ++i) {
        bool ok = false;
        const double part = parts.at(i).trimmed().toDouble(&ok);
        if (!ok || !(part > 0) || !std::isfinite(part))
            return 1;
        value = i == 0 ? part : value / part;
    }
    return value;
}

int decimalsOf(double factor)
{
    const int most = 9;
    if (factor >= 1)
        return factor == std::floor(factor) ? 0 : 1;
    int decimals = 0;
    for (double rest = factor; rest < 0.999 && decimals < most; rest *= 10)
        ++decimals;
    return decimals;
}

} // namespace

MavlinkUnit MavlinkUnit::fromDefinition(const QString& units, const QString& multiplier)
{
    MavlinkUnit unit;
    unit.text = units;
    for (const Rule* rule = std::begin(rules); rule != std::end(rules); ++rule) {
        if (units == QLatin1String(rule->units)) {
            unit.text = QString::fromLatin1(rule->text);
            unit.factor = rule->factor;
            unit.decimals = rule->decimals;
            break;
        }
    }
    // Units that hide a scale have said everything.
    if (unit.decimals < 0) {
        const double factor = multiplierValue(multiplier);
        if (factor != 1) {
            unit.factor = factor;
            unit.decimals = decimalsOf(factor);
        }
    }
    return unit;
}
