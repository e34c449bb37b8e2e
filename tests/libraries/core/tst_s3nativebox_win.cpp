// The box without Qt, as the system shows it, closed by a key press as a person would.

#include "s3basicbox.h"
#include "s3basicboxwin.h"
#include "s3testflags.h"

#include <QTest>

#include <array>
#include <chrono>
#include <future>

#include <qt_windows.h>

using namespace Qt::Literals::StringLiterals;
using namespace std::chrono_literals;

static_assert(s3BasicBoxWin::flagOk == MB_OK);
static_assert(s3BasicBoxWin::flagOkCancel == MB_OKCANCEL);
static_assert(s3BasicBoxWin::flagYesNoCancel == MB_YESNOCANCEL);
static_assert(s3BasicBoxWin::flagYesNo == MB_YESNO);
static_assert(s3BasicBoxWin::flagIconError == MB_ICONERROR);
static_assert(s3BasicBoxWin::flagIconQuestion == MB_ICONQUESTION);
static_assert(s3BasicBoxWin::flagIconWarning == MB_ICONWARNING);
static_assert(s3BasicBoxWin::flagIconInformation == MB_ICONINFORMATION);
static_assert(s3BasicBoxWin::flagDefaultButton2 == MB_DEFBUTTON2);
static_assert(s3BasicBoxWin::flagDefaultButton3 == MB_DEFBUTTON3);
static_assert(s3BasicBoxWin::flagTopmost == MB_TOPMOST);
static_assert(s3BasicBoxWin::flagRightToLeft == MB_RTLREADING);
static_assert(s3BasicBoxWin::maskButtons == MB_TYPEMASK);
static_assert(s3BasicBoxWin::maskIcon == MB_ICONMASK);
static_assert(s3BasicBoxWin::maskDefaultButton == MB_DEFMASK);
static_assert(s3BasicBoxWin::resultOk == IDOK);
static_assert(s3BasicBoxWin::resultCancel == IDCANCEL);
static_assert(s3BasicBoxWin::resultYes == IDYES);
static_assert(s3BasicBoxWin::resultNo == IDNO);

namespace {

const QString title = u"A box of the system's own"_s;

HWND findBox()
{
    return FindWindowW(L"#32770", reinterpret_cast<const wchar_t *>(title.utf16()));
}

QString textOf(HWND box)
{
    // The number that the system gives the text.
    constexpr int textId = 0xFFFF;
    std::array<wchar_t, 200> buffer = {};
    GetDlgItemTextW(box, textId, buffer.data(), int(buffer.size()));
    return QString::fromWCharArray(buffer.data());
}

void press(HWND box, WORD key)
{
    SetForegroundWindow(box);
    std::array<INPUT, 2> inputs = {};
    for (INPUT &input : inputs) {
        input.type = INPUT_KEYBOARD;
        input.ki.wVk = key;
    }
    inputs[1].ki.dwFlags = KEYEVENTF_KEYUP;
    SendInput(UINT(inputs.size()), inputs.data(), sizeof(INPUT));
}

bool isWine()
{
    return GetProcAddress(GetModuleHandleW(L"ntdll.dll"), "wine_get_version") != nullptr;
}

} // namespace

class tst_s3NativeBox : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void cleanup() { s3TestFlagsGUI::instance()->clear(); }
    void realBox_data();
    void realBox();
};

void tst_s3NativeBox::realBox_data()
{
    QTest::addColumn<QMessageBox::Icon>("type");
    QTest::addColumn<QMessageBox::StandardButtons>("buttons");
    QTest::addColumn<QMessageBox::StandardButton>("defaultButton");
    QTest::addColumn<quint16>("key");
    QTest::addColumn<int>("button");

    const QMessageBox::StandardButtons ok = QMessageBox::Ok;
    const QMessageBox::StandardButtons okCancel = ok | QMessageBox::Cancel;
    const QMessageBox::StandardButtons yesNoCancel = QMessageBox::Yes | QMessageBox::No | QMessageBox::Cancel;
    QTest::newRow("Ok") << QMessageBox::Critical << ok << QMessageBox::NoButton << quint16(VK_RETURN)
                        << int(QMessageBox::Ok);
    QTest::newRow("a warning") << QMessageBox::Warning << ok << QMessageBox::NoButton << quint16(VK_RETURN)
                               << int(QMessageBox::Ok);
    QTest::newRow("default Cancel") << QMessageBox::Critical << okCancel << QMessageBox::Cancel << quint16(VK_RETURN)
                                    << int(QMessageBox::Cancel);
    QTest::newRow("no default") << QMessageBox::Critical << okCancel << QMessageBox::NoButton << quint16(VK_RETURN)
                                << int(QMessageBox::Ok);
    QTest::newRow("escaped") << QMessageBox::Critical << okCancel << QMessageBox::Ok << quint16(VK_ESCAPE)
                             << int(QMessageBox::Cancel);
    QTest::newRow("default No of three") << QMessageBox::Question << yesNoCancel << QMessageBox::No
                                         << quint16(VK_RETURN) << int(QMessageBox::No);
}

void tst_s3NativeBox::realBox()
{
    QFETCH(const QMessageBox::Icon, type);
    QFETCH(const QMessageBox::StandardButtons, buttons);
    QFETCH(const QMessageBox::StandardButton, defaultButton);
    QFETCH(const quint16, key);
    // Makes a box of any type the system's own.
    s3TestFlagsGUI::instance()->insert(335);

    // On another thread: no event loop of Qt is needed, and this one is free to look.
    std::future<int> answer = std::async(std::launch::async, [&] {
        return s3BasicBox::show(type, title, u"L\u00E4st\nline"_s, buttons, defaultButton, false);
    });
    QTRY_VERIFY_WITH_TIMEOUT(findBox() != nullptr && IsWindowVisible(findBox()) != 0, 20000);
    const HWND box = findBox();
    QCOMPARE(textOf(box), u"L\u00E4st\nline"_s);
    QVERIFY(GetWindow(box, GW_OWNER) == nullptr);
    if (isWine())
        QEXPECT_FAIL("", "Wine's boxes don't heed MB_TOPMOST", Continue);
    QVERIFY((GetWindowLongPtrW(box, GWL_EXSTYLE) & WS_EX_TOPMOST) != 0);
    QVERIFY(answer.wait_for(500ms) == std::future_status::timeout);
    // A box may not take the first key, as it comes up.
    while (answer.wait_for(300ms) == std::future_status::timeout)
        press(box, key);
    QTEST(answer.get(), "button");
}

QTEST_MAIN(tst_s3NativeBox)
#include "tst_s3nativebox_win.moc"
