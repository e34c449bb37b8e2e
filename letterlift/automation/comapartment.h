#pragma once

#include <QtGlobal>

#include <objbase.h>

struct IMessageFilter;

/// COM in the single-threaded apartment of the thread that makes and destroys this, with a message filter that has
/// CallPatience decide on calls that the server rejects or doesn't answer.
class ComApartment
{
public:
    ComApartment();
    ~ComApartment();

    /// False if the thread is in another kind of apartment, in which nothing is done.
    [[nodiscard]] bool isEntered() const { return m_entered; }

private:
    Q_DISABLE_COPY_MOVE(ComApartment)

    bool m_entered = false;
    bool m_hasFilter = false;
    IMessageFilter *m_earlierFilter = nullptr;
    HANDLE m_timer = nullptr;
};
