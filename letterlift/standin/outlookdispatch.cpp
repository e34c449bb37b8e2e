#include "outlookdispatch.h"

#include "automation/comvariant.h"
#include "identifiers.h"
#include "simulation/simulatedoutlook.h"
#include "standinserver.h"

#include <oleauto.h>

#include <limits>

namespace {

constexpr WORD putFlags = DISPATCH_PROPERTYPUT | DISPATCH_PROPERTYPUTREF;

BSTR toBstr(const QString &text)
{
    return SysAllocStringLen(reinterpret_cast<const OLECHAR *>(text.utf16()), UINT(text.size()));
}

/// In the words of the journal. A client over COM asks for methods and properties in one way; what it gets tells the
/// queries from the calls.
Operation operationOf(const TypeMember &member, WORD flags)
{
    if ((flags & putFlags) != 0)
        return Operation::Set;
    if (flags == DISPATCH_PROPERTYGET)
        return Operation::Get;
    return member.givesObject ? Operation::Query : Operation::Call;
}

HRESULT statusOf(CallFault fault)
{
    switch (fault) {
    case CallFault::ArgumentCount:
        return DISP_E_BADPARAMCOUNT;
    case CallFault::TypeMismatch:
        return DISP_E_TYPEMISMATCH;
    case CallFault::UnknownMember:
        break;
    }
    return DISP_E_MEMBERNOTFOUND;
}

void fill(EXCEPINFO &info, const Failure &failure)
{
    info = {};
    const bool isShort = failure.code > 0 && failure.code <= std::numeric_limits<WORD>::max();
    if (isShort)
        info.wCode = WORD(failure.code);
    else
        info.scode = failure.code;
    info.bstrSource = toBstr(failure.source);
    info.bstrDescription = toBstr(failure.description);
    info.bstrHelpFile = toBstr(failure.help);
}

} // namespace

OutlookDispatch::OutlookDispatch(StandInServer &server, const ObjectReference &reference)
    : m_server(server)
    , m_reference(reference)
{
    m_server.hold();
}

OutlookDispatch::~OutlookDispatch()
{
    m_server.outlook()->server().release(m_reference);
    m_server.letGo();
}

HRESULT OutlookDispatch::GetTypeInfoCount(UINT *count)
{
    *count = 1;
    return S_OK;
}

HRESULT OutlookDispatch::GetTypeInfo(UINT index, LCID, ITypeInfo **info)
{
    *info = nullptr;
    return index == 0 ? m_server.library().type(m_reference.kind).info.CopyTo(info) : DISP_E_BADINDEX;
}

HRESULT OutlookDispatch::GetIDsOfNames(REFIID, LPOLESTR *names, UINT count, LCID, DISPID *ids)
{
    return m_server.library().type(m_reference.kind).info->GetIDsOfNames(names, count, ids);
}

HRESULT OutlookDispatch::Invoke(DISPID id, REFIID, LCID, WORD flags, DISPPARAMS *parameters, VARIANT *result,
                                EXCEPINFO *exception, UINT *argument)
{
    const auto &members = m_server.library().type(m_reference.kind).members;
    const auto member = members.constFind(id);
    if (member == members.constEnd() || (member->invokeKinds & flags) == 0)
        return DISP_E_MEMBERNOTFOUND;
    if (parameters->cNamedArgs > ((flags & putFlags) != 0 ? 1U : 0U))
        return DISP_E_NONAMEDARGS;

    QVariantList arguments;
    for (UINT i = parameters->cArgs; i > 0; --i)
        arguments.append(argumentOf(parameters->rgvarg[i - 1]));
    if (!arguments.isEmpty() && arguments.first().typeId() == QMetaType::Int) {
        const auto key = member->enumerationKeys.constFind(arguments.first().toInt());
        if (key != member->enumerationKeys.constEnd())
            arguments.first() = *key;
    }

    const QString signature = OutlookModel::memberSignature(m_reference.kind, member->name);
    const ModelResult done =
        m_server.outlook()->server().perform(operationOf(*member, flags), m_reference, signature, arguments);
    if (!done.failure)
        return answer(*member, done, result);
    if (argument != nullptr && parameters->cArgs > 0)
        *argument = parameters->cArgs - 1;
    return answerFailure(*member, done, result, exception);
}

bool OutlookDispatch::implements(REFIID iid) const
{
    return iid == __uuidof(IDispatch) || iid == outlookObjectId;
}

QVariant OutlookDispatch::argumentOf(const VARIANT &value)
{
    const QVariant argument = fromComVariant(value);
    if (argument.typeId() != qMetaTypeId<ComReference>())
        return argument;
    // An object of this process comes back as itself and not as a proxy.
    Microsoft::WRL::ComPtr<IDispatch> object;
    const HRESULT status =
        argument.value<ComReference>().object.CopyTo(outlookObjectId, reinterpret_cast<void **>(object.GetAddressOf()));
    if (FAILED(status))
        return {};
    return QVariant::fromValue(static_cast<OutlookDispatch *>(object.Get())->m_reference);
}

HRESULT OutlookDispatch::answer(const TypeMember &member, const ModelResult &result, VARIANT *target)
{
    if (target == nullptr)
        return S_OK;
    VariantInit(target);
    if (result.value.typeId() == qMetaTypeId<ObjectReference>()) {
        V_VT(target) = VT_DISPATCH;
        V_DISPATCH(target) = new OutlookDispatch(m_server, result.value.value<ObjectReference>());
    } else if (result.value.isValid()) {
        ComVariant value = toComVariant(result.value);
        return VariantCopy(target, value.get());
    } else if (member.givesObject) {
        V_VT(target) = VT_DISPATCH;
        V_DISPATCH(target) = nullptr;
    }
    return S_OK;
}

HRESULT OutlookDispatch::answerFailure(const TypeMember &member, const ModelResult &result, VARIANT *target,
                                       EXCEPINFO *exception)
{
    const Failure &failure = *result.failure;
    switch (failure.kind) {
    case FailureKind::Missing:
        return statusOf(failure.fault);
    case FailureKind::Exception:
        if (exception != nullptr)
            fill(*exception, failure);
        return DISP_E_EXCEPTION;
    case FailureKind::Error:
        if (target != nullptr) {
            V_VT(target) = VT_ERROR;
            V_ERROR(target) = failure.code;
        }
        return S_OK;
    case FailureKind::Value:
        if (failure.value.isValid())
            break;
        if (target != nullptr)
            V_VT(target) = VT_NULL;
        return S_OK;
    case FailureKind::Silence:
        Sleep(DWORD(failure.milliseconds));
        break;
    case FailureKind::Death:
        m_server.revoke();
        TerminateProcess(GetCurrentProcess(), 1);
        break;
    case FailureKind::Rejected:
        return RPC_E_CALL_REJECTED;
    case FailureKind::Null:
    case FailureKind::Busy:
    case FailureKind::Gone:
        break;
    }
    return answer(member, result, target);
}
