#pragma once

#include <QCommandLineParser>

/// What came out of parsing a command line. Callers hand the value on unchanged. A plain integer: parsers may have
/// results of their own, which showUsage() treats as a wish for help.
enum ParseResult : int {
    ParseOk = 0,           ///< go on
    ParseError = 1,        ///< refused; the error message, which may be empty, tells why
    ParseHelpRequested = 2 ///< accepted, and help is asked for
};

/// Base of the programs' command-line parsers: a QCommandLineParser with the help option, which expands environment
/// references in every argument, and speaks through message boxes, since these programs have no console.
/// GUI thread, with a QApplication.
class s3CommandLineParser : public QCommandLineParser
{
public:
    s3CommandLineParser();
    virtual ~s3CommandLineParser();

    /// The text that the help box shows.
    [[nodiscard]] virtual QString helpText() const;

    /// \a arguments begins with the program's name. \a errorMessage is Qt's own text after ParseError, otherwise empty.
    [[nodiscard]] ParseResult parse(const QStringList &arguments, QString &errorMessage);

    /// The help text as HTML below \a heading, which may hold markup and is left out if it is empty.
    [[nodiscard]] QString helpHtml(const QString &heading) const;

    /// Shows the help in a box, below \a errorMessage, and returns the exit status for main().
    [[nodiscard]] int showUsage(ParseResult result, const QString &errorMessage);

private:
    Q_DISABLE_COPY_MOVE(s3CommandLineParser)
};
