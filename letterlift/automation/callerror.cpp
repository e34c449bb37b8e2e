#include "callerror.h"

using namespace Qt::Literals::StringLiterals;

QString callErrorText(CallError error, int argument)
{
    switch (error) {
    case CallError::UnknownMember:
        return u"Unknown member"_s;
    case CallError::ArgumentCount:
        return u"Invalid number of arguments"_s;
    case CallError::TypeMismatch:
        return u"Type mismatch in parameter %1"_s.arg(argument);
    case CallError::TooManyArguments:
        return u"Too many arguments"_s;
    case CallError::PropertiesOff:
        return u"The meta-object is switched off"_s;
    case CallError::ServerBusy:
        return u"The server is busy"_s;
    case CallError::ServerGone:
        break;
    }
    return u"The server is gone"_s;
}
