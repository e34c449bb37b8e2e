// A scenario is either read or refused with a reason.

#include "simulation/scenario.h"

#include <cstdlib>

extern "C" int LLVMFuzzerTestOneInput(const uint8_t *data, size_t size)
{
    QString errorText;
    const auto scenario = readScenario(QByteArray(reinterpret_cast<const char *>(data), qsizetype(size)), errorText);
    if (scenario.has_value() != errorText.isEmpty())
        std::abort();
    return 0;
}
