// The main of every test program: googletest's options, and --suites=A,B,C, the suites that ctest knows of.
#include <bench/bench.h>

#include <cstdio>

std::function<std::string()> kx::test::crashNote;

namespace {

// googletest has no structured exception handling here: without this a crash would end the run and name no test.
LONG WINAPI ReportCrash(EXCEPTION_POINTERS* exception) {
    const EXCEPTION_RECORD& record = *exception->ExceptionRecord;
    const testing::TestInfo* test = testing::UnitTest::GetInstance()->current_test_info();
    std::printf("CRASH: exception 0x%08lX at %p in %s.%s\n", record.ExceptionCode, record.ExceptionAddress,
                test ? test->test_suite_name() : "no test", test ? test->name() : "");
    HMODULE module = nullptr;
    GetModuleHandleExW(GET_MODULE_HANDLE_EX_FLAG_FROM_ADDRESS | GET_MODULE_HANDLE_EX_FLAG_UNCHANGED_REFCOUNT,
                       static_cast<const wchar_t*>(record.ExceptionAddress), &module);
    wchar_t name[MAX_PATH] = L"";
    GetModuleFileNameW(module, name, MAX_PATH);
    std::printf("  in %ls, loaded at %p\n", name, static_cast<void*>(module));
    if (kx::test::crashNote) std::printf("  %s\n", kx::test::crashNote().c_str());
    std::fflush(stdout);
    TerminateProcess(GetCurrentProcess(), 1);
    return EXCEPTION_EXECUTE_HANDLER;
}

// A suite that ctest does not know of would never be run there, and nobody would notice. One with values is called
// "Prefix/Suite", one with types "Suite/0".
bool AllSuitesKnown(std::string_view list) {
    const std::string known = "," + std::string(list) + ",GoogleTestVerification,";
    bool all = true;
    const testing::UnitTest& tests = *testing::UnitTest::GetInstance();
    for (int i = 0; i < tests.total_test_suite_count(); ++i) {
        const std::string name = tests.GetTestSuite(i)->name();
        const std::size_t slash = name.find('/');
        const auto isKnown = [&](const std::string& suite) { return known.find("," + suite + ",") != known.npos; };
        if (isKnown(name.substr(slash + 1)) || isKnown(name.substr(0, slash))) continue;
        std::printf("ERROR: ctest has no entry for the suite %s\n", name.c_str());
        all = false;
    }
    return all;
}

}  // namespace

int main(int argc, char** argv) {
    std::setvbuf(stdout, nullptr, _IONBF, 0);
    SetErrorMode(SEM_FAILCRITICALERRORS | SEM_NOGPFAULTERRORBOX);
    SetUnhandledExceptionFilter(ReportCrash);
    testing::InitGoogleTest(&argc, argv);

    const INITCOMMONCONTROLSEX controls{sizeof(controls), ICC_WIN95_CLASSES | ICC_STANDARD_CLASSES};
    InitCommonControlsEx(&controls);
    // WM_MOUSELEAVE comes only after this time.
    SystemParametersInfoW(SPI_SETMOUSEHOVERTIME, 10, nullptr, 0);

    constexpr std::string_view option = "--suites=";
    for (int i = 1; i < argc; ++i)
        if (const std::string_view argument = argv[i]; argument.starts_with(option))
            if (!AllSuitesKnown(argument.substr(option.size()))) return 1;

    // Not the result itself: on Unix only its low 8 bits arrive.
    if (RUN_ALL_TESTS() != 0) return 1;
    if (!GTEST_FLAG_GET(list_tests) && testing::UnitTest::GetInstance()->test_to_run_count() == 0) {
        std::printf("ERROR: no test fits the filter\n");
        return 1;
    }
    return 0;
}
