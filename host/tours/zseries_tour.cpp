// The page of the Z series.
#include "../tour.h"

#include "../main_window.h"
#include "../pages/zseries_page.h"
#include "../resources/resource.h"

void Tour::PlanZSeries() {
    const auto in = [this](int id) -> Find {
        return [this, id] { return m_window.PageOf<ZSeriesPage>().Series().Stack().Child(id); };
    };
    const Find refuses = [this] { return GetDlgItem(m_window.PageOf<ZSeriesPage>().Series(), IDC_ZSERIES_REFUSE); };
    constexpr int kTypeEnds = 1255, kTypeSymmetric = 1257, kTypeAsymmetric = 1258, kTop = 1251, kTopEdit = 1260,
                  kHome = 1252, kGrips = 1256;
    constexpr int kStep = 1263, kBelow = 1264, kRange = 1265, kSuggested = 1270, kDevice = 1200, kPiezo = 1259;
    TurnTo([this] { return m_window.CommandOf<ZSeriesPage>(); });
    Await(in(kTypeEnds));
    Click(in(kStep));
    Key(VK_END);
    for (int i = 0; i < 4; ++i)
        Key(VK_BACK);
    Type(L"2");
    Key(VK_TAB);
    Picture(L"40-zseries-ends");
    // A double click.
    Click(in(kTopEdit));
    Click(in(kTopEdit));
    Do([] {});
    Picture(L"40-zseries-moving");
    // An end by its grip, the others by keys, and the scale magnified.
    Drag(in(kGrips), 12, 30);
    Key(VK_RIGHT);
    Key(VK_DOWN);
    Wheel(in(kGrips), 3);
    Picture(L"40-zseries-grips");
    Wheel(in(kGrips), -3);
    Key(VK_ESCAPE);
    Click(in(kTop));
    Click(in(kSuggested));
    Click(in(kTypeSymmetric));
    Click(in(kHome));
    Click(in(kRange));
    Key(VK_END);
    Type(L"0");
    Key(VK_RETURN);
    Picture(L"41-zseries-symmetric");
    Click(in(kTypeAsymmetric));
    Click(in(kDevice));
    Key(VK_DOWN);
    Key(VK_RETURN);
    Click(in(kPiezo));
    Picture(L"42-zseries-asymmetric-piezo");
    Click(refuses);
    Click(in(kBelow));
    Type(L"-1");
    Key(VK_TAB);
    Picture(L"43-zseries-refused");
    Click(refuses);
    Click(in(kTypeEnds));
    Looks(L"44-zseries", LANG_JAPANESE);
    Picture(L"47-zseries-end");
}
