// The demonstration host: kxdevhost [--tour DIR [--page NAME]] [--log FILE] [--soak SECONDS --seed N] [--first-picture]
// [FILE], with a device configuration file
#include <windows.h>

#include <commctrl.h>

#include <cstdlib>
#include <cwchar>
#include <string>

#include <kxdevui/framework/devgui_host.h>
#include <kxsystem/kx_log.h>
#include <kxsystem/kx_translation.h>

#include "event_log.h"
#include "host_microscope.h"
#include "main_window.h"
#include "settings_file.h"
#include "soak.h"
#include "tour.h"
#include "watcher.h"

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
    std::wstring page;    // of the tour; empty: all
    std::wstring log;     // file of the log; empty: none, or the tour's
    int soak = 0;         // seconds; 0: no soak
    unsigned seed = 1;    // of the soak
    bool first = false;   // whether it ends with its first complete picture
    std::wstring config;  // device configuration file; empty: none
};

CommandLine ReadCommandLine() {
    // The C runtime's: the shell's would bring half a dozen modules with it, which would be a part of every start.
    wchar_t** const arguments = __wargv;
    CommandLine read;
    for (int i = 1; i < __argc; ++i) {
        const std::wstring argument = arguments[i];
        const bool valued = i + 1 < __argc;
        if (argument == L"--tour" && valued) {
            read.tour = arguments[++i];
        } else if (argument == L"--page" && valued) {
            read.page = arguments[++i];
        } else if (argument == L"--log" && valued) {
            read.log = arguments[++i];
        } else if (argument == L"--soak" && valued) {
            read.soak = static_cast<int>(std::wcstol(arguments[++i], nullptr, 10));
        } else if (argument == L"--first-picture") {
            read.first = true;
        } else if (argument == L"--seed" && valued) {
            read.seed = static_cast<unsigned>(std::wcstoul(arguments[++i], nullptr, 10));
        } else {
            read.config = argument;
        }
    }
    if (!read.tour.empty()) read.log = read.tour + L"\\callbacks.log";
    return read;
}

}  // namespace

int WINAPI wWinMain(HINSTANCE instance, HINSTANCE, wchar_t*, int) {
    const INITCOMMONCONTROLSEX classes{sizeof classes, ICC_WIN95_CLASSES};
    InitCommonControlsEx(&classes);
    AddCatalogues(instance);

    const CommandLine commandLine = ReadCommandLine();
    const std::wstring& folder = commandLine.tour;
    if (!commandLine.log.empty() && !Log().OpenFile(commandLine.log)) return 2;
    ShowLibraryLog();

    if (commandLine.soak > 0) kx::Counts::Begin();
    HostMicroscope microscope(commandLine.config);
    MainWindow window(microscope);
    // What is driven by a program is the same whoever starts it.
    const bool scripted = !folder.empty() || commandLine.soak > 0 || !commandLine.log.empty() || commandLine.first;
    if (!window.Create(instance, scripted ? kx::host::Settings{} : LoadSettings())) return 3;
    microscope.Tell();
    Tour tour(window, folder, commandLine.page);
    Watcher watcher(window);
    Soak soak(window, commandLine.soak, commandLine.seed);
    if (!folder.empty()) {
        tour.Start();
    } else if (commandLine.soak > 0) {
        soak.Start();
    } else if (commandLine.first) {
        RedrawWindow(window.Handle(), nullptr, nullptr, RDW_UPDATENOW | RDW_ALLCHILDREN);
        ExitProcess(0);
    } else if (!commandLine.log.empty()) {
        watcher.Start();
    }

    MSG message;
    while (GetMessageW(&message, nullptr, 0, 0) > 0) {
        if (window.TakesKey(message) || window.TakesEditKey(message) || window.TakesPanelKey(message)) continue;
        if (!KX_IsPanelMessage(window.Handle(), &message)) {
            TranslateMessage(&message);
            DispatchMessageW(&message);
        }
        if (IsWindow(window.Handle())) window.KeepFocusInSight();
    }
    CKxLogFile::SetSink(nullptr, nullptr);
    if (!scripted) SaveSettings(window.CurrentSettings());
    return tour.Failed() || soak.Failed() ? 1 : 0;
}
