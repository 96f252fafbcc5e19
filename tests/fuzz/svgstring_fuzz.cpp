// CKxSvgStringAPI::ReplaceString against a second opinion that goes letter by letter. The input is three texts with
// zeros between them: what, with, and the text to be changed, which is repeated so that the bound is met.
#include "fuzz.h"

#include <kxbaseui/kx_svgstring.h>

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    const std::string_view input(reinterpret_cast<const char*>(data), size);
    const auto first = input.find('\0');
    const auto second = first == std::string_view::npos ? first : input.find('\0', first + 1);
    if (second == std::string_view::npos) return 0;
    const std::string what(input.substr(0, first)), with(input.substr(first + 1, second - first - 1));
    const std::string_view part = input.substr(second + 1);
    std::string text;
    for (int i = 0; i < (part.size() % 8 == 7 ? 20'000 : 3); ++i)
        text += part;

    std::string expected;
    int count = 0;
    for (std::size_t at = 0; at < text.size();) {
        if (!what.empty() && text.compare(at, what.size(), what) == 0) {
            expected += with;
            at += what.size();
            ++count;
        } else {
            expected += text[at++];
        }
    }
    const bool tooLong = with.size() > what.size() && expected.size() > CKxSvgStringAPI::MaxLength;
    CKxStringA svg(text);
    const int replaced = CKxSvgStringAPI::ReplaceString(svg, what.c_str(), with.c_str());
    Require(tooLong ? replaced == 0 && svg.str() == text : replaced == count && svg.str() == expected);
    return 0;
}
