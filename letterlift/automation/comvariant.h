#pragma once

#include <QMetaType>
#include <QVariant>

#include <oaidl.h>
#include <wrl/client.h>

/// An object of an Automation server as a value.
struct ComReference
{
    Microsoft::WRL::ComPtr<IDispatch> object;
};

Q_DECLARE_METATYPE(ComReference)

/// A VARIANT that clears itself.
class ComVariant
{
public:
    ComVariant();
    /// Takes over \a value, which is left empty.
    ComVariant(ComVariant &&value) noexcept;
    ~ComVariant();

    [[nodiscard]] VARIANT *get() { return &m_value; }
    [[nodiscard]] const VARIANT &value() const { return m_value; }

private:
    Q_DISABLE_COPY(ComVariant)
    ComVariant &operator=(ComVariant &&) = delete;

    VARIANT m_value;
};

/// Text, integers, booleans, floating point numbers, dates (local time) and ComReference; an invalid value is an
/// argument that is left out, VT_ERROR with DISP_E_PARAMNOTFOUND. Any other type goes as text if it can, and is left
/// out if not.
[[nodiscard]] ComVariant toComVariant(const QVariant &value);

/// The same the other way round, also from values by reference. Integers of up to 32 bits are `int`, as long as they
/// fit. No value at all, an invalid QVariant, are VT_EMPTY, VT_NULL, VT_ERROR, an object that is null, and the types
/// that Outlook doesn't use here, such as arrays.
[[nodiscard]] QVariant fromComVariant(const VARIANT &value);
