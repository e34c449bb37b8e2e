#pragma once

#include <QFileInfo>
#include <QIcon>

class QDir;

/// A QFileInfo whose path passes through s3String::toSlashes().
class s3FileInfo : public QFileInfo
{
public:
    explicit s3FileInfo(const QString &path);
    s3FileInfo(const QDir &directory, const QString &name);
    /// Takes the path of \a other and nothing that it has found out about the file.
    explicit s3FileInfo(const QFileInfo &other);

    /// Whether both name the same file, as two s3Dir with their paths would compare: "..", double slashes and, where
    /// the system doesn't distinguish it, case don't count, while links to files do. The second form is there because
    /// C++20 finds two equally good ways for two objects of this class.
    [[nodiscard]] bool operator==(const QFileInfo &other) const;
    [[nodiscard]] bool operator==(const s3FileInfo &other) const;
    [[nodiscard]] bool operator!=(const QFileInfo &other) const;
    [[nodiscard]] bool operator!=(const s3FileInfo &other) const;

    void setFile(const QString &path);
    void setFile(const QDir &directory, const QString &name);
    [[nodiscard]] QString fileName() const;

    using QFileInfo::exists;
    /// True for a directory as well.
    [[nodiscard]] static bool exists(const QString &path);

    /// The path with \a suffix in place of the last one; without a suffix if \a suffix is empty.
    [[nodiscard]] QString withSuffix(const QString &suffix) const;

    /// The icon that the desktop shows for this file; a null icon if there is no such file. The desktop is asked when
    /// the icon is painted. GUI thread.
    [[nodiscard]] QIcon icon() const;

    /// icon() of the running program. GUI thread.
    [[nodiscard]] static QIcon applicationIcon();
};
