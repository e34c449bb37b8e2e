// Reading a parameter file, against reading the lines of the same file with Qt and doing nothing with them.

#include "mailrequest.h"

#include <QFile>
#include <QTemporaryDir>
#include <QTextStream>

#include <benchmark/benchmark.h>

using namespace Qt::Literals::StringLiterals;

namespace {

QString writeFile(const QString &name, const QByteArray &bytes)
{
    static const QTemporaryDir directory;
    QFile file(directory.filePath(name));
    if (!file.open(QIODevice::WriteOnly) || file.write(bytes) != bytes.size())
        qFatal("The benchmark's file can't be written");
    return file.fileName();
}

QByteArray manyKeys(qint64 count)
{
    QByteArray bytes = "[VEXAMAIL]\n";
    for (qint64 i = 1; i <= count; ++i)
        bytes += "TO" + QByteArray::number(i) + "=recipient." + QByteArray::number(i) + "@example.com\n";
    return bytes;
}

QByteArray bodyText(qint64 size)
{
    return QByteArray("A line of text that is about as long as those of a mail are.;").repeated(size / 61);
}

void readLines(benchmark::State &state, const QString &path)
{
    for ([[maybe_unused]] auto _ : state) {
        QFile file(path);
        if (!file.open(QIODevice::ReadOnly))
            state.SkipWithError("The file can't be read");
        QTextStream stream(file.readAll());
        qsizetype length = 0;
        while (!stream.atEnd())
            length += stream.readLine().size();
        benchmark::DoNotOptimize(length);
    }
}

void keys(benchmark::State &state)
{
    const QString path = writeFile(u"keys.vxm"_s, manyKeys(state.range(0)));
    for ([[maybe_unused]] auto _ : state) {
        const MailRequest mail(path);
        benchmark::DoNotOptimize(mail.subject());
    }
    state.SetComplexityN(state.range(0));
}

void keysYardstick(benchmark::State &state)
{
    readLines(state, writeFile(u"keys.vxm"_s, manyKeys(state.range(0))));
}

void longBody(benchmark::State &state)
{
    const QString path = writeFile(u"body.vxm"_s, "[VEXAMAIL]\nBODY=" + bodyText(state.range(0)) + "\n");
    QString errorMessage;
    for ([[maybe_unused]] auto _ : state) {
        const MailRequest mail(path);
        benchmark::DoNotOptimize(mail.body(errorMessage));
    }
    state.SetComplexityN(state.range(0));
}

void longBodyYardstick(benchmark::State &state)
{
    readLines(state, writeFile(u"body.vxm"_s, "[VEXAMAIL]\nBODY=" + bodyText(state.range(0)) + "\n"));
}

void bodyFile(benchmark::State &state)
{
    writeFile(u"body.txt"_s, bodyText(state.range(0)).replace(';', '\n'));
    const MailRequest mail(writeFile(u"bodyfile.vxm"_s, "[VEXAMAIL]\nBODYFILE=body.txt\n"));
    QString errorMessage;
    for ([[maybe_unused]] auto _ : state)
        benchmark::DoNotOptimize(mail.body(errorMessage));
    state.SetComplexityN(state.range(0));
}

void bodyFileYardstick(benchmark::State &state)
{
    readLines(state, writeFile(u"body.txt"_s, bodyText(state.range(0)).replace(';', '\n')));
}

constexpr qint64 megabyte = 1'000'000;

BENCHMARK(keys)->Arg(2'500)->Arg(10'000)->Unit(benchmark::kMillisecond);
BENCHMARK(keysYardstick)->Arg(2'500)->Arg(10'000)->Unit(benchmark::kMillisecond);
BENCHMARK(longBody)->Arg(megabyte)->Arg(5 * megabyte)->Unit(benchmark::kMillisecond);
BENCHMARK(longBodyYardstick)->Arg(megabyte)->Arg(5 * megabyte)->Unit(benchmark::kMillisecond);
BENCHMARK(bodyFile)->Arg(megabyte)->Arg(5 * megabyte)->Unit(benchmark::kMillisecond);
BENCHMARK(bodyFileYardstick)->Arg(megabyte)->Arg(5 * megabyte)->Unit(benchmark::kMillisecond);

} // namespace
