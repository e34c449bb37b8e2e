#include "tracewriters.h"

#include "test/s3testausproxy.h"

#include <QCoreApplication>
#include <QRegularExpression>
#include <QThread>
#include <QTimer>

#include <atomic>
#include <map>
#include <thread>
#include <vector>

using namespace Qt::Literals::StringLiterals;

namespace {

constexpr int linesOfAThread = 400;

void writeLine(int writer, int number)
{
    s3TestausProxy *const proxy = s3TestausProxy::instance();
    const QString head = u"writer=%1 number=%2"_s.arg(QString::number(writer), QString::number(number));
    if (number % 2 == 0) {
        proxy->write(head + u" middle end"_s, true);
        return;
    }
    proxy->write(head, false);
    if (number % 8 == 1)
        QThread::yieldCurrentThread();
    proxy->write(u" middle"_s, false);
    proxy->write(u" end"_s, true);
}

} // namespace

QStringList &writtenLines()
{
    static QStringList lines;
    return lines;
}

void recordLine(const QString &text, bool endOfLine)
{
    static QString line;
    line += text;
    if (endOfLine) {
        writtenLines().append(line);
        line.clear();
    }
}

void writeLines(int writer)
{
    for (int number = 0; number < linesOfAThread; ++number)
        writeLine(writer, number);
}

void writeFromThreads(int threads)
{
    std::atomic<int> ended = 0;
    std::vector<std::thread> writers;
    for (int writer = 1; writer <= threads; ++writer) {
        writers.emplace_back([writer, &ended] {
            writeLines(writer);
            ++ended;
        });
    }
    int number = 0;
    QTimer timer;
    QObject::connect(&timer, &QTimer::timeout, &timer, [&number] {
        if (number < linesOfAThread)
            writeLine(0, number++);
    });
    timer.start(0);
    while (ended < threads || number < linesOfAThread)
        QCoreApplication::processEvents(QEventLoop::AllEvents);
    for (std::thread &writer : writers)
        writer.join();
    QCoreApplication::processEvents();
}

QString fault(const QStringList &lines, int writers, bool withTime)
{
    static const QRegularExpression plain(uR"(^writer=(\d+) number=(\d+) middle end$)"_s);
    static const QRegularExpression stamped(uR"(^\[\d\d:\d\d:\d\d\.\d\d\d\] writer=(\d+) number=(\d+) middle end$)"_s);
    std::map<int, int> next;
    for (const QString &line : lines) {
        const QRegularExpressionMatch match = (withTime ? stamped : plain).match(line);
        if (!match.hasMatch())
            return u"torn: "_s + line;
        if (match.captured(2).toInt() != next[match.captured(1).toInt()]++)
            return u"lost or out of order: "_s + line;
    }
    for (int writer = 0; writer < writers; ++writer) {
        if (next[writer] != linesOfAThread)
            return u"lost: writer %1 has %2"_s.arg(writer).arg(next[writer]);
    }
    return {};
}
