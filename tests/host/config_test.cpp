// Device configuration files: the answers to lines, what devices are taken for, the microscope made of it.
#include <bench/bench.h>
#include <host/config/config_microscope.h>
#include <kxfilters/kx_objectives.h>

#include <algorithm>
#include <fstream>
#include <iterator>
#include <sstream>

#include "samples.h"

using namespace kx::config;
using namespace std::string_literals;

namespace {

struct Read {
    explicit Read(std::string_view bytes)
        : file(ReadConfig(bytes, FromAnsi, remarks)), stand(InferStand(file, remarks)) {}

    static std::wstring FromAnsi(std::string_view bytes) { return {bytes.begin(), bytes.end()}; }

    // "3E text": line, first letter of the kind, and the text, one remark a line; guesses and unknown devices aside.
    std::string Wrong() const {
        std::ostringstream all;
        for (const auto& [line, kind, text] : remarks.All())
            if (text.find(L" is taken ") == text.npos && text.find(L"no place") == text.npos)
                all << line << "GUES"[static_cast<int>(kind)] << ' ' << kx::test::Narrow(text) << '\n';
        return all.str();
    }

    Remarks remarks;
    ConfigFile file;
    Stand stand;
};

// The lines follow three on the device W. The rest of the file must count all the same.
void ExpectAnswer(const std::string& lines, const std::string& remarks) {
    SCOPED_TRACE(lines.substr(0, 60));
    const Read read("Device, W ,M,Wheel\r\nLabel,W,0,525/50\nLabel,W,2,605/70\n" + lines + "\nDevice,Last,M,N");
    EXPECT_EQ(read.Wrong(), remarks);
    ASSERT_FALSE(read.stand.devices.empty());
    EXPECT_EQ(read.stand.devices.front().label, L"W");
    EXPECT_EQ(read.stand.devices.back().label, L"Last");
}

TEST(ConfigFile, AnswersEveryLine) {
    for (const char* lines :
         {"", "\r\n \t \r\n# , ,\n  #Label,W\n", "Label,Last,0,a", "Property,W,a", "Property,W,State,2",
          "ConfigGroup,G\nConfigGroup,G,P,W,Label,x", "Property,Core,Shutter,\nProperty,Core,Initialize,0",
          "Property,Core,Shutter,W\nProperty,W,State,2", "Label,W,1,\xC3\xA9\n#\xF0\x9F\x94\xAC"})
        ExpectAnswer(lines, "");
    for (const char* line : {"Label,X,0,a", "Property,X,a,1", "ConfigPixelSize,10x,X,Label,a",
                             "Property,Core,Shutter,X", "FocusDirection,X,1", "Parent,W,X", "#@ Limits,X,P,0,1"})
        ExpectAnswer(line, "4E there is no device \"X\"\n");
    for (const char* line : {"Label,W,1,\xE9", "#\xC0\x80", "#\xED\xA0\x80"})
        ExpectAnswer(line, "4G this is not UTF-8: the whole file is read as ANSI\n");
    const std::pair<std::string, const char*> errors[] = {
        // clang-format off
        {"Device,A,M", "\"Device\" needs 3 fields, 2 are given"}, {"Device", "\"Device\" needs 3 fields, 0 are given"},
        {"Device,,M,N", "a device needs a label"}, {"Device,Core,M,N", "\"Core\" is no label for a device"},
        {"Device,W,M,N", "\"W\" is a device already, from line 1"},
        {"Device,w,M,N,O", "what follows field 3 does not belong here"},
        {"Label,W,-1,a", "\"-1\" is no position from 0 to 99"}, {"Label,W,,a", "\"\" is no position from 0 to 99"},
        {"Label,W,100,a", "\"100\" is no position from 0 to 99"},
        {"Label,W,1e1,a", "\"1e1\" is no position from 0 to 99"},
        {"Label,W,2,LP 515", "position 2 of \"W\" has a label already, from line 3: this one counts"},
        {"Property,W,State,3", "\"3\" is no position of \"W\""},
        {"Property,W,State,nan", "\"nan\" is no position of \"W\""},
        {"ConfigGroup,System,Startup,W,Label,x", "\"x\" is no label of \"W\""},
        {"PixelSize_um,10x,-1", "\"-1\" is no size in micrometres"},
        {"Property,Core,AutoShutter,yes", "\"yes\" is neither 0 nor 1"},
        {"FocusDirection,W,7", "\"7\" is no focus direction: -1, 0 or 1"},
        {"Delay,W,60001", "\"60001\" is no delay from 0 to 60000 ms"},
        {"#@ Limits,W,P,2,1", "the minimum 2 is not below the maximum 1"},
        {"#@ Limits,W,P,2,2", "the minimum 2 is not below the maximum 2"},
        {"#@ Limits,W,P,0,nan", "\"nan\" is no limit"}, {"#@ Limits,W,P,-2000000,0,mm", "\"-2000000\" is no limit"},
        {"Label,W,1,a\0b"s, "the line has a zero byte"},
        {"Label,W,1," + std::string(5000, 'x'), "the line is longer than 4096 bytes"},
        // clang-format on
    };
    for (const auto& [line, error] : errors)
        ExpectAnswer(line, "4E "s + error + "\n");
    ExpectAnswer("FocusDirection,W,0\n#@ Limits,W,Position,0,1,mW", "5E \"mW\" is no unit of length\n");
    ExpectAnswer("Property,Core,Shutter,W\n#@ Limits,W,Aperture,0,101", "5E an aperture goes from 0 to 100 %\n");
    ExpectAnswer("Property,Core,TimeoutMs,5000", "4S the role \"TimeoutMs\" has no meaning here\n");
    ExpectAnswer("Equipment,a\nImageSynchro,W", "4S \"Equipment\" is obsolete\n5S \"ImageSynchro\" is obsolete\n");
    ExpectAnswer("device,A,M,N", "4U \"device\" is no known command\n");
    ExpectAnswer("#@ Limit,W,P,0,1", "4U \"Limit\" is no known command\n");
}

TEST(ConfigFile, BoundsAndMarks) {
    EXPECT_EQ(Read("\xEF\xBB\xBF\nDevice,A,M,N").Wrong(), "1S a byte order mark\n");
    EXPECT_EQ(Read("\xFF\xFE#\0"s).Wrong(), "1E the file is in UTF-16, which is not read\n");
    EXPECT_EQ(Read("Device,A,M,N\n" + std::string(Bounds::fileBytes, '#')).Wrong(),
              "2E the file is longer than 4 MB: the rest is not read\n");

    std::string devices;
    for (int i = 0; i < 300; ++i)
        devices += "Device,D" + std::to_string(i) + ",M,N\n";
    const Read many(devices);
    EXPECT_EQ(many.stand.devices.size(), Bounds::devices);
    EXPECT_EQ(many.remarks.All().back().line, 300);

    std::string lines("Device,A,M,N\n");
    while (lines.size() < Bounds::fileBytes)
        lines += "? " + std::string(100, ',') + "\n";
    const Read crowded(lines + "Device,B,M,N");
    EXPECT_EQ(crowded.stand.devices.size(), 1u);
    EXPECT_EQ(crowded.remarks.All().size(), Bounds::remarks + 1);
    EXPECT_EQ(crowded.remarks.All().back().kind, RemarkKind::Skipped);
}

TEST(ConfigInfer, TakesDevicesForWhatTheyReadLike) {
    // clang-format off
    // Labels between bars; detail: FilterKind or ShutterKind.
    const struct { const char *label, *name, *labels, *line; DeviceKind kind; int detail = -1; } rows[] = {
        {"A", "B", "10X 0.3|1.25x|Empty", "", DeviceKind::Turret},
        {"A", "Camera binning", "1x1|2x2", "", DeviceKind::LightPath},
        {"A", "B", "460/50|LP 515|Open", "", DeviceKind::FilterWheel, int(FilterKind::Emission)},
        {"Ex", "B", "DAPI|Cy5", "", DeviceKind::FilterWheel, int(FilterKind::Excitation)},
        {"FilterCubes", "B", "State-0|State-1", "", DeviceKind::FilterWheel, int(FilterKind::Cube)},
        {"A", "B", "ND 2|ND 4", "", DeviceKind::FilterWheel, int(FilterKind::NeutralDensity)},
        {"A", "B", "Left|Eyepiece|50 %", "", DeviceKind::LightPath},
        {"A", "B", "one|two|three", "", DeviceKind::LightPath}, {"Objective", "B", "one|two", "", DeviceKind::Turret},
        {"Objective", "B", "", "", DeviceKind::Other},
        {"A", "B", "Open|Closed", "", DeviceKind::Shutter, int(ShutterKind::Auxiliary)},
        {"DiaShutter", "B", "", "", DeviceKind::Shutter, int(ShutterKind::Dia)},
        {"A", "EPI_shutter", "", "", DeviceKind::Shutter, int(ShutterKind::Epi)},
        {"A", "B", "DAPI|Cy5", "Property,Core,Shutter,A", DeviceKind::Shutter, int(ShutterKind::Auxiliary)},
        {"A", "B", "TIRF|Epi", "", DeviceKind::TirfMirror},
        {"Laser", "B", "Left fibre|Right fibre", "", DeviceKind::Laser},
        {"A", "B", "", "FocusDirection,A,0", DeviceKind::ZDrive},
        {"A", "B", "", "FocusDirection,A,7", DeviceKind::Other},
        {"A", "B", "", "Property,Core,Focus,A", DeviceKind::ZDrive}, {"A", "ZDrive", "", "", DeviceKind::ZDrive},
        {"AutoFocus", "B", "", "", DeviceKind::Other}, {"A", "XYStage", "", "", DeviceKind::Stage},
        {"A", "B", "", "Property,Core,XYStage,A", DeviceKind::Stage}, {"A", "Wheel", "", "", DeviceKind::Other},
    };
    // clang-format on
    for (const auto& row : rows) {
        SCOPED_TRACE(std::string(row.label) + ", " + row.name + ", " + row.labels + ", " + row.line);
        std::ostringstream text;
        text << row.line << '\n';
        std::istringstream labels(row.labels);
        int index = 0;
        for (std::string each; std::getline(labels, each, '|'); ++index)
            text << "Label," << row.label << ',' << index << ',' << each << '\n';
        text << "Device," << row.label << ",M," << row.name;
        const Read read(text.str());
        const Device& device = read.stand.devices.at(0);
        EXPECT_EQ(device.kind, row.kind) << kx::test::Narrow(device.reason);
        const int detail = device.kind == DeviceKind::Shutter ? int(device.shutter) : int(device.filter);
        EXPECT_TRUE(row.detail < 0 || detail == row.detail) << detail;
        // Each guess is told, at the device's line.
        EXPECT_TRUE(std::ranges::any_of(read.remarks.All(), [&](const Remark& each) {
            return each.line == device.line && each.text.find(device.reason) != each.text.npos;
        }));
    }
    const ObjectiveNumbers oil = ReadObjective(L"Plan Apo 60X/1.40 Oil");
    EXPECT_TRUE(oil.magnification == 60 && oil.numericalAperture == 1.4 && oil.refractiveIndex == 1.518);
    EXPECT_EQ(ReadWavelength(L"Laser 4 488nm 100 mW"), 488);
}

std::string Sample(const char* name) {
    std::ifstream file(std::string(kSamples) + name, std::ios::binary);
    return {std::istreambuf_iterator<char>(file), {}};
}

TEST(ConfigMicroscope, BuildsEverySample) {
    const std::pair<std::string, std::vector<std::size_t>> rows[] = {
        {Sample("teaching.cfg"), {1, 1, 0, 0, 1, 0, 1, 0, 2}},
        {Sample("widefield.cfg"), {1, 3, 1, 0, 2, 0, 2, 1, 3}},
        {Sample("tirf.cfg"), {1, 2, 1, 1, 1, 5, 1, 1, 2}},
        {std::string(DefaultConfig()), {1, 2, 1, 1, 2, 4, 1, 0, 2}}};
    for (const auto& [text, sizes] : rows) {
        SCOPED_TRACE(text.substr(0, 60));
        const Read read(text);
        CKxSimMicroscope devices;
        const Microscope scope = BuildMicroscope(read.stand, devices);
        EXPECT_EQ((std::vector{scope.turrets.size(), scope.wheels.size(), scope.lightPaths.size(),
                               scope.tirfMirrors.size(), scope.shutters.size(), scope.lasers.size(),
                               scope.zDrives.size(), scope.stages.size(), scope.others.size()}),
                  sizes);
        for (const Remark& each : read.remarks.All())
            EXPECT_NE(each.kind, RemarkKind::Error) << each.line;
        EXPECT_EQ(DMApi::LogDev_GetType(scope.shutter), eKxDeviceType_Shutter);
        EXPECT_EQ(DMApi::LogDev_GetType(scope.focus), eKxDeviceType_ZDrive);
    }
}

TEST(ConfigMicroscope, DevicesStandAndMoveAsTheFileSays) {
    CKxSimMicroscope devices;
    const Read read("Device,N,M,Nosepiece\nLabel,N,0,10x/0.3\nLabel,N,3,63x/1.4 oil\nLabel,N,1,Empty\n"
                    "Property,N,State,3\nDelay,N,0\n"
                    "Device,S,M,Shutter\nLabel,S,0,Open\nLabel,S,1,Closed\nConfigGroup,System,Startup,S,Label,Open\n"
                    "#@ Limits,S,Aperture,10,100,%\nDevice,T,M,Shutter\n"
                    "Device,Z,M,Piezo\n#@ Limits,Z,Position,-1,1,mm\n"
                    "Device,L,M,Laser 561\n#@ Limits,L,Power,5,50,mW\n"
                    "Device,M,M,T\nLabel,M,0,TIRF\nLabel,M,1,EPI\nProperty,M,Label,TIRF\n");
    const Microscope scope = BuildMicroscope(read.stand, devices);

    auto* const turret = Simulated<CKxSimNosepiece>(scope.turrets.at(0));
    ASSERT_NE(turret, nullptr);
    long position = 0;
    CKxStringW name(L"?"), key;
    EXPECT_TRUE(turret->GetPosition(position) && position == 3 && turret->GetPositionCount() == 4);
    turret->GetObjectiveName(1, name);
    EXPECT_EQ(name, L"");
    turret->GetObjectiveKey(3, key);
    SKxDDBObjectiveItem item;
    EXPECT_TRUE(CKxDeviceDatabase::DBGetObjectiveParam(key, &item, false));
    EXPECT_TRUE(item.NA == 1.4 && item.immersion == L"Oil");
    EXPECT_TRUE(turret->MoveTo(0));
    devices.Tick();
    EXPECT_TRUE(turret->GetPosition(position) && position == 0) << "its delay is 0";

    const unsigned shutter = scope.shutters.at(0), laser = scope.lasers.at(0).id;
    EXPECT_TRUE(DMApi::Shutter_GetState(shutter) && DMApi::Shutter_GetApertureSteps(shutter) == 10);
    EXPECT_EQ(DMApi::Shutter_GetStepAperture(shutter, 9), 100);
    EXPECT_TRUE(DMApi::Shutter_GetShutterType(shutter) == eKxShutterType_Aux1 &&
                DMApi::Shutter_GetShutterType(scope.shutters.at(1)) == eKxShutterType_Aux2);
    EXPECT_TRUE(scope.zDrives.at(0).minimum == -1000 && scope.zDrives[0].maximum == 1000);
    EXPECT_TRUE(scope.lasers[0].wavelength == 561 && scope.lasers[0].unit == L"mW");
    EXPECT_EQ(Simulated<CKxSimLaserOutput>(laser)->GetPowerRange().maximum, 50);
    EXPECT_EQ(DMApi::LaserOutput_GetPortName(laser, 0), L"L");
    bool tirf = false;
    EXPECT_TRUE(Simulated<CKxSimTIRFMirror>(scope.tirfMirrors.at(0))->GetState(tirf) && tirf);
    EXPECT_EQ(Simulated<CKxSimShutter>(scope.turrets[0]), nullptr);
}

}  // namespace
