#pragma once

#include <algorithm>
#include <vector>

namespace bench {

// The middle value (the mean of the two middle ones for an even count); 0 for no values.
template <class T>
double Median(std::vector<T> values)
{
    if (values.empty())
        return 0;
    std::sort(values.begin(), values.end());
    std::size_t middle = values.size() / 2;
    if (values.size() % 2)
        return static_cast<double>(values[middle]);
    return (static_cast<double>(values[middle - 1]) + static_cast<double>(values[middle])) / 2;
}

}  // namespace bench
