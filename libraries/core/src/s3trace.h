#pragma once

#include "s3testflags.h"

#include <QString>

/// A whole line for the test output, from any thread.
void s3WriteTrace(const QString &line);

/// The one way to write a trace: a flag, and what the line consists of. Nothing of it is rendered, not even the
/// arguments of the call are, unless the flag is set.
///
///     S3_TRACE(226, u"s3Dir::setCurrent()"_s + s3TraceArg(u"path"_s, path) + s3TraceArg(u"result"_s, result));
#define S3_TRACE(flag, line)                                                                                           \
    do {                                                                                                               \
        if (s3HasTestFlag(flag)) [[unlikely]]                                                                          \
            s3WriteTrace(line);                                                                                        \
    } while (false)

/// The same for a line that either of two flags asks for.
#define S3_TRACE_EITHER(flag, otherFlag, line)                                                                         \
    do {                                                                                                               \
        if (s3HasTestFlag(flag) || s3HasTestFlag(otherFlag)) [[unlikely]]                                              \
            s3WriteTrace(line);                                                                                        \
    } while (false)
