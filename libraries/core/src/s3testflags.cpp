#include "s3testflags.h"

void s3TestFlagsGUI::create()
{
    s_instance = new s3TestFlagsGUI;
}
