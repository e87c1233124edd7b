// Reading one field of a message in CDR, held against code that was written by hand for its type and walks over the
// same bytes, with the same checks of lengths. Both make a message of the bytes, as whoever shows one does.

#include "definitions.h"
#include "encoding.h"
#include "fieldinfo.h"
#include "messageinfo.h"
#include "messagereference.h"

#include <benchmark/benchmark.h>

#include <cstdlib>
#include <cstring>
#include <string>
#include <vector>

namespace
{

const char headerText[] = "==\nMSG: std_msgs/Header\nbuiltin_interfaces/Time stamp\nstring frame_id\n";
const char scanText[] = "std_msgs/Header header\nfloat32 angle_min\nfloat32 angle_max\nfloat32 angle_increment\n"
                        "float32 time_increment\nfloat32 scan_time\nfloat32 range_min\nfloat32 range_max\n"
                        "float32[] ranges\nfloat32[] intensities\n";
const char odometryText[] = "std_msgs/Header header\nstring child_frame_id\nPose pose\nTwist twist\n"
                            "==\nMSG: b/Pose\nVector position\nfloat64[4] orientation\nfloat64[36] covariance\n"
                            "==\nMSG: b/Twist\nVector linear\nVector angular\nfloat64[36] covariance\n"
                            "==\nMSG: b/Vector\nfloat64 x\nfloat64 y\nfloat64 z\n";
const char transformsText[] = "Stamped[] transforms\n"
                              "==\nMSG: b/Stamped\nstd_msgs/Header header\nstring child_frame_id\nVector translation\n"
                              "float64[4] rotation\n==\nMSG: b/Vector\nfloat64 x\nfloat64 y\nfloat64 z\n";

/** Writes what is read below. */
class Writer
{
public:
    template <typename Number>
    Writer& number(Number value, int count = 1)
    {
        while ((m_bytes.size() - 4) % int(sizeof value) != 0)
            m_bytes.append('\0');
        for (int i = 0; i < count; ++i)
            m_bytes.append(reinterpret_cast<const char*>(&value), int(sizeof value));
        return *this;
    }

    Writer& text(const char* value)
    {
        number(std::uint32_t(std::strlen(value) + 1));
        m_bytes.append(value, int(std::strlen(value) + 1));
        return *this;
    }

    Writer& header() { return number(std::int32_t(1700000000)).number(std::uint32_t(5)).text("base_laser_link"); }

    QByteArray getBytes() const { return m_bytes; }

private:
    QByteArray m_bytes = QByteArray("\0\1\0\0", 4);
};

/** A walk that somebody wrote by hand. */
class Walk
{
public:
    explicit Walk(const QByteArray& bytes)
        : m_begin(bytes.constData() + 4)
        , m_end(bytes.constData() + bytes.size())
        , m_at(m_begin)
    {
        if (bytes.size() < 4 || bytes.at(0) != 0 || bytes.at(1) != 1)
            std::abort();
    }

    template <typename Number>
    void skip(std::size_t count)
    {
        m_at += (sizeof(Number) - std::size_t(m_at - m_begin) % sizeof(Number)) % sizeof(Number);
        if (std::size_t(m_end - m_at) / sizeof(Number) < count)
            std::abort();
        m_at += count * sizeof(Number);
    }

    template <typename Number>
    Number take()
    {
        Number value;
        skip<Number>(1);
        std::memcpy(&value, m_at - sizeof value, sizeof value);
        return value;
    }

    template <typename Number>
    void copy(Number* numbers, std::size_t count)
    {
        skip<Number>(count);
        std::memcpy(numbers, m_at - count * sizeof(Number), count * sizeof(Number));
    }

    template <typename Number>
    void copy(std::vector<Number>* numbers)
    {
        const std::uint32_t count = take<std::uint32_t>();
        skip<Number>(count);
        numbers->resize(count);
        std::memcpy(numbers->data(), m_at - count * sizeof(Number), count * sizeof(Number));
    }

