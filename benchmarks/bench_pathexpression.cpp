// What a keystroke in a path costs: setting a prefix and listing the options, among 20 formats of 300 types of 100
// fields. Measured against a look at the text of every name on the level that is typed, which is what an index has to
// beat.

#include "fieldinfo.h"
#include "formatinfo.h"
#include "formatregistry.h"
#include "messageinfo.h"
#include "pathexpression.h"

#include <benchmark/benchmark.h>

#include <algorithm>
#include <ctime>
#include <memory>
#include <vector>

namespace
{

constexpr int Formats = 20;
constexpr int TypesPerFormat = 300;
constexpr int FieldsPerType = 100;

class NoField : public FieldInfo
{
public:
    explicit NoField(const QString& name)
        : FieldInfo(name, FieldType(FieldType::FloatType, 4, QStringLiteral("float")))
    {
    }
    unsigned int getValueCount(const Message*) const override { return 0; }
    FieldValue getValue(const Message*, unsigned int) const override { return FieldValue::invalid(); }
};

enum Names
{
    SharedNames,  ///< some thousand field names, as real formats have them
    DistinctNames ///< no two of the 600,000 fields have the same name
};

/** "speed_raw_17": what names are made of, so that every letter typed leaves fewer. */
QString nameOf(int number)
{
    static const char* const words[] = {"roll",  "pitch",    "yaw",      "speed",   "voltage", "current", "time",
                                        "count", "altitude", "heading",  "lat",     "lon",     "mode",    "status",
                                        "temp",  "pressure", "distance", "quality", "error",   "id"};
    constexpr int count = sizeof(words) / sizeof(words[0]);
    return QStringLiteral("%1_%2_%3")
        .arg(QLatin1String(words[number % count]), QLatin1String(words[number / count % count]))
        .arg(number / (count * count));
}

/** Formats in the registry. */
class KnownFormats
{
public:
    /** The formats with these names; others that there were before are gone. */
    static const KnownFormats& get(Names names)
    {
        static std::unique_ptr<KnownFormats> known;
        if (!known || known->m_names != names) {
            known.reset();
            known.reset(new KnownFormats(names));
        }
        return *known;
    }

    std::vector<std::unique_ptr<FormatInfo>> formats;

private:
    explicit KnownFormats(Names names)
        : m_names(names)
    {
        int number = 0;
        for (int f = 0; f < Formats; ++f) {
            formats.push_back(std::make_unique<FormatInfo>(QStringLiteral("format%1").arg(f)));
            for (int t = 0; t < TypesPerFormat; ++t) {
                MessageInfo* info = new MessageInfo(nameOf(f + t * 7).toUpper() + QString::number(t));
                for (int i = 0; i < FieldsPerType; ++i, ++number)
                    info->addField(new NoField(nameOf(names == DistinctNames ? number : (number * 13) % 4000)));
                formats.back()->addMessageInfo(info);
            }
            FormatRegistry::getInstance()->addFormat(formats.back().get());
        }
    }

