// ludax-logo-pack <image.ppm> <logo output> <icon output>: makes the program's two pictures
// from the logo artwork, for embedding in it.
// Logo output: width and height as little-endian 32-bit words, then one zlib stream of the
// pixels as blue, green, red, alpha bytes, rows top to bottom, every alpha 255.
// Icon output: an .ico file with the icon at 16, 32, 48 and 256 pixels (icon.h).
#include <zlib.h>

#include <cctype>
#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <fstream>
#include <iterator>
#include <string>
#include <utility>
#include <vector>

#include "icon.h"
#include "little_endian.h"

namespace {

[[noreturn]] void Fail(const std::string& message)
{
    std::fprintf(stderr, "ludax-logo-pack: %s\n", message.c_str());
    std::exit(1);
}

// Reads a binary PPM (P6, maxval 255); '#' comments in the header are skipped.
class PpmReader {
public:
    explicit PpmReader(std::vector<unsigned char> bytes) : bytes(std::move(bytes)) {}

    void Read(int& width, int& height, std::vector<unsigned char>& rgb)
    {
        if (Token() != "P6")
            Fail("not a binary PPM (P6)");
        width = Number();
        height = Number();
        if (Number() != 255)
            Fail("only 8-bit samples are supported");
        ++position;  // the single whitespace byte that ends the header
        std::size_t size = static_cast<std::size_t>(width) * height * 3;
        if (position > bytes.size() || bytes.size() - position < size)
            Fail("pixel data is shorter than the header says");
        rgb.assign(bytes.begin() + position, bytes.begin() + position + size);
    }

private:
    std::string Token()
    {
        for (;;) {
            while (position < bytes.size() && std::isspace(bytes[position]))
                ++position;
            if (position < bytes.size() && bytes[position] == '#') {
                while (position < bytes.size() && bytes[position] != '\n')
                    ++position;
                continue;
            }
            break;
        }
        std::string token;
        while (position < bytes.size() && !std::isspace(bytes[position]))
            token += static_cast<char>(bytes[position++]);
        return token;
    }

    int Number()
    {
        std::string token = Token();
        if (token.empty() || token.size() > 5 || token.find_first_not_of("0123456789") != std::string::npos)
            Fail("bad number in the PPM header: '" + token + "'");
        int value = std::stoi(token);
        if (value <= 0)
            Fail("PPM dimensions and maxval must be positive");
        return value;
    }

    std::vector<unsigned char> bytes;
    std::size_t position = 0;
};

void WriteFile(const char* path, const std::vector<unsigned char>& bytes)
{
    std::ofstream file(path, std::ios::binary | std::ios::trunc);
    file.write(reinterpret_cast<const char*>(bytes.data()), static_cast<std::streamsize>(bytes.size()));
    if (!file.flush())
        Fail(std::string("cannot write ") + path);
}

}  // namespace

int main(int argc, char** argv)
{
    if (argc != 4)
        Fail("usage: ludax-logo-pack <image.ppm> <logo output> <icon output>");
    std::ifstream in(argv[1], std::ios::binary);
    if (!in)
        Fail(std::string("cannot open ") + argv[1]);
    std::vector<unsigned char> ppm((std::istreambuf_iterator<char>(in)), std::istreambuf_iterator<char>());

    RgbImage artwork;
    PpmReader(std::move(ppm)).Read(artwork.width, artwork.height, artwork.rgb);

    std::vector<unsigned char> bgra;
    bgra.reserve(artwork.rgb.size() / 3 * 4);
    for (std::size_t i = 0; i < artwork.rgb.size(); i += 3) {
        bgra.push_back(artwork.rgb[i + 2]);
        bgra.push_back(artwork.rgb[i + 1]);
        bgra.push_back(artwork.rgb[i]);
        bgra.push_back(255);
    }

    uLongf packedSize = compressBound(bgra.size());
    std::vector<unsigned char> packed(packedSize);
    if (compress2(packed.data(), &packedSize, bgra.data(), bgra.size(), Z_BEST_COMPRESSION) != Z_OK)
        Fail("zlib compression failed");
    packed.resize(packedSize);

    std::vector<unsigned char> logo;
    AppendLittleEndian32(logo, static_cast<std::uint32_t>(artwork.width));
    AppendLittleEndian32(logo, static_cast<std::uint32_t>(artwork.height));
    logo.insert(logo.end(), packed.begin(), packed.end());
    WriteFile(argv[2], logo);
    WriteFile(argv[3], IcoFile(artwork, {16, 32, 48, 256}));
    return 0;
}
