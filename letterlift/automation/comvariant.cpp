#include "comvariant.h"

#include <QDateTime>

#include <limits>
#include <oleauto.h>

using Microsoft::WRL::ComPtr;

namespace {

BSTR toBstr(const QString &text)
{
    return SysAllocStringLen(reinterpret_cast<const OLECHAR *>(text.utf16()), UINT(text.size()));
}

QString fromBstr(BSTR text)
{
    return QString::fromWCharArray(text, qsizetype(SysStringLen(text)));
}

/// A DATE has no milliseconds worth the name: SYSTEMTIME's are dropped by the system's own conversion.
bool toDate(const QDateTime &time, DATE &date)
{
    const QDateTime local = time.toLocalTime();
    SYSTEMTIME system{};
    system.wYear = WORD(local.date().year());
    system.wMonth = WORD(local.date().month());
    system.wDay = WORD(local.date().day());
    system.wHour = WORD(local.time().hour());
    system.wMinute = WORD(local.time().minute());
    system.wSecond = WORD(local.time().second());
    return time.isValid() && SystemTimeToVariantTime(&system, &date) != FALSE;
}

QVariant fromDate(DATE date)
{
    SYSTEMTIME system{};
    if (VariantTimeToSystemTime(date, &system) == FALSE)
        return {};
    return QDateTime(QDate(system.wYear, system.wMonth, system.wDay),
                     QTime(system.wHour, system.wMinute, system.wSecond));
}

QVariant fromObject(IUnknown *object)
{
    ComReference reference;
    if (object == nullptr || FAILED(object->QueryInterface(IID_PPV_ARGS(reference.object.GetAddressOf()))))
        return {};
    return QVariant::fromValue(reference);
}

/// For the types that have no counterpart of their own here.
QVariant fromDouble(const VARIANT &value)
{
    ComVariant converted;
    VARIANT source = value; // MinGW's headers know no const here
    if (FAILED(VariantChangeType(converted.get(), &source, 0, VT_R8)))
        return {};
    return V_R8(converted.get());
}

QVariant fromInteger(qint64 value)
{
    const bool fits = value >= std::numeric_limits<int>::min() && value <= std::numeric_limits<int>::max();
    return fits ? QVariant(int(value)) : QVariant(qlonglong(value));
}

} // namespace

ComVariant::ComVariant()
{
    VariantInit(&m_value);
}

ComVariant::ComVariant(ComVariant &&value) noexcept
    : m_value(value.m_value)
{
    VariantInit(&value.m_value);
}

ComVariant::~ComVariant()
{
    VariantClear(&m_value);
}

ComVariant toComVariant(const QVariant &value)
{
    ComVariant result;
    VARIANT *const variant = result.get();
    V_VT(variant) = VT_ERROR;
    V_ERROR(variant) = DISP_E_PARAMNOTFOUND;

    switch (value.typeId()) {
    case QMetaType::UnknownType:
        break;
    case QMetaType::Bool:
        V_VT(variant) = VT_BOOL;
        V_BOOL(variant) = value.toBool() ? VARIANT_TRUE : VARIANT_FALSE;
        break;
    case QMetaType::Int:
        V_VT(variant) = VT_I4;
        V_I4(variant) = value.toInt();
        break;
    case QMetaType::UInt:
        V_VT(variant) = VT_UI4;
        V_UI4(variant) = value.toUInt();
        break;
    case QMetaType::LongLong:
        V_VT(variant) = VT_I8;
        V_I8(variant) = value.toLongLong();
        break;
    case QMetaType::ULongLong:
        V_VT(variant) = VT_UI8;
        V_UI8(variant) = value.toULongLong();
        break;
    case QMetaType::Double:
        V_VT(variant) = VT_R8;
        V_R8(variant) = value.toDouble();
        break;
    case QMetaType::QDate:
    case QMetaType::QDateTime:
        if (DATE date = 0; toDate(value.toDateTime(), date)) {
            V_VT(variant) = VT_DATE;
            V_DATE(variant) = date;
        }
        break;
    default:
        if (value.typeId() == qMetaTypeId<ComReference>()) {
            V_VT(variant) = VT_DISPATCH;
            V_DISPATCH(variant) = ComPtr(value.value<ComReference>().object).Detach();
        } else if (value.canConvert<QString>()) {
            V_VT(variant) = VT_BSTR;
            V_BSTR(variant) = toBstr(value.toString());
        }
        break;
    }
    return result;
}

QVariant fromComVariant(const VARIANT &value)
{
    if ((V_VT(&value) & VT_BYREF) != 0) {
        ComVariant copy;
        VARIANT source = value;
        return SUCCEEDED(VariantCopyInd(copy.get(), &source)) ? fromComVariant(copy.value()) : QVariant();
    }
    switch (V_VT(&value)) {
    case VT_BSTR:
        return fromBstr(V_BSTR(&value));
    case VT_BOOL:
        return V_BOOL(&value) != VARIANT_FALSE;
    case VT_I1:
        return int(static_cast<signed char>(V_I1(&value)));
    case VT_UI1:
        return int(V_UI1(&value));
    case VT_I2:
        return int(V_I2(&value));
    case VT_UI2:
        return int(V_UI2(&value));
    case VT_I4:
    case VT_INT:
        return int(V_I4(&value));
    case VT_UI4:
    case VT_UINT:
        return fromInteger(V_UI4(&value));
    case VT_I8:
        return qlonglong(V_I8(&value));
    case VT_UI8:
        return qulonglong(V_UI8(&value));
    case VT_R4:
        return double(V_R4(&value));
    case VT_R8:
        return V_R8(&value);
    case VT_CY:
    case VT_DECIMAL:
        return fromDouble(value);
    case VT_DATE:
        return fromDate(V_DATE(&value));
    case VT_DISPATCH:
        return fromObject(V_DISPATCH(&value));
    case VT_UNKNOWN:
        return fromObject(V_UNKNOWN(&value));
    default: // VT_EMPTY, VT_NULL, VT_ERROR, VT_ARRAY, VT_RECORD
        return {};
    }
}
