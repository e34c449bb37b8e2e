#pragma once

#include "s3commandlineparser.h"

/// The program's command line: the path of one mail parameter file. Further arguments are ignored.
class LetterliftCommandLineParser : public s3CommandLineParser
{
public:
    LetterliftCommandLineParser();

    /// As the base's; \a vxmFile receives the path, as given, of a file that exists and can be read.
    [[nodiscard]] ParseResult parse(const QStringList &arguments, QString &vxmFile, QString &errorMessage);
};
