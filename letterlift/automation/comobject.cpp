#include "comobject.h"

#include "comapartment.h"
#include "comenumeration.h"
#include "comerror.h"
#include "compatience.h"
#include "comvariant.h"

#include <oleauto.h>

#include <algorithm>
#include <vector>

using namespace Qt::Literals::StringLiterals;

namespace {

QString bareName(const QString &signature)
{
    return signature.left(signature.indexOf(u'('));
}

QStringList parameterTypes(const QString &signature)
{
    const qsizetype start = signature.indexOf(u'(');
    const qsizetype end = signature.lastIndexOf(u')');
    if (start < 0 || end <= start + 1)
        return {};
    QStringList types = signature.sliced(start + 1, end - start - 1).split(u',');
    for (QString &type : types)
        type = type.trimmed();
    return types;
}

bool goesByReference(const QString &type)
{
    return type.endsWith(u'&') && !type.startsWith("const "_L1);
}

/// Types of Qt and of the language tell nothing about the server's.
bool namesEnumeration(const QString &type)
{
    return !type.isEmpty() && type.front().isUpper() && !type.startsWith(u'Q') && !type.endsWith(u'&');
}

/// Arguments in COM's order, which is from the last to the first, with those that go by reference in front of them.
class ArgumentList
{
public:
    ArgumentList(const QVariantList &arguments, const QStringList &types)
    {
        m_values.reserve(size_t(arguments.size()));
        for (qsizetype i = arguments.size() - 1; i >= 0; --i)
            m_values.push_back(toComVariant(arguments.at(i)));
        for (size_t i = 0; i < m_values.size(); ++i) {
            VARIANT argument = m_values[i].value();
            if (goesByReference(types.value(arguments.size() - 1 - qsizetype(i)))) {
                V_VT(&argument) = VT_BYREF | VT_VARIANT;
                V_VARIANTREF(&argument) = m_values[i].get();
            }
            m_passed.push_back(argument);
        }
    }

    [[nodiscard]] DISPPARAMS parameters() { return {m_passed.data(), nullptr, UINT(m_passed.size()), 0}; }

private:
    std::vector<ComVariant> m_values; // own what m_passed shows
    std::vector<VARIANT> m_passed;
};

} // namespace

ComObject::ComObject(std::shared_ptr<ComApartment> apartment, Microsoft::WRL::ComPtr<IDispatch> object, QObject *parent)
    : AutomationObject(parent)
    , m_apartment(std::move(apartment))
    , m_object(std::move(object))
{
}

ComObject::~ComObject() = default;

bool ComObject::isNull() const
{
    return m_object == nullptr;
}

AutomationObject *ComObject::querySubObject(const char *name, const QVariantList &arguments)
{
    const QVariant result = dynamicCall(name, arguments);
    if (result.typeId() != qMetaTypeId<ComReference>())
        return nullptr;
    return new ComObject(m_apartment, result.value<ComReference>().object, this);
}

QVariant ComObject::dynamicCall(const char *name, const QVariantList &arguments)
{
    return call(name, DISPATCH_METHOD | DISPATCH_PROPERTYGET, arguments).value_or(QVariant());
}

QVariant ComObject::property(const char *name)
{
    return canUseProperty(name) ? call(name, DISPATCH_PROPERTYGET, {}).value_or(QVariant()) : QVariant();
}

bool ComObject::setProperty(const char *name, const QVariant &value)
{
    if (!canUseProperty(name))
        return false;
    const bool isObject = value.typeId() == qMetaTypeId<ComReference>();
    return call(name, isObject ? DISPATCH_PROPERTYPUTREF : DISPATCH_PROPERTYPUT, {value}).has_value();
}

QVariant ComObject::asVariant() const
{
    return m_object != nullptr ? QVariant::fromValue(ComReference{m_object}) : QVariant();
}

std::optional<QVariant> ComObject::call(const char *name, WORD flags, const QVariantList &arguments)
{
    if (!canCall(name, arguments))
        return std::nullopt;
    const QString signature = QString::fromUtf8(name);
    Details details;
    DISPID id = DISPID_UNKNOWN;
    HRESULT status = findMember(bareName(signature), id);
    if (FAILED(status)) {
        report(name, status, 0, details);
        return std::nullopt;
    }

    const QStringList types = parameterTypes(signature);
    QVariantList passed;
    for (qsizetype i = 0; i < arguments.size(); ++i)
        passed.append(withEnumerationKey(types.value(i), arguments.at(i)));
    ArgumentList list(passed, types);
    DISPPARAMS parameters = list.parameters();
    DISPID put = DISPID_PROPERTYPUT;
    if ((flags & (DISPATCH_PROPERTYPUT | DISPATCH_PROPERTYPUTREF)) != 0) {
        parameters.rgdispidNamedArgs = &put;
        parameters.cNamedArgs = 1;
    }
    ComVariant result;
    status = invoke(id, flags, parameters, result, details);
    // Outlook takes an object by reference; a server that knows no such form takes it as any other value.
    if (flags == DISPATCH_PROPERTYPUTREF && status == DISP_E_MEMBERNOTFOUND)
        status = invoke(id, DISPATCH_PROPERTYPUT, parameters, result, details);
    if (SUCCEEDED(status))
        return fromComVariant(result.value());
    report(name, status, parameters.cArgs, details);
    return std::nullopt;
}

HRESULT ComObject::findMember(const QString &name, DISPID &id)
{
    if (const auto known = m_members.constFind(name); known != m_members.constEnd()) {
        id = *known;
        return S_OK;
    }
    auto *text = const_cast<OLECHAR *>(reinterpret_cast<const OLECHAR *>(name.utf16()));
    const HRESULT status =
        withPatience([&] { return m_object->GetIDsOfNames(IID_NULL, &text, 1, LOCALE_USER_DEFAULT, &id); });
    if (SUCCEEDED(status))
        m_members.insert(name, id);
    return status;
}

HRESULT ComObject::invoke(DISPID id, WORD flags, DISPPARAMS &parameters, ComVariant &result, Details &details)
{
    return withPatience([&] {
        return m_object->Invoke(id, IID_NULL, LOCALE_USER_DEFAULT, flags, &parameters, result.get(), &details.exception,
                                &details.argument);
    });
}

/// A key that nobody knows goes on as text, and the server says what it thinks of it.
QVariant ComObject::withEnumerationKey(const QString &typeName, const QVariant &argument) const
{
    if (argument.typeId() != QMetaType::QString || !namesEnumeration(typeName))
        return argument;
    const std::optional<int> value = enumerationValue(*m_object.Get(), typeName, argument.toString());
    return value ? QVariant(*value) : argument;
}

void ComObject::report(const char *name, HRESULT status, UINT argumentCount, Details &details)
{
    if (status == DISP_E_EXCEPTION) {
        // What a receiver throws passes through here, so that nothing may be left to free.
        reportException(name, takeException(details.exception));
        return;
    }
    const int argument = int(argumentCount) - int(details.argument);
    reportCallError(name, comErrorText(status, std::max(argument, 1)));
}
