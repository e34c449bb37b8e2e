#include "s3file.h"

#include "s3string.h"

s3File::s3File(const QString &name)
{
    setFileName(name);
}

void s3File::setFileName(const QString &name)
{
    QFile::setFileName(s3String::toSlashes(name));
}

QString s3File::fileName() const
{
    return QFile::fileName();
}
