#include "s3elapsedtimer.h"

#include <QTest>
#include <QThread>

#include <functional>

using namespace Qt::Literals::StringLiterals;

class tst_s3ElapsedTimer : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void notStartedIsZero();
    void totalWithoutAdditionsIsZero();
    void formatted_data();
    void formatted();
    void texts();
    void eachReadCanAdd_data();
    void eachReadCanAdd();
    void restartStartsAnew();
    void totalCountsEachAddition();
    void totalStaysWithoutAddition();
    void restartKeepsOrResetsTotal();
    void unitsAreTruncated();
};

void tst_s3ElapsedTimer::notStartedIsZero()
{
    s3ElapsedTimer timer(false);
    QCOMPARE(timer.nanoseconds(true), 0);
    QCOMPARE(timer.text(true), u"0 ms"_s);
    QCOMPARE(timer.textMicroseconds(true), u"0 µs"_s);
    QCOMPARE(timer.totalText(), u"0 ms"_s);
}

void tst_s3ElapsedTimer::totalWithoutAdditionsIsZero()
{
    const s3ElapsedTimer timer(true);
    QCOMPARE(timer.totalText(), u"0 ms"_s);
    QCOMPARE(timer.totalTextMicroseconds(), u"0 µs"_s);
}

void tst_s3ElapsedTimer::formatted_data()
{
    QTest::addColumn<qint64>("value");
    QTest::addColumn<QString>("text");

    QTest::newRow("0") << qint64(0) << u"0"_s;
    QTest::newRow("1500") << qint64(1500) << u"1.5"_s;
    QTest::newRow("2000") << qint64(2000) << u"2"_s;
    QTest::newRow("4") << qint64(4) << u"0"_s;
    QTest::newRow("5 is rounded up") << qint64(5) << u"0.01"_s;
    QTest::newRow("9990") << qint64(9990) << u"9.99"_s;
    QTest::newRow("9999 still has decimals") << qint64(9999) << u"10"_s;
    QTest::newRow("10000") << qint64(10000) << u"10"_s;
    QTest::newRow("12345 has none") << qint64(12345) << u"12"_s;
    QTest::newRow("no group separator") << qint64(1234567890) << u"1234568"_s;
}

void tst_s3ElapsedTimer::formatted()
{
    QFETCH(const qint64, value);
    QTEST(s3ElapsedTimer::formatted(value), "text");
}

void tst_s3ElapsedTimer::texts()
{
    const auto number = [](const QString &text, const QString &unit) {
        return text.endsWith(unit) ? text.chopped(unit.size()).toDouble() : -1.0;
    };
    s3ElapsedTimer timer(true);
    QThread::msleep(11);
    const double before = double(timer.nanoseconds(false));
    const double milliseconds = number(timer.text(false), u" ms"_s);
    const double microseconds = number(timer.textMicroseconds(false), u" µs"_s);
    const double after = double(timer.nanoseconds(false));
    // Shown without decimals from 10 on: half a unit to each side.
    QVERIFY2(milliseconds * 1e6 >= before - 0.51e6 && milliseconds * 1e6 <= after + 0.51e6,
             qPrintable(QString::number(milliseconds)));
    QVERIFY2(microseconds * 1e3 >= before - 0.51e3 && microseconds * 1e3 <= after + 0.51e3,
             qPrintable(QString::number(microseconds)));
}

void tst_s3ElapsedTimer::eachReadCanAdd_data()
{
    using Read = std::function<void(s3ElapsedTimer &, bool)>;
    QTest::addColumn<Read>("read");

    QTest::newRow("nanoseconds") << Read([](s3ElapsedTimer &t, bool add) { t.nanoseconds(add); });
    QTest::newRow("microseconds") << Read([](s3ElapsedTimer &t, bool add) { t.microseconds(add); });
    QTest::newRow("milliseconds") << Read([](s3ElapsedTimer &t, bool add) { t.milliseconds(add); });
    QTest::newRow("text") << Read([](s3ElapsedTimer &t, bool add) { QVERIFY(!t.text(add).isEmpty()); });
    QTest::newRow("textMicroseconds") << Read(
        [](s3ElapsedTimer &t, bool add) { QVERIFY(!t.textMicroseconds(add).isEmpty()); });
}

void tst_s3ElapsedTimer::eachReadCanAdd()
{
    QFETCH(const std::function<void(s3ElapsedTimer &, bool)>, read);
    s3ElapsedTimer timer(true);
    QThread::msleep(2);
    read(timer, false);
    QCOMPARE(timer.totalText(), u"0 ms"_s);
    read(timer, true);
    QVERIFY(timer.totalText() != u"0 ms"_s);
}

void tst_s3ElapsedTimer::restartStartsAnew()
{
    s3ElapsedTimer timer(true);
    QThread::msleep(50);
    timer.restart(false);
    QVERIFY(timer.milliseconds(false) < 50);
}

void tst_s3ElapsedTimer::totalCountsEachAddition()
{
    s3ElapsedTimer timer(true);
    QThread::msleep(2);
    const qint64 first = timer.nanoseconds(true);
    const qint64 second = timer.nanoseconds(true);
    QVERIFY(first >= 2'000'000);
    QVERIFY(second >= first);
    QCOMPARE(timer.totalTextMicroseconds(), s3ElapsedTimer::formatted(first + second) + u" µs"_s);
    QCOMPARE(timer.totalText(), s3ElapsedTimer::formatted((first + second) / 1000) + u" ms"_s);
}

void tst_s3ElapsedTimer::totalStaysWithoutAddition()
{
    s3ElapsedTimer timer(true);
    QThread::msleep(1);
    QVERIFY(timer.milliseconds(false) >= 1);
    QCOMPARE(timer.totalText(), u"0 ms"_s);
}

void tst_s3ElapsedTimer::restartKeepsOrResetsTotal()
{
    s3ElapsedTimer timer(true);
    QThread::msleep(1);
    timer.addToTotal();
    timer.restart(false);
    QVERIFY(timer.totalText() != u"0 ms"_s);
    timer.restart(true);
    QCOMPARE(timer.totalText(), u"0 ms"_s);
}

void tst_s3ElapsedTimer::unitsAreTruncated()
{
    s3ElapsedTimer timer(true);
    QThread::msleep(3);
    const qint64 before = timer.nanoseconds(false);
    const qint64 micro = timer.microseconds(false);
    const qint64 milli = timer.milliseconds(false);
    const qint64 after = timer.nanoseconds(false);
    QVERIFY(micro >= before / 1000 && micro <= after / 1000);
    QVERIFY(milli >= before / 1'000'000 && milli <= after / 1'000'000);
}

QTEST_GUILESS_MAIN(tst_s3ElapsedTimer)
#include "tst_s3elapsedtimer.moc"
