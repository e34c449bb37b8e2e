#pragma once

/// The base of all singletons of the core. It makes them deletable through it and does nothing else; the access
/// function of each class holds the instance, which is made on first use and stays until the process ends.
template<typename T>
class s3Singleton
{
public:
    virtual ~s3Singleton() = default;

    s3Singleton(const s3Singleton &) = delete;
    s3Singleton(s3Singleton &&) = delete;
    s3Singleton &operator=(const s3Singleton &) = delete;
    s3Singleton &operator=(s3Singleton &&) = delete;

protected:
    s3Singleton() = default;
};
