// Trace lines of many threads through the output proxy to its file, against one thread that writes the same lines, each
// with Qt::endl as the proxy does it, to a file of the same encoding.

#include "protocol/s3logstream.h"
#include "s3testflags.h"
#include "test/s3testausproxy.h"

#include <QCoreApplication>
#include <QFile>
#include <QTemporaryDir>
#include <QTextStream>

#include <benchmark/benchmark.h>

#include <algorithm>
#include <atomic>
#include <thread>
#include <vector>

using namespace Qt::Literals::StringLiterals;

namespace {

constexpr int threadCount = 8;

const QString &line()
{
    static const QString text = u"s3Dir::setCurrent() path=\"C:/Programme/Beispiel/data\" result=true"_s;
    return text;
}

/// In bytes; \a field is a line of /proc/self/status.
double memory(const QByteArray &field)
{
    QFile file(u"/proc/self/status"_s);
    if (!file.open(QIODevice::ReadOnly))
        return 0;
    const QByteArray status = file.readAll();
    const qsizetype start = status.indexOf(field) + field.size();
    return status.sliced(start, status.indexOf("kB", start) - start).trimmed().toDouble() * 1024;
}

/// From here on the peak is that of what follows, and not of another benchmark before it.
void forgetPeakOfMemory()
{
    QFile file(u"/proc/self/clear_refs"_s);
    if (!file.open(QIODevice::WriteOnly) || file.write("5") != 1)
        qFatal("The peak of memory can't be reset");
}

/// Calls \a write once an iteration and takes its lines a second and the growth of memory.
template<typename Write>
void measure(benchmark::State &state, Write write)
{
    double growth = 0;
    for ([[maybe_unused]] auto _ : state) {
        state.PauseTiming();
        const QTemporaryDir directory;
        const QString path = directory.filePath(u"lines.txt"_s);
        forgetPeakOfMemory();
        const double before = memory("VmRSS:"_ba);
        state.ResumeTiming();
        write(path);
        state.PauseTiming();
        growth = std::max(growth, memory("VmHWM:"_ba) - before);
        const qint64 expected = 2 + 2 * state.range(0) * (line().size() + 1);
        if (QFile(path).size() != expected)
            state.SkipWithError("Lines are missing");
        state.ResumeTiming();
    }
    state.counters["lines_per_s"] =
        benchmark::Counter(double(state.range(0)), benchmark::Counter::kIsIterationInvariantRate);
    state.counters["memory_growth"] = growth;
}

void writeThroughProxy(const QString &path, qint64 count)
{
    s3TestausProxy::instance()->setFileName(path);
    std::atomic<int> ended = 0;
    std::vector<std::thread> threads;
    threads.reserve(threadCount);
    for (int i = 0; i < threadCount; ++i) {
        threads.emplace_back([&ended, lines = count / threadCount] {
            for (qint64 number = 0; number < lines; ++number)
                s3TestausProxy::instance()->write(line(), true);
            ++ended;
        });
    }
    while (ended < threadCount)
        QCoreApplication::processEvents();
    for (std::thread &thread : threads)
        thread.join();
    QCoreApplication::processEvents();
    s3LogStream::closeChannel(u"testaus"_s);
    s3TestFlagsGUI::instance()->clear();
}

void traceLines(benchmark::State &state)
{
    measure(state, [&state](const QString &path) { writeThroughProxy(path, state.range(0)); });
}

void traceLinesYardstick(benchmark::State &state)
{
    measure(state, [&state](const QString &path) {
        QFile file(path);
        if (!file.open(QIODevice::WriteOnly))
            state.SkipWithError("The file can't be written");
        QTextStream stream(&file);
        stream.setEncoding(QStringConverter::Utf16LE);
        stream.setGenerateByteOrderMark(true);
        for (qint64 number = 0; number < state.range(0); ++number)
            stream << line() << Qt::endl;
    });
}

BENCHMARK(traceLines)->Arg(1'000'000)->Unit(benchmark::kMillisecond)->UseRealTime();
BENCHMARK(traceLinesYardstick)->Arg(1'000'000)->Unit(benchmark::kMillisecond)->UseRealTime();

} // namespace
