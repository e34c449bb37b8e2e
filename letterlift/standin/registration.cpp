#include "registration.h"

#include "identifiers.h"

#include <QDir>
#include <QSettings>
#include <QUuid>

#include <objbase.h>
#include <oleauto.h>
#include <wrl/client.h>

using namespace Qt::Literals::StringLiterals;

namespace {

// The machine's classes and not the user's, in which Wine 8 doesn't look for servers.
const auto classesKey = u"HKEY_LOCAL_MACHINE\\Software\\Classes"_s;
const auto userClassesKey = u"HKEY_CURRENT_USER\\Software\\Classes"_s;
const auto progId = u"Outlook.Application"_s;

QString classIdText()
{
    return QUuid(standInClassId).toString().toUpper();
}

QString registeredClass(const QSettings &classes)
{
    return classes.value(progId + u"/CLSID/."_s).toString();
}

/// The class of an Outlook that isn't the stand-in; empty if there is none. One for the user alone counts as well: COM
/// prefers it to the machine's.
QString otherClass()
{
    for (const QString &key : {classesKey, userClassesKey}) {
        const QString present = registeredClass(QSettings(key, QSettings::NativeFormat));
        if (!present.isEmpty() && present.compare(classIdText(), Qt::CaseInsensitive) != 0)
            return present;
    }
    return QString();
}

bool finish(QSettings &classes, QString &errorText)
{
    classes.sync();
    if (classes.status() == QSettings::NoError)
        return true;
    errorText = u"The registry can't be written."_s;
    return false;
}

} // namespace

bool registerStandIn(const QString &program, QString &errorText)
{
    if (const QString other = otherClass(); !other.isEmpty()) {
        errorText = u"Another Outlook is registered on this machine: "_s + other;
        return false;
    }
    QSettings classes(classesKey, QSettings::NativeFormat);
    const QString path = QDir::toNativeSeparators(program);
    const QString classKey = u"CLSID/"_s + classIdText();
    classes.setValue(progId + u"/."_s, u"Outlook stand-in"_s);
    classes.setValue(progId + u"/CLSID/."_s, classIdText());
    classes.setValue(classKey + u"/."_s, u"Outlook stand-in"_s);
    classes.setValue(classKey + u"/ProgID/."_s, progId);
    classes.setValue(classKey + u"/TypeLib/."_s, QUuid(standInLibraryId).toString().toUpper());
    classes.setValue(classKey + u"/LocalServer32/."_s, u"\"%1\""_s.arg(path));
    if (!finish(classes, errorText))
        return false;

    Microsoft::WRL::ComPtr<ITypeLib> library;
    const auto *const file = reinterpret_cast<const OLECHAR *>(path.utf16());
    if (SUCCEEDED(LoadTypeLibEx(file, REGKIND_REGISTER, library.GetAddressOf())))
        return true;
    errorText = u"The type library can't be registered."_s;
    return false;
}

bool unregisterStandIn(QString &errorText)
{
    QSettings classes(classesKey, QSettings::NativeFormat);
    if (registeredClass(classes).compare(classIdText(), Qt::CaseInsensitive) == 0)
        classes.remove(progId);
    classes.remove(u"CLSID/"_s + classIdText());
    UnRegisterTypeLib(standInLibraryId, 1, 0, LOCALE_NEUTRAL, SYS_WIN64);
    return finish(classes, errorText);
}
