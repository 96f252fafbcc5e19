// The demonstration host: kxdevhost [--tour DIR] [FILE], with a device configuration file
#include <windows.h>

#include <commctrl.h>
#include <shellapi.h>

#include <string>

#include <kxsystem/kx_log.h>
#include <kxsystem/kx_translation.h>

#include "event_log.h"
#include "host_microscope.h"
#include "main_window.h"
#include "settings_file.h"
#include "tour.h"

namespace {

// The host's own texts; the resources are numbered as the languages.
void AddCatalogues(HINSTANCE instance) {
    for (const WORD language : std::initializer_list<WORD>{LANG_GERMAN, LANG_FRENCH, LANG_SPANISH, LANG_JAPANESE}) {
        const HRSRC resource = FindResourceW(instance, MAKEINTRESOURCEW(language), RT_RCDATA);
        const HGLOBAL loaded = resource ? LoadResource(instance, resource) : nullptr;
        if (!loaded) continue;
        KX_AddCatalogue(language, static_cast<const char*>(LockResource(loaded)), SizeofResource(instance, resource));
    }
}

void ShowLibraryLog() {
    CKxLogFile::SetDetail(true);
    CKxLogFile::SetSink([](const wchar_t* record, void*) { Log().Add(L"Library log", L"%ls", record); }, nullptr);
}

struct CommandLine {
    std::wstring tour;    // folder; empty: no tour
    std::wstring config;  // device configuration file; empty: none
};

CommandLine ReadCommandLine() {
    int count = 0;
    wchar_t** arguments = CommandLineToArgvW(GetCommandLineW(), &count);
    CommandLine read;
    for (int i = 1; i < count; ++i) {
        if (std::wstring(arguments[i]) == L"--tour") {
            if (++i < count) read.tour = arguments[i];
        } else {
            read.config = arguments[i];
        }
    }
    LocalFree(arguments);
    return read;
}

}  // namespace

int WINAPI wWinMain(HINSTANCE instance, HINSTANCE, wchar_t*, int) {
    const INITCOMMONCONTROLSEX classes{sizeof classes, ICC_WIN95_CLASSES};
    InitCommonControlsEx(&classes);
    AddCatalogues(instance);

    const CommandLine commandLine = ReadCommandLine();
    const std::wstring& folder = commandLine.tour;
    if (!folder.empty() && !Log().OpenFile(folder + L"\\callbacks.log")) return 2;
    ShowLibraryLog();

    HostMicroscope microscope(commandLine.config);
    MainWindow window(microscope);
    // A tour is the same whoever takes it.
    if (!window.Create(instance, folder.empty() ? LoadSettings() : kx::host::Settings{})) return 3;
    microscope.Tell();
    Tour tour(window, folder);
    if (!folder.empty()) tour.Start();

    MSG message;
    while (GetMessageW(&message, nullptr, 0, 0) > 0) {
        // The panels are dialogs within this window: Tab and the arrow keys move between their controls.
        if (IsWindow(window.Handle()) && IsDialogMessageW(window.Handle(), &message)) continue;
        TranslateMessage(&message);
        DispatchMessageW(&message);
    }
    CKxLogFile::SetSink(nullptr, nullptr);
    if (folder.empty()) SaveSettings(window.CurrentSettings());
    return tour.Failed() ? 1 : 0;
}
