#include "error/s3guardedcall.h"

#include "forbiddenpage.h"

#include <QTest>

#include <array>
#include <atomic>
#include <memory>
#include <stdexcept>
#include <thread>
#include <vector>

class tst_s3GuardedCall : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void functionThatReturns();
    void readOfForbiddenMemory();
    void writeToForbiddenMemory();
    void divisionByZero();
    void valuesOfTheCallerAreKept();
    void onceMore();
    void nested();
    void faultInTheOuterCallAfterTheInner();
    void exceptionPasses();
    void afterAnException();
    void threads();
};

namespace {

constexpr quint32 accessViolation = 0xC0000005;
constexpr quint32 integerDivideByZero = 0xC0000094;

// The sanitizer would report what is wanted here.
#if defined(__GNUC__)
__attribute__((no_sanitize("undefined")))
#endif
int dividedByZero(int dividend)
{
    // Unknown to the compiler, which knows other ways to divide.
    volatile int zero = 0;
    return dividend / zero; // NOLINT(clang-analyzer-core.DivideZero)
}

} // namespace

void tst_s3GuardedCall::functionThatReturns()
{
    int value = 0;
    QCOMPARE(s3Guarded([&value] { value = 7; }), 0U);
    QCOMPARE(value, 7);
}

void tst_s3GuardedCall::readOfForbiddenMemory()
{
    const ForbiddenPage page;
    volatile char seen = 0;
    QCOMPARE(s3Guarded([&] { seen = *page.address(); }), accessViolation);
    QCOMPARE(char(seen), '\0');
}

void tst_s3GuardedCall::writeToForbiddenMemory()
{
    const ForbiddenPage page;
    QCOMPARE(s3Guarded([&] { *page.address() = 1; }), accessViolation);
}

void tst_s3GuardedCall::divisionByZero()
{
    volatile int result = 5;
    QCOMPARE(s3Guarded([&] { result = dividedByZero(1234); }), integerDivideByZero);
    QCOMPARE(int(result), 5);
}

void tst_s3GuardedCall::valuesOfTheCallerAreKept()
{
    const ForbiddenPage page;
    // More than there are registers.
    std::array<int, 24> before{};
    for (size_t i = 0; i < before.size(); ++i)
        before.at(i) = int(i) * 3;
    const double fraction = 1.5 * before.at(5);
    const quint32 code = s3Guarded([&] { *page.address() = 1; });
    QCOMPARE(code, accessViolation);
    for (size_t i = 0; i < before.size(); ++i)
        QCOMPARE(before.at(i), int(i) * 3);
    QCOMPARE(fraction, 22.5);
}

void tst_s3GuardedCall::onceMore()
{
    const ForbiddenPage page;
    int ended = 0;
    for (int i = 0; i < 1000; ++i)
        ended += s3Guarded([&] { *page.address() = 1; }) == accessViolation ? 1 : 0;
    QCOMPARE(ended, 1000);
}

void tst_s3GuardedCall::nested()
{
    const ForbiddenPage page;
    quint32 inner = 0;
    bool wentOn = false;
    const quint32 outer = s3Guarded([&] {
        inner = s3Guarded([&] { *page.address() = 1; });
        wentOn = true;
    });
    QCOMPARE(inner, accessViolation);
    QVERIFY(wentOn);
    QCOMPARE(outer, 0U);
}

void tst_s3GuardedCall::faultInTheOuterCallAfterTheInner()
{
    const ForbiddenPage page;
    volatile quint32 inner = 1;
    const quint32 outer = s3Guarded([&] {
        inner = s3Guarded([] {});
        *page.address() = 1;
    });
    QCOMPARE(quint32(inner), 0U);
    QCOMPARE(outer, accessViolation);
}

void tst_s3GuardedCall::exceptionPasses()
{
    const auto owned = std::make_shared<int>(1);
    const auto call = [&owned] {
        const quint32 code = s3Guarded([&owned] {
            // A second owner, which is to be gone afterwards.
            const std::shared_ptr<int> copy = owned; // NOLINT(performance-unnecessary-copy-initialization)
            throw std::runtime_error("passes");
        });
        Q_UNUSED(code);
    };
    QVERIFY_THROWS_EXCEPTION(std::runtime_error, call());
    QCOMPARE(owned.use_count(), 1L);
}

void tst_s3GuardedCall::afterAnException()
{
    const ForbiddenPage page;
    exceptionPasses();
    QCOMPARE(s3Guarded([&] { *page.address() = 1; }), accessViolation);
}

void tst_s3GuardedCall::threads()
{
    const ForbiddenPage page;
    std::atomic<int> ended = 0;
    std::vector<std::thread> threads;
    threads.reserve(8);
    for (int i = 0; i < 8; ++i) {
        threads.emplace_back([&] {
            for (int call = 0; call < 200; ++call) {
                if (s3Guarded([&] { *page.address() = 1; }) == accessViolation)
                    ++ended;
                if (s3Guarded([] {}) == 0)
                    ++ended;
            }
        });
    }
    for (std::thread &thread : threads)
        thread.join();
    QCOMPARE(ended.load(), 3200);
}

QTEST_APPLESS_MAIN(tst_s3GuardedCall)
#include "tst_s3guardedcall.moc"
