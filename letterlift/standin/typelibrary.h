#pragma once

#include "simulation/objectreference.h"

#include <QHash>
#include <QString>
#include <QVariant>

#include <oaidl.h>
#include <wrl/client.h>

#include <array>

/// One member of a kind of objects, as the type library describes it.
struct TypeMember
{
    QString name;
    int invokeKinds = 0; ///< INVOKEKIND values together
    bool givesObject = false;
    int argumentCount = 0;               ///< of the method, or 0
    QHash<int, QString> enumerationKeys; ///< of a method's first argument, if that is of an enumeration
};

/// The type library in this program's resources: what objects tell clients of themselves, and how members are numbered.
class TypeLibrary
{
public:
    struct ObjectType
    {
        Microsoft::WRL::ComPtr<ITypeInfo> info;
        QHash<DISPID, TypeMember> members;
    };

    /// Reads the library from the file of a program or library, which has it as its first resource of the type TYPELIB.
    /// Returns false if it isn't there, or lacks a kind of objects.
    [[nodiscard]] bool load(const QString &fileName);

    [[nodiscard]] const ObjectType &type(ObjectKind kind) const { return m_types.at(size_t(kind)); }
    [[nodiscard]] ITypeLib *library() const { return m_library.Get(); }

private:
    Microsoft::WRL::ComPtr<ITypeLib> m_library;
    std::array<ObjectType, size_t(objectKindCount)> m_types;
};
