// libgettextpo doesn't free all that it allocates.

// NOLINTBEGIN(bugprone-reserved-identifier)
extern "C" {

const char *__lsan_default_suppressions();
const char *__lsan_default_options();

const char *__lsan_default_suppressions()
{
    return "leak:libgettextpo";
}

// Not on standard error, which is for defects.
const char *__lsan_default_options()
{
    return "print_suppressions=0";
}

} // extern "C"
// NOLINTEND(bugprone-reserved-identifier)
