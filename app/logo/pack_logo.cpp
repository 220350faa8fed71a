// ludax-logo-pack <image.ppm> <output>: packs the window logo for embedding in the program.
// Output: width and height as little-endian 32-bit words, then one zlib stream of the pixels
// as blue, green, red, alpha bytes, rows top to bottom, every alpha 255.
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

}  // namespace

int main(int argc, char** argv)
{
    if (argc != 3)
        Fail("usage: ludax-logo-pack <image.ppm> <output>");
    std::ifstream in(argv[1], std::ios::binary);
    if (!in)
        Fail(std::string("cannot open ") + argv[1]);
    std::vector<unsigned char> ppm((std::istreambuf_iterator<char>(in)), std::istreambuf_iterator<char>());

    int width = 0, height = 0;
    std::vector<unsigned char> rgb;
    PpmReader(std::move(ppm)).Read(width, height, rgb);

    std::vector<unsigned char> bgra;
    bgra.reserve(rgb.size() / 3 * 4);
    for (std::size_t i = 0; i < rgb.size(); i += 3) {
        bgra.push_back(rgb[i + 2]);
        bgra.push_back(rgb[i + 1]);
        bgra.push_back(rgb[i]);
        bgra.push_back(255);
    }

    uLongf packedSize = compressBound(bgra.size());
    std::vector<unsigned char> packed(packedSize);
    if (compress2(packed.data(), &packedSize, bgra.data(), bgra.size(), Z_BEST_COMPRESSION) != Z_OK)
        Fail("zlib compression failed");
    packed.resize(packedSize);

    std::vector<unsigned char> out;
    AppendLittleEndian32(out, static_cast<std::uint32_t>(width));
    AppendLittleEndian32(out, static_cast<std::uint32_t>(height));
    out.insert(out.end(), packed.begin(), packed.end());

    std::ofstream file(argv[2], std::ios::binary | std::ios::trunc);
    file.write(reinterpret_cast<const char*>(out.data()), static_cast<std::streamsize>(out.size()));
    if (!file.flush())
        Fail(std::string("cannot write ") + argv[2]);
    return 0;
}
