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

std::optional<int> constantOf(ITypeInfo &enumeration, const QString &key)
{
    MEMBERID member = MEMBERID_NIL;
    auto *name = const_cast<OLECHAR *>(reinterpret_cast<const OLECHAR *>(key.utf16()));
    if (FAILED(enumeration.GetIDsOfNames(&name, 1, &member)))
        return std::nullopt;
    for (UINT index = 0;; ++index) {
        VARDESC *description = nullptr;
        if (FAILED(enumeration.GetVarDesc(index, &description)))
            return std::nullopt;
        const bool found = description->memid == member && description->varkind == VAR_CONST;
        const int value = found ? int(V_I4(description->lpvarValue)) : 0;
        enumeration.ReleaseVarDesc(description);
        if (found)
            return value;
    }
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
    library->FindName(reinterpret_cast<OLECHAR *>(name.data()), 0, types.data(), members.data(), &count);
    ComPtr<ITypeInfo> found;
    for (USHORT i = 0; i < count; ++i) {
        const ComPtr<ITypeInfo> candidate = adopt(types.at(i));
        if (members.at(i) == MEMBERID_NIL)
            found = candidate;
    }
    return found;
}

} // namespace

std::optional<int> enumerationValue(IDispatch &object, const QString &type, const QString &key)
{
    if (const ComPtr<ITypeInfo> enumeration = enumerationNamed(object, type)) {
        if (const std::optional<int> value = constantOf(*enumeration.Get(), key))
            return value;
    }
    return publishedValue(type, key);
}
