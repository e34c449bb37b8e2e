#include "s3dir.h"

#include "s3file.h"
#include "s3string.h"
#include "s3trace.h"
#include "s3tracearg.h"

using namespace Qt::Literals::StringLiterals;

namespace {

// A link to a directory goes by rmdir on Windows and as a file elsewhere, and s3File takes one to nothing for missing.
void removeLink(const QFileInfo &link)
{
    const QString path = link.absoluteFilePath();
    if (!QDir().rmdir(path))
        QFile::remove(path);
}

// Where a name may hold a backslash, the wrappers would take it for a path, which can lead out of the directory.
void removeByPlainName(const QFileInfo &entry)
{
    if (entry.isDir() && !entry.isSymLink())
        QDir(entry.filePath()).removeRecursively();
    else
        QFile::remove(entry.filePath());
}

void removeEntry(const QFileInfo &entry)
{
    if (entry.fileName().contains(u'\\')) {
        removeByPlainName(entry);
        return;
    }
    const bool isLink = entry.isSymLink() || entry.isJunction();
    if (isLink && !entry.isFile())
        removeLink(entry);
    else if (entry.isDir())
        s3Dir(entry).removeRecursively(true);
    else
        s3File(entry).remove(true);
}

} // namespace

s3Dir::s3Dir(const QDir &other)
{
    setPath(other.path());
}

s3Dir::s3Dir(const QString &path)
    : QDir(s3String::toSlashes(path))
{
}

s3Dir::s3Dir(const QFileInfo &info)
    : s3Dir(info.filePath())
{
}

bool s3Dir::operator==(const QDir &other) const
{
    return QDir::operator==(s3Dir(other));
}

bool s3Dir::operator==(const s3Dir &other) const
{
    return *this == static_cast<const QDir &>(other);
}

bool s3Dir::operator!=(const QDir &other) const
{
    return !operator==(other);
}

bool s3Dir::operator!=(const s3Dir &other) const
{
    return !operator==(other);
}

void s3Dir::setPath(const QString &path)
{
    QDir::setPath(s3String::toSlashes(path));
}

bool s3Dir::exists() const
{
    return QDir::exists();
}

bool s3Dir::exists(const QString &name) const
{
    return QDir::exists(s3String::toSlashes(name));
}

QString s3Dir::filePath(const QString &name) const
{
    return QDir::filePath(s3String::toSlashes(name));
}

QString s3Dir::absoluteFilePath(const QString &name) const
{
    return QDir::absoluteFilePath(s3String::toSlashes(name));
}

bool s3Dir::mkdir(const QString &name) const
{
    return QDir::mkdir(s3String::toSlashes(name));
}

bool s3Dir::mkpath(const QString &name) const
{
    return QDir::mkpath(s3String::toSlashes(name));
}

bool s3Dir::rmdir(const QString &name) const
{
    return QDir::rmdir(s3String::toSlashes(name));
}

bool s3Dir::isCurrent() const
{
    return absolutePath() == currentPath();
}

bool s3Dir::removeRecursively(bool force) const
{
    if (isCurrent() || !exists())
        return true;
    // An empty directory costs this one call.
    if (const bool result = rmdir(absolutePath()); result || !force)
        return result;
    const QFileInfoList entries =
        entryInfoList(QStringList(), Hidden | AllDirs | Files | System | NoDotAndDotDot, NoSort);
    for (const QFileInfo &entry : entries)
        removeEntry(entry);
    return rmdir(absolutePath());
}

QString s3Dir::filePath(const QString &directory, const QString &name)
{
    return directory.isEmpty() ? s3String::toSlashes(name) : s3Dir(directory).filePath(name);
}

s3Dir s3Dir::current()
{
    return s3Dir(currentPath());
}

QString s3Dir::currentPath()
{
    const QString result = QDir::currentPath();
    S3_TRACE(226, u"s3Dir::currentPath()"_s + s3TraceArg(u"result"_s, result));
    return result;
}

bool s3Dir::setCurrent(const QString &path)
{
    const bool result = !path.isEmpty() && QDir::setCurrent(s3String::toSlashes(path));
    S3_TRACE(226, u"s3Dir::setCurrent()"_s + s3TraceArg(u"path"_s, path) + s3TraceArg(u"result"_s, result));
    return result;
}
