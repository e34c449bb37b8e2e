// The walk over the global address list, against the same four operations an entry on the simulated Outlook itself,
// without the objects that stand for its objects in the program.

#include "automation/automationobject.h"
#include "automation/simulatedobject.h"
#include "outlook.h"
#include "simulation/mailmessage.h"
#include "simulation/outlookserver.h"

#include <benchmark/benchmark.h>

using namespace Qt::Literals::StringLiterals;

namespace {

class NoEnvironment : public OutlookEnvironment
{
public:
    void record(const JournalEntry &) override {}
    [[nodiscard]] std::optional<QByteArray> readFile(const QString &) const override { return std::nullopt; }
    void saveDraft(int, const MailMessage &) override {}
    void removeDraft(int) override {}
    void saveSent(const MailMessage &) override {}
};

Scenario manyUsers(qint64 count)
{
    Scenario scenario;
    for (qint64 i = 0; i < count; ++i)
        scenario.globalAddressList.append({true, u"alias%1"_s.arg(i), u"user%1@example.com"_s.arg(i)});
    return scenario;
}

void setTimePerEntry(benchmark::State &state)
{
    state.counters["s_per_entry"] = benchmark::Counter(
        double(state.range(0)), benchmark::Counter::kIsIterationInvariantRate | benchmark::Counter::kInvert);
}

void aliasWalk(benchmark::State &state)
{
    const Scenario scenario = manyUsers(state.range(0));
    NoEnvironment environment;
    int wrappers = 0;
    for ([[maybe_unused]] auto _ : state) {
        state.PauseTiming();
        auto outlook = std::make_unique<Outlook>(nullptr, [&](const QString &progId, QObject *parent) {
            const auto server = std::make_shared<OutlookServer>(scenario, environment);
            return new SimulatedObject(server, server->create(progId), parent);
        });
        const int before = AutomationObject::liveCount();
        state.ResumeTiming();
        benchmark::DoNotOptimize(outlook->getPrimarySmtpAddressForAliasAddress(u"nobody@example.com"_s));
        state.PauseTiming();
        wrappers = AutomationObject::liveCount() - before;
        outlook.reset();
        state.ResumeTiming();
    }
    setTimePerEntry(state);
    state.counters["wrappers"] = wrappers;
}

void aliasWalkYardstick(benchmark::State &state)
{
    const Scenario scenario = manyUsers(state.range(0));
    NoEnvironment environment;
    for ([[maybe_unused]] auto _ : state) {
        state.PauseTiming();
        auto server = std::make_unique<OutlookServer>(scenario, environment);
        const auto query = [&server](const ObjectReference &object, const QString &member,
                                     const QVariantList &arguments = {}) {
            return server->perform(Operation::Query, object, member, arguments).value.value<ObjectReference>();
        };
        ObjectReference entries = *server->create(u"Outlook.Application"_s);
        for (const auto &member : {u"Session"_s, u"GetGlobalAddressList()"_s, u"AddressEntries"_s})
            entries = query(entries, member);
        state.ResumeTiming();
        for (int i = 1; i <= int(state.range(0)); ++i) {
            const ObjectReference user = query(query(entries, u"Item(QVariant)"_s, {i}), u"GetExchangeUser()"_s);
            benchmark::DoNotOptimize(server->perform(Operation::Get, user, u"Alias"_s, {}));
            benchmark::DoNotOptimize(server->perform(Operation::Get, user, u"PrimarySmtpAddress"_s, {}));
        }
        state.PauseTiming();
        server.reset();
        state.ResumeTiming();
    }
    setTimePerEntry(state);
}

BENCHMARK(aliasWalk)->Arg(25'000)->Arg(100'000)->Unit(benchmark::kMillisecond);
BENCHMARK(aliasWalkYardstick)->Arg(25'000)->Arg(100'000)->Unit(benchmark::kMillisecond);

} // namespace
