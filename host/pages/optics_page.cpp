#include "optics_page.h"

#include <kxsystem/kx_time.h>

#include "../held_values.h"

namespace {

// The focus is that of the Z series.
bool IsStageHigh() {
    const SKxSimZDrive& focus = Held().drives[0];
    return IsHigh(focus.Position(KX_GetTimeCounter()), focus.rangeMin, focus.rangeMax, false);
}

}  // namespace

OpticsPage::OpticsPage(GalleryDevices& devices)
    : Page(L"Optical path"), m_nosepiece(devices.Nosepiece(), &devices.Emission(), IsStageHigh),
      m_emission(L"Emission wheel", devices.Emission()), m_cubes(L"Cube turret", devices.Cubes()),
      m_path(L"Light path", devices.Path(),
             [&path = devices.Path()](long i) -> Asked {
                 return {PlaceOf(path), static_cast<double>(i)};
             }),
      m_mirror(L"TIRF mirror", devices.Mirror(),
               [&mirror = devices.Mirror()](long i) -> Asked {
                   return {PlaceOf(mirror), static_cast<double>(i)};
               }),
      m_lasers(L"Laser ports", devices.Lasers(), [&lasers = devices.Lasers()](long i) -> Asked {
          return {UseOf(lasers, i), lasers.IsPortUsed(i) ? 0.0 : 1.0};
      }) {}

void OpticsPage::Fill() {
    Place(m_nosepiece, {8, 8, 268, 108});
    m_nosepiece.Fill();
    Place(m_emission, {284, 8, 268, 108});
    m_emission.Fill();
    Place(m_cubes, {8, 124, 268, 108});
    m_cubes.Fill();
    Place(m_path, {8, 240, 320, 76});
    m_path.Fill(false);
    Place(m_mirror, {336, 240, 216, 76});
    m_mirror.Fill(false);
    Place(m_lasers, {8, 320, 320, 76});
    m_lasers.Fill(true);
}
