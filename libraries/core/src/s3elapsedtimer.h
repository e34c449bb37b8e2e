#pragma once

#include <QElapsedTimer>
#include <QString>

/// Measures how long something took, in steps with a running total, and shows it as text for the logs.
/// Nothing here stops or restarts the clock but restart(): consecutive calls with \a addToTotal count the time since
/// the last restart() again and again, so a caller restarts between its steps. One thread at a time.
class s3ElapsedTimer
{
public:
    explicit s3ElapsedTimer(bool start);

    void restart(bool resetTotal);

    /// Nanoseconds since the last start; 0 if the timer was never started.
    qint64 nanoseconds(bool addToTotal);
    qint64 microseconds(bool addToTotal);
    qint64 milliseconds(bool addToTotal);
    void addToTotal();

    /// The elapsed time in milliseconds with the unit, such as "1.5 ms".
    [[nodiscard]] QString text(bool addToTotal);
    /// The elapsed time in microseconds with the unit.
    [[nodiscard]] QString textMicroseconds(bool addToTotal);
    [[nodiscard]] QString totalText() const;
    [[nodiscard]] QString totalTextMicroseconds() const;

    /// \a value divided by 1000: two decimals at most below 10, none from there on.
    [[nodiscard]] static QString formatted(qint64 value);

private:
    QElapsedTimer m_timer;
    qint64 m_totalNanoseconds = 0;
};
