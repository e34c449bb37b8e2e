#pragma once

#include <QtGlobal>

#include <memory>

class ComCallWatch;

/// COM in the single-threaded apartment of the thread that makes and destroys this, with a message filter that has
/// CallPatience decide on calls that the server rejects or doesn't answer. A thread may have several at a time, and
/// destroy them in any order; the filter goes with the last. In a thread that is in another kind of apartment nothing
/// is done.
class ComApartment
{
public:
    ComApartment();
    ~ComApartment();

private:
    Q_DISABLE_COPY_MOVE(ComApartment)

    bool m_entered = false;
    std::shared_ptr<ComCallWatch> m_watch;
};
