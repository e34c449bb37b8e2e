#include "s3commandlineparser.h"

#include "s3basicbox.h"
#include "s3string.h"

#include <QRegularExpression>

using namespace Qt::Literals::StringLiterals;

s3CommandLineParser::s3CommandLineParser()
{
    addHelpOption();
}

s3CommandLineParser::~s3CommandLineParser() = default;

QString s3CommandLineParser::helpText() const
{
    // Qt's texts stay English here: no translator is installed.
    static const QRegularExpression helpAllLine(u" *--help-all  *Displays help including Qt specific options\\.\n"_s);

    // The same in later versions of Qt.
    static const QRegularExpression laterHelpAllLine(
        u" *--help-all  *Displays help, including generic Qt options\\.\n"_s);

    QString text = QCommandLineParser::helpText();
    text.remove(helpAllLine);
    text.remove(laterHelpAllLine);
    return text;
}

ParseResult s3CommandLineParser::parse(const QStringList &arguments, QString &errorMessage)
{
    errorMessage.clear();

    QStringList expanded = arguments;
    for (QString &argument : expanded)
        s3String::expandEnvironmentStrings(argument);

    if (!QCommandLineParser::parse(expanded)) {
        errorMessage = errorText();
        return ParseError;
    }
    return isSet(u"help"_s) ? ParseHelpRequested : ParseOk;
}

QString s3CommandLineParser::helpHtml(const QString &heading) const
{
    // The heading isn't escaped and the head element isn't closed: both are wanted.
    QString html = u"<html><head><body>"_s;
    if (!heading.isEmpty())
        html += u"<h2>"_s + heading + u"</h2>"_s;
    html += u"<pre>"_s + helpText().toHtmlEscaped() + u"</pre>"_s;
    html += u"</body></html>"_s;
    return html;
}

int s3CommandLineParser::showUsage(ParseResult result, const QString &errorMessage)
{
    const QString text = helpHtml(errorMessage);
    if (result == ParseError) {
        s3BasicBox::warning(text);
        return 1;
    }
    s3BasicBox::information(text);
    return 0;
}
