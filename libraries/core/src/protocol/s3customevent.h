#pragma once

#include "s3iformattable.h"

#include <QEvent>
#include <QMutex>

#include <atomic>
#include <typeinfo>

/// The number of one class of events, given on the first call, by whichever thread makes it.
class s3CustomEventType
{
public:
    constexpr s3CustomEventType() = default;

    [[nodiscard]] qint32 number(const std::type_info &eventClass);

private:
    [[nodiscard]] bool isNew(const std::type_info &eventClass);

    std::atomic<qint32> m_number = 0;
    QMutex m_mutex;
};

/// The base of the core's own events. \a T is the final class: it gets a type of its own, whose name the event protocol
/// knows, and which the protocol leaves out unless told otherwise.
template<typename T>
class s3CustomEventBase : public QEvent, public s3IFormattable
{
public:
    /// From any thread.
    [[nodiscard]] static qint32 type()
    {
        constinit static s3CustomEventType customType;
        return customType.number(typeid(T));
    }

    [[nodiscard]] QString formatted() const override { return {}; }

protected:
    s3CustomEventBase()
        : QEvent(QEvent::Type(type()))
    {
    }
};
