#include "typelibrary.h"

#include "automation/comenumeration.h"

#include <QDir>

#include <oleauto.h>

using namespace Qt::Literals::StringLiterals;
using Microsoft::WRL::ComPtr;

namespace {

const OLECHAR *toOleText(const QString &text)
{
    return reinterpret_cast<const OLECHAR *>(text.utf16());
}

/// The name of a kind's interface in the library.
QString interfaceName(ObjectKind kind)
{
    switch (kind) {
    case ObjectKind::Session:
        return u"_NameSpace"_s;
    case ObjectKind::ReplyRecipients:
        return u"Recipients"_s;
    case ObjectKind::Application:
    case ObjectKind::Accounts:
    case ObjectKind::Account:
    case ObjectKind::MailItem:
    case ObjectKind::Inspector:
    case ObjectKind::Document:
    case ObjectKind::WordApplication:
        return u'_' + objectKindName(kind);
    default:
        return objectKindName(kind);
    }
}

/// ITypeLib::FindName would give a member of that name as well.
ComPtr<ITypeInfo> findType(ITypeLib &library, const QString &name)
{
    ComPtr<ITypeInfo> info;
    for (UINT index = 0; SUCCEEDED(library.GetTypeInfo(index, info.ReleaseAndGetAddressOf())); ++index) {
        if (comName(*info.Get()) == name)
            return info;
    }
    return nullptr;
}

/// Empty for anything but an enumeration.
QHash<int, QString> keysOf(ITypeInfo &owner, const TYPEDESC &type)
{
    QHash<int, QString> keys;
    ComPtr<ITypeInfo> enumeration;
    if (type.vt != VT_USERDEFINED || FAILED(owner.GetRefTypeInfo(type.hreftype, enumeration.GetAddressOf())))
        return keys;
    VARDESC *description = nullptr;
    for (UINT index = 0; SUCCEEDED(enumeration->GetVarDesc(index, &description)); ++index) {
        if (description->varkind == VAR_CONST)
            keys.insert(int(V_I4(description->lpvarValue)), comName(*enumeration.Get(), description->memid));
        enumeration->ReleaseVarDesc(description);
    }
    return keys;
}

void addFunction(ITypeInfo &info, const FUNCDESC &function, QHash<DISPID, TypeMember> &members)
{
    TypeMember &member = members[function.memid];
    member.name = comName(info, function.memid);
    member.invokeKinds |= function.invkind;
    if ((function.invkind & (INVOKE_PROPERTYPUT | INVOKE_PROPERTYPUTREF)) != 0)
        return;
    const VARTYPE result = function.elemdescFunc.tdesc.vt;
    member.givesObject = result == VT_PTR || result == VT_DISPATCH;
    if (function.invkind != INVOKE_FUNC)
        return;
    member.argumentCount = function.cParams;
    if (function.cParams > 0)
        member.enumerationKeys = keysOf(info, function.lprgelemdescParam[0].tdesc);
}

/// The members of IDispatch itself come along with each interface.
bool isOwnMember(const FUNCDESC &function)
{
    return (function.wFuncFlags & FUNCFLAG_FRESTRICTED) == 0;
}

} // namespace

bool TypeLibrary::load(const QString &fileName)
{
    const QString path = QDir::toNativeSeparators(fileName);
    if (FAILED(LoadTypeLibEx(toOleText(path), REGKIND_NONE, m_library.ReleaseAndGetAddressOf())))
        return false;
    for (int kind = 0; kind < objectKindCount; ++kind) {
        ObjectType &type = m_types.at(size_t(kind));
        type.info = findType(*m_library.Get(), interfaceName(ObjectKind(kind)));
        if (type.info == nullptr)
            return false;
        FUNCDESC *function = nullptr;
        for (UINT index = 0; SUCCEEDED(type.info->GetFuncDesc(index, &function)); ++index) {
            if (isOwnMember(*function))
                addFunction(*type.info.Get(), *function, type.members);
            type.info->ReleaseFuncDesc(function);
        }
    }
    return true;
}
