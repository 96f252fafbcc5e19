#include "host_microscope.h"

#include <windows.h>

#include <algorithm>
#include <cstdio>
#include <memory>
#include <optional>

#include <kxfilters/kx_objectives.h>

#include "event_log.h"

namespace {

using namespace kx::config;

struct Close {
    void operator()(std::FILE* file) const { std::fclose(file); }
};

// Empty when it cannot be read. A longer file than is taken is read as far as tells that it is.
std::optional<std::string> BytesOf(const std::wstring& path) {
    const std::unique_ptr<std::FILE, Close> file(_wfopen(path.c_str(), L"rb"));
    if (!file) return std::nullopt;
    std::string bytes(Bounds::fileBytes + 1, '\0');
    bytes.resize(std::fread(bytes.data(), 1, bytes.size(), file.get()));
    if (std::ferror(file.get())) return std::nullopt;
    return bytes;
}

std::wstring FromAnsi(std::string_view bytes) {
    const int size = static_cast<int>(bytes.size());
    std::wstring text(bytes.size(), L'\0');
    text.resize(static_cast<std::size_t>(
        std::max(0, MultiByteToWideChar(CP_ACP, 0, bytes.data(), size, text.data(), static_cast<int>(text.size())))));
    return text;
}

const wchar_t* NameOf(RemarkKind kind) {
    switch (kind) {
    case RemarkKind::Guess: return L"guess";
    case RemarkKind::Unknown: return L"unknown";
    case RemarkKind::Skipped: return L"skipped";
    case RemarkKind::Error: break;
    }
    return L"error";
}

}  // namespace

HostMicroscope::HostMicroscope(const std::wstring& path) : m_source(L"The host's own microscope") {
    std::optional<std::string> bytes;
    if (!path.empty()) {
        bytes = BytesOf(path);
        m_source =
            bytes ? L"The microscope of " + path : path + L" cannot be read: the host starts with its own microscope";
    }
    Remarks ofDefault;
    Remarks& remarks = bytes ? m_remarks : ofDefault;
    const ConfigFile file = ReadConfig(bytes ? std::string_view(*bytes) : DefaultConfig(), FromAnsi, remarks);
    m_roles = BuildMicroscope(InferStand(file, remarks), m_devices);
}

void HostMicroscope::Tell() const {
    constexpr wchar_t who[] = L"Microscope";
    Log().Add(who, L"%ls", m_source.c_str());
    for (const Remark& each : m_remarks.All())
        Log().Add(who, L"line %d: %ls: %ls", each.line, NameOf(each.kind), each.text.c_str());
    Log().Add(who, L"turrets %zu, wheels %zu, light paths %zu, TIRF mirrors %zu, shutters %zu, lasers %zu",
              m_roles.turrets.size(), m_roles.wheels.size(), m_roles.lightPaths.size(), m_roles.tirfMirrors.size(),
              m_roles.shutters.size(), m_roles.lasers.size());
    Log().Add(who, L"Z drives %zu, stages %zu, others %zu", m_roles.zDrives.size(), m_roles.stages.size(),
              m_roles.others.size());
}

void HostMicroscope::TellObjective(CKxZStackData& series) const {
    if (m_roles.turrets.empty()) return;
    const auto& turret = *Simulated<CKxSimNosepiece>(m_roles.turrets.front());
    long position = 0;
    if (!turret.GetPosition(position)) return;
    CKxStringW key;
    turret.GetObjectiveKey(position, key);
    SKxDDBObjectiveItem objective;
    if (CKxDeviceDatabase::DBGetObjectiveParam(key, &objective, false))
        series.SetObjective(objective.NA, objective.refractiveIndex);
}
