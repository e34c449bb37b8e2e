#include "s3elapsedtimer.h"

#include "s3string.h"

using namespace Qt::Literals::StringLiterals;

s3ElapsedTimer::s3ElapsedTimer(bool start)
{
    if (start)
        m_timer.start();
}

void s3ElapsedTimer::restart(bool resetTotal)
{
    m_timer.start();
    if (resetTotal)
        m_totalNanoseconds = 0;
}

qint64 s3ElapsedTimer::nanoseconds(bool addToTotal)
{
    const qint64 elapsed = m_timer.isValid() ? m_timer.nsecsElapsed() : 0;
    if (addToTotal)
        m_totalNanoseconds += elapsed;
    return elapsed;
}

qint64 s3ElapsedTimer::microseconds(bool addToTotal)
{
    return nanoseconds(addToTotal) / 1000;
}

qint64 s3ElapsedTimer::milliseconds(bool addToTotal)
{
    return microseconds(addToTotal) / 1000;
}

void s3ElapsedTimer::addToTotal()
{
    nanoseconds(true);
}

QString s3ElapsedTimer::text(bool addToTotal)
{
    return formatted(microseconds(addToTotal)) + u" ms"_s;
}

QString s3ElapsedTimer::textMicroseconds(bool addToTotal)
{
    return formatted(nanoseconds(addToTotal)) + u" µs"_s;
}

QString s3ElapsedTimer::totalText() const
{
    return formatted(m_totalNanoseconds / 1000) + u" ms"_s;
}

QString s3ElapsedTimer::totalTextMicroseconds() const
{
    return formatted(m_totalNanoseconds) + u" µs"_s;
}

QString s3ElapsedTimer::formatted(qint64 value)
{
    const double quotient = double(value) / 1000.0;
    return s3String::formatNumber(quotient, quotient < 10 ? 2 : 0, u"."_s, QString());
}