    const Names m_names;
};

/** Processor time, which other programs do not lengthen. */
class Stopwatch
{
public:
    double milliseconds() const { return double(std::clock() - m_start) * 1e3 / CLOCKS_PER_SEC; }

private:
    const std::clock_t m_start = std::clock();
};

/** The least that a list without an index costs: the time to look at every name of types or fields. */
double scanMilliseconds(const KnownFormats& known, const QString& typed)
{
    const int level = int(typed.count(QLatin1Char('/')));
    const QString prefix = typed.mid(typed.lastIndexOf(QLatin1Char('/')) + 1).toCaseFolded();
    std::vector<double> times;
    for (int round = 0; round < 5; ++round) {
        const Stopwatch watch;
        int found = 0;
        for (const auto& format : known.formats) {
            const QVector<const MessageInfo*> infos = format->getMessageInfos();
            for (const MessageInfo* info : infos) {
                if (level == 1)
                    found += info->getName().startsWith(prefix, Qt::CaseInsensitive);
                if (level < 2)
                    continue;
                const QVector<const FieldInfo*> fields = info->getFieldInfos();
                for (const FieldInfo* field : fields)
                    found += field->getName().startsWith(prefix, Qt::CaseInsensitive);
            }
        }
        benchmark::DoNotOptimize(found);
        times.push_back(watch.milliseconds());
    }
    std::sort(times.begin(), times.end());
    return times[times.size() / 2];
}

void keystroke(benchmark::State& state, Names names, const char* typed, int listedParts)
{
    const KnownFormats& known = KnownFormats::get(names);
    const PathExpression::Parts parts(listedParts);
    const QString text = QString::fromLatin1(typed);
    PathExpression expression;
    expression.setStringPrefix(text, PathExpression::AllParts);
    int options = int(expression.getMatchingExpressionsStringList(parts).size()); // makes the index: see makeIndex
    double longest = 0;
    double total = 0;
    for (auto _ : state) {
        const Stopwatch watch;
        expression.setStringPrefix(text.chopped(1), PathExpression::AllParts);
        expression.setStringPrefix(text, PathExpression::AllParts);
        options = int(expression.getMatchingExpressionsStringList(parts).size());
        const double milliseconds = watch.milliseconds();
        longest = std::max(longest, milliseconds);
        total += milliseconds;
    }
    const double scan = scanMilliseconds(known, text);
    state.counters["options"] = options;
    state.counters["max_ms"] = longest;
    state.counters["scan_ms"] = scan;
    state.counters["of_scan"] = total / double(state.iterations()) / scan;
}

/** What the first keystroke after a format came costs, for all formats at once. */
void makeIndex(benchmark::State& state, Names names)
{
    const KnownFormats& known = KnownFormats::get(names);
    PathExpression expression;
    expression.setString(QStringLiteral("*/*/roll"));
    for (auto _ : state) {
        for (const auto& format : known.formats)
            FormatRegistry::getInstance()->updateFormat(format.get());
        benchmark::DoNotOptimize(expression.getMatchingFieldInfos());
    }
}

} // namespace

BENCHMARK_CAPTURE(keystroke, format, SharedNames, "f", 15)->Unit(benchmark::kMillisecond);
BENCHMARK_CAPTURE(keystroke, type_in_all_formats, SharedNames, "*/sp", 15)->Unit(benchmark::kMillisecond);
BENCHMARK_CAPTURE(keystroke, field_of_one_type, SharedNames, "format7/COUNT_ROLL_00/s", 15)
    ->Unit(benchmark::kMillisecond);
BENCHMARK_CAPTURE(keystroke, field_names_one_letter, SharedNames, "*/*/s", 4)->Unit(benchmark::kMillisecond);
BENCHMARK_CAPTURE(keystroke, field_paths_one_letter, SharedNames, "*/*/h", 15)->Unit(benchmark::kMillisecond);
BENCHMARK_CAPTURE(keystroke, field_paths_two_words, SharedNames, "*/*/speed_lat", 15)->Unit(benchmark::kMillisecond);
BENCHMARK_CAPTURE(keystroke, field_paths_one_name, SharedNames, "*/*/speed_lat_3", 15)->Unit(benchmark::kMillisecond);
BENCHMARK_CAPTURE(keystroke, every_field_name, SharedNames, "*/*/", 4)->Unit(benchmark::kMillisecond);
BENCHMARK_CAPTURE(keystroke, every_field_path, SharedNames, "*/*/", 15)->Unit(benchmark::kMillisecond);
BENCHMARK_CAPTURE(makeIndex, shared_names, SharedNames)->Unit(benchmark::kMillisecond);
BENCHMARK_CAPTURE(keystroke, distinct_names_one_letter, DistinctNames, "*/*/s", 4)->Unit(benchmark::kMillisecond);
BENCHMARK_CAPTURE(keystroke, distinct_names_one_word, DistinctNames, "*/*/speed_lat", 15)
    ->Unit(benchmark::kMillisecond);
BENCHMARK_CAPTURE(keystroke, distinct_every_name, DistinctNames, "*/*/", 4)->Unit(benchmark::kMillisecond);
BENCHMARK_CAPTURE(makeIndex, distinct_names, DistinctNames)->Unit(benchmark::kMillisecond);

BENCHMARK_MAIN();
