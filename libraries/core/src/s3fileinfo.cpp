#include "s3fileinfo.h"

#include "s3dir.h"
#include "s3fileiconengine.h"
#include "s3string.h"

#include <QCoreApplication>

s3FileInfo::s3FileInfo(const QString &path)
    : QFileInfo(s3String::toSlashes(path))
{
}

s3FileInfo::s3FileInfo(const QDir &directory, const QString &name)
    : QFileInfo(s3Dir(directory), s3String::toSlashes(name))
{
}

s3FileInfo::s3FileInfo(const QFileInfo &other)
    : s3FileInfo(other.filePath())
{
}

bool s3FileInfo::operator==(const QFileInfo &other) const
{
    return s3Dir(filePath()) == s3Dir(other.filePath());
}

bool s3FileInfo::operator==(const s3FileInfo &other) const
{
    return *this == static_cast<const QFileInfo &>(other);
}

bool s3FileInfo::operator!=(const QFileInfo &other) const
{
    return !operator==(other);
}

bool s3FileInfo::operator!=(const s3FileInfo &other) const
{
    return !operator==(other);
}

void s3FileInfo::setFile(const QString &path)
{
    QFileInfo::setFile(s3String::toSlashes(path));
}

void s3FileInfo::setFile(const QDir &directory, const QString &name)
{
    QFileInfo::setFile(s3Dir(directory), s3String::toSlashes(name));
}

QString s3FileInfo::fileName() const
{
    return QFileInfo::fileName();
}

bool s3FileInfo::exists(const QString &path)
{
    return QFileInfo::exists(s3String::toSlashes(path));
}

QString s3FileInfo::withSuffix(const QString &suffix) const
{
    const QString path = s3Dir::filePath(this->path(), completeBaseName());
    return suffix.isEmpty() ? path : path + u'.' + suffix;
}

QIcon s3FileInfo::icon() const
{
    return exists() && isFile() ? QIcon(new s3FileIconEngine(filePath())) : QIcon();
}

QIcon s3FileInfo::applicationIcon()
{
    return s3FileInfo(QCoreApplication::applicationFilePath()).icon();
}
