#include "automation/callpatience.h"

#include <QTest>

using namespace std::chrono_literals;

class tst_CallPatience : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void rejectedCallsAreRepeatedUntilTheLimit();
    void limitIsOneForAllCalls();
    void takenCallBringsThePatienceBack();
    void silence();
    void intervalIsOneThatComWaitsFor();
};

namespace {

int repetitions(CallPatience &patience)
{
    int count = 0;
    while (patience.rejected())
        ++count;
    return count;
}

} // namespace

void tst_CallPatience::rejectedCallsAreRepeatedUntilTheLimit()
{
    CallPatience patience(500ms);
    QCOMPARE(patience.rejected(), std::optional(CallPatience::interval));
    QCOMPARE(repetitions(patience), 4);
    QVERIFY(!patience.rejected().has_value());
}

void tst_CallPatience::limitIsOneForAllCalls()
{
    CallPatience patience(300ms);
    QCOMPARE(repetitions(patience), 3);
    QCOMPARE(repetitions(patience), 0);
}

void tst_CallPatience::takenCallBringsThePatienceBack()
{
    CallPatience patience(300ms);
    QCOMPARE(repetitions(patience), 3);
    patience.taken();
    QCOMPARE(repetitions(patience), 3);
}

void tst_CallPatience::silence()
{
    const CallPatience patience(1s, 2s);
    QVERIFY(!patience.isTooLong(1999ms));
    QVERIFY(patience.isTooLong(2s));
}

void tst_CallPatience::intervalIsOneThatComWaitsFor()
{
    // IMessageFilter::RetryRejectedCall repeats at once for less than 100.
    QVERIFY(CallPatience::interval >= 100ms);
}

QTEST_APPLESS_MAIN(tst_CallPatience)
#include "tst_callpatience.moc"
