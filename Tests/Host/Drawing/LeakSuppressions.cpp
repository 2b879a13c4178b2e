// What the leak sanitizer is not to report: the font configuration that fontconfig keeps until the process ends.

// NOLINTNEXTLINE(bugprone-reserved-identifier): the name that the sanitizer looks for
extern "C" const char* __lsan_default_suppressions();

// NOLINTNEXTLINE(bugprone-reserved-identifier)
extern "C" const char* __lsan_default_suppressions() {
    return "leak:libfontconfig\n";
}
