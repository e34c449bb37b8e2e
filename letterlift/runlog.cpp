#include "runlog.h"

#include "s3dir.h"

#include <QFile>
#include <QLoggingCategory>
#include <QMessageLogger>
#include <QMutex>
#include <QTextStream>

using namespace Qt::Literals::StringLiterals;

namespace {

QFile logFile;
QtMessageHandler previousHandler = nullptr;

void appendToLogFile(QtMsgType type, const QMessageLogContext &context, const QString &message)
{
    if (!logFile.open(QIODevice::WriteOnly | QIODevice::Text | QIODevice::Append))
        return;
    {
        QTextStream stream(&logFile);
        stream.setEncoding(QStringConverter::Utf8);
        stream << qFormatLogMessage(type, context, message + u'\n');
    } // the stream flushes here, before the file closes
    logFile.close();
}

} // namespace

void openRunLog(const QString &directory, const QString &fileName)
{
    if (fileName.isEmpty())
        return;
    logFile.setFileName(s3Dir::filePath(directory, fileName));
    if (logFile.exists())
        logFile.resize(0);
    if (previousHandler == nullptr)
        previousHandler = qInstallMessageHandler(logMessageHandler);
}

void setDebugLogging(bool on)
{
    QLoggingCategory::setFilterRules(u"debug="_s + (on ? u"true"_s : u"false"_s));
}

QDebug logStream()
{
    return QMessageLogger(nullptr, 0, nullptr).debug().noquote();
}

void logList(const QStringList &list, const QString &label)
{
    for (const QString &element : list)
        logStream() << u"%1 [%2]"_s.arg(label, element);
}

void logMessageHandler(QtMsgType type, const QMessageLogContext &context, const QString &message)
{
    static QMutex mutex;

    if (message.isEmpty())
        return;
    const QMutexLocker lock(&mutex);
    appendToLogFile(type, context, message);
    if (previousHandler != nullptr)
        previousHandler(type, context, message);
}
