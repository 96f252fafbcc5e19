#include "pages.h"

#include "bench_page.h"
#include "color_page.h"
#include "controls_page.h"
#include "focus_page.h"
#include "lamp_page.h"
#include "light_page.h"
#include "lasers_page.h"
#include "optics_page.h"
#include "stand_page.h"
#include "zseries_page.h"

std::vector<std::unique_ptr<Page>> MakePages(HostMicroscope& microscope, GalleryDevices& devices) {
    std::vector<std::unique_ptr<Page>> pages;
    pages.push_back(std::make_unique<BenchPage>(microscope));
    pages.push_back(std::make_unique<StandPage>());
    pages.push_back(std::make_unique<ControlsPage>());
    pages.push_back(std::make_unique<OpticsPage>(devices));
    pages.push_back(std::make_unique<LightPage>());
    pages.push_back(std::make_unique<ColorPage>());
    pages.push_back(std::make_unique<LampPage>(devices));
    pages.push_back(std::make_unique<LasersPage>());
    pages.push_back(std::make_unique<ZSeriesPage>());
    pages.push_back(std::make_unique<FocusPage>());
    return pages;
}
