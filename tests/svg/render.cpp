// render SVG SIZE PPM : the images' renderer, built natively; draws onto white, texts left out.
#include <kxbaseui/kx_svg.h>

#include <cstdlib>
#include <fstream>
#include <iterator>
#include <string>

int main(int, char** arguments) {
    std::ifstream file(arguments[1], std::ios::binary);
    const std::string text{std::istreambuf_iterator<char>(file), {}};
    const int size = std::atoi(arguments[2]);
    kx::svg::Image image;
    if (!kx::svg::Render(text, size, size, {0, 0, 0, 1}, nullptr, image)) return 1;
    std::ofstream out(arguments[3], std::ios::binary);
    out << "P6\n" << size << ' ' << size << "\n255\n";
    for (const std::uint32_t pixel : image.pixels) {
        const std::uint32_t white = 255 - (pixel >> 24);  // premultiplied: what shows through is added
        for (const int shift : {16, 8, 0})
            out.put(static_cast<char>((pixel >> shift & 0xFF) + white));
    }
    return out ? 0 : 1;
}
