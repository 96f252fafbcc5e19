#include <kxdevices/kx_zstackdata.h>

#include <cmath>

namespace zs = kx::zstack;

namespace {

template <class T>
int Give(T* output, const T& value) {
    if (output) *output = value;
    return eKxZStack_Ok;
}

template <class T>
int Give(T* output, const std::optional<T>& value) {
    return value ? Give(output, *value) : eKxZStack_NotSet;
}

int GiveLength(double* output, const std::optional<zs::Nm>& value) {
    return value ? Give(output, zs::ToMicrometres(*value)) : eKxZStack_NotSet;
}

// Within the limits, which what is not a number never is.
bool Holds(double low, double value, double high) { return value >= low && value <= high; }

// Whether two records answer the same to one question.
template <class T>
bool SameAnswer(const CKxZStackData& a, const CKxZStackData& b, int (CKxZStackData::*getter)(T*) const) {
    T first{}, second{};
    const int firstStatus = (a.*getter)(&first), secondStatus = (b.*getter)(&second);
    return firstStatus == secondStatus && (firstStatus != eKxZStack_Ok || first == second);
}

}  // namespace

CKxZStackData::CKxZStackData() = default;
CKxZStackData::CKxZStackData(const CKxZStackData&) = default;
CKxZStackData& CKxZStackData::operator=(const CKxZStackData&) = default;
CKxZStackData::~CKxZStackData() = default;

const CKxZStackData::Device* CKxZStackData::Current() const { return m_device ? &m_devices[*m_device] : nullptr; }

zs::Range CKxZStackData::Limits() const {
    const Device* device = Current();
    return device ? device->range : zs::Range{};
}

int CKxZStackData::Take(const zs::Outcome& outcome) {
    if (outcome) m_stack = *outcome;
    return outcome.status;
}

// A number that is too large to be counted in nanometres lies outside of any device.
int CKxZStackData::NoPosition(double micrometres) const {
    return Current() && !std::isnan(micrometres) ? eKxZStack_OutOfRange : eKxZStack_Invalid;
}

// ---- The stack -----------------------------------------------------------------------------------------------------

int CKxZStackData::GetType(int* type) const { return Give(type, m_stack.type); }
int CKxZStackData::SetType(int type) { return Take(zs::WithType(m_stack, type)); }

int CKxZStackData::GetTop(double* top) const { return GiveLength(top, m_stack.top); }
int CKxZStackData::GetBottom(double* bottom) const { return GiveLength(bottom, m_stack.bottom); }
int CKxZStackData::GetHome(double* home) const { return GiveLength(home, m_stack.home); }

int CKxZStackData::SetTop(double top, bool adjust) {
    const auto position = zs::FromMicrometres(top);
    return position ? Take(zs::WithTop(m_stack, Limits(), *position, adjust)) : NoPosition(top);
}

int CKxZStackData::SetBottom(double bottom, bool adjust) {
    const auto position = zs::FromMicrometres(bottom);
    return position ? Take(zs::WithBottom(m_stack, Limits(), *position, adjust)) : NoPosition(bottom);
}

int CKxZStackData::SetHome(double home) {
    const auto position = zs::FromMicrometres(home);
    return position ? Take(zs::WithHome(m_stack, Limits(), *position)) : NoPosition(home);
}

int CKxZStackData::ResetTop() {
    m_stack.top.reset();
    return eKxZStack_Ok;
}

int CKxZStackData::ResetBottom() {
    m_stack.bottom.reset();
    return eKxZStack_Ok;
}

int CKxZStackData::ResetHome() { return Take(zs::WithoutHome(m_stack)); }

// ---- Step and planes -----------------------------------------------------------------------------------------------

int CKxZStackData::GetStep(double* step) const { return GiveLength(step, m_stack.step); }

int CKxZStackData::SetStep(double step) {
    const auto length = zs::FromMicrometres(step);
    return length ? Take(zs::WithStep(m_stack, *length)) : eKxZStack_Invalid;
}

int CKxZStackData::GetCount(unsigned int* count) const { return Give(count, m_stack.count); }
int CKxZStackData::SetCount(unsigned int count) { return Take(zs::WithCount(m_stack, count)); }

int CKxZStackData::GetStepSuggested(double* step) const {
    if (!m_objective || !m_wavelength) return eKxZStack_NotSet;
    const double nanometres =
        zs::NyquistStep(m_objective->numericalAperture, m_objective->immersionIndex, *m_wavelength);
    return GiveLength(step, zs::FromMicrometres(nanometres / 1000.0));
}

