#include <QCoreApplication>
#include <QLoggingCategory>

#include <benchmark/benchmark.h>

int main(int argc, char *argv[])
{
    const QCoreApplication application(argc, argv);
    // The program's log lines would be most of what is measured, and go to the terminal.
    qInstallMessageHandler([](QtMsgType, const QMessageLogContext &, const QString &) {});

    benchmark::Initialize(&argc, argv);
    if (benchmark::ReportUnrecognizedArguments(argc, argv))
        return 1;
    benchmark::RunSpecifiedBenchmarks();
    benchmark::Shutdown();
    return 0;
}
