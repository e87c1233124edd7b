// What a message costs in a shown MessageTreeWidget, measured against the least it could cost: reading and formatting
// the same values and storing them in plain items of a tree that was never laid out. And the frame that follows,
// measured against a plain tree with the same contents.

#include "fieldinfo.h"
#include "message.h"
#include "messageinfo.h"
#include "messagereference.h"
#include "messagetreewidget.h"
#include "messagetreewidgetitem.h"

#include <QAction>
#include <QApplication>
#include <QVector>

#include <benchmark/benchmark.h>

#include <algorithm>
#include <cstdio>
#include <cstdlib>
#include <ctime>
#include <memory>
#include <vector>

namespace
{

constexpr int FieldsPerType = 40;

/** A message whose numbers stand in a vector, and a field that reads one: reading costs next to nothing. */
class NumbersMessage : public Message
{
public:
    explicit NumbersMessage(const MessageInfo* info)
        : Message(info)
        , values(FieldsPerType)
    {
    }

    QVector<FieldValue> values;
};

class NumberField : public FieldInfo
{
public:
    NumberField(const QString& name, int position, const FieldType& type)
        : FieldInfo(name, type)
        , m_position(position)
    {
    }

    unsigned int getValueCount(const Message*) const override { return 1; }
    FieldValue getValue(const Message* message, unsigned int) const override
    {
        return static_cast<const NumbersMessage*>(message)->values.at(m_position);
    }

private:
    int m_position;
};

/** What the fields of a format hold: numbers, which have to be formatted, or texts, which are there already. */
enum class Values
{
    Numbers,
    Texts
};

/** Message types of 40 values each, and for each type some messages in which every field differs from the last. */
class Format
{
public:
    static constexpr int Variants = 4;

    explicit Format(int types, Values values = Values::Numbers)
    {
        for (int i = 0; i < types; ++i) {
            infos.push_back(std::make_unique<MessageInfo>(QString::fromLatin1("TYPE_%1").arg(i)));
            for (int field = 0; field < FieldsPerType; ++field)
                infos.back()->addField(createField(field, values));
            for (int variant = 0; variant < Variants; ++variant)
                messages.append(MessageReference::adopt(createMessage(infos.back().get(), variant, values)));
        }
    }

    int getTypeCount() const { return static_cast<int>(infos.size()); }
    const Message* getMessage(int type, int round) const
    {
        return messages.at(type * Variants + round % Variants).get();
    }

    std::vector<std::unique_ptr<MessageInfo>> infos;
    QList<MessageReference> messages;

private:
    static FieldInfo* createField(int position, Values values)
    {
        static const FieldType types[] = {FieldType(FieldType::SignedType, 4, QLatin1String("int32_t")),
                                          FieldType(FieldType::FloatType, 4, QLatin1String("float")),
                                          FieldType(FieldType::FloatType, 8, QLatin1String("double")),
                                          FieldType(FieldType::UnsignedType, 2, QLatin1String("uint16_t"))};
        static const char* const units[] = {"m/s", "deg", "m", ""};
        FieldInfo* field =
            new NumberField(QString::fromLatin1("field_%1").arg(position), position, types[position % 4]);
        if (values == Values::Numbers)
            field->setUnit(QLatin1String(units[position % 4]));
        return field;
    }

    static Message* createMessage(const MessageInfo* info, int variant, Values values)
    {
        NumbersMessage* message = new NumbersMessage(info);
        for (int field = 0; field < FieldsPerType; ++field) {
            const int number = 1000 * field + 17 * variant + 1;
            if (values == Values::Texts) {
                message->values[field] = FieldValue::fromText(QString::number(number));
                continue;
            }
            switch (field % 4) {
            case 0:
                message->values[field] = FieldValue::fromSigned(-number, 4);
                break;
            case 1:
                message->values[field] = FieldValue::fromFloat(number * 0.37f);
                break;
            case 2:
                message->values[field] = FieldValue::fromDouble(number / 7.0);
                break;
            default:
                message->values[field] = FieldValue::fromUnsigned(number, 2);
                break;
            }
        }
        return message;
    }
};

/** A plain tree with the rows and texts of a message tree; message rows first, their fields below. */
class PlainTree : public QTreeWidget
{
public:
    PlainTree(const Format& format, bool withRawValues)
        : m_format(format)
        , m_withRawValues(withRawValues)
    {
        QStringList labels = {QLatin1String("Name"), QLatin1String("Type"), QLatin1String("Value")};
        if (withRawValues)
            labels << QLatin1String("Raw value");
        setHeaderLabels(labels);
        QList<QTreeWidgetItem*> rows;
        for (const std::unique_ptr<MessageInfo>& info : format.infos) {
            QTreeWidgetItem* row = new QTreeWidgetItem(QStringList() << info->getName() << QLatin1String("Message"));
            for (const FieldInfo* field : info->getFieldInfos()) {
                row->addChild(
                    new QTreeWidgetItem(QStringList() << field->getName() << field->getType().toShortString()));
            }
            rows.append(row);
        }
        addTopLevelItems(rows);
    }

