// The iconv that GMime insists on, which Windows has not: GLib brings one along but offers it under names of its own.
#pragma once

#include <glib.h>

typedef GIConv iconv_t;

static inline iconv_t iconv_open(const char *to, const char *from)
{
    return g_iconv_open(to, from);
}

static inline size_t iconv(iconv_t converter, char **input, size_t *inputLeft, char **output, size_t *outputLeft)
{
    return g_iconv(converter, input, inputLeft, output, outputLeft);
}

static inline int iconv_close(iconv_t converter)
{
    return g_iconv_close(converter);
}
