#pragma once

#include <QString>

#include <oaidl.h>

#include <optional>

/// The name of a member of \a type, or of the type itself. Empty if it tells none.
[[nodiscard]] QString comName(ITypeInfo &type, MEMBERID member = MEMBERID_NIL);

/// The number of the key \a key of the enumeration \a type, such as "olMailItem" of "OlItemType": from the type library
/// of \a object's server, or from the few that Outlook has published for good, if the server shows none.
[[nodiscard]] std::optional<int> enumerationValue(IDispatch &object, const QString &type, const QString &key);
