// SPDX-License-Identifier: MIT
#include "host/vximage/ColorTables.h"

#include <cmath>
#include <vector>

namespace il {
namespace {

/// A colour at a place of the table, 0 to 1; between two of them the colours run linearly.
struct ControlPoint
{
    double at;
    std::uint32_t rgb;
};

struct Design
{
    const char *name;
    std::vector<ControlPoint> points;
};

/// In the order of the codes. Tables that start in black show where there is nothing; the rainbows start in
/// blue or violet, so that low values are seen as well.
const std::vector<Design> &designs()
{
    static const std::vector<Design> all = {
        {"Grays", {{0.0, 0x000000}, {1.0, 0xffffff}}},
        {"Rainbow", {{0.0, 0x0000c0}, {0.25, 0x00c0ff}, {0.5, 0x00e000}, {0.75, 0xffe000}, {1.0, 0xff0000}}},
        {"YellowHot", {{0.0, 0x000000}, {0.4, 0xa03000}, {0.75, 0xffc000}, {1.0, 0xffffe0}}},
        {"BlueHot", {{0.0, 0x000000}, {0.4, 0x1030a0}, {0.75, 0x40b0ff}, {1.0, 0xf0ffff}}},
        {"BlueRedGreen", {{0.0, 0x0000ff}, {0.5, 0xff0000}, {1.0, 0x00ff00}}},
        {"PlanetEarth",
         {{0.0, 0x001040},
          {0.3, 0x1060c0},
          {0.45, 0x60c0e0},
          {0.5, 0xe0d090},
          {0.6, 0x40a040},
          {0.85, 0x806030},
          {1.0, 0xffffff}}},
        {"Terrain", {{0.0, 0x206020}, {0.3, 0x70b050}, {0.55, 0xe0d890}, {0.8, 0x906040}, {1.0, 0xffffff}}},
        {"Rainbow2",
         {{0.0, 0x400080},
          {0.2, 0x2020ff},
          {0.4, 0x00d0d0},
          {0.6, 0x40e000},
          {0.8, 0xffd000},
          {0.95, 0xff2000},
          {1.0, 0xffffff}}},
        {"Red", {{0.0, 0x000000}, {1.0, 0xff0000}}},
        {"Green", {{0.0, 0x000000}, {1.0, 0x00ff00}}},
        {"Blue", {{0.0, 0x000000}, {1.0, 0x0000ff}}},
    };
    return all;
}

std::uint32_t mixed(std::uint32_t a, std::uint32_t b, double share)
{
    std::uint32_t rgb = 0xff000000u;
    for (int shift = 0; shift <= 16; shift += 8) {
        const double from = double((a >> shift) & 0xffu);
        const double to = double((b >> shift) & 0xffu);
        rgb |= std::uint32_t(std::lround(from + (to - from) * share)) << shift;
    }
    return rgb;
}

ColorTable built(const Design &design)
{
    ColorTable table{};
    std::size_t next = 1;
    for (std::size_t i = 0; i < table.size(); ++i) {
        const double at = double(i) / double(table.size() - 1);
        while (next + 1 < design.points.size() && at > design.points[next].at)
            ++next;
        const ControlPoint &a = design.points[next - 1];
        const ControlPoint &b = design.points[next];
        table[i] = mixed(a.rgb, b.rgb, (at - a.at) / (b.at - a.at));
    }
    return table;
}

} // namespace

const ColorTable &colorTable(VXS_COLORTABLE_TYPES type)
{
    static const std::vector<ColorTable> tables = [] {
        std::vector<ColorTable> all;
        for (const Design &design : designs())
            all.push_back(built(design));
        return all;
    }();
    const std::size_t code = std::size_t(type);
    return tables[code < tables.size() ? code : std::size_t(VXS_CT_GRAYS)];
}

const char *colorTableName(VXS_COLORTABLE_TYPES type)
{
    const std::size_t code = std::size_t(type);
    return code < designs().size() ? designs()[code].name : nullptr;
}

} // namespace il
