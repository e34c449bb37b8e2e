#pragma once

#include "automation/referencecounted.h"
#include "simulation/objectreference.h"
#include "simulation/outlookserver.h"

#include <oaidl.h>

class StandInServer;
struct TypeMember;

/// An object of the simulated Outlook as COM clients see it. Each one that is handed out is a COM object of its own,
/// even for the same object of the model, so that a client's letting go of it is told from another's.
class OutlookDispatch : public ReferenceCounted<IDispatch>
{
public:
    OutlookDispatch(StandInServer &server, const ObjectReference &reference);
    ~OutlookDispatch() override;

    HRESULT STDMETHODCALLTYPE GetTypeInfoCount(UINT *count) override;
    HRESULT STDMETHODCALLTYPE GetTypeInfo(UINT index, LCID locale, ITypeInfo **info) override;
    HRESULT STDMETHODCALLTYPE GetIDsOfNames(REFIID iid, LPOLESTR *names, UINT count, LCID locale, DISPID *ids) override;
    HRESULT STDMETHODCALLTYPE Invoke(DISPID id, REFIID iid, LCID locale, WORD flags, DISPPARAMS *parameters,
                                     VARIANT *result, EXCEPINFO *exception, UINT *argument) override;

private:
    [[nodiscard]] bool implements(REFIID iid) const override;
    [[nodiscard]] static QVariant argumentOf(const VARIANT &value);
    [[nodiscard]] HRESULT answer(const TypeMember &member, const ModelResult &result, VARIANT *target);
    [[nodiscard]] HRESULT answerFailure(const TypeMember &member, const ModelResult &result, VARIANT *target,
                                        EXCEPINFO *exception);

    StandInServer &m_server;
    const ObjectReference m_reference;
};