    __attribute__((noinline)) void store(int type, int round)
    {
        const Message* message = m_format.getMessage(type, round);
        QTreeWidgetItem* row = topLevelItem(type);
        int position = 0;
        for (const FieldInfo* field : message->getInfo()->getFieldInfos()) {
            const FieldValue value = field->getValue(message, 0);
            row->child(position)->setText(2, field->getInterpretedString(value, true));
            if (m_withRawValues)
                row->child(position)->setText(3, field->getRawString(value));
            ++position;
        }
    }

private:
    const Format& m_format;
    const bool m_withRawValues;
};

void show(QTreeWidget* tree, bool expanded)
{
    tree->resize(600, 800);
    tree->setColumnWidth(0, 200);
    if (expanded)
        tree->expandAll();
    else
        tree->collapseAll();
    tree->show();
    for (int i = 0; i < 5; ++i)
        QCoreApplication::processEvents();
}

/** Processor time of this process in nanoseconds: other processes do not disturb it. */
double processorTime()
{
    timespec time;
    clock_gettime(CLOCK_PROCESS_CPUTIME_ID, &time);
    return static_cast<double>(time.tv_sec) * 1e9 + static_cast<double>(time.tv_nsec);
}

/**
 * Nanoseconds that a round of work takes, taken many times; the middle one counts.
 *
 * A first round is not timed, so that none pays for memory that something else has driven out of the caches.
 */
class Timings
{
public:
    template <typename Work>
    void take(int rounds, Work work)
    {
        work(m_round++);
        const double start = processorTime();
        for (int i = 0; i < rounds; ++i)
            work(m_round++);
        m_times.push_back((processorTime() - start) / rounds);
    }

    template <typename Work>
    void take(Work work)
    {
        const double start = processorTime();
        work();
        m_times.push_back(processorTime() - start);
    }

    /** The middle of the ratios to what was taken in turns with this: a machine that gets slower slows both. */
    double middleRatioTo(const Timings& other) const
    {
        Timings ratios;
        for (std::size_t i = 0; i < m_times.size(); ++i)
            ratios.m_times.push_back(m_times[i] / other.m_times[i]);
        return ratios.middle();
    }

