#include <bench/bench.h>
TEST(ColorSlider, Begins) {}
