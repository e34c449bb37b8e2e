// Text helpers on large texts, each against what Qt does in the simplest way. The sizes are those of UTF-16.

#include "s3string.h"
#include "s3trace.h"
#include "s3tracearg.h"

#include <benchmark/benchmark.h>

using namespace Qt::Literals::StringLiterals;

namespace {

QString repeatedTo(const QString &part, qint64 bytes)
{
    return part.repeated(bytes / (part.size() * qsizetype(sizeof(QChar))));
}

template<typename Function>
void measure(benchmark::State &state, const QString &part, Function function)
{
    const QString text = repeatedTo(part, state.range(0));
    for ([[maybe_unused]] auto _ : state)
        benchmark::DoNotOptimize(function(text));
}

const QString &lineOfText()
{
    static const QString line = u"A line of text that is about as long as those of a mail are.\r\n"_s;
    return line;
}

void escapeNonPrintable(benchmark::State &state)
{
    measure(state, u"A line with an escape\x1b at a place.\n"_s, s3String::escapeNonPrintable);
}

void escapeNonPrintableYardstick(benchmark::State &state)
{
    measure(state, u"A line with an escape\x1b at a place.\n"_s, [](const QString &text) {
        QString copy;
        copy.reserve(text.size());
        for (const QChar c : text)
            copy += c.isPrint() ? c : QChar(u'\\');
        return copy;
    });
}

void percentDecode(benchmark::State &state)
{
    measure(state, u"name=%C3%A4+value&path=C%3A%2Ftmp%2Ffile.txt&"_s, s3String::percentDecode);
}

void percentDecodeYardstick(benchmark::State &state)
{
    measure(state, u"name=%C3%A4+value&path=C%3A%2Ftmp%2Ffile.txt&"_s,
            [](const QString &text) { return QString::fromUtf8(QByteArray::fromPercentEncoding(text.toUtf8())); });
}

void replaceLineEnds(benchmark::State &state)
{
    measure(state, lineOfText(), [](QString text) {
        s3String::replaceLineEnds(text, u"<br>"_s);
        return text;
    });
}

void replaceLineEndsYardstick(benchmark::State &state)
{
    measure(state, lineOfText(), [](QString text) { return text.remove(u'\r').replace(u'\n', u"<br>"_s); });
}

void formatNumber(benchmark::State &state)
{
    for ([[maybe_unused]] auto _ : state) {
        for (qint64 i = 0; i < state.range(0); ++i)
            benchmark::DoNotOptimize(s3String::formatNumber(double(i) * 1000.25, 2, u","_s, u"."_s));
    }
}

void formatNumberYardstick(benchmark::State &state)
{
    for ([[maybe_unused]] auto _ : state) {
        for (qint64 i = 0; i < state.range(0); ++i)
            benchmark::DoNotOptimize(QString::number(double(i) * 1000.25, 'f', 2));
    }
}

void traceSite(benchmark::State &state)
{
    const QString &path = lineOfText();
    for ([[maybe_unused]] auto _ : state) {
        for (qint64 i = 0; i < state.range(0); ++i) {
            S3_TRACE(226, u"traceSite()"_s + s3TraceArg(u"path"_s, path));
            benchmark::DoNotOptimize(i);
        }
    }
}

void traceSiteYardstick(benchmark::State &state)
{
    for ([[maybe_unused]] auto _ : state) {
        for (qint64 i = 0; i < state.range(0); ++i)
            benchmark::DoNotOptimize(i);
    }
}

constexpr qint64 megabyte = 1'000'000;

BENCHMARK(escapeNonPrintable)->Arg(megabyte)->Arg(10 * megabyte)->Unit(benchmark::kMillisecond);
BENCHMARK(escapeNonPrintableYardstick)->Arg(megabyte)->Arg(10 * megabyte)->Unit(benchmark::kMillisecond);
BENCHMARK(percentDecode)->Arg(megabyte)->Arg(10 * megabyte)->Unit(benchmark::kMillisecond);
BENCHMARK(percentDecodeYardstick)->Arg(megabyte)->Arg(10 * megabyte)->Unit(benchmark::kMillisecond);
BENCHMARK(replaceLineEnds)->Arg(megabyte)->Arg(10 * megabyte)->Unit(benchmark::kMillisecond);
BENCHMARK(replaceLineEndsYardstick)->Arg(megabyte)->Arg(10 * megabyte)->Unit(benchmark::kMillisecond);
BENCHMARK(formatNumber)->Arg(20'000)->Arg(200'000)->Unit(benchmark::kMillisecond);
BENCHMARK(formatNumberYardstick)->Arg(20'000)->Arg(200'000)->Unit(benchmark::kMillisecond);
BENCHMARK(traceSite)->Arg(megabyte)->Arg(10 * megabyte)->Unit(benchmark::kMillisecond);
BENCHMARK(traceSiteYardstick)->Arg(megabyte)->Arg(10 * megabyte)->Unit(benchmark::kMillisecond);

} // namespace