    double middle() const
    {
        std::vector<double> times = m_times;
        std::nth_element(times.begin(), times.begin() + times.size() / 2, times.end());
        return times[times.size() / 2];
    }

private:
    int m_round = 0;
    std::vector<double> m_times;
};

struct Measured
{
    double ours = 0;       ///< ns a field, processMessage()
    double floor = 0;      ///< ns a field, formatting and storing
    double unchanged = 0;  ///< ns a field, processMessage() with the values shown already
    double same = 0;       ///< ns a field, formatting and storing what is stored already
    double view = 0;       ///< ns a field, storing in the shown plain tree
    double frame = 0;      ///< us, the frame after a message of each type
    double plainFrame = 0; ///< us, the same of the shown plain tree
    double ratio = 0;
    double unchangedRatio = 0;
    double frameRatio = 0;
};

Measured measure(int types, bool expanded, Values values)
{
    const Format format(types, values);
    const bool withRawValues = values == Values::Texts;
    MessageTreeWidget tree;
    if (withRawValues)
        tree.addColumn(MessageTreeWidget::RawValueColumn, false);
    for (const std::unique_ptr<MessageInfo>& info : format.infos)
        tree.addTopLevelItem(new MessageTreeWidgetItem(&tree, info.get()));
    tree.reconfigureTopLevelAbstractMessageTreeWidgetItems();
    PlainTree unlaid(format, withRawValues);
    PlainTree plain(format, withRawValues);
    for (int type = 0; type < types; ++type) {
        tree.processMessage(format.getMessage(type, 0));
        unlaid.store(type, 0);
        plain.store(type, 0);
    }
    show(&tree, expanded);
    show(&plain, expanded);

    const auto feedOurs = [&](int round) {
        for (int type = 0; type < types; ++type)
            tree.processMessage(format.getMessage(type, round));
    };
    const auto feedUnlaid = [&](int round) {
        for (int type = 0; type < types; ++type)
            unlaid.store(type, round);
    };
    const auto feedPlain = [&](int round) {
        for (int type = 0; type < types; ++type)
            plain.store(type, round);
    };
    const double fields = static_cast<double>(types) * FieldsPerType;
    const int rounds = std::max(2, 200 / types);
    const int repetitions = 41;

    // In turns, so that whatever else the machine does meets both alike.
    Timings ours;
    Timings floor;
    for (int i = 0; i < repetitions; ++i) {
        floor.take(rounds, feedUnlaid);
        ours.take(rounds, feedOurs);
        QCoreApplication::processEvents();
    }
    Timings unchanged;
    Timings same;
    feedOurs(0);
    feedUnlaid(0);
    for (int i = 0; i < repetitions; ++i) {
        same.take(rounds, [&](int) { feedUnlaid(0); });
        unchanged.take(rounds, [&](int) { feedOurs(0); });
        QCoreApplication::processEvents();
    }
    Timings view;
    view.take(2, feedPlain);

    Timings frame;
    Timings plainFrame;
    for (int round = 0; round < 25; ++round) {
        feedPlain(round);
        plainFrame.take([] { QCoreApplication::processEvents(); });
        feedOurs(round);
        frame.take([] { QCoreApplication::processEvents(); });
    }

    Measured result;
    result.ours = ours.middle() / fields;
    result.floor = floor.middle() / fields;
    result.unchanged = unchanged.middle() / fields;
    result.same = same.middle() / fields;
    result.ratio = ours.middleRatioTo(floor);
    result.unchangedRatio = unchanged.middleRatioTo(same);
    result.frameRatio = frame.middleRatioTo(plainFrame);
    result.view = view.middle() / fields;
    result.frame = frame.middle() / 1000;
    result.plainFrame = plainFrame.middle() / 1000;
    return result;
}

void printTable(const std::vector<int>& numbersOfTypes, Values values)
{
    std::printf("%s\n", values == Values::Numbers ? "numbers, three columns" : "texts, four columns");
    std::printf("%-15s | %-20s | %-20s | %-8s | %s\n", "", "new values, ns/field", "same again, ns/field", "plain,",
                "frame, us");
    std::printf("%5s %9s | %6s %6s %6s | %6s %6s %6s | %8s | %8s %8s %6s\n", "types", "", "ours", "floor", "ratio",
                "ours", "floor", "ratio", "ns/field", "ours", "plain", "ratio");
    for (const bool expanded : {true, false}) {
        for (const int types : numbersOfTypes) {
            const Measured m = measure(types, expanded, values);
            std::printf("%5d %9s | %6.0f %6.0f %6.2f | %6.0f %6.0f %6.2f | %8.0f | %8.1f %8.1f %6.2f\n", types,
                        expanded ? "expanded" : "collapsed", m.ours, m.floor, m.ratio, m.unchanged, m.same,
                        m.unchangedRatio, m.view, m.frame, m.plainFrame, m.frameRatio);
            std::fflush(stdout);
        }
    }
}

/** What a value costs in a tree whose rows were made anew ten times, against one whose rows were made once. */
void printScattered()
{
    const int types = 300;
    const Format format(types);
    MessageTreeWidget fresh;
    MessageTreeWidget old;
    for (MessageTreeWidget* tree : {&fresh, &old}) {
        for (const std::unique_ptr<MessageInfo>& info : format.infos)
            tree->addTopLevelItem(new MessageTreeWidgetItem(tree, info.get()));
        tree->reconfigureTopLevelAbstractMessageTreeWidgetItems();
        for (int i = 0; tree == &old && i < 10; ++i) {
            for (int type = 0; type < types; ++type)
                tree->processMessage(format.getMessage(type, i));
            tree->getToggleRawValueColumnAction()->trigger();
        }
    }
    Timings freshTimes;
    Timings oldTimes;
    const auto feed = [&](MessageTreeWidget* tree, int round) {
        for (int type = 0; type < types; ++type)
            tree->processMessage(format.getMessage(type, round));
    };
    for (int i = 0; i < 41; ++i) {
        freshTimes.take(2, [&](int round) { feed(&fresh, round); });
        oldTimes.take(2, [&](int round) { feed(&old, round); });
    }
    const double fields = static_cast<double>(types) * FieldsPerType;
    std::printf("after ten reconfigurations of %d types: %.0f ns/field, fresh %.0f ns/field, ratio %.2f\n", types,
                oldTimes.middle() / fields, freshTimes.middle() / fields, oldTimes.middleRatioTo(freshTimes));
}

void reconfigure(benchmark::State& state)
{
    const Format format(static_cast<int>(state.range(0)));
    MessageTreeWidget tree;
    for (const std::unique_ptr<MessageInfo>& info : format.infos)
        tree.addTopLevelItem(new MessageTreeWidgetItem(&tree, info.get()));
    tree.reconfigureTopLevelAbstractMessageTreeWidgetItems();
    for (int type = 0; type < format.getTypeCount(); ++type)
        tree.processMessage(format.getMessage(type, 0));
    show(&tree, true);
    for (auto _ : state) {
        tree.getToggleRawValueColumnAction()->trigger();
        QCoreApplication::processEvents();
    }
}
BENCHMARK(reconfigure)->Arg(20)->Arg(100)->Arg(300)->Unit(benchmark::kMillisecond);

/** A field that has as many values as the message says. */
class ManyField : public FieldInfo
{
public:
    ManyField(const QString& name, const FieldType& type)
        : FieldInfo(name, type)
    {
        setRepeated(true);
    }

