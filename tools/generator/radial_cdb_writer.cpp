#include "radial_cdb_writer.h"

#include "byte_writer.h"

#include <stdexcept>

#include <zlib.h>

namespace ludaxgen {

namespace {

constexpr std::uint32_t kHeaderSize = 64;
constexpr std::uint32_t kEntrySize = 64;
constexpr std::uint32_t kCapacity = 95;
constexpr std::uint32_t kT = 1;
constexpr std::uint32_t kCT = 2;
constexpr std::uint32_t kBoth = kT | kCT;

struct RadialEntry {
    std::uint8_t page;
    std::uint16_t price;
    std::uint32_t teams;
    const char* label;
    const char* command;
};

const RadialEntry kEntries[] = {
    {1, 400, kBoth, "9x19mm Sidearm", "glock"},     {1, 500, kBoth, "KM .45 Tactical", "usp"},
    {1, 600, kBoth, "228 Compact", "p228"},          {1, 650, kBoth, "Night Hawk .50C", "deagle"},
    {1, 800, kT, ".40 Dual Elites", "elites"},       {1, 750, kCT, "ES Five-Seven", "fn57"},
    {2, 1700, kBoth, "Leone 12 Gauge", "m3"},        {2, 3000, kBoth, "Leone YG1265", "xm1014"},
    {3, 1400, kT, "Ingram MAC-10", "mac10"},         {3, 1250, kCT, "Schmidt MP", "tmp"},
    {3, 1500, kBoth, "KM Sub-Machine Gun", "mp5"},   {3, 1700, kBoth, "KM UMP45", "ump45"},
    {3, 2350, kBoth, "ES C90", "p90"},               {4, 2000, kT, "IDF Defender", "galil"},
    {4, 2250, kCT, "Clarion 5.56", "famas"},         {4, 2500, kT, "CV-47", "ak47"},
    {4, 3100, kCT, "Maverick M4A1", "m4a1"},         {4, 3500, kT, "Krieg 552", "sg552"},
    {4, 3500, kCT, "Bullpup", "aug"},                {4, 2750, kBoth, "Schmidt Scout", "scout"},
    {4, 4750, kBoth, "Magnum Sniper Rifle", "awp"},  {4, 5000, kT, "D3/AU-1", "g3sg1"},
    {4, 4200, kCT, "Krieg 550 Commando", "sg550"},   {5, 5750, kBoth, "ES M249 Para", "m249"},
    {6, 650, kBoth, "Kevlar Vest", "vest"},          {6, 1000, kBoth, "Kevlar + Helmet", "vesthelm"},
    {6, 200, kBoth, "Flashbang", "flash"},           {6, 300, kBoth, "HE Grenade", "hegren"},
    {6, 300, kBoth, "Smoke Grenade", "sgren"},       {6, 200, kCT, "Defusal Kit", "defuser"},
    {6, 1250, kBoth, "NightVision", "nvgs"},         {6, 2200, kCT, "Tactical Shield", "shield"},
    {7, 0, kBoth, "Primary Ammo", "primammo"},       {7, 0, kBoth, "Secondary Ammo", "secammo"},
};

} // namespace

std::vector<std::uint8_t> encodeRadialCdb()
{
    const std::size_t count = sizeof kEntries / sizeof kEntries[0];
    if (count > kCapacity)
        throw std::logic_error("radial table over capacity");

    ByteWriter table;
    std::uint8_t page = 0, slot = 0, pages = 0;
    for (const RadialEntry& e : kEntries) {
        if (e.page != page) {
            page = e.page;
            slot = 0;
            ++pages;
        }
        table.u8(e.page);
        table.u8(++slot);
        table.u16(e.price);
        table.u32(e.teams);
        table.fixedText(e.label, 24);
        table.fixedText(e.command, 32);
    }
    table.zeros((kCapacity - count) * kEntrySize);

    ByteWriter out;
    out.text("RCDB");
    out.u32(1);
    out.u32(kHeaderSize);
    out.u32(kEntrySize);
    out.u32(kCapacity);
    out.u32(static_cast<std::uint32_t>(count));
    out.u32(static_cast<std::uint32_t>(crc32_z(0, table.bytes().data(), table.size())));
    out.u32(pages);
    out.fixedText("LUDAX radial buy menu", 32);
    out.raw(table.bytes());
    return out.bytes();
}

} // namespace ludaxgen
