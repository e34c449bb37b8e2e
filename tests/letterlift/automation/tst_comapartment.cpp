// What an apartment does to its thread, and leaves behind there.

#include "automation/callpatience.h"
#include "automation/comapartment.h"

#include <QTest>

#include <objbase.h>
#include <objidl.h>
#include <wrl/client.h>

using Microsoft::WRL::ComPtr;

class tst_ComApartment : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init();
    void cleanup();
    void filterIsThereAsLongAsAnApartment_data();
    void filterIsThereAsLongAsAnApartment();
    void leavesNoMessages();
    void messagesAreTakenWhileACallIsPending();
    void endOfTheProgramIsLeft();
};

namespace {

/// The thread's filter, which stays in its place.
ComPtr<IMessageFilter> presentFilter()
{
    ComPtr<IMessageFilter> filter;
    if (FAILED(CoRegisterMessageFilter(nullptr, filter.GetAddressOf())))
        qFatal("There is no apartment");
    CoRegisterMessageFilter(filter.Get(), nullptr);
    return filter;
}

/// Of those that belong to no window.
int waitingMessages()
{
    int count = 0;
    MSG message;
    while (PeekMessageW(&message, reinterpret_cast<HWND>(qintptr(-1)), 0, 0, PM_REMOVE) != FALSE)
        ++count;
    return count;
}

} // namespace

void tst_ComApartment::init()
{
    // Otherwise there would be no filter to ask for once the apartments are gone.
    QVERIFY(SUCCEEDED(CoInitializeEx(nullptr, COINIT_APARTMENTTHREADED)));
    QVERIFY(presentFilter() == nullptr);
    waitingMessages();
}

void tst_ComApartment::cleanup()
{
    QVERIFY(presentFilter() == nullptr);
    CoUninitialize();
}

void tst_ComApartment::filterIsThereAsLongAsAnApartment_data()
{
    QTest::addColumn<bool>("firstGoesFirst");

    QTest::newRow("last made goes first") << false;
    QTest::newRow("first made goes first") << true;
}

void tst_ComApartment::filterIsThereAsLongAsAnApartment()
{
    QFETCH(const bool, firstGoesFirst);
    auto first = std::make_unique<ComApartment>();
    auto second = std::make_unique<ComApartment>();
    const ComPtr<IMessageFilter> filter = presentFilter();
    QVERIFY(filter != nullptr);
    (firstGoesFirst ? first : second).reset();
    QVERIFY(presentFilter() == filter);
    (firstGoesFirst ? second : first).reset();
    QVERIFY(presentFilter() == nullptr);
}

void tst_ComApartment::leavesNoMessages()
{
    auto apartment = std::make_unique<ComApartment>();
    Sleep(5 * DWORD(CallPatience::interval.count()));
    apartment.reset();
    QCOMPARE(waitingMessages(), 0);
}

void tst_ComApartment::messagesAreTakenWhileACallIsPending()
{
    const ComApartment apartment;
    Sleep(5 * DWORD(CallPatience::interval.count()));
    // In COM's place, when a message has come during a call.
    QCOMPARE(presentFilter()->MessagePending(nullptr, 0, PENDINGTYPE_TOPLEVEL), DWORD(PENDINGMSG_WAITDEFPROCESS));
    QVERIFY(waitingMessages() <= 1); // one may have come since
}

void tst_ComApartment::endOfTheProgramIsLeft()
{
    const ComApartment apartment;
    Sleep(2 * DWORD(CallPatience::interval.count()));
    PostQuitMessage(7);
    presentFilter()->MessagePending(nullptr, 0, PENDINGTYPE_TOPLEVEL);
    MSG message;
    QVERIFY(PeekMessageW(&message, nullptr, WM_QUIT, WM_QUIT, PM_REMOVE) != FALSE);
    QCOMPARE(message.wParam, WPARAM(7));
}

QTEST_GUILESS_MAIN(tst_ComApartment)
#include "tst_comapartment.moc"
