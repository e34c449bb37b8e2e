#include "s3typename.h"

QString s3ClassName(const std::type_info &type)
{
    return QString::fromUtf8(type.name());
}
