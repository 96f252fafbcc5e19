// kxdevbench [--json FILE] [--only TEXT] : measures all rows, or those with TEXT in their names, prints them as a table
// and writes them to a file. Ends with 1 when a row is over its limit, 2 when something could not be measured, 3 when
// the machine was too restless to tell.
#include <windows.h>

#include <algorithm>
#include <cmath>
#include <cstdio>
#include <fstream>
#include <string>
#include <string_view>

#include "harness.h"

namespace {

using kx::bench::Ratio;
using kx::bench::Row;

enum Result { kWell = 0, kOverLimit = 1, kFailed = 2, kVoid = 3 };

struct Figure {
    Row row;
    Ratio ratio;

    bool IsOver() const { return ratio.median > row.limit; }
};

bool IsQuiet(const Ratio& same) { return same.median >= kx::bench::kQuietLow && same.median <= kx::bench::kQuietHigh; }

void PrintTitles() {
    std::printf("%-50s %-46s %6s  %-15s %5s\n", "measured", "against", "ratio", "low to high", "limit");
}

void Print(const Figure& figure) {
    const auto& [row, ratio] = figure;
    std::printf("%-50s %-46s %6.3f  %.3f to %.3f  %6.2f%s\n", row.name.c_str(), row.against.c_str(), ratio.median,
                ratio.low, ratio.high, row.limit, figure.IsOver() ? "  OVER" : "");
}

// Each row is printed when it has been measured: some take minutes. The same work on both sides is measured before and
// after the rows, and the worse counts: the quiet has to last.
std::vector<Figure> MeasureAll(std::string_view only) {
    PrintTitles();
    const Row same = kx::bench::SameWork();
    std::vector<Figure> figures{{same, same.measure()}};
    Print(figures[0]);
    for (const Row& row : kx::bench::AllRows()) {
        if (row.name.find(only) == std::string::npos) continue;
        figures.push_back({row, row.measure()});
        Print(figures.back());
    }
    const Ratio after = same.measure();
    Print({same, after});
    if (std::abs(after.median - 1) > std::abs(figures[0].ratio.median - 1)) figures[0].ratio = after;
    return figures;
}

// Names are ours and hold nothing that would need an escape.
bool WriteJson(const std::string& path, const std::vector<Figure>& figures) {
    std::ofstream file(path);
    const char* separator = "[\n";
    for (const auto& [row, ratio] : figures) {
        file << separator << R"(  {"name": ")" << row.name << R"(", "against": ")" << row.against << R"(", "ratio": )"
             << ratio.median << R"(, "low": )" << ratio.low << R"(, "high": )" << ratio.high << R"(, "limit": )"
             << row.limit << "}";
        separator = ",\n";
    }
    file << "\n]\n";
    file.close();
    return !file.fail();
}

int Run(const std::string& json, std::string_view only) {
    auto figures = MeasureAll(only);
    if (!IsQuiet(figures[0].ratio)) {
        std::printf("The same work measured %.3f: once more\n", figures[0].ratio.median);
        figures = MeasureAll(only);
    }
    if (!json.empty() && !WriteJson(json, figures)) throw kx::bench::Fault("the file could not be written");
    if (!IsQuiet(figures[0].ratio)) {
        std::printf("Void: the same work measured %.3f, the machine is too restless\n", figures[0].ratio.median);
        return kVoid;
    }
    const bool over = std::any_of(figures.begin() + 1, figures.end(), [](const Figure& each) { return each.IsOver(); });
    return over ? kOverLimit : kWell;
}

}  // namespace

int main(int argc, char** argv) {
    std::setvbuf(stdout, nullptr, _IONBF, 0);
    std::string json, only;
    for (int i = 1; i < argc; i += 2) {
        const std::string_view option = argv[i];
        if (i + 1 == argc || (option != "--json" && option != "--only")) {
            std::printf("usage: kxdevbench [--json FILE] [--only TEXT]\n");
            return kFailed;
        }
        (option == "--json" ? json : only) = argv[i + 1];
    }
    try {
        return Run(json, only);
    } catch (const std::exception& exception) {
        std::printf("error: %s\n", exception.what());
        return kFailed;
    }
}
