#include "catalogues.h"
#include "checks.h"
#include "dictionaryfile.h"

#include <QCommandLineParser>
#include <QCoreApplication>
#include <QDir>
#include <QFileInfo>
#include <QSaveFile>

#include <cstdio>

using namespace Qt::Literals::StringLiterals;

namespace {

enum ExitStatus { Done = 0, Refused = 1, WrongUse = 2 };

constexpr auto usage = R"(Makes dictionary files from catalogues, and catalogues from dictionary files.

  s3dictc compile [--lenient] FOLDER FILE   makes the file from the folder's catalogues
  s3dictc dump [--by-source] FILE FOLDER    makes the folder with the catalogues of the file
  s3dictc check FOLDER...                   tells all that is wrong with the catalogues
  s3dictc stats FOLDER...                   counts the texts of each language

Exit status: 0 if all is well, 1 if something is refused or wrong, 2 if the command line is.)";

void print(std::FILE *stream, const QString &text)
{
    std::fputs((text + u'\n').toUtf8().constData(), stream);
}

int refuse(const QString &reason)
{
    print(stderr, u"s3dictc: "_s + reason);
    return Refused;
}

/// With all defects on standard error.
Dictionary readAndCheck(const QString &folder, Defects &defects)
{
    Dictionary dictionary = readCatalogues(folder, defects);
    checkTexts(dictionary, QFileInfo(QDir(folder).absolutePath()).fileName(), defects);
    for (const Defect &defect : std::as_const(defects))
        print(stderr, describe(defect));
    return dictionary;
}

/// The status, unless what has been printed for the user got lost.
int flushed(int status)
{
    if (std::fflush(stdout) == 0 && std::ferror(stdout) == 0)
        return status;
    return refuse(u"Standard output can't be written."_s);
}

int compile(const QString &folder, const QString &path, bool lenient)
{
    Defects defects;
    const Dictionary dictionary = readAndCheck(folder, defects);
    if (hasFatalDefect(defects) || (!defects.isEmpty() && !lenient))
        return refuse(u"%1 isn't made, because of what is wrong with the catalogues."_s.arg(path));
    QString error;
    const std::optional<QByteArray> bytes = encodeDictionary(dictionary, error);
    if (!bytes)
        return refuse(error);
    // It writes beside the file, which it then renames.
    QSaveFile file(path);
    if (!file.open(QIODevice::WriteOnly) || file.write(*bytes) != bytes->size() || !file.commit())
        return refuse(u"%1 can't be written: %2"_s.arg(path, file.errorString()));
    return Done;
}

int dump(const QString &path, const QString &folder, bool bySource)
{
    QFile file(path);
    if (!file.open(QIODevice::ReadOnly))
        return refuse(u"%1 can't be read: %2"_s.arg(path, file.errorString()));
    const QByteArray bytes = file.readAll();
    if (file.error() != QFileDevice::NoError)
        return refuse(u"%1 can't be read: %2"_s.arg(path, file.errorString()));
    QString error;
    std::optional<Dictionary> dictionary = decodeDictionary(bytes, error);
    if (!dictionary)
        return refuse(u"%1: %2"_s.arg(path, error));
    dictionary->key = bySource ? Dictionary::BySource : Dictionary::ByNumber;
    error = writeCatalogues(*dictionary, folder);
    return error.isEmpty() ? Done : refuse(error);
}

int check(const QStringList &folders)
{
    int status = Done;
    for (const QString &folder : folders) {
        Defects defects;
        readAndCheck(folder, defects);
        if (!defects.isEmpty())
            status = Refused;
    }
    return status;
}

void printStatistics(const Dictionary &dictionary, const QString &folder)
{
    print(stdout, u"%1: %2 texts"_s.arg(folder).arg(dictionary.entries.size()));
    print(stdout, u"language          translated    shared   missing"_s);
    for (int language = 0; language < languages().size(); ++language) {
        int translated = 0;
        int shared = 0;
        int missing = 0;
        for (const auto &[number, entry] : dictionary.entries) {
            const int read = entry.languageRead(language);
            ++(read == language ? translated : (read < 0 ? missing : shared));
        }
        const Language &named = languages().at(language);
        print(stdout, u"%1 %2 %3 %4 %5"_s.arg(named.letter)
                          .arg(named.name, -14)
                          .arg(translated, 11)
                          .arg(shared, 9)
                          .arg(missing, 9));
    }
}

int statistics(const QStringList &folders)
{
    int status = Done;
    for (const QString &folder : folders) {
        Defects defects;
        const Dictionary dictionary = readAndCheck(folder, defects);
        if (hasFatalDefect(defects))
            status = Refused;
        else
            printStatistics(dictionary, folder);
    }
    return status;
}

int perform(const QStringList &arguments, bool lenient, bool bySource)
{
    const QString command = arguments.value(0);
    const QStringList paths = arguments.mid(1);
    if (command == u"compile"_s && paths.size() == 2 && !bySource)
        return compile(paths.at(0), paths.at(1), lenient);
    if (command == u"dump"_s && paths.size() == 2 && !lenient)
        return dump(paths.at(0), paths.at(1), bySource);
    if (command == u"check"_s && !paths.isEmpty() && !lenient && !bySource)
        return check(paths);
    if (command == u"stats"_s && !paths.isEmpty() && !lenient && !bySource)
        return statistics(paths);
    print(stderr, QString::fromUtf8(usage));
    return WrongUse;
}

} // namespace

int main(int argc, char *argv[])
{
    const QCoreApplication application(argc, argv);
    const QCommandLineOption lenient(u"lenient"_s);
    const QCommandLineOption bySource(u"by-source"_s);
    const QCommandLineOption help(QStringList{u"h"_s, u"help"_s});
    QCommandLineParser parser;
    parser.addOptions({lenient, bySource, help});
    if (!parser.parse(QCoreApplication::arguments())) {
        print(stderr, u"s3dictc: "_s + parser.errorText());
        return WrongUse;
    }
    if (parser.isSet(help)) {
        print(stdout, QString::fromUtf8(usage));
        return flushed(Done);
    }
    return flushed(perform(parser.positionalArguments(), parser.isSet(lenient), parser.isSet(bySource)));
}
