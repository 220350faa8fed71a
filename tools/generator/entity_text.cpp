#include "entity_text.h"

#include <stdexcept>

namespace ludaxgen {

std::string entityText(const std::vector<Entity>& entities)
{
    std::string text;
    for (const Entity& e : entities) {
        text += "{\n";
        for (const auto& kv : e) {
            if (kv.first.find('"') != std::string::npos || kv.second.find('"') != std::string::npos)
                throw std::invalid_argument("entity keys and values cannot hold quotes");
            text += "\"" + kv.first + "\" \"" + kv.second + "\"\n";
        }
        text += "}\n";
    }
    return text;
}

std::string originText(const Vec3i& v)
{
    return std::to_string(v[0]) + " " + std::to_string(v[1]) + " " + std::to_string(v[2]);
}

} // namespace ludaxgen
