#pragma once

#include "error/s3exception.h"
#include "s3testflags.h"

#include <QString>

/// The text of the assertion that fails in \a function; empty if none does. Test flag 191 is set meanwhile.
template<typename Function>
[[nodiscard]] QString failedAssertion(Function &&function)
{
    s3TestFlagsGUI::instance()->insert(191);
    QString text;
    try {
        function();
    } catch (const s3Exception &exception) {
        text = QString::fromUtf8(exception.what());
    }
    s3TestFlagsGUI::instance()->remove(191);
    return text;
}

/// Whether \a text is that of an assertion with this condition, in the source file whose path without its suffix ends
/// in \a source, at this place.
[[nodiscard]] bool isAssertion(const QString &text, const QString &condition, const QString &source, int line,
                               const QString &function, const QString &message = {});
