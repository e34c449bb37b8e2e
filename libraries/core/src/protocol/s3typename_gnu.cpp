#include "s3typename.h"

#include <cstdlib>
#include <cxxabi.h>
#include <memory>

using namespace Qt::Literals::StringLiterals;

QString s3ClassName(const std::type_info &type)
{
    int status = 0;
    const std::unique_ptr<char, void (*)(void *)> name(abi::__cxa_demangle(type.name(), nullptr, nullptr, &status),
                                                       std::free);
    return u"class "_s + QString::fromUtf8(name != nullptr ? name.get() : type.name());
}