    std::string takeText()
    {
        const std::uint32_t size = take<std::uint32_t>();
        skip<char>(size);
        return size == 0 ? std::string() : std::string(m_at - size, size - 1);
    }

    void skipText() { skip<char>(take<std::uint32_t>()); }
    void skipHeader()
    {
        skip<std::int32_t>(2);
        skipText();
    }

private:
    const char* m_begin;
    const char* m_end;
    const char* m_at;
};

struct Header
{
    explicit Header(Walk* walk)
    {
        walk->copy(stamp, 2);
        frame = walk->takeText();
    }

    std::uint32_t stamp[2];
    std::string frame;
};

struct Scan
{
    explicit Scan(Walk walk)
        : header(&walk)
    {
        walk.copy(numbers, 7);
        walk.copy(&ranges);
        walk.copy(&intensities);
    }

    Header header;
    float numbers[7];
    std::vector<float> ranges;
    std::vector<float> intensities;
};

struct Odometry
{
    explicit Odometry(Walk walk)
        : header(&walk)
        , child(walk.takeText())
    {
        walk.copy(pose, 3 + 4 + 36);
        walk.copy(twist, 6 + 36);
    }

    Header header;
    std::string child;
    double pose[3 + 4 + 36];
    double twist[6 + 36];
};

struct Stamped
{
    explicit Stamped(Walk* walk)
        : header(walk)
        , child(walk->takeText())
    {
        walk->copy(transform, 3 + 4);
    }

    Header header;
    std::string child;
    double transform[3 + 4];
};

double rangeMaxOfStruct(Walk walk)
{
    return Scan(walk).numbers[6];
}

double intensityOfStruct(Walk walk)
{
    const Scan scan(walk);
    return scan.intensities.size() > 100 ? scan.intensities[100] : 0;
}

double turnRateOfStruct(Walk walk)
{
    return Odometry(walk).twist[5];
}

double translationOfStruct(Walk walk)
{
    std::vector<Stamped> transforms;
    for (std::uint32_t count = walk.take<std::uint32_t>(); count > 0; --count)
        transforms.emplace_back(&walk);
    return transforms.size() > 9 ? transforms[9].transform[0] : 0;
}

double rangeMax(Walk walk)
{
    walk.skipHeader();
    walk.skip<float>(6);
    return walk.take<float>();
}

double intensity(Walk walk)
{
    walk.skipHeader();
    walk.skip<float>(7);
    walk.skip<float>(walk.take<std::uint32_t>());
    if (walk.take<std::uint32_t>() <= 100)
        std::abort();
    walk.skip<float>(100);
    return walk.take<float>();
}

double turnRate(Walk walk)
{
    walk.skipHeader();
    walk.skipText();
    walk.skip<double>(3 + 4 + 36 + 5);
    return walk.take<double>();
}

double translation(Walk walk)
{
    if (walk.take<std::uint32_t>() <= 9)
        std::abort();
    for (int i = 0; i < 9; ++i) {
        walk.skipHeader();
        walk.skipText();
        walk.skip<double>(3 + 4);
    }
    walk.skipHeader();
    walk.skipText();
    return walk.take<double>();
}

/** A field, and where it is. */
struct Step
{
    const char* name;
    unsigned int index;
};

struct Case
{
    const char* schema;
    double (*walk)(Walk);
    double (*structure)(Walk);
    std::vector<Step> way;
    QByteArray bytes;
};

QByteArray scan()
{
    return Writer().header().number(1.5f, 7).number(500u).number(2.5f, 500).number(500u).number(3.5f, 500).getBytes();
}

QByteArray odometry()
{
    return Writer().header().text("base_link").number(1.5, 3 + 4 + 36 + 6 + 36).getBytes();
}

QByteArray transforms()
{
    Writer writer;
    writer.number(20u);
    for (int i = 0; i < 20; ++i)
        writer.header().text("wheel").number(1.5, 7);
    return writer.getBytes();
}

const Case& caseOf(std::int64_t number)
{
    static const Case cases[] = {
        {scanText, rangeMax, rangeMaxOfStruct, {{"range_max", 0}}, scan()},
        {scanText, intensity, intensityOfStruct, {{"intensities", 100}}, scan()},
        {odometryText, turnRate, turnRateOfStruct, {{"twist", 0}, {"angular", 0}, {"z", 0}}, odometry()},
        {transformsText,
         translation,
         translationOfStruct,
         {{"transforms", 9}, {"translation", 0}, {"x", 0}},
         transforms()}};
    return cases[number];
}

const MessageInfo* infoOf(std::int64_t number)
{
    static Definitions definitions;
    static const MessageInfo* infos[4] = {};
    if (!infos[number]) {
        QString error;
        infos[number] = definitions.find(QStringLiteral("cdr"))
                            ->makeType({QStringLiteral("b/msg/T"), "cdr", "ros2msg",
                                        QByteArray(caseOf(number).schema) + headerText},
                                       &error);
        if (!infos[number])
            qFatal("%s", qPrintable(error));
    }
    return infos[number];
}

/** The fields of a way. */
std::vector<const FieldInfo*> fieldsOf(const MessageInfo* info, const std::vector<Step>& way)
{
    std::vector<const FieldInfo*> fields;
    for (const Step& step : way) {
        fields.push_back(info->getFieldInfo(QLatin1String(step.name)));
        info = fields.back()->getType().getSubMessageInfo();
    }
    return fields;
}

double valueOf(const Message* message, const std::vector<const FieldInfo*>& fields, const std::vector<Step>& way)
{
    for (std::size_t i = 0; i + 1 < fields.size(); ++i)
        message = fields[i]->getValue(message, way[i].index).getSubMessage();
    return fields.back()->getValue(message, way.back().index).toDouble();
}

} // namespace

