#pragma once

#include "automationobject.h"

#include <QHash>

#include <oaidl.h>
#include <wrl/client.h>

#include <memory>
#include <optional>

class ComApartment;
class ComVariant;

/// An AutomationObject on IDispatch, for a Qt without ActiveQt. Members go by their bare names: what follows in a
/// signature tells which arguments go by reference ("QVariant&") and which are of an enumeration ("OlItemType"), for
/// which the key's name is then taken as well.
///
/// A query or a call asks for method and property at once, as clients that know no type library do: much of what reads
/// like a method, "WordEditor()" for one, is a property in Outlook.
class ComObject : public AutomationObject
{
    Q_OBJECT

public:
    /// Without \a object, one with no server behind it. \a object is held until this one is destroyed, and \a
    /// apartment, which it belongs to, until the last child is.
    ComObject(std::shared_ptr<ComApartment> apartment, Microsoft::WRL::ComPtr<IDispatch> object, QObject *parent);
    ~ComObject() override;

    [[nodiscard]] bool isNull() const override;
    [[nodiscard]] AutomationObject *querySubObject(const char *name, const QVariantList &arguments = {}) override;
    QVariant dynamicCall(const char *name, const QVariantList &arguments = {}) override;
    [[nodiscard]] QVariant property(const char *name) override;
    bool setProperty(const char *name, const QVariant &value) override;
    [[nodiscard]] QVariant asVariant() const override;

private:
    /// What an invocation leaves beside its HRESULT.
    struct Details
    {
        EXCEPINFO exception{};
        UINT argument = 0; ///< index in the list of arguments, which counts from the last
    };

    /// Empty if the call failed, which is reported then.
    [[nodiscard]] std::optional<QVariant> call(const char *name, WORD flags, const QVariantList &arguments);
    [[nodiscard]] HRESULT findMember(const QString &name, DISPID &id);
    [[nodiscard]] HRESULT invoke(DISPID id, WORD flags, DISPPARAMS &parameters, ComVariant &result, Details &details);
    [[nodiscard]] QVariant withEnumerationKey(const QString &typeName, const QVariant &argument) const;
    void report(const char *name, HRESULT status, UINT argumentCount, Details &details);

    std::shared_ptr<ComApartment> m_apartment; // in front of m_object, which has to go first
    Microsoft::WRL::ComPtr<IDispatch> m_object;
    QHash<QString, DISPID> m_members;
};
