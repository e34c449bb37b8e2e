#include "automation/callpatience.h"

#include <QTest>

using namespace std::chrono_literals;

class tst_CallPatience : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void rejectedCallsAreRepeatedUntilTheLimit();
    void limitIsOneForAllCalls();
    void answeredCallBringsThePatienceBack();
    void silence();
    void silenceIsWaitedForOnce();
    void answerBringsTheLongWaitBack();
    void silenceIsNoAnswer();
    void operation();
    void operationWithRejectedCall();
    void operationWithSilentCall();
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

void tst_CallPatience::answeredCallBringsThePatienceBack()
{
    CallPatience patience(300ms);
    QCOMPARE(repetitions(patience), 3);
    patience.answered();
    QCOMPARE(repetitions(patience), 3);
}

void tst_CallPatience::silence()
{
    CallPatience patience(1s, 2s);
    QVERIFY(!patience.unanswered(1999ms));
    QVERIFY(patience.unanswered(2s));
}

void tst_CallPatience::silenceIsWaitedForOnce()
{
    CallPatience patience(1s, 600s, 1s);
    QVERIFY(patience.unanswered(600s));
    for (int call = 0; call < 20; ++call) {
        QVERIFY(!patience.unanswered(999ms));
        QVERIFY(patience.unanswered(1s));
    }
}

void tst_CallPatience::answerBringsTheLongWaitBack()
{
    CallPatience patience(1s, 600s, 1s);
    QVERIFY(patience.unanswered(600s));
    patience.answered();
    QVERIFY(!patience.unanswered(599s));
    QVERIFY(patience.unanswered(600s));
}

void tst_CallPatience::silenceIsNoAnswer()
{
    CallPatience patience(300ms, 2s);
    QCOMPARE(repetitions(patience), 3);
    QVERIFY(patience.unanswered(2s));
    QCOMPARE(repetitions(patience), 0);
}

void tst_CallPatience::operation()
{
    CallPatience patience(300ms, 2s, 1s);
    QCOMPARE(repetitions(patience), 3);
    QVERIFY(patience.unanswered(2s));
    {
        const CallPatience::Operation operation(patience);
        QVERIFY(!patience.unanswered(500ms));
    }
    QVERIFY(!patience.unanswered(1999ms));
    QCOMPARE(repetitions(patience), 3);
}

void tst_CallPatience::operationWithRejectedCall()
{
    CallPatience patience(300ms);
    {
        const CallPatience::Operation operation(patience);
        QCOMPARE(repetitions(patience), 3);
    }
    {
        const CallPatience::Operation operation(patience);
        QCOMPARE(repetitions(patience), 0);
    }
    {
        const CallPatience::Operation operation(patience);
    }
    QCOMPARE(repetitions(patience), 3);
}

void tst_CallPatience::operationWithSilentCall()
{
    CallPatience patience(300ms, 2s, 1s);
    {
        const CallPatience::Operation operation(patience);
        QVERIFY(patience.unanswered(2s));
    }
    QVERIFY(patience.unanswered(1s));
}

void tst_CallPatience::intervalIsOneThatComWaitsFor()
{
    // IMessageFilter::RetryRejectedCall repeats at once for less than 100.
    QVERIFY(CallPatience::interval >= 100ms);
}

QTEST_APPLESS_MAIN(tst_CallPatience)
#include "tst_callpatience.moc"
