#include "s3errorchannel.h"

#include "s3logstream.h"

using namespace Qt::Literals::StringLiterals;

bool s3WriteToErrorChannel(const QString &line)
{
    const QString channel = u"error"_s;
    if (!s3LogStream::hasChannel(channel))
        return false;
    s3LogStream::channelStream(channel) << line << Qt::endl;
    return true;
}
