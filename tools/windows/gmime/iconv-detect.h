// By which names GLib's iconv for Windows knows the families of character sets. GMime's configure finds this out by
// running a program, which can't be done when building for another system.
#pragma once

#define ICONV_ISO_INT_FORMAT "iso-%u-%u"
#define ICONV_ISO_STR_FORMAT "iso-%u-%s"
#define ICONV_SHIFT_JIS "shift-jis"
#define ICONV_10646 "UCS-4BE"
