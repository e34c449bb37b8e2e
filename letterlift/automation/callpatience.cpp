#include "callpatience.h"

CallPatience::CallPatience(Duration rejections, Duration silence, Duration grace)
    : m_rejectionLimit(rejections)
    , m_silenceLimit(silence)
    , m_silenceGrace(grace)
{
}

CallPatience &CallPatience::ofProcess()
{
    static CallPatience patience;
    return patience;
}

std::optional<CallPatience::Duration> CallPatience::rejected()
{
    if (m_waited >= m_rejectionLimit) {
        m_givenUp = true;
        return std::nullopt;
    }
    m_waited += interval;
    return interval;
}

bool CallPatience::unanswered(Duration elapsed)
{
    if (elapsed < (m_silent ? m_silenceGrace : m_silenceLimit))
        return false;
    m_silent = true;
    m_givenUp = true;
    return true;
}

void CallPatience::answered()
{
    m_waited = Duration(0);
    m_silent = false;
}

CallPatience::Operation::Operation(CallPatience &patience)
    : m_patience(patience)
{
    m_patience.m_givenUp = false;
}

CallPatience::Operation::~Operation()
{
    if (!m_patience.m_givenUp)
        m_patience.answered();
}
