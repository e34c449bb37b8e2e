#pragma once

#include <QString>

#include <typeinfo>

/// The name of a class as Visual C++ keeps it, "class s3Name", whatever the compiler. \a type has to be that of a class
/// and not of a struct: other compilers don't tell them apart.
[[nodiscard]] QString s3ClassName(const std::type_info &type);