int CKxZStackData::SetObjective(double numericalAperture, double immersionIndex) {
    if (!Holds(1.0, immersionIndex, 3.0) || !Holds(0.01, numericalAperture, immersionIndex)) return eKxZStack_Invalid;
    m_objective = Objective{numericalAperture, immersionIndex};
    return eKxZStack_Ok;
}

int CKxZStackData::SetWavelength(double nanometres) {
    if (!Holds(100.0, nanometres, 10000.0)) return eKxZStack_Invalid;
    m_wavelength = nanometres;
    return eKxZStack_Ok;
}

int CKxZStackData::GetPlane(unsigned int index, double* position) const {
    return GiveLength(position, zs::PlaneAt(m_stack, index, m_topPreserved && !m_stack.IsRelative()));
}

int CKxZStackData::GetRemainder(double* remainder) const { return GiveLength(remainder, zs::Remainder(m_stack)); }

// ---- Choices -------------------------------------------------------------------------------------------------------

int CKxZStackData::GetAbsoluteZStackTopPreserved(bool* preserved) const { return Give(preserved, m_topPreserved); }

int CKxZStackData::SetAbsoluteZStackTopPreserved(bool preserved) {
    m_topPreserved = preserved;
    return eKxZStack_Ok;
}

int CKxZStackData::GetKeepZOnPiezoHome(bool* keep) const { return Give(keep, m_keepZ); }

int CKxZStackData::SetKeepZOnPiezoHome(bool keep) {
    m_keepZ = keep;
    return eKxZStack_Ok;
}

// ---- Z devices -----------------------------------------------------------------------------------------------------

int CKxZStackData::AddZDevice(double rangeMin, double rangeMax, unsigned int* device) {
    const auto low = zs::FromMicrometres(rangeMin), high = zs::FromMicrometres(rangeMax);
    if (!low || !high || *low > *high) return eKxZStack_Invalid;
    m_devices.push_back({{*low, *high}, std::nullopt});
    return Give(device, static_cast<unsigned int>(m_devices.size() - 1));
}

int CKxZStackData::ClearZDevices() {
    m_devices.clear();
    m_device.reset();
    return eKxZStack_Ok;
}

int CKxZStackData::GetZDeviceCount(unsigned int* count) const {
    return Give(count, static_cast<unsigned int>(m_devices.size()));
}

int CKxZStackData::GetZDevice(unsigned int* device) const { return Give(device, m_device); }

int CKxZStackData::SetZDevice(unsigned int device) {
    if (device >= m_devices.size()) return eKxZStack_NoDevice;
    if (m_device == device) return eKxZStack_Ok;
    const Device& next = m_devices[device];
    const Device* previous = Current();
    const bool known = previous && previous->position && next.position;
    m_stack = zs::OnDevice(m_stack, next.range, known ? *next.position - *previous->position : 0);
    m_device = device;
    return eKxZStack_Ok;
}

int CKxZStackData::GetZRangeMin(double* position) const {
    return Current() ? Give(position, zs::ToMicrometres(Current()->range.min)) : eKxZStack_NoDevice;
}

int CKxZStackData::GetZRangeMax(double* position) const {
    return Current() ? Give(position, zs::ToMicrometres(Current()->range.max)) : eKxZStack_NoDevice;
}

int CKxZStackData::GetZPosition(double* position) const {
    return Current() ? GiveLength(position, Current()->position) : eKxZStack_NoDevice;
}

int CKxZStackData::SetZPosition(unsigned int device, double position) {
    if (device >= m_devices.size()) return eKxZStack_NoDevice;
    const auto place = zs::FromMicrometres(position);
    if (!place) return eKxZStack_Invalid;
    m_devices[device].position = *place;
    return eKxZStack_Ok;
}

int CKxZStackData::IsEqual(const CKxZStackData& other, bool* equal) const {
    using Self = CKxZStackData;
    const auto same = [&](auto getter) { return SameAnswer(*this, other, getter); };
    return Give(equal, same(&Self::GetType) && same(&Self::GetTop) && same(&Self::GetBottom) && same(&Self::GetHome) &&
                           same(&Self::GetStep) && same(&Self::GetCount) && same(&Self::GetZDevice) &&
                           same(&Self::GetAbsoluteZStackTopPreserved) && same(&Self::GetKeepZOnPiezoHome));
}
