#include "s3errorchannel.h"

#include "s3logstream.h"

#include <QMutex>

using namespace Qt::Literals::StringLiterals;

namespace {

// In milliseconds; the thread that is writing may be one that has come to grief in the middle.
constexpr int patience = 3000;

constinit QMutex writing;

} // namespace

bool s3WriteToErrorChannel(const QString &line)
{
    const QString channel = u"error"_s;
    if (!s3LogStream::hasChannel(channel))
        return false;
    if (!writing.tryLock(patience))
        return false;
    s3LogStream::channelStream(channel) << line << Qt::endl;
    writing.unlock();
    return true;
}
