#include "s3exception.h"

s3Exception::s3Exception(const QString &message)
    : m_message(message.toUtf8())
{
}

s3Exception::~s3Exception() = default;

const char *s3Exception::what() const noexcept
{
    return m_message.constData();
}
