#include "callpatience.h"

CallPatience::CallPatience(Duration rejections, Duration silence)
    : m_rejectionLimit(rejections)
    , m_silenceLimit(silence)
{
}

CallPatience &CallPatience::ofProcess()
{
    static CallPatience patience;
    return patience;
}

std::optional<CallPatience::Duration> CallPatience::rejected()
{
    if (m_waited >= m_rejectionLimit)
        return std::nullopt;
    m_waited += interval;
    return interval;
}

void CallPatience::taken()
{
    m_waited = Duration(0);
}

bool CallPatience::isTooLong(Duration elapsed) const
{
    return elapsed >= m_silenceLimit;
}
