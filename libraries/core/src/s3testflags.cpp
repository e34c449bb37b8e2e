#include "s3testflags.h"

namespace {

// Made before there is a second thread: the creation has no lock.
[[maybe_unused]] const s3TestFlagsGUI *const madeBeforeMain = s3TestFlagsGUI::instance();

} // namespace

void s3TestFlagsGUI::create()
{
    s_instance = new s3TestFlagsGUI;
}
