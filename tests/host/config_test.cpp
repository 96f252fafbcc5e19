// Device configuration files: what each line is answered with, what devices are taken for, and the microscope made of
// it.
#include <bench/bench.h>
#include <host/config/config_microscope.h>
#include <kxfilters/kx_objectives.h>

#include <algorithm>
#include <fstream>
#include <iterator>
#include <sstream>
#include <string>

#include "samples.h"

using namespace kx::config;
using namespace std::string_literals;

namespace {

std::wstring FromLatin(std::string_view bytes) {
    std::wstring text;
    for (const char each : bytes)
        text += static_cast<wchar_t>(static_cast<unsigned char>(each));
    return text;
}

struct Read {
    explicit Read(std::string_view bytes)
        : file(ReadConfig(bytes, FromLatin, remarks)), stand(InferStand(file, remarks)) {}

    // "3E text": line, first letter of the kind, and the text, one remark a line; guesses and unknown devices aside.
    std::string Wrong() const {
        std::string all;
        for (const Remark& each : remarks.All()) {
            if (each.text.find(L" is taken ") != std::wstring::npos ||
                each.text.find(L"no place") != std::wstring::npos)
                continue;
            all += std::to_string(each.line) + "GUES"[static_cast<int>(each.kind)] + " " + kx::test::Narrow(each.text) +
                   "\n";
        }
        return all;
    }

