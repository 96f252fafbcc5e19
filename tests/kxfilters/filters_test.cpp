// Filters by name, colours of wavelengths, objectives, and what users may do.
#include <bench/bench.h>
#include <kxfilters/kx_objectives.h>
#include <kxfilters/kx_opticalfilter.h>
#include <kxsystem/kx_color.h>
#include <kxsystem/kx_usermanager.h>

#include <limits>
#include <sstream>

namespace {

using namespace kx::test;

// "525/50 ..." from the bands that were found.
std::string BandsOf(const wchar_t* name) {
    CKxOpticalFilter filter;
    filter.bands = {{1, 2}};
    const bool known = CKxFilterDialog::GetFilterInfo(name, &filter);
    EXPECT_EQ(known, !filter.bands.empty());
    std::ostringstream text;
    for (const SKxFilterBand& band : filter.bands)
        text << band.centre << '/' << band.width << ' ';
    return text.str();
}

TEST(OpticalFilters, AreReadOffTheirNames) {
    // clang-format off
    const std::pair<const wchar_t*, const char*> cases[] = {
        {L"390/40 482/25 587/45", "390/40 482/25 587/45 "}, {L"BP525/50,605/70", "525/50 605/70 "},
        {L"Quad 440/40 521/21 607/34 700/45 900/10 1000/5", "440/40 521/21 607/34 700/45 900/10 1000/5 "},
        {L"LP 515", "647.5/265 "}, {L"515 LP 600", "647.5/265 "}, {L"sp650", "515/270 "}, {L"LP", ""}, {L"LP 790", ""},
        {L"dapi", "460/50 "}, {L"GFP narrow", "525/50 "}, {L"GFP 510/20", "510/20 "}, {L"Cy5", "690/50 "},
        {L"<svg>&525/50", "525/50 "}, {L"", ""}, {L"Empty", ""}, {L"ND 16", ""},
        {L"525/0", ""}, {L"525/", ""}, {L"/50", ""}, {L"5/50", ""}, {L"99999999999999999999/50", ""},
    };
    // clang-format on
    for (const auto& [name, bands] : cases)
        EXPECT_EQ(BandsOf(name), bands) << Narrow(name);
    EXPECT_EQ(BandsOf(std::wstring(10000, L'7').c_str()), "");
    EXPECT_FALSE(CKxFilterDialog::GetFilterInfo(L"525/50", nullptr));
}

TEST(OpticalFilters, ShowTheColoursOfTheirBands) {
    CKxOpticalFilter filter;
    CKxFilterDialog::GetFilterInfo(L"440/40 521/21 607/34 700/45 470/10 650/5", &filter);
    unsigned long colors[8] = {};
    for (const auto& [room, expected] : {std::pair{8, 5}, {5, 5}, {2, 2}, {0, 0}, {-1, 0}}) {
        int count = room;
        CKxFilterDialog::GetColorsFromFilter(&filter, colors, count);
        EXPECT_EQ(count, expected) << room;
    }
    EXPECT_EQ(colors[1], KX_RGBFromWavelength(521));
    int count = 5;
    CKxFilterDialog::GetColorsFromFilter(nullptr, colors, count);
    EXPECT_EQ(count, 0);
}

TEST(WavelengthColours, EndWithTheSpectrumAndHaveNoSeams) {
    for (const double dark : {380.0, 780.0, 0.0, -1.0, 1e300, std::numeric_limits<double>::quiet_NaN()})
        EXPECT_EQ(KX_RGBFromWavelength(dark), 0u) << dark;
    EXPECT_EQ(KX_RGBFromWavelength(740), 0xBCu) << "half of the way to the dark";
    // Without jumps: a rainbow drawn of it shows no seams.
    for (double nm = 380; nm < 780; nm += 0.5) {
        const unsigned long a = KX_RGBFromWavelength(nm), b = KX_RGBFromWavelength2(nm + 0.5);
        for (int shift = 0; shift < 24; shift += 8)
            EXPECT_NEAR(a >> shift & 255, b >> shift & 255, 45) << nm;  // the encoding is steep next to black
    }
}

TEST(Objectives, AreFoundByKey) {
    SKxDDBObjectiveItem item;
    EXPECT_TRUE(CKxDeviceDatabase::DBGetObjectiveParam(L"PlanApo60x140Oil", &item, false));
    EXPECT_FALSE(CKxDeviceDatabase::DBGetObjectiveParam(L"none", &item, false));
    EXPECT_FALSE(CKxDeviceDatabase::DBGetObjectiveParam(L"PlanApo60x140Oil", nullptr, false));
    EXPECT_TRUE(item.NA == 1.40 && item.WD == 130);
    item.key = L"Own";
    item.NA = item.refractiveIndex;
    EXPECT_FALSE(CKxDeviceDatabase::DBSetObjective(item));
    item.NA = 1.1;
    EXPECT_TRUE(CKxDeviceDatabase::DBSetObjective(item));
    SKxDDBObjectiveItem own;
    EXPECT_TRUE(CKxDeviceDatabase::DBGetObjectiveParam(L"Own", &own, true) && own.NA == 1.1);
}

TEST(UserRights, AreAllOrNone) {
    EXPECT_TRUE(CKxUserManager::GetCurrentUserRights(1024));
    CKxUserManager::SetCurrentUserRights(1024 | 1);
    EXPECT_TRUE(CKxUserManager::GetCurrentUserRights(1025) && !CKxUserManager::GetCurrentUserRights(1026));
    CKxUserManager::SetCurrentUserRights(~0u);
}

}  // namespace
