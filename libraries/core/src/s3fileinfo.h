#pragma once

#include <QFileInfo>
#include <QIcon>

/// A QFileInfo whose path passes through s3String::toSlashes().
class s3FileInfo : public QFileInfo
{
public:
    explicit s3FileInfo(const QString &path);

    /// True for a directory as well.
    [[nodiscard]] static bool exists(const QString &path);

    /// The icon that the desktop shows for this file; a null icon if there is no such file. The desktop is asked when
    /// the icon is painted. GUI thread.
    [[nodiscard]] QIcon icon() const;
};
