#pragma once
// The two containers a built Ludax.exe carries, found in the file where payload/embedded_data.S
// puts them: inside a section of the Windows program, at a 16-byte boundary, a 16-byte marker
// naming the game, the container's length (64-bit little-endian), 8 zero bytes, the container,
// one zero byte. Every offset comes from the file's own headers and is checked against its size.

#include <cstddef>
#include <string>
#include <vector>

struct CarriedContainer {
    std::string game;        // the set's folder name: "cs16", "css"
    std::string title;       // the game's name: "Counter-Strike 1.6", "Counter-Strike: Source"
    std::size_t offset = 0;  // where the container's bytes start in the file
    std::size_t length = 0;
};

// True when the file starts as a Windows program does, with "MZ". A container starts so only
// when its first name is over 23,000 bytes long, which no Windows path can hold.
bool LooksLikeWindowsProgram(const std::vector<char>& file);

// Both containers, Counter-Strike 1.6 first, each lying whole inside the file and made of whole
// records. False, with `error` saying what is wrong (to follow the file's name in a message),
// when the headers or sections run past the file's end, or a container is missing or damaged.
bool FindCarriedContainers(const std::vector<char>& file, std::vector<CarriedContainer>& containers,
                           std::string& error);
