// Writes the two containers this program carries to the two files named, as the program holds them.
#include <cstdio>

#include "embedded.h"

int main(int argc, char** argv)
{
    if (argc != 3)
        return 2;
    const EmbeddedContainer* containers[] = {&cs16Payload, &cssPayload};
    for (int i = 0; i < 2; ++i) {
        std::FILE* out = std::fopen(argv[i + 1], "wb");
        if (!out || std::fwrite(containers[i]->start, 1, containers[i]->length, out) != containers[i]->length)
            return 1;
        std::fclose(out);
    }
    return 0;
}