    Remarks remarks;
    ConfigFile file;
    Stand stand;
};

// Each row follows three lines on the device W. The rest of the file must count all the same.
TEST(ConfigFile, AnswersEveryLine) {
    const struct {
        std::string lines;
        const char* remarks;
    } rows[] = {
        {"", ""},
        {"\r\n \t \r\n# , ,\n  #Label,W\n", ""},
        {"Device,A,M", "4E \"Device\" needs 3 fields, 2 are given\n"},
        {"Device", "4E \"Device\" needs 3 fields, 0 are given\n"},
        {"Device,,M,N", "4E a device needs a label\n"},
        {"Device,Core,M,N", "4E \"Core\" is no label for a device\n"},
        {"Device,W,M,N", "4E \"W\" is a device already, from line 1\n"},
        {"Device,w,M,N,O", "4E what follows field 3 does not belong here\n"},
        {"Label,X,0,a", "4E there is no device \"X\"\n"},
        {"Label,Last,0,a", ""},
        {"Label,W,-1,a", "4E \"-1\" is no position from 0 to 99\n"},
        {"Label,W,100,a", "4E \"100\" is no position from 0 to 99\n"},
        {"Label,W,1e1,a", "4E \"1e1\" is no position from 0 to 99\n"},
        {"Label,W,,a", "4E \"\" is no position from 0 to 99\n"},
        {"Label,W,2,LP 515", "4E position 2 of \"W\" has a label already, from line 3: this one counts\n"},
        {"Property,W,a", ""},
        {"Property,X,a,1", "4E there is no device \"X\"\n"},
        {"Property,W,State,2", ""},
        {"Property,W,State,3", "4E \"3\" is no position of \"W\"\n"},
        {"Property,W,State,nan", "4E \"nan\" is no position of \"W\"\n"},
        {"ConfigGroup,System,Startup,W,Label,x", "4E \"x\" is no label of \"W\"\n"},
        {"ConfigGroup,G\nConfigGroup,G,P,W,Label,x", ""},
        {"ConfigPixelSize,10x,X,Label,a", "4E there is no device \"X\"\n"},
        {"PixelSize_um,10x,-1", "4E \"-1\" is no size in micrometres\n"},
        {"Property,Core,Shutter,X", "4E there is no device \"X\"\n"},
        {"Property,Core,Shutter,\nProperty,Core,Initialize,0", ""},
        {"Property,Core,AutoShutter,yes", "4E \"yes\" is neither 0 nor 1\n"},
        {"Property,Core,TimeoutMs,5000", "4S the role \"TimeoutMs\" has no meaning here\n"},
        {"FocusDirection,W,7", "4E \"7\" is no focus direction: -1, 0 or 1\n"},
        {"FocusDirection,X,1", "4E there is no device \"X\"\n"},
        {"Delay,W,60001", "4E \"60001\" is no delay from 0 to 60000 ms\n"},
        {"Delay,W,inf", "4E \"inf\" is no delay from 0 to 60000 ms\n"},
        {"Parent,W,X", "4E there is no device \"X\"\n"},
        {"Equipment,a\nImageSynchro,W", "4S \"Equipment\" is obsolete\n5S \"ImageSynchro\" is obsolete\n"},
        {"device,A,M,N", "4U \"device\" is no known command\n"},
        {"#@ Limit,W,P,0,1", "4U \"Limit\" is no known command\n"},
        {"#@ Limits,W,P,2,1", "4E the minimum 2 is not below the maximum 1\n"},
        {"#@ Limits,W,P,0,nan", "4E \"nan\" is no limit\n"},
        {"#@ Limits,W,P,-2000000,0,mm", "4E \"-2000000\" is no limit\n"},
        {"#@ Limits,X,P,0,1", "4E there is no device \"X\"\n"},
        {"FocusDirection,W,0\n#@ Limits,W,Position,0,1,mW", "5E \"mW\" is no unit of length\n"},
        {"Property,Core,Shutter,W\n#@ Limits,W,Aperture,0,101", "5E an aperture goes from 0 to 100 %\n"},
        {"Property,Core,Shutter,W\nProperty,W,State,2", ""},
        {"Label,W,1,a\0b"s, "4E the line has a zero byte\n"},
        {"Label,W,1," + std::string(5000, 'x'), "4E the line is longer than 4096 bytes\n"},
        {"Label,W,1,\xC3\xA9\n#\xF0\x9F\x94\xAC", ""},
        {"Label,W,1,\xE9", "4G this is not UTF-8: the whole file is read as ANSI\n"},
        {"#\xC0\x80", "4G this is not UTF-8: the whole file is read as ANSI\n"},
        {"#\xED\xA0\x80", "4G this is not UTF-8: the whole file is read as ANSI\n"},
    };
    for (const auto& row : rows) {
        SCOPED_TRACE(row.lines.substr(0, 60));
        const Read read("Device, W ,M,Wheel\r\nLabel,W,0,525/50\nLabel,W,2,605/70\n" + row.lines + "\nDevice,Last,M,N");
        EXPECT_EQ(read.Wrong(), row.remarks);
        ASSERT_FALSE(read.stand.devices.empty());
        EXPECT_EQ(read.stand.devices.front().label, L"W");
        EXPECT_EQ(read.stand.devices.back().label, L"Last");
    }
}

TEST(ConfigFile, BoundsAndMarks) {
    EXPECT_EQ(Read("\xEF\xBB\xBF"
                   "Device,A,M,N")
                  .Wrong(),
              "1S a byte order mark\n");
    EXPECT_EQ(Read("\xFF\xFE"
                   "D\0"s)
                  .Wrong(),
              "1E the file is in UTF-16, which is not read\n");

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
    ASSERT_EQ(crowded.remarks.All().size(), Bounds::remarks + 1);
    EXPECT_EQ(crowded.remarks.All().back().kind, RemarkKind::Skipped);
    lines = "Device,A,M,N\n#" + std::string(Bounds::fileBytes, '#');
    EXPECT_EQ(Read(lines).Wrong(), "2E the file is longer than 4 MB: the rest is not read\n");
}

// Labels are separated by bars; -1 for the detail of a kind that has none.
TEST(ConfigInfer, TakesDevicesForWhatTheyReadLike) {
    const struct {
        const char *label, *name, *labels, *line;
        DeviceKind kind;
        int detail;  // FilterKind or ShutterKind
    } rows[] = {
        {"A", "B", "10X 0.3|1.25x|Empty", "", DeviceKind::Turret, -1},
        {"A", "Camera binning", "1x1|2x2", "", DeviceKind::LightPath, -1},
        {"A", "B", "460/50|LP 515|Open", "", DeviceKind::FilterWheel, int(FilterKind::Emission)},
        {"Ex", "B", "DAPI|Cy5", "", DeviceKind::FilterWheel, int(FilterKind::Excitation)},
        {"FilterCubes", "B", "State-0|State-1", "", DeviceKind::FilterWheel, int(FilterKind::Cube)},
        {"A", "B", "ND 2|ND 4", "", DeviceKind::FilterWheel, int(FilterKind::NeutralDensity)},
        {"A", "B", "Left|Eyepiece|50 %", "", DeviceKind::LightPath, -1},
        {"A", "B", "one|two|three", "", DeviceKind::LightPath, -1},
        {"Objective", "B", "one|two", "", DeviceKind::Turret, -1},
        {"Objective", "B", "", "", DeviceKind::Other, -1},
        {"A", "B", "Open|Closed", "", DeviceKind::Shutter, int(ShutterKind::Auxiliary)},
        {"DiaShutter", "B", "", "", DeviceKind::Shutter, int(ShutterKind::Dia)},
        {"A", "EPI_shutter", "", "", DeviceKind::Shutter, int(ShutterKind::Epi)},
        {"A", "B", "DAPI|Cy5", "Property,Core,Shutter,A", DeviceKind::Shutter, int(ShutterKind::Auxiliary)},
        {"A", "B", "TIRF|Epi", "", DeviceKind::TirfMirror, -1},
        {"Laser", "B", "Left fibre|Right fibre", "", DeviceKind::Laser, -1},
        {"A", "B", "", "FocusDirection,A,0", DeviceKind::ZDrive, -1},
        {"A", "B", "", "FocusDirection,A,7", DeviceKind::Other, -1},
        {"A", "B", "", "Property,Core,Focus,A", DeviceKind::ZDrive, -1},
        {"A", "ZDrive", "", "", DeviceKind::ZDrive, -1},
        {"AutoFocus", "B", "", "", DeviceKind::Other, -1},
        {"A", "XYStage", "", "", DeviceKind::Stage, -1},
        {"A", "B", "", "Property,Core,XYStage,A", DeviceKind::Stage, -1},
        {"A", "Wheel", "", "", DeviceKind::Other, -1},
    };
    for (const auto& row : rows) {
        SCOPED_TRACE(std::string(row.label) + ", " + row.name + ", " + row.labels + ", " + row.line);
        std::string text = std::string(row.line) + "\n";
        std::istringstream labels(row.labels);
        int index = 0;
        for (std::string each; std::getline(labels, each, '|'); ++index)
            text += std::string("Label,") + row.label + "," + std::to_string(index) + "," + each + "\n";
        const Read read(text + "Device," + row.label + ",M," + row.name);
        const Device& device = read.stand.devices.at(0);
        EXPECT_EQ(device.kind, row.kind) << kx::test::Narrow(device.reason);
        const int detail = device.kind == DeviceKind::Shutter ? int(device.shutter) : int(device.filter);
        EXPECT_TRUE(row.detail < 0 || detail == row.detail) << detail;
        // Each guess is told, at the device's line.
        const auto& remarks = read.remarks.All();
        EXPECT_TRUE(std::any_of(remarks.begin(), remarks.end(), [&](const Remark& each) {
            return each.line == device.line && each.text.find(device.reason) != std::wstring::npos;
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
    const struct {
        std::string text;
        std::vector<std::size_t> sizes;  // as below
    } rows[] = {{Sample("teaching.cfg"), {1, 1, 0, 0, 1, 0, 1, 0, 2}},
                {Sample("widefield.cfg"), {1, 3, 1, 0, 2, 0, 2, 1, 3}},
                {Sample("tirf.cfg"), {1, 2, 1, 1, 1, 5, 1, 1, 2}},
                {std::string(DefaultConfig()), {1, 2, 1, 1, 2, 4, 1, 0, 2}}};
    for (const auto& row : rows) {
        SCOPED_TRACE(row.text.substr(0, 60));
        const Read read(row.text);
        CKxSimMicroscope devices;
        const Microscope scope = BuildMicroscope(read.stand, devices);
        EXPECT_EQ((std::vector{scope.turrets.size(), scope.wheels.size(), scope.lightPaths.size(),
                               scope.tirfMirrors.size(), scope.shutters.size(), scope.lasers.size(),
                               scope.zDrives.size(), scope.stages.size(), scope.others.size()}),
                  row.sizes);
        for (const Remark& each : read.remarks.All())
            EXPECT_NE(each.kind, RemarkKind::Error) << each.line;
        EXPECT_EQ(DMApi::LogDev_GetType(scope.shutter), eKxDeviceType_Shutter);
        EXPECT_EQ(DMApi::LogDev_GetType(scope.focus), eKxDeviceType_ZDrive);
    }
}

TEST(ConfigMicroscope, DevicesStandAndMoveAsTheFileSays) {
    CKxSimMicroscope devices;
    const Read read(
        "Device,N,M,Nosepiece\nLabel,N,0,10x/0.3\nLabel,N,3,63x/1.4 "
        "oil\nLabel,N,1,Empty\nProperty,N,State,3\nDelay,N,0\n"
        "Device,S,M,Shutter\nLabel,S,0,Open\nLabel,S,1,Closed\nConfigGroup,System,Startup,S,Label,Open\n"
        "#@ Limits,S,Aperture,10,100,%\nDevice,T,M,Shutter\nDevice,Z,M,Piezo\n#@ Limits,Z,Position,-1,1,mm\n"
        "Device,L,M,Laser 561\n#@ "
        "Limits,L,Power,5,50,mW\nDevice,M,M,T\nLabel,M,0,TIRF\nLabel,M,1,EPI\nProperty,M,Label,TIRF\n");
    const Microscope scope = BuildMicroscope(read.stand, devices);

    auto* const turret = Simulated<CKxSimNosepiece>(scope.turrets.at(0));
    ASSERT_NE(turret, nullptr);
    long position = 0;
    CKxStringW text;
    EXPECT_TRUE(turret->GetPosition(position) && position == 3);
    EXPECT_EQ(turret->GetPositionCount(), 4);
    turret->GetObjectiveName(1, text);
    EXPECT_EQ(text, L"");
    turret->GetObjectiveKey(3, text);
    SKxDDBObjectiveItem item;
    EXPECT_TRUE(CKxDeviceDatabase::DBGetObjectiveParam(text, &item, false) && item.NA == 1.4 &&
                item.immersion == L"Oil");
    EXPECT_TRUE(turret->MoveTo(0));
    devices.Tick();
    EXPECT_TRUE(turret->GetPosition(position) && position == 0) << "its delay is 0";

    EXPECT_TRUE(DMApi::Shutter_GetState(scope.shutters.at(0)));
    EXPECT_EQ(DMApi::Shutter_GetApertureSteps(scope.shutters[0]), 10);
    EXPECT_EQ(DMApi::Shutter_GetStepAperture(scope.shutters[0], 9), 100);
    EXPECT_EQ(DMApi::Shutter_GetShutterType(scope.shutters[0]), eKxShutterType_Aux1);
    EXPECT_EQ(DMApi::Shutter_GetShutterType(scope.shutters.at(1)), eKxShutterType_Aux2);
    EXPECT_TRUE(scope.zDrives.at(0).minimum == -1000 && scope.zDrives[0].maximum == 1000);
    EXPECT_TRUE(scope.lasers.at(0).wavelength == 561 && scope.lasers[0].unit == L"mW");
    EXPECT_EQ(Simulated<CKxSimLaserOutput>(scope.lasers[0].id)->GetPowerRange().maximum, 50);
    EXPECT_EQ(DMApi::LaserOutput_GetPortName(scope.lasers[0].id, 0), L"L");
    bool tirf = false;
    EXPECT_TRUE(Simulated<CKxSimTIRFMirror>(scope.tirfMirrors.at(0))->GetState(tirf) && tirf);
    EXPECT_EQ(Simulated<CKxSimShutter>(scope.turrets[0]), nullptr);
}

}  // namespace
