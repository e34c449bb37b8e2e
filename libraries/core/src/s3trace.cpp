#include "s3trace.h"

void s3WriteTrace(const QString &line)
{
    Q_UNUSED(line)
}
