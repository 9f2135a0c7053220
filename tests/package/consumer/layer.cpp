// The smallest use of the C++ layer.
#include <array>
#include <vexlor_parallel.hpp>

int main()
{
    std::array<uint16_t, 12> pixels{};
    std::array<vexlor::throwing_context, 2> crew;
    const vexlor::surface_view screen(pixels, 4, 3, vexlor::format::rgb565);
    crew[0].set_color(0xF81F);
    vexlor::draw_parallel(crew, screen, {0, 0, 4, 3});
    return pixels != std::array<uint16_t, 12>{0xF81F, 0xF81F, 0xF81F, 0xF81F, 0xF81F, 0xF81F,
                                              0xF81F, 0xF81F, 0xF81F, 0xF81F, 0xF81F, 0xF81F};
}
