#pragma once

#include <QByteArray>

/// Writes \a bytes to standard error, if that is open, and gives up when nobody has taken any of them for three seconds
/// or nobody is there to read them. The process isn't sent a SIGPIPE. Any thread.
void s3WriteToStandardError(const QByteArray &bytes);
