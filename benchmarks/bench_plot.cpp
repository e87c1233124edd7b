// What a frame of a plot costs while somebody zooms and moves, with many points in place of as many as there are
// pixels, of a field and of an expression; how long the expression takes to be computed; and how long a field takes to
// be read out of a whole recording, by one thread and by two, against decoding it alone.
//
// bench_plot [points] [RECORDING EXPRESSION]
//
// Frames are what the window's thread worked until one was painted.

#include "computedseries.h"
#include "definitions.h"
#include "fieldpass.h"
#include "fieldpath.h"
#include "formatregistry.h"
#include "plotview.h"
#include "recordingindex.h"
#include "testformat.h"

#include <QApplication>
#include <QElapsedTimer>
#include <QReadWriteLock>
#include <QThread>

#include <algorithm>
#include <cmath>
#include <cstdio>
#include <ctime>
#include <map>
#include <random>

namespace
{

const int Width = 1280;
const int Height = 600;
const int Frames = 200;

double millisecondsWorked()
{
    timespec time;
    clock_gettime(CLOCK_THREAD_CPUTIME_ID, &time);
    return double(time.tv_sec) * 1e3 + double(time.tv_nsec) / 1e6;
}

std::shared_ptr<PlotSeries> makeSeries(const FieldPath& path, int points)
{
    const auto series = std::make_shared<PlotSeries>(path);
    series->beginRecording(nullptr, points + 1);
    std::minstd_rand random(1);
    for (int i = 0; i < points; ++i)
        series->addRecorded(1e9 + 1e4 * i / points, std::sin(i * 20.0 / points) + double(random() % 1000) * 1e-4);
    series->endRecording();
    return series;
}

/** The frames of a way through a plot: from everything to a hundredth of it, along, and back. */
std::vector<double> drawFrames(const PlotSeries& series)
{
    PlotView view;
    view.resize(Width, Height);
    view.addSeries(&series, 0);
    view.show();
    std::vector<double> milliseconds;
    for (int i = 0; i < Frames; ++i) {
        const double part = double(i) / Frames;
        const double span = 1e4 * std::pow(100, -std::sin(part * 3.14159));
        const double from = 1e9 + part * (1e4 - span);
        const double before = millisecondsWorked();
        view.showTimes(from, from + span);
        view.replot(QCustomPlot::rpImmediateRefresh);
        QApplication::processEvents();
        milliseconds.push_back(millisecondsWorked() - before);
    }
    std::sort(milliseconds.begin(), milliseconds.end());
    return milliseconds;
}

void measureFrames(int points)
{
    MessageInfo type(QStringLiteral("BENCH"));
    TestFieldInfo* const field = new TestFieldInfo(QStringLiteral("value"));
    type.addField(field);
    FieldPath path(&type);
    path.append(field);
    const std::vector<double> few = drawFrames(*makeSeries(path, Width));
    const std::shared_ptr<PlotSeries> line = makeSeries(path, points);
    const std::vector<double> many = drawFrames(*line);
    std::printf("%d points: a frame %.2f ms, the longest %.2f ms\n", Width, few[few.size() / 2], few.back());
    std::printf("%d points: a frame %.2f ms, the longest %.2f ms\n", points, many[many.size() / 2], many.back());
    std::printf("ratio of the frames %.2f\n", many[many.size() / 2] / few[few.size() / 2]);
    PlotExpression expression;
    expression.formula = QStringLiteral("sqrt(a^2 + b^2)");
    expression.operands = {{path.getExpression(), QString()}, {path.getExpression(), QString()}};
    ComputedSeries computed(expression, {line, makeSeries(path, points / 10)});
    const double before = millisecondsWorked();
    computed.work([]() { return true; });
    const double worked = millisecondsWorked() - before;
    const std::vector<double> frames = drawFrames(computed);
    std::printf("an expression of these: computed in %.0f ms, a frame %.2f ms, the longest %.2f ms\n", worked,
                frames[frames.size() / 2], frames.back());
}

struct Nobody : StreamSink
{
    void processReceived(const ReceivedMessage&) override {}
    void processProblem(const StreamProblem&) override {}
};

double decodeAlone(SourceParts parts)
{
    const double before = millisecondsWorked();
    Nobody nobody;
    if (!parts.input->open() || parts.opener->run(parts.input.get(), nullptr, nullptr) != StreamOpener::Opened)
        return 0;
    OpenedStream stream = parts.opener->takeStream();
    const std::unique_ptr<ByteInput> input = parts.opener->takeInput(std::move(parts.input));
    if (stream.needsIndex && stream.index)
        stream.index->prepare(nullptr);
    QByteArray bytes;
    while (input->read(&bytes, 100) == ByteInput::Data)
        stream.decoder->feed(bytes.constData(), int(bytes.size()), Message::NoTime, &nobody);
    stream.decoder->finish(&nobody);
    QStringList problems;
    stream.decoder->publishTypes(&problems);
    return (millisecondsWorked() - before) / 1e3;
}

/** Reads a field as the window does, and tells how that compares with decoding alone. */
void measurePass(FieldPass* pass, const FieldPath& path, int threads, double decoding)
{
    QElapsedTimer time;
    time.start();
    const double before = double(std::clock()) / CLOCKS_PER_SEC;
    const double own = millisecondsWorked() / 1e3;
    std::map<QString, PlotSeries> lines; // by sender, as in the window
    pass->start();
    FieldPass::Piece piece;
    for (; !pass->isOver(); QThread::msleep(1))
        while (pass->take(&piece)) {
            const auto line = lines.try_emplace(piece.sender, path);
            if (line.second)
                line.first->second.beginRecording(nullptr, 100000000);
            for (const FieldPass::Value& value : piece.values)
                line.first->second.addRecorded(value.time, value.number);
        }
    qint64 count = 0;
    for (const auto& line : lines)
        count += line.second.getPoints().getCount();
    const double taking = millisecondsWorked() / 1e3 - own;
    const double all = double(time.elapsed()) / 1e3;
    const double reading = double(std::clock()) / CLOCKS_PER_SEC - before - taking;
    std::printf(
        "decoded in %.2f s of a processor, %lld values read in %.2f s by %d threads and taken in %.2f s: ratio %.2f; "
        "%.2f s in all, ratio %.2f\n",
        decoding, static_cast<long long>(count), reading, threads, taking, reading / decoding, all, all / decoding);
}

bool measureReading(const QString& file, const QString& expression)
{
    SourceFactory factory;
    SourceOptions options;
    options.address = file;
    SourceParts parts;
    QString error;
    if (!factory.create(options, &parts, &error)) {
        std::printf("%s\n", qPrintable(error));
        return false;
    }
    const double decoding = decodeAlone(std::move(parts));
    for (const FormatInfo* const format : factory.getDefinitions()->getSchemaFormats())
        FormatRegistry::getInstance()->addFormat(format);
    const FieldPath path = FieldPath::fromExpression(expression);
    if (!path.getField()) {
        std::printf("no field %s\n", qPrintable(expression));
        return false;
    }
    for (int threads = 1; threads <= 2; ++threads) {
        SourceParts other;
        if (!factory.create(options, &parts, &error) || (threads > 1 && !factory.create(options, &other, &error))) {
            std::printf("%s\n", qPrintable(error));
            return false;
        }
        FieldPass pass(std::move(parts), std::move(other), {path}, factory.getDescriptionLock());
        measurePass(&pass, path, threads, decoding);
    }
    return true;
}

} // namespace

int main(int argc, char* argv[])
{
    const QApplication application(argc, argv);
    measureFrames(argc > 1 ? QByteArray(argv[1]).toInt() : 10000000);
    return argc > 3 && !measureReading(QString::fromLocal8Bit(argv[2]), QString::fromLocal8Bit(argv[3])) ? 1 : 0;
}
