#include "sha256.h"

#include <cstring>

namespace {

constexpr std::uint32_t roundConstants[64] = {
    0x428a2f98, 0x71374491, 0xb5c0fbcf, 0xe9b5dba5, 0x3956c25b, 0x59f111f1, 0x923f82a4, 0xab1c5ed5,
    0xd807aa98, 0x12835b01, 0x243185be, 0x550c7dc3, 0x72be5d74, 0x80deb1fe, 0x9bdc06a7, 0xc19bf174,
    0xe49b69c1, 0xefbe4786, 0x0fc19dc6, 0x240ca1cc, 0x2de92c6f, 0x4a7484aa, 0x5cb0a9dc, 0x76f988da,
    0x983e5152, 0xa831c66d, 0xb00327c8, 0xbf597fc7, 0xc6e00bf3, 0xd5a79147, 0x06ca6351, 0x14292967,
    0x27b70a85, 0x2e1b2138, 0x4d2c6dfc, 0x53380d13, 0x650a7354, 0x766a0abb, 0x81c2c92e, 0x92722c85,
    0xa2bfe8a1, 0xa81a664b, 0xc24b8b70, 0xc76c51a3, 0xd192e819, 0xd6990624, 0xf40e3585, 0x106aa070,
    0x19a4c116, 0x1e376c08, 0x2748774c, 0x34b0bcb5, 0x391c0cb3, 0x4ed8aa4a, 0x5b9cca4f, 0x682e6ff3,
    0x748f82ee, 0x78a5636f, 0x84c87814, 0x8cc70208, 0x90befffa, 0xa4506ceb, 0xbef9a3f7, 0xc67178f2};

inline std::uint32_t Rotate(std::uint32_t value, int bits) { return value >> bits | value << (32 - bits); }

}  // namespace

void Sha256::Block(const std::uint8_t* block)
{
    std::uint32_t w[64];
    for (int i = 0; i < 16; ++i)
        w[i] = std::uint32_t{block[4 * i]} << 24 | std::uint32_t{block[4 * i + 1]} << 16 |
               std::uint32_t{block[4 * i + 2]} << 8 | block[4 * i + 3];
    for (int i = 16; i < 64; ++i) {
        const std::uint32_t s0 = Rotate(w[i - 15], 7) ^ Rotate(w[i - 15], 18) ^ (w[i - 15] >> 3);
        const std::uint32_t s1 = Rotate(w[i - 2], 17) ^ Rotate(w[i - 2], 19) ^ (w[i - 2] >> 10);
        w[i] = w[i - 16] + s0 + w[i - 7] + s1;
    }
    std::uint32_t a = state[0], b = state[1], c = state[2], d = state[3];
    std::uint32_t e = state[4], f = state[5], g = state[6], h = state[7];
    for (int i = 0; i < 64; ++i) {
        const std::uint32_t t1 = h + (Rotate(e, 6) ^ Rotate(e, 11) ^ Rotate(e, 25)) + ((e & f) ^ (~e & g)) +
                                 roundConstants[i] + w[i];
        const std::uint32_t t2 = (Rotate(a, 2) ^ Rotate(a, 13) ^ Rotate(a, 22)) + ((a & b) ^ (a & c) ^ (b & c));
        h = g;
        g = f;
        f = e;
        e = d + t1;
        d = c;
        c = b;
        b = a;
        a = t1 + t2;
    }
    state[0] += a;
    state[1] += b;
    state[2] += c;
    state[3] += d;
    state[4] += e;
    state[5] += f;
    state[6] += g;
    state[7] += h;
}

void Sha256::Add(const char* bytes, std::size_t size)
{
    const auto* in = reinterpret_cast<const std::uint8_t*>(bytes);
    total += size;
    if (pendingSize > 0) {
        const std::size_t part = std::min(size, sizeof pending - pendingSize);
        std::memcpy(pending + pendingSize, in, part);
        pendingSize += part;
        in += part;
        size -= part;
        if (pendingSize < sizeof pending)
            return;
        Block(pending);
        pendingSize = 0;
    }
    for (; size >= 64; in += 64, size -= 64)
        Block(in);
    std::memcpy(pending, in, size);
    pendingSize = size;
}

Sha256::Digest Sha256::Finish()
{
    const std::uint64_t bits = total * 8;
    const char one = static_cast<char>(0x80);
    Add(&one, 1);
    const char zero = 0;
    while (pendingSize != 56)
        Add(&zero, 1);
    char length[8];
    for (int i = 0; i < 8; ++i)
        length[i] = static_cast<char>(bits >> (56 - 8 * i));
    Add(length, 8);
    Digest digest;
    for (int i = 0; i < 32; ++i)
        digest[i] = static_cast<std::uint8_t>(state[i / 4] >> (24 - 8 * (i % 4)));
    return digest;
}

Sha256::Digest Sha256Of(const char* bytes, std::size_t size)
{
    Sha256 sha;
    sha.Add(bytes, size);
    return sha.Finish();
}

std::string HexDigest(const Sha256::Digest& digest)
{
    static const char hex[] = "0123456789abcdef";
    std::string text;
    for (std::uint8_t byte : digest) {
        text += hex[byte >> 4];
        text += hex[byte & 15];
    }
    return text;
}
