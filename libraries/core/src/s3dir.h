#pragma once

#include <QDir>

/// A QDir whose paths and names pass through s3String::toSlashes(). Nothing here throws or shows a box. As thread-safe
/// as QDir.
class s3Dir : public QDir
{
public:
    /// Takes the path of \a other, but neither its filters nor its order.
    explicit s3Dir(const QDir &other);
    explicit s3Dir(const QString &path);
    /// The directory that \a info names, not the one that it lies in.
    explicit s3Dir(const QFileInfo &info);

    /// As QDir compares two directories with the default filters: what exists by its canonical path, all else by its
    /// absolute one. The second form is there because C++20 finds two equally good ways for two objects of this class.
    [[nodiscard]] bool operator==(const QDir &other) const;
    [[nodiscard]] bool operator==(const s3Dir &other) const;
    [[nodiscard]] bool operator!=(const QDir &other) const;
    [[nodiscard]] bool operator!=(const s3Dir &other) const;

    void setPath(const QString &path);
    [[nodiscard]] bool exists() const;
    [[nodiscard]] bool exists(const QString &name) const;
    [[nodiscard]] QString filePath(const QString &name) const;
    [[nodiscard]] QString absoluteFilePath(const QString &name) const;

    bool mkdir(const QString &name) const;
    bool mkpath(const QString &name) const;
    bool rmdir(const QString &name) const;

    /// Whether this is the working directory, by its absolute path.
    [[nodiscard]] bool isCurrent() const;

    /// Removes the directory; with \a force, also one that isn't empty, and write-protected files in it. Links in it go
    /// and what they lead to stays. True where there is nothing to remove, and for the working directory, which stays.
    /// What can be removed is gone even if the result is false.
    bool removeRecursively(bool force) const;

    /// \a name inside \a directory; \a name alone if \a directory is empty.
    [[nodiscard]] static QString filePath(const QString &directory, const QString &name);

    [[nodiscard]] static s3Dir current();
    /// Test flag 226 traces it.
    [[nodiscard]] static QString currentPath();
    /// False for an empty path. Changes the whole process, so it is for the start of a program. Test flag 226 traces
    /// it.
    static bool setCurrent(const QString &path);
};
