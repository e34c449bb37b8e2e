#include "s3dir.h"

#include "s3string.h"

s3Dir::s3Dir(const QString &path)
    : QDir(s3String::toSlashes(path))
{
}

QString s3Dir::filePath(const QString &name) const
{
    return QDir::filePath(s3String::toSlashes(name));
}

QString s3Dir::absoluteFilePath(const QString &name) const
{
    return QDir::absoluteFilePath(s3String::toSlashes(name));
}

QString s3Dir::filePath(const QString &directory, const QString &name)
{
    return directory.isEmpty() ? s3String::toSlashes(name) : s3Dir(directory).filePath(name);
}