static void readByHand(benchmark::State& state, double (*Case::*code)(Walk))
{
    const Case& one = caseOf(state.range(0));
    const MessageInfo* const info = infoOf(state.range(0));
    for (auto _ : state) {
        const MessageReference message = MessageReference::adopt(new Message(info, one.bytes));
        benchmark::DoNotOptimize((one.*code)(Walk(message.get()->getData())));
    }
}

static void structByHand(benchmark::State& state)
{
    readByHand(state, &Case::structure);
}
BENCHMARK(structByHand)->ArgName("field")->DenseRange(0, 3);

static void walkByHand(benchmark::State& state)
{
    readByHand(state, &Case::walk);
}
BENCHMARK(walkByHand)->ArgName("field")->DenseRange(0, 3);

static void oneField(benchmark::State& state)
{
    const Case& one = caseOf(state.range(0));
    const MessageInfo* const info = infoOf(state.range(0));
    const std::vector<const FieldInfo*> fields = fieldsOf(info, one.way);
    const MessageReference first = MessageReference::adopt(info->newMessage(one.bytes));
    if (valueOf(first.get(), fields, one.way) != one.walk(Walk(one.bytes)))
        state.SkipWithError("another value");
    for (auto _ : state) {
        const MessageReference message = MessageReference::adopt(info->newMessage(one.bytes));
        benchmark::DoNotOptimize(valueOf(message.get(), fields, one.way));
    }
}
BENCHMARK(oneField)->ArgName("field")->DenseRange(0, 3);

// The same field of a message that was looked at before.
static void fieldAgain(benchmark::State& state)
{
    const Case& one = caseOf(state.range(0));
    const MessageInfo* const info = infoOf(state.range(0));
    const std::vector<const FieldInfo*> fields = fieldsOf(info, one.way);
    const MessageReference message = MessageReference::adopt(info->newMessage(one.bytes));
    for (auto _ : state)
        benchmark::DoNotOptimize(valueOf(message.get(), fields, one.way));
}
BENCHMARK(fieldAgain)->ArgName("field")->DenseRange(0, 3);

BENCHMARK_MAIN();
