// The core's byte encoding, against the C library's conversion from and to the code page that it derives from.

#include "s3string.h"

#include <benchmark/benchmark.h>

#include <iconv.h>

using namespace Qt::Literals::StringLiterals;

namespace {

/// A text that code page 850 holds too, with a few characters beyond ASCII in each line.
QString textOfReports(qint64 size)
{
    const QString line = u"Fehler beim Öffnen der Datei \"C:/Büro/Größe.txt\": Zugriff verweigert.\n"_s;
    return line.repeated(size / line.size() + 1).first(size);
}

/// One conversion of it all; false where something is left.
bool convert(iconv_t converter, const QByteArray &bytes, QByteArray &result)
{
    char *in = const_cast<char *>(bytes.constData()); // iconv() doesn't write there
    size_t inLeft = size_t(bytes.size());
    char *out = result.data();
    size_t outLeft = size_t(result.size());
    return iconv(converter, &in, &inLeft, &out, &outLeft) == 0 && inLeft == 0;
}

void convertWithIconv(benchmark::State &state, const char *to, const char *from, const QByteArray &bytes,
                      qsizetype resultSize)
{
    iconv_t converter = iconv_open(to, from);
    for ([[maybe_unused]] auto _ : state) {
        QByteArray result(resultSize, Qt::Uninitialized);
        if (!convert(converter, bytes, result))
            state.SkipWithError("The text can't be converted");
        benchmark::DoNotOptimize(result.constData());
    }
    iconv_close(converter);
    state.SetBytesProcessed(int64_t(state.iterations()) * state.range(0));
}

void toByteText(benchmark::State &state)
{
    const QString text = textOfReports(state.range(0));
    for ([[maybe_unused]] auto _ : state)
        benchmark::DoNotOptimize(s3String::toByteText(text));
    state.SetBytesProcessed(int64_t(state.iterations()) * state.range(0));
}

void toByteTextYardstick(benchmark::State &state)
{
    const QString text = textOfReports(state.range(0));
    const QByteArray bytes(reinterpret_cast<const char *>(text.constData()), text.size() * qsizetype(sizeof(QChar)));
    convertWithIconv(state, "CP850", "UTF-16LE", bytes, text.size());
}

void fromByteText(benchmark::State &state)
{
    const QByteArray bytes = s3String::toByteText(textOfReports(state.range(0)));
    for ([[maybe_unused]] auto _ : state)
        benchmark::DoNotOptimize(s3String::fromByteText(bytes.constData()));
    state.SetBytesProcessed(int64_t(state.iterations()) * state.range(0));
}

void fromByteTextYardstick(benchmark::State &state)
{
    const QByteArray bytes = s3String::toByteText(textOfReports(state.range(0)));
    convertWithIconv(state, "UTF-16LE", "CP850", bytes, bytes.size() * qsizetype(sizeof(QChar)));
}

constexpr qint64 megabyte = 1'000'000;

BENCHMARK(toByteText)->Arg(megabyte)->Arg(10 * megabyte)->Unit(benchmark::kMillisecond);
BENCHMARK(toByteTextYardstick)->Arg(megabyte)->Arg(10 * megabyte)->Unit(benchmark::kMillisecond);
BENCHMARK(fromByteText)->Arg(megabyte)->Arg(10 * megabyte)->Unit(benchmark::kMillisecond);
BENCHMARK(fromByteTextYardstick)->Arg(megabyte)->Arg(10 * megabyte)->Unit(benchmark::kMillisecond);

} // namespace
