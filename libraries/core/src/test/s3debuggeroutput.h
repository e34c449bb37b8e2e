#pragma once

#include <QString>

/// Gives \a text, which brings its own line feed, to where a developer sees it while the program runs: on Windows the
/// debugger (OutputDebugStringW), elsewhere standard error in UTF-8, since there is no such thing. From any thread.
void s3OutputDebugString(const QString &text);
