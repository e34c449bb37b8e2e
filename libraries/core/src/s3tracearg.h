#pragma once

#include <QString>
#include <QVariant>

/// An argument as it looks in a trace line: " name=value", with texts in double quotation marks, in which line ends and
/// tabs are "\n" and "\t", and single characters in single ones. A type that QVariant can't turn into text has an empty
/// value. Any thread.
[[nodiscard]] QString s3TraceArg(const QString &name, const QVariant &value);

/// " name=0x" and 8 digits, or 16 where 32 bits don't hold the address; " name=nullptr" for none. Beware: a literal 0
/// and a string literal are pointers too.
[[nodiscard]] QString s3TraceArg(const QString &name, const void *pointer);
