#include "s3file.h"

#include "s3dictionaries.h"
#include "s3fileinfo.h"
#include "s3keytext.h"
#include "s3string.h"
#include "s3trace.h"

#include <QHash>

using namespace Qt::Literals::StringLiterals;

namespace {

// What Qt calls the user's rights is what this process may do, which for a privileged one is more than the file says:
// whoever sets permissions that have been read would grant it to the owner.
constexpr QFileDevice::Permissions rightsOfThisProcess =
    QFileDevice::ReadUser | QFileDevice::WriteUser | QFileDevice::ExeUser;

QString errorFormat(QFileDevice::FileError code)
{
    static const QHash<int, QString> formats{
        {QFileDevice::NoError, u"%1"_s},
        {QFileDevice::ReadError, s3KeyText(u"Ein-/Ausgabefehler beim Lesen der Datei %1."_s)},
        {QFileDevice::WriteError, s3KeyText(u"Ein-/Ausgabefehler beim Schreiben der Datei %1."_s)},
        {QFileDevice::FatalError, s3KeyText(u"Fataler Fehler beim Zugriff auf die Datei %1."_s)},
        {QFileDevice::ResourceError, s3KeyText(u"Fehlende Systemressourcen beim Zugriff auf die Datei %1."_s)},
        {QFileDevice::OpenError, s3KeyText(u"Datei %1 kann nicht geöffnet werden."_s)},
        {QFileDevice::AbortError, s3KeyText(u"Zugriff auf die Datei %1 abgebrochen."_s)},
        {QFileDevice::TimeOutError, s3KeyText(u"Zeitablauf beim Zugriff auf die Datei %1."_s)},
        {QFileDevice::UnspecifiedError, s3KeyText(u"Unbekannter Fehler beim Zugriff auf die Datei %1."_s)},
        {QFileDevice::RemoveError, s3KeyText(u"Datei %1 kann nicht gelöscht werden."_s)},
        {QFileDevice::RenameError, s3KeyText(u"Datei %1 kann nicht umbenannt werden."_s)},
        {QFileDevice::PositionError, s3KeyText(u"Positionieren innerhalb der Datei %1 gescheitert."_s)},
        {QFileDevice::ResizeError, s3KeyText(u"Die Größe der Datei %1 kann nicht geändert werden."_s)},
        {QFileDevice::PermissionsError, s3KeyText(u"Zugriffsrechte fehlen für die Datei %1."_s)},
        {QFileDevice::CopyError, s3KeyText(u"Datei %1 kann nicht kopiert werden."_s)},
    };
    const QString format = formats.value(code);
    return code == QFileDevice::NoError || format.isEmpty() ? format : translate(format);
}

// Names compare by s3FileInfo, which doesn't follow the links to files. Where the source is reached through a link, the
// target may be what the link leads to, and removing it would leave nothing to copy. A target that is a link itself may
// go: its file stays.
bool isSameFile(const QString &from, const QString &to)
{
    const s3FileInfo source(from);
    const s3FileInfo target(to);
    return source == target ||
           (!target.isSymLink() && s3FileInfo(source.canonicalFilePath()) == s3FileInfo(target.canonicalFilePath()));
}

} // namespace

s3File::s3File(const QString &name)
{
    setFileName(name);
}

s3File::s3File(const QFileInfo &info)
{
    setFileName(info.filePath());
}

s3File::~s3File() = default;

void s3File::setFileName(const QString &name)
{
    QFile::setFileName(s3String::toSlashes(name));
}

QString s3File::fileName() const
{
    return QFile::fileName();
}

bool s3File::exists() const
{
    const QFileInfo info(*this);
    return info.exists() && !info.isDir();
}

bool s3File::create()
{
    if (exists())
        return true;
    if (!open(QIODevice::WriteOnly))
        return false;
    close();
    return true;
}

bool s3File::rename(const QString &newName)
{
    return QFile::rename(s3String::toSlashes(newName));
}

bool s3File::copy(const QString &newName)
{
    const bool result = QFile::copy(s3String::toSlashes(newName));
    S3_TRACE(226, u"s3File::copy() fileName=%1 fileSize=%2 newName=%3 --> ret=%4 newSize=%5"_s.arg(
                      fileName(), s3String::number(size()), newName, s3String::fromBool(result),
                      s3String::number(s3File(newName).size())));
    return result;
}

bool s3File::remove(bool force)
{
    if (!exists() || QFile::remove())
        return true;
    if (!force)
        return false;
    const Permissions before = permissions();
    if (!makeWritable())
        return false;
    if (QFile::remove())
        return true;
    // Not this object's setPermissions(), which would take away the error of the removal.
    QFile::setPermissions(fileName(), before & ~rightsOfThisProcess);
    return false;
}

bool s3File::makeWritable()
{
    const Permissions before = permissions();
    const Permissions writable = before | WriteUser | WriteGroup | WriteOther;
    return writable == before || setPermissions(writable);
}

QString s3File::translatedErrorString() const
{
    static const QHash<QString, QString> germanTexts{
        {u"Permission denied"_s, s3KeyText(u"Zugriff verweigert"_s)},
        {u"Too many open files"_s, s3KeyText(u"Es sind in diesem Prozess zuviele Dateien geöffnet."_s)},
        {u"No such file or directory"_s, s3KeyText(u"Datei/Verzeichnis existiert nicht."_s)},
        {u"No space left on device"_s, s3KeyText(u"zu wenig Speicherplatz"_s)},
    };
    const QString text = errorString();
    const auto german = germanTexts.constFind(text);
    return german == germanTexts.cend() ? text : translate(*german);
}

QString s3File::errorText(QFileDevice::FileError fallback) const
{
    const FileError code = error();
    QString text = errorFormat(code == NoError ? fallback : code);
    text.replace(u"%1"_s, fileName());
    if (!text.isEmpty())
        text += u'\n';
    return text + translatedErrorString();
}

bool s3File::copyFile(const QString &from, const QString &to, bool overwrite)
{
    return copyFile(from, to, overwrite, nullptr, nullptr);
}

bool s3File::copyFile(const QString &from, const QString &to, bool overwrite, QString &errorText)
{
    return copyFile(from, to, overwrite, nullptr, &errorText);
}

bool s3File::copyFile(const QString &from, const QString &to, bool overwrite, QFileDevice::FileError *code,
                      QString *errorText)
{
    const auto report = [code, errorText](FileError error, const QString &text) {
        if (code != nullptr)
            *code = error;
        if (errorText != nullptr)
            *errorText = text;
        return error == NoError && text.isEmpty();
    };

    s3File source(from);
    if (errorText != nullptr)
        errorText->clear();
    if (overwrite) {
        s3File target(to);
        if (source.exists() && target.exists() && !isSameFile(from, to) && !target.remove(true))
            return report(target.error(), target.errorText(RemoveError));
    }
    if (source.copy(to))
        return report(NoError, QString());
    const QString format = translate(u"Datei %1 konnte nicht nach %2 kopiert werden."_s);
    return report(source.error(), format.arg(from, to) + u'\n' + source.translatedErrorString());
}
