#pragma once

#include <QMessageBox>

/// Boxes that are shown without Qt's widgets, without an event loop and without a font of this process: what is left
/// when the process may be damaged. The values are those of the Windows call MessageBoxW on each system. From any
/// thread. On Linux it relies on memory that can be allocated and on posix_spawn(), so it isn't async-signal-safe: in
/// the handler of a signal that came while memory was being allocated it may hang. It leaves errno as it was.
namespace s3BasicBoxWin {

// The MB_ values of winuser.h, and the results of the call.
constexpr quint32 flagOk = 0x0;
constexpr quint32 flagOkCancel = 0x1;
constexpr quint32 flagYesNoCancel = 0x3;
constexpr quint32 flagYesNo = 0x4;
constexpr quint32 flagIconError = 0x10;
constexpr quint32 flagIconQuestion = 0x20;
constexpr quint32 flagIconWarning = 0x30;
constexpr quint32 flagIconInformation = 0x40;
constexpr quint32 flagDefaultButton2 = 0x100;
constexpr quint32 flagDefaultButton3 = 0x200;
constexpr quint32 flagTopmost = 0x40000;
constexpr quint32 flagRightToLeft = 0x100000;
constexpr quint32 maskButtons = 0xF;
constexpr quint32 maskIcon = 0xF0;
constexpr quint32 maskDefaultButton = 0xF00;
constexpr int resultOk = 1;
constexpr int resultCancel = 2;
constexpr int resultYes = 6;
constexpr int resultNo = 7;

/// Shows a box without an owner and waits until it is closed. NoButton if it couldn't be shown, or was closed in a way
/// that result2Button() doesn't know.
[[nodiscard]] QMessageBox::StandardButton show(QMessageBox::Icon type, const QString &title, const QString &text,
                                               QMessageBox::StandardButtons buttons,
                                               QMessageBox::StandardButton defaultButton);

/// The flags of the box. A mask of buttons that the system doesn't have gives one with Ok alone, a type outside the
/// table one without an icon. Test flag 334 traces this and the next one.
[[nodiscard]] quint32 boxType(QMessageBox::Icon type, QMessageBox::StandardButtons buttons,
                              QMessageBox::StandardButton defaultButton);

[[nodiscard]] QMessageBox::StandardButton result2Button(int result);

/// The box itself, with a file a platform: MessageBoxW on Windows. Elsewhere a program of the desktop's shows it, as an
/// ordinary window and not above all others, with HTML made readable; on Windows \a text is shown as it stands. Where
/// there is no display, or none of the programs, or the program's answer is lost, \a text goes to standard error, and
/// so does one that is too long for a box, after it. Returns one of the results above, or 0 if there was no box or its
/// answer is lost.
[[nodiscard]] int messageBox(const QString &title, const QString &text, quint32 flags);

} // namespace s3BasicBoxWin
