// usage: plantedrace WAY [race | wrong]: two threads work on one thing, in order by one of the ways of the core, or
// without it if "race" is given. With "wrong" they go that way, but each by a lock or an address of its own. It is to
// show what a race checker sees and what it doesn't complain about.

#include "s3mutex.h"
#include "test/s3testausproxyprivate.h"

#include <QCoreApplication>
#include <QMutex>

#include <array>
#include <atomic>
#include <latch>
#include <thread>

using namespace Qt::Literals::StringLiterals;

namespace {

bool race = false;
bool wrong = false;

/// Calls \a function many times on each of two threads, with 0 and with 1, that run at the same time. Neither ends
/// before the other has done its part, nor does much in between: a checker remembers only so much of a thread, and less
/// of one that has ended.
template<typename Function>
void onTwoThreads(Function function)
{
    std::latch begun(2);
    std::latch done(2);
    const auto run = [&](size_t thread) {
        begun.arrive_and_wait();
        // A lock is to be fought for, since only its slow way lies in Qt's own code.
        for (int i = 0; i < (race || wrong ? 500 : 20'000); ++i) {
            function(thread);
            if (i % 100 == 0)
                std::this_thread::yield();
        }
        done.arrive_and_wait();
    };
    std::thread other(run, 1);
    run(0);
    other.join();
}

template<typename Mutex>
void counted()
{
    std::array<Mutex, 2> mutexes;
    int count = 0;
    onTwoThreads([&](size_t thread) {
        Mutex &mutex = mutexes[wrong ? thread : 0];
        if (!race)
            mutex.lock();
        ++count;
        if (!race)
            mutex.unlock();
    });
    if (!race && !wrong && count != 40'000)
        qFatal("The lock doesn't lock");
}

void countedByTheOutput()
{
    s3TestausProxyPrivate output;
    onTwoThreads([&output](size_t) {
        if (!race)
            output.lineDepthMutex.lock();
        ++output.lineDepth;
        if (!race)
            output.lineDepthMutex.unlock();
    });
    if (!race && output.lineDepth != 40'000)
        qFatal("The lock doesn't lock");
}

class PlantedEvent : public s3CustomEventBase<PlantedEvent>
{
public:
    int number = 0;
};

class Receiver : public QObject
{
public:
    std::atomic<int> sum = 0;

protected:
    void customEvent(QEvent *event) override
    {
        if (!race)
            s3RaceChecker::takeOver(event);
        const int number = static_cast<const PlantedEvent *>(event)->number;
        sum.fetch_add(number, std::memory_order_relaxed);
    }
};

/// Qt's queue of events keeps this in order in any case, but unless it is told so the checker can't know. The two
/// threads pace each other with what brings nothing into an order, and without the event loop, whose way of being woken
/// is known.
void posted()
{
    constexpr int count = 20;
    Receiver receiver;
    std::thread sender([&receiver] {
        for (int i = 0; i < count; ++i) {
            auto *const event = new PlantedEvent;
            event->number = 1;
            if (!race)
                s3RaceChecker::handOver(wrong ? static_cast<const void *>(&receiver) : event);
            QCoreApplication::postEvent(&receiver, event);
            while (receiver.sum.load(std::memory_order_relaxed) <= i)
                std::this_thread::yield();
        }
    });
    while (receiver.sum.load(std::memory_order_relaxed) < count)
        QCoreApplication::sendPostedEvents(&receiver);
    sender.join();
}

void lockedInTwoOrders()
{
    s3RecursiveMutex first;
    QMutex second;
    first.lock();
    second.lock();
    second.unlock();
    first.unlock();
    second.lock();
    first.lock();
    first.unlock();
    second.unlock();
}

bool run(const QString &way)
{
    if (way == u"mutex"_s)
        counted<QMutex>();
    else if (way == u"recursive-mutex"_s)
        counted<s3RecursiveMutex>();
    else if (way == u"line-depth"_s)
        countedByTheOutput();
    else if (way == u"event"_s)
        posted();
    else if (way == u"lock-order"_s)
        lockedInTwoOrders();
    else
        return false;
    return true;
}

} // namespace

int main(int argc, char *argv[])
{
    const QCoreApplication application(argc, argv);
    const QString way = QCoreApplication::arguments().value(1);
    race = QCoreApplication::arguments().value(2) == u"race"_s;
    wrong = QCoreApplication::arguments().value(2) == u"wrong"_s;
    // A checker may miss a race once, when both threads do their part in the very same moment.
    for (int round = 0; round < 10; ++round) {
        if (!run(way))
            return 1;
    }
    return 0;
}
