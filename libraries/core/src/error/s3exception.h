#pragma once

#include <QByteArray>
#include <QString>

#include <exception>

/// What a failed assertion throws where test flag 191 keeps it from ending the process.
class s3Exception : public std::exception
{
public:
    explicit s3Exception(const QString &message);
    s3Exception(const s3Exception &other) = default;
    s3Exception(s3Exception &&other) = default;
    s3Exception &operator=(const s3Exception &other) = default;
    s3Exception &operator=(s3Exception &&other) = default;
    ~s3Exception() override;

    /// The message as UTF-8, valid as long as this object.
    [[nodiscard]] const char *what() const noexcept override;

private:
    QByteArray m_message;
};
