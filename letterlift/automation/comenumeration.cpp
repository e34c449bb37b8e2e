#include "comenumeration.h"

#include "referencecounted.h"

#include <QHash>

#include <oleauto.h>
#include <wrl/client.h>

#include <array>

using namespace Qt::Literals::StringLiterals;
using Microsoft::WRL::ComPtr;

namespace {

/// OlItemType as Outlook's type library has it.
std::optional<int> publishedValue(const QString &type, const QString &key)
{
    static const QHash<QString, int> itemTypes{
        {u"olMailItem"_s, 0},    {u"olAppointmentItem"_s, 1}, {u"olContactItem"_s, 2}, {u"olTaskItem"_s, 3},
        {u"olJournalItem"_s, 4}, {u"olNoteItem"_s, 5},        {u"olPostItem"_s, 6},    {u"olDistributionListItem"_s, 7},
    };
    if (type != u"OlItemType"_s || !itemTypes.contains(key))
        return std::nullopt;
    return itemTypes.value(key);
}

/// ITypeInfo::GetIDsOfNames isn't for use between processes.
std::optional<int> constantOf(ITypeInfo &enumeration, const QString &key)
{
    VARDESC *description = nullptr;
    for (UINT index = 0; SUCCEEDED(enumeration.GetVarDesc(index, &description)); ++index) {
        const bool isConstant = description->varkind == VAR_CONST;
        const int value = isConstant ? int(V_I4(description->lpvarValue)) : 0;
        const MEMBERID member = description->memid;
        enumeration.ReleaseVarDesc(description);
        if (isConstant && comName(enumeration, member) == key)
            return value;
    }
    return std::nullopt;
}

/// Asks for one type after the other, for Wine 8, whose ITypeLib::FindName doesn't reach another process.
ComPtr<ITypeInfo> enumerationInTurn(ITypeLib &library, const QString &name)
{
    const UINT count = library.GetTypeInfoCount();
    for (UINT index = 0; index < count; ++index) {
        TYPEKIND kind = TKIND_MAX;
        ComPtr<ITypeInfo> type;
        if (SUCCEEDED(library.GetTypeInfoType(index, &kind)) && kind == TKIND_ENUM &&
            SUCCEEDED(library.GetTypeInfo(index, type.GetAddressOf())) && comName(*type.Get()) == name)
            return type;
    }
    return nullptr;
}

ComPtr<ITypeInfo> enumerationNamed(IDispatch &object, const QString &type)
{
    ComPtr<ITypeInfo> ownType;
    ComPtr<ITypeLib> library;
    UINT index = 0;
    if (FAILED(object.GetTypeInfo(0, LOCALE_USER_DEFAULT, ownType.GetAddressOf())) || ownType == nullptr ||
        FAILED(ownType->GetContainingTypeLib(library.GetAddressOf(), &index)))
        return nullptr;
    // The name may be a member's somewhere as well.
    constexpr USHORT limit = 8;
    std::array<ITypeInfo *, limit> types{};
    std::array<MEMBERID, limit> members{};
    USHORT count = limit;
    QString name = type; // FindName corrects the case in place
    if (FAILED(library->FindName(reinterpret_cast<OLECHAR *>(name.data()), 0, types.data(), members.data(), &count)))
        return enumerationInTurn(*library.Get(), type);
    ComPtr<ITypeInfo> found;
    for (USHORT i = 0; i < count; ++i) {
        const ComPtr<ITypeInfo> candidate = adopt(types.at(i));
        if (members.at(i) == MEMBERID_NIL)
            found = candidate;
    }
    return found;
}

} // namespace

QString comName(ITypeInfo &type, MEMBERID member)
{
    BSTR name = nullptr;
    if (FAILED(type.GetDocumentation(member, &name, nullptr, nullptr, nullptr)))
        return QString();
    const QString text = QString::fromWCharArray(name, qsizetype(SysStringLen(name)));
    SysFreeString(name);
    return text;
}

std::optional<int> enumerationValue(IDispatch &object, const QString &type, const QString &key)
{
    if (const ComPtr<ITypeInfo> enumeration = enumerationNamed(object, type)) {
        if (const std::optional<int> value = constantOf(*enumeration.Get(), key))
            return value;
    }
    return publishedValue(type, key);
}
