#include "s3customevent.h"

#include "s3qeventprotocol.h"
#include "s3trace.h"
#include "s3typename.h"

#include <mutex>

using namespace Qt::Literals::StringLiterals;

qint32 s3CustomEventType::number(const std::type_info &eventClass)
{
    // The trace comes when the number is there and no lock is held: its own way to the output may lead over an event of
    // this very class, and so back here.
    if (m_number.load(std::memory_order_acquire) == 0 && isNew(eventClass)) {
        S3_TRACE(404, u"s3CustomEventBase<%1>::type() = %2"_s.arg(s3ClassName(eventClass),
                                                                  QString::number(m_number.load())));
    }
    return m_number.load(std::memory_order_acquire);
}

bool s3CustomEventType::isNew(const std::type_info &eventClass)
{
    const std::lock_guard lock(m_mutex);
    if (m_number.load() != 0)
        return false;
    const qint32 number = QEvent::registerEventType(-1);
    s3QEventProtocol::registerCustomEvent(number, s3ClassName(eventClass));
    s3QEventProtocol::ignoreEvent(number);
    m_number.store(number, std::memory_order_release);
    return true;
}
