// What a keystroke in a path costs: setting a prefix and listing the options, among 20 formats of 300 types of 100
// fields. Measured against a look at the text of every name on the level that is typed, which is what an index has to
// beat, and, where all options are asked for, against making that many texts, which nothing can beat. max_ms is what
// the user waits for.

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
    NoField(const QString& name, const MessageInfo* subMessage)
        : FieldInfo(name, FieldType(subMessage))
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

    /** Types whose names begin with @p number, which counts fields. */
    static void addTypes(FormatInfo* format, int count, Names names, int* number)
    {
        for (int t = 0; t < count; ++t) {
            const int typeNumber = *number / FieldsPerType;
            MessageInfo* info = new MessageInfo(nameOf(typeNumber * 7).toUpper() + QString::number(typeNumber));
            for (int i = 0; i < FieldsPerType; ++i, ++*number)
                info->addField(new NoField(nameOf(names == DistinctNames ? *number : (*number * 13) % 4000)));
            format->addMessageInfo(info);
        }
    }

    std::vector<std::unique_ptr<FormatInfo>> formats;

private:
    explicit KnownFormats(Names names)
        : m_names(names)
    {
        int number = 0;
        for (int f = 0; f < Formats; ++f) {
            formats.push_back(std::make_unique<FormatInfo>(QStringLiteral("format%1").arg(f)));
            addTypes(formats.back().get(), TypesPerFormat, names, &number);
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

/** The least that a list of texts of its own costs: to make them, by copying each from another that is at hand. */
double copyMilliseconds(const QStringList& texts)
{
    std::vector<double> times;
    for (int round = 0; round < 3; ++round) {
        const Stopwatch watch;
        QStringList copies;
        for (const QString& text : texts)
            copies.append(QString(text.constData(), text.size()));
        benchmark::DoNotOptimize(copies);
        times.push_back(watch.milliseconds());
    }
    std::sort(times.begin(), times.end());
    return times[times.size() / 2];
}

enum Listed
{
    AllOptions = -1,
    Completions = 200 ///< as many as anybody looks through below a line
};

/** Types @p typed and, with @p renew, registers a format anew before each keystroke, outside of what is measured. */
void type(benchmark::State& state, const KnownFormats& known, const QString& typed, int listedParts, Listed listed,
          bool renew)
{
    const PathExpression::Parts parts(listedParts);
    PathExpression expression;
    expression.setConsiderSubMessages(true);
    QStringList options;
    std::vector<double> times;
    for (auto _ : state) {
        options.clear();
        if (renew) {
            FormatRegistry::getInstance()->removeFormat(known.formats.front().get());
            FormatRegistry::getInstance()->addFormat(known.formats.front().get());
        }
        expression.setStringPrefix(typed.chopped(1), PathExpression::AllParts);
        const Stopwatch watch;
        expression.setStringPrefix(typed, PathExpression::AllParts);
        options = expression.getMatchingExpressionsStringList(parts, listed);
        times.push_back(watch.milliseconds());
    }
    std::sort(times.begin(), times.end());
    state.counters["options"] = double(options.size());
    state.counters["max_ms"] = times.back();
    if (listed == AllOptions && options.size() > 10000)
        state.counters["of_copy"] = times[times.size() / 2] / copyMilliseconds(options);
    const double scan = scanMilliseconds(known, typed);
    state.counters["scan_ms"] = scan;
    state.counters["of_scan"] = times[times.size() / 2] / scan;
}

void keystroke(benchmark::State& state, Names names, const char* typed, int listedParts, Listed listed = AllOptions)
{
    type(state, KnownFormats::get(names), QString::fromLatin1(typed), listedParts, listed, false);
}

void keystrokeAfterLoading(benchmark::State& state, Names names, const char* typed, Listed listed)
{
    type(state, KnownFormats::get(names), QString::fromLatin1(typed), 15, listed, true);
}

/** What comes with a format that becomes known: its part of the index. Compared with making its descriptions. */
void loadFormat(benchmark::State& state, Names names)
{
    KnownFormats::get(names);
    PathExpression expression; // with the first of which the index begins
    std::vector<double> times;
    std::vector<double> makingTimes;
    int number = 0;
    for (auto _ : state) {
        const Stopwatch making;
        FormatInfo format(QStringLiteral("new"));
        KnownFormats::addTypes(&format, TypesPerFormat, names, &number);
        makingTimes.push_back(making.milliseconds());
        const Stopwatch watch;
        FormatRegistry::getInstance()->addFormat(&format);
        times.push_back(watch.milliseconds());
    }
    std::sort(times.begin(), times.end());
    std::sort(makingTimes.begin(), makingTimes.end());
    state.counters["max_ms"] = times.back();
    state.counters["of_making"] = times[times.size() / 2] / makingTimes[makingTimes.size() / 2];
}

/** One more type in a format of many, and a keystroke. */
void growFormat(benchmark::State& state)
{
    KnownFormats::get(SharedNames);
    FormatInfo format(QStringLiteral("growing"));
    int number = 0;
    KnownFormats::addTypes(&format, TypesPerFormat, SharedNames, &number);
    FormatRegistry::getInstance()->addFormat(&format);
    PathExpression expression;
    double longest = 0;
    for (auto _ : state) {
        KnownFormats::addTypes(&format, 1, SharedNames, &number);
        const Stopwatch watch;
        FormatRegistry::getInstance()->updateFormat(&format);
        expression.setStringPrefix(QStringLiteral("*/*/speed_lat"), PathExpression::AllParts);
        benchmark::DoNotOptimize(expression.getMatchingExpressionsStringList(PathExpression::AllParts, Completions));
        longest = std::max(longest, watch.milliseconds());
    }
    state.counters["max_ms"] = longest;
}

/** A type of which each field leads to another type, and soon to itself: more ways than anybody can count. */
void recursive(benchmark::State& state, const char* typed)
{
    FormatInfo format(QStringLiteral("recursive"));
    std::vector<MessageInfo*> types;
    for (int t = 0; t < TypesPerFormat; ++t) {
        types.push_back(new MessageInfo(QStringLiteral("T%1").arg(t)));
        format.addMessageInfo(types.back());
    }
    for (int t = 0; t < TypesPerFormat; ++t)
        for (int i = 0; i < FieldsPerType; ++i)
            types[t]->addField(new NoField(nameOf(i), types[size_t(t * 7 + i * 3) % types.size()]));
    FormatRegistry::getInstance()->addFormat(&format);
    type(state, KnownFormats::get(SharedNames), QString::fromLatin1(typed), 15, Completions, false);
}

} // namespace

BENCHMARK_CAPTURE(keystroke, format, SharedNames, "f", 15)->Unit(benchmark::kMillisecond);
BENCHMARK_CAPTURE(keystroke, type_in_all_formats, SharedNames, "*/sp", 15)->Unit(benchmark::kMillisecond);
BENCHMARK_CAPTURE(keystroke, field_of_one_type, SharedNames, "format0/ROLL_ROLL_00/s", 15)
    ->Unit(benchmark::kMillisecond);
BENCHMARK_CAPTURE(keystroke, field_names_one_letter, SharedNames, "*/*/s", 4)->Unit(benchmark::kMillisecond);
BENCHMARK_CAPTURE(keystroke, field_paths_one_letter, SharedNames, "*/*/h", 15)->Unit(benchmark::kMillisecond);
BENCHMARK_CAPTURE(keystroke, field_paths_two_words, SharedNames, "*/*/speed_lat", 15)->Unit(benchmark::kMillisecond);
BENCHMARK_CAPTURE(keystroke, field_paths_one_name, SharedNames, "*/*/speed_lat_3", 15)->Unit(benchmark::kMillisecond);
BENCHMARK_CAPTURE(keystroke, every_field_name, SharedNames, "*/*/", 4)->Unit(benchmark::kMillisecond);
BENCHMARK_CAPTURE(keystroke, every_field_path, SharedNames, "*/*/", 15)->Unit(benchmark::kMillisecond);
BENCHMARK_CAPTURE(keystroke, complete_every_field_path, SharedNames, "*/*/", 15, Completions)
    ->Unit(benchmark::kMillisecond);
BENCHMARK_CAPTURE(keystroke, complete_one_letter, SharedNames, "*/*/h", 15, Completions)->Unit(benchmark::kMillisecond);
BENCHMARK_CAPTURE(keystrokeAfterLoading, complete_format, SharedNames, "f", Completions)->Unit(benchmark::kMillisecond);
BENCHMARK_CAPTURE(keystrokeAfterLoading, complete_one_letter, SharedNames, "*/*/h", Completions)
    ->Unit(benchmark::kMillisecond);
BENCHMARK_CAPTURE(keystrokeAfterLoading, one_letter, SharedNames, "*/*/h", AllOptions)->Unit(benchmark::kMillisecond);
BENCHMARK_CAPTURE(loadFormat, shared_names, SharedNames)->Unit(benchmark::kMillisecond);
BENCHMARK(growFormat)->Unit(benchmark::kMillisecond);
BENCHMARK_CAPTURE(recursive, every_way, "recursive/*/*/*/*/*/")->Unit(benchmark::kMillisecond);
BENCHMARK_CAPTURE(recursive, one_letter, "recursive/*/*/*/*/*/r")->Unit(benchmark::kMillisecond);
BENCHMARK_CAPTURE(recursive, none, "recursive/*/*/*/*/*/*/*/*/*/*/*/xy")->Unit(benchmark::kMillisecond);
BENCHMARK_CAPTURE(recursive, one_way, "recursive/T9/roll_roll_0/yaw_roll_0/pitch_roll_0/roll_roll_0/s")
    ->Unit(benchmark::kMillisecond);
BENCHMARK_CAPTURE(keystroke, distinct_names_one_letter, DistinctNames, "*/*/s", 4)->Unit(benchmark::kMillisecond);
BENCHMARK_CAPTURE(keystroke, distinct_names_one_word, DistinctNames, "*/*/speed_lat", 15)
    ->Unit(benchmark::kMillisecond);
BENCHMARK_CAPTURE(keystroke, distinct_every_name, DistinctNames, "*/*/", 4)->Unit(benchmark::kMillisecond);
BENCHMARK_CAPTURE(keystroke, distinct_complete_one_letter, DistinctNames, "*/*/s", 15, Completions)
    ->Unit(benchmark::kMillisecond);
BENCHMARK_CAPTURE(keystrokeAfterLoading, distinct_complete_one_letter, DistinctNames, "*/*/h", Completions)
    ->Unit(benchmark::kMillisecond);
BENCHMARK_CAPTURE(loadFormat, distinct_names, DistinctNames)->Unit(benchmark::kMillisecond);

BENCHMARK_MAIN();
