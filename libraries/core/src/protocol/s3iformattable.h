#pragma once

#include <QString>

/// What can tell the event protocol something of itself.
class s3IFormattable
{
public:
    virtual ~s3IFormattable() = default;

    /// The arguments in readable form; empty if there is nothing to tell.
    [[nodiscard]] virtual QString formatted() const = 0;

    s3IFormattable(const s3IFormattable &) = delete;
    s3IFormattable(s3IFormattable &&) = delete;
    s3IFormattable &operator=(const s3IFormattable &) = delete;
    s3IFormattable &operator=(s3IFormattable &&) = delete;

protected:
    s3IFormattable() = default;
};
