#include "catalogueformat.h"
#include "catalogues.h"
#include "pofile.h"

#include <QDir>
#include <QFileInfo>
#include <QTemporaryDir>

#include <filesystem>
#include <system_error>

using namespace Qt::Literals::StringLiterals;

namespace {

QString context(int number)
{
    return u"#%1"_s.arg(number);
}

QString commonHeader(const QString &name)
{
    // No date: the same dictionary gives the same catalogues.
    return u"Project-Id-Version: %1\nMIME-Version: 1.0\nContent-Type: text/plain; charset=UTF-8\n"
           "Content-Transfer-Encoding: 8bit\n"_s.arg(name);
}

PoFile templateOf(const Dictionary &dictionary, const QString &name)
{
    PoFile file;
    file.header = commonHeader(name) + keyField + u": "_s +
                  (dictionary.key == Dictionary::BySource ? keyIsSource : keyIsNumber) + u'\n';
    const int lastNumber = dictionary.entries.empty() ? 0 : dictionary.entries.rbegin()->first;
    if (dictionary.textCount > lastNumber)
        file.header += u"%1: %2\n"_s.arg(textCountField).arg(dictionary.textCount);
    for (const auto &[number, entry] : dictionary.entries) {
        PoMessage message;
        message.context = context(number);
        message.id = entry.source;
        if (!entry.symbol.isEmpty())
            message.extractedComments = symbolMark + entry.symbol + u'\n';
        file.messages.append(message);
    }
    return file;
}

PoFile catalogueOf(const Dictionary &dictionary, const PoFile &pot, int language, const QString &name)
{
    PoFile file = pot;
    file.header = commonHeader(name) + u"%1: %2\n"_s.arg(languageField, languages().at(language).name);
    qsizetype index = 0;
    for (const auto &[number, entry] : dictionary.entries) {
        PoMessage &message = file.messages[index++];
        const Cell &cell = entry.cells.at(language);
        message.text = cell.text;
        if (cell.kind == Cell::AsGerman)
            message.comments = asGermanMark + u'\n';
        else if (cell.kind == Cell::Own && cell.text.isEmpty())
            message.comments = emptyMark + u'\n';
    }
    return file;
}

QString whyNotMade(const QString &folder, const QString &reason)
{
    return u"%1 can't be made: %2"_s.arg(folder, reason);
}

QString whyNotMade(const QString &folder, const std::error_code &failure)
{
    return whyNotMade(folder, QString::fromLocal8Bit(failure.message()));
}

QString writeAll(const Dictionary &dictionary, const QDir &folder, const QString &name)
{
    const PoFile pot = templateOf(dictionary, name);
    if (const QString error = writePo(folder.filePath(templateName), pot); !error.isEmpty())
        return error;
    for (int language = 0; language < languages().size(); ++language) {
        const PoFile file = catalogueOf(dictionary, pot, language, name);
        const QString path = folder.filePath(languages().at(language).name + u".po"_s);
        if (const QString error = writePo(path, file); !error.isEmpty())
            return error;
    }
    return {};
}

} // namespace

QString writeCatalogues(const Dictionary &dictionary, const QString &folder)
{
    // With a slash at its end it would name a file without a name.
    const QString path = QDir::cleanPath(QFileInfo(folder).absoluteFilePath());
    const QFileInfo target(path);
    if (target.exists() && (!target.isDir() || !QDir(path).isEmpty()))
        return u"%1 is there already."_s.arg(folder);
    QTemporaryDir work(path + u".XXXXXX"_s);
    if (!work.isValid())
        return whyNotMade(folder, work.errorString());
    // Itself is for nobody else to read; what is made in it has the rights that any new folder has.
    const QDir made(work.filePath(u"made"_s));
    std::error_code failure;
    std::filesystem::create_directory(made.filesystemPath(), failure);
    if (failure)
        return whyNotMade(folder, failure);
    if (const QString error = writeAll(dictionary, made, target.fileName()); !error.isEmpty())
        return error;
    QDir().rmdir(path);
    std::filesystem::rename(made.filesystemPath(), target.filesystemFilePath(), failure);
    return failure ? whyNotMade(folder, failure) : QString();
}
