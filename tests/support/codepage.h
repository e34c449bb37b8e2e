#pragma once

#include <QByteArray>
#include <QString>

/// What the operating system makes of \a bytes, all of which have to be characters, in a code page of the PC ("850").
/// Null where it doesn't know the code page.
[[nodiscard]] QString fromCodePage(int codePage, const QByteArray &bytes);
