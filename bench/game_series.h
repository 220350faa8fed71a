#pragma once
// Everything measured for one game: a value per run for each operation.

#include <cstdint>
#include <vector>

#include "folder_size.h"

namespace bench {

struct Sample {
    double ms = 0;
    long long peakBytes = 0;  // the child's own peak resident memory, as it reported it
};

struct Series {
    std::vector<double> ms;
    std::vector<long long> peaks;

    void Add(const Sample& sample)
    {
        ms.push_back(sample.ms);
        peaks.push_back(sample.peakBytes);
    }
};

// The four operations of one game.
struct OperationSeries {
    Series installEmpty, installFull;
    Series uninstallEmpty, uninstallFull;
};

struct GameSeries {
    FolderSize payload;                   // the set the container is packed from
    std::uintmax_t largestOverwritten = 0;
    int copySets = 1;                     // copies of the set one copy-tool run makes
    Series copyStartup;                   // the copy tool on an empty source folder
    Series copyEmpty, copyFull;           // whole copy-tool runs, start-up included
    Series flushedCopyFull;               // one set over a full folder, each file flushed, timed inside
    OperationSeries flushed;              // the operations as the program runs them
    OperationSeries unflushed;            // the same with every flush a no-op, in turn with them
};

}  // namespace bench
