#include "automation/automation.h"
#include "letterliftcommandlineparser.h"
#include "mailrun.h"
#include "runlog.h"
#include "s3basicbox.h"
#include "s3dictionaries.h"
#include "s3fileinfo.h"
#include "s3language.h"

#include <QApplication>

using namespace Qt::Literals::StringLiterals;

int main(int argc, char *argv[])
{
    const QApplication application(argc, argv);
    QGuiApplication::setWindowIcon(s3FileInfo::applicationIcon());

    QString errorText;
    if (!openDictionaries(errorText)) {
        if (!errorText.isEmpty())
            s3BasicBox::critical(errorText);
        return -1;
    }
    setLanguage(u"A"_s, u""_s);

    LetterliftCommandLineParser parser;
    QString vxmFile;
    QString errorMessage;
    const ParseResult result = parser.parse(QCoreApplication::arguments(), vxmFile, errorMessage);
    if (result != ParseOk)
        return parser.showUsage(result, errorMessage);

    openRunLog(s3FileInfo(vxmFile).path(), u"letterlift.log"_s);
    // Only the simulated Outlook can fail here; a real one that is missing shows in the run.
    if (!prepareAutomation(errorMessage)) {
        s3BasicBox::critical(errorMessage);
        return -1;
    }
    MailRun mailRun(vxmFile);
    return mailRun.run();
}
