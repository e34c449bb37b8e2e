// The libintl that GLib insists on, which Windows has not. Nothing is translated: every text is returned as it came.
#pragma once

#include <locale.h>

// Windows has no locale for messages of its own.
#define LC_MESSAGES LC_CTYPE

// Let the compiler check a format against its arguments although it went through the function.
#define RETURNS_FORMAT(position) __attribute__((format_arg(position)))
#define RETURNS_EITHER_FORMAT(one, many) __attribute__((format_arg(one), format_arg(many)))

RETURNS_FORMAT(2)
static inline char *dcgettext(const char *domain, const char *text, int category)
{
    (void)domain;
    (void)category;
    return (char *)text;
}

RETURNS_FORMAT(2)
static inline char *dgettext(const char *domain, const char *text)
{
    (void)domain;
    return (char *)text;
}

RETURNS_FORMAT(1)
static inline char *gettext(const char *text)
{
    return (char *)text;
}

RETURNS_EITHER_FORMAT(2, 3)
static inline char *dngettext(const char *domain, const char *one, const char *many, unsigned long count)
{
    (void)domain;
    return (char *)(count == 1 ? one : many);
}

RETURNS_EITHER_FORMAT(1, 2)
static inline char *ngettext(const char *one, const char *many, unsigned long count)
{
    return (char *)(count == 1 ? one : many);
}

static inline char *textdomain(const char *domain)
{
    return (char *)domain;
}

static inline char *bindtextdomain(const char *domain, const char *folder)
{
    (void)domain;
    return (char *)folder;
}

static inline char *bind_textdomain_codeset(const char *domain, const char *codeset)
{
    (void)domain;
    return (char *)codeset;
}
