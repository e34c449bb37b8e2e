#pragma once

#include <QString>

/// What is wrong with a call that fails in the second way, see AutomationObject.
enum class CallError {
    UnknownMember,    ///< there is no such member, or it can't be used in this way
    ArgumentCount,    ///< the member takes another number of arguments
    TypeMismatch,     ///< an argument is of a type that the member can't take
    TooManyArguments, ///< more than AutomationObject::maximumArguments
    PropertiesOff,    ///< the object's meta-object is switched off
    ServerBusy,       ///< the server has rejected the call for as long as CallPatience allows
    ServerGone        ///< the server has ended
};

/// The reason as warnings give it, in English. \a argument is the number, from 1, of the one that doesn't fit.
[[nodiscard]] QString callErrorText(CallError error, int argument = 1);
