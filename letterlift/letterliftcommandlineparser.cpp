#include "letterliftcommandlineparser.h"

#include "s3fileinfo.h"

using namespace Qt::Literals::StringLiterals;

LetterliftCommandLineParser::LetterliftCommandLineParser()
{
    addPositionalArgument(u"vxmFile"_s, u"Path to the vxm file"_s, u""_s);
}

ParseResult LetterliftCommandLineParser::parse(const QStringList &arguments, QString &vxmFile, QString &errorMessage)
{
    const ParseResult result = s3CommandLineParser::parse(arguments, errorMessage);
    if (result != ParseOk)
        return result;

    const QString path = positionalArguments().value(0);
    if (path.isEmpty())
        return ParseError;
    const s3FileInfo info(path);
    if (!info.isFile()) {
        errorMessage = path + u": File does not exist"_s;
        return ParseError;
    }
    if (!info.isReadable()) {
        errorMessage = path + u": Can't read file"_s;
        return ParseError;
    }
    vxmFile = path;
    return ParseOk;
}
