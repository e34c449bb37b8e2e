#include "s3fileinfo.h"

#include "s3fileiconengine.h"
#include "s3string.h"

s3FileInfo::s3FileInfo(const QString &path)
    : QFileInfo(s3String::toSlashes(path))
{
}

bool s3FileInfo::exists(const QString &path)
{
    return QFileInfo::exists(s3String::toSlashes(path));
}

QIcon s3FileInfo::icon() const
{
    return QFileInfo::exists() && isFile() ? QIcon(new s3FileIconEngine(filePath())) : QIcon();
}
