#pragma once

#include <QDir>

/// A QDir whose paths and names pass through s3String::toSlashes().
class s3Dir : public QDir
{
public:
    explicit s3Dir(const QString &path);

    [[nodiscard]] QString filePath(const QString &name) const;
    [[nodiscard]] QString absoluteFilePath(const QString &name) const;

    /// \a name inside \a directory; \a name alone if \a directory is empty.
    [[nodiscard]] static QString filePath(const QString &directory, const QString &name);
};
