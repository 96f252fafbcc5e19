#include <kxbaseui/kx_svgstring.h>

#include <string>
#include <string_view>
#include <utility>

int CKxSvgStringAPI::ReplaceString(CKxStringA& svg, const char* what, const char* with) {
    const std::string_view text = svg.str(), sought = what ? what : "", put = with ? with : "";
    if (sought.empty()) return 0;
    int count = 0;
    std::size_t length = text.size();
    for (auto at = text.find(sought); at != std::string_view::npos; at = text.find(sought, at + sought.size())) {
        ++count;
        length = length - sought.size() + put.size();
        // Checked as it grows: a short text may be sought often in a long one.
        if (put.size() > sought.size() && length > MaxLength) return 0;
    }
    if (count == 0) return 0;
    std::string result;
    result.reserve(length);
    std::size_t from = 0;
    for (auto at = text.find(sought); at != std::string_view::npos; at = text.find(sought, from)) {
        result.append(text.substr(from, at - from)).append(put);
        from = at + sought.size();
    }
    result.append(text.substr(from));
    svg.str() = std::move(result);
    return count;
}
