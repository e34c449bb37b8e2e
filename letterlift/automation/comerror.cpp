#include "comerror.h"

#include <oleauto.h>

using namespace Qt::Literals::StringLiterals;

namespace {

QString takeText(BSTR &text)
{
    const QString result = QString::fromWCharArray(text, qsizetype(SysStringLen(text)));
    SysFreeString(text);
    text = nullptr;
    return result;
}

} // namespace

bool isRejection(HRESULT status)
{
    return status == RPC_E_CALL_REJECTED || status == RPC_E_SERVERCALL_RETRYLATER;
}

QString comErrorText(HRESULT status, int argument)
{
    if (isRejection(status) || status == RPC_E_CALL_CANCELED)
        return callErrorText(CallError::ServerBusy);
    switch (status) {
    case DISP_E_UNKNOWNNAME:
    case DISP_E_MEMBERNOTFOUND:
        return callErrorText(CallError::UnknownMember);
    case DISP_E_BADPARAMCOUNT:
        return callErrorText(CallError::ArgumentCount);
    case DISP_E_TYPEMISMATCH:
    case DISP_E_OVERFLOW:
        return callErrorText(CallError::TypeMismatch, argument);
    case RPC_E_DISCONNECTED:
    case RPC_E_SERVER_DIED:
    case RPC_E_SERVER_DIED_DNE:
    case CO_E_OBJNOTCONNECTED:
        return callErrorText(CallError::ServerGone);
    default:
        break;
    }
    if (status == HRESULT_FROM_WIN32(RPC_S_SERVER_UNAVAILABLE) || status == HRESULT_FROM_WIN32(RPC_S_CALL_FAILED) ||
        status == HRESULT_FROM_WIN32(RPC_S_CALL_FAILED_DNE))
        return callErrorText(CallError::ServerGone);
    return u"COM error 0x%1"_s.arg(QString::number(quint32(status), 16).toUpper().rightJustified(8, u'0'));
}

AutomationException takeException(EXCEPINFO &info)
{
    if (info.pfnDeferredFillIn != nullptr)
        info.pfnDeferredFillIn(&info);
    AutomationException exception;
    exception.code = info.wCode != 0 ? int(info.wCode) : int(info.scode);
    exception.source = takeText(info.bstrSource);
    exception.description = takeText(info.bstrDescription);
    // The context is a part of the text, when there is both.
    exception.help = takeText(info.bstrHelpFile);
    if (!exception.help.isEmpty() && info.dwHelpContext != 0)
        exception.help += u" [%1]"_s.arg(info.dwHelpContext);
    return exception;
}
