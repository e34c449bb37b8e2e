#pragma once

#include <QString>

/// Where every failed assertion of the core goes. \a condition, \a file and \a function are zero-ended UTF-8. From any
/// thread. With test flag 191 it throws s3Exception, otherwise it ends the process. It is declared here, where
/// everything can reach it, and defined above everything, in error/.
void assertionFailed(qint32 errorNumber, const char *condition, const QString &message, const char *file, int line,
                     const char *function);

/// An assertion with a fixed place: support knows it by its condition's text, its line and its function, so these don't
/// follow when the file changes. \a message is made only if it is needed.
///
///     S3_ASSERT_AT(receiver != nullptr, "receiver != nullptr", QString(), 67, "s3Class::function");
#define S3_ASSERT_AT(condition, text, message, line, function)                                                         \
    do {                                                                                                               \
        if (!(condition)) [[unlikely]]                                                                                 \
            assertionFailed(1111, text, message, __FILE__, line, function);                                            \
    } while (false)
