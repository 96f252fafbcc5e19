// Zooms, languages and colours, on the stand's page.
#include "../tour.h"

#include "../main_window.h"
#include "../resources/resource.h"

void Tour::PlanLooks() {
    Menu(MainWindow::cmdEnabled);
    Picture(L"07-disabled");
    Menu(MainWindow::cmdEnabled);
    for (const int percent : {125, 150, 200}) {
        Menu(MainWindow::cmdZoom + percent / 25);
        Picture(percent == 125 ? L"08-zoom-125" : percent == 150 ? L"09-zoom-150" : L"10-zoom-200");
    }
    Menu(MainWindow::cmdZoom + 4);
    const struct {
        int language;
        const wchar_t* name;
    } languages[] = {{LANG_GERMAN, L"11-german"},
                     {LANG_FRENCH, L"12-french"},
                     {LANG_SPANISH, L"13-spanish"},
                     {LANG_JAPANESE, L"14-japanese"}};
    for (const auto& each : languages) {
        Menu(MainWindow::cmdLanguage + each.language);
        Picture(each.name);
    }
    Menu(MainWindow::cmdLanguage + LANG_ENGLISH);
    Menu(MainWindow::cmdScheme + eKxColorScheme_System);
    Picture(L"15-system");
    Menu(MainWindow::cmdScheme + eKxColorScheme_Dark);
    Picture(L"15-dark");
    Menu(MainWindow::cmdZoom + 6);
    Menu(MainWindow::cmdSeries);
    Await([] { return GetDlgItem(GetActiveWindow(), IDC_SERIES_COUNT); });
    Picture(L"15-dark-150");
    Key(VK_ESCAPE);
    Menu(MainWindow::cmdZoom + 4);
    Menu(MainWindow::cmdScheme + eKxColorScheme_HighContrast);
    Picture(L"16-high-contrast");
    Menu(MainWindow::cmdAutoScheme);
    Picture(L"17-end");
}
