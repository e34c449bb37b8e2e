#include "s3fileinfo.h"

#include "s3string.h"

#include <QFileIconProvider>

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
    return QFileInfo::exists() && isFile() ? QFileIconProvider().icon(*this) : QIcon();
}