    unsigned int getValueCount(const Message* message) const override
    {
        return static_cast<unsigned int>(static_cast<const NumbersMessage*>(message)->values.size());
    }
    FieldValue getValue(const Message* message, unsigned int index) const override
    {
        return static_cast<const NumbersMessage*>(message)->values.at(static_cast<int>(index));
    }
};

/** One shown tree with an expanded repeated field, whose number of values goes from @p low to @p high and back. */
void repeated(benchmark::State& state, bool subMessages, int low, int high)
{
    MessageInfo inner(QLatin1String("INNER"), false);
    inner.addField(
        new NumberField(QLatin1String("value"), 0, FieldType(FieldType::SignedType, 4, QLatin1String("int32_t"))));
    const MessageReference innerMessage = MessageReference::adopt(new NumbersMessage(&inner));
    MessageInfo info(QLatin1String("MANY"));
    info.addField(
        new ManyField(QLatin1String("values"),
                      subMessages ? FieldType(&inner) : FieldType(FieldType::SignedType, 4, QLatin1String("int32_t"))));
    const auto create = [&](int count) {
        NumbersMessage* message = new NumbersMessage(&info);
        message->values.clear();
        for (int i = 0; i < count; ++i) {
            message->values.append(subMessages ? FieldValue::fromSubMessage(innerMessage.get())
                                               : FieldValue::fromSigned(i, 4));
        }
        return MessageReference::adopt(message);
    };
    const MessageReference few = create(low);
    const MessageReference many = create(high);
    MessageTreeWidget tree;
    tree.addTopLevelItem(new MessageTreeWidgetItem(&tree, &info));
    tree.reconfigureTopLevelAbstractMessageTreeWidgetItems();
    tree.processMessage(many.get());
    show(&tree, true);
    for (auto _ : state) {
        tree.processMessage(few.get());
        QCoreApplication::processEvents();
        tree.processMessage(many.get());
        QCoreApplication::processEvents();
    }
    state.SetComplexityN(state.range(0));
}

void repeatedValues(benchmark::State& state)
{
    repeated(state, false, 0, static_cast<int>(state.range(0)));
}
BENCHMARK(repeatedValues)->Arg(250)->Arg(1000)->Arg(4000)->Complexity()->Unit(benchmark::kMillisecond);

void repeatedValuesToOne(benchmark::State& state)
{
    repeated(state, false, 1, static_cast<int>(state.range(0)));
}
BENCHMARK(repeatedValuesToOne)->Arg(250)->Arg(1000)->Arg(4000)->Complexity()->Unit(benchmark::kMillisecond);

void repeatedSubMessages(benchmark::State& state)
{
    repeated(state, true, 0, static_cast<int>(state.range(0)));
}
BENCHMARK(repeatedSubMessages)->Arg(250)->Arg(1000)->Arg(4000)->Complexity()->Unit(benchmark::kMillisecond);

void repeatedSubMessagesToOne(benchmark::State& state)
{
    repeated(state, true, 1, static_cast<int>(state.range(0)));
}
BENCHMARK(repeatedSubMessagesToOne)->Arg(250)->Arg(1000)->Arg(4000)->Complexity()->Unit(benchmark::kMillisecond);

} // namespace

int main(int argc, char** argv)
{
    if (qEnvironmentVariableIsEmpty("QT_QPA_PLATFORM"))
        qputenv("QT_QPA_PLATFORM", "offscreen");
    QApplication application(argc, argv);
    benchmark::Initialize(&argc, argv);
    std::vector<int> numbersOfTypes;
    for (int i = 1; i < argc; ++i)
        numbersOfTypes.push_back(std::atoi(argv[i]));
    // With 0 alone, no table.
    const std::vector<int> all = {20, 100, 300};
    if (numbersOfTypes != std::vector<int>{0}) {
        for (const Values values : {Values::Numbers, Values::Texts})
            printTable(numbersOfTypes.empty() ? all : numbersOfTypes, values);
        printScattered();
    }
    if (numbersOfTypes.empty() || numbersOfTypes.front() == 0)
        benchmark::RunSpecifiedBenchmarks();
    return 0;
}
